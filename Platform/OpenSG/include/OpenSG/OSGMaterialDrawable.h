#ifndef _OSGMATERIALDRAWABLE_H_
#define _OSGMATERIALDRAWABLE_H_

#include "OSGMaterialDrawableBase.h"

namespace osg {

// Drawable with its own material (abstract); setMaterial is reference counted.
class OSG_SYSTEMLIB_DLLMAPPING MaterialDrawable : public MaterialDrawableBase
{
public:
    typedef MaterialDrawableBase Inherited;

protected:
    friend class MaterialDrawableBase;

    MaterialDrawable();
    MaterialDrawable(const MaterialDrawable& source);
    ~MaterialDrawable() override;
};

} // namespace osg

#endif
