#ifndef _OSGMATERIALDRAWABLEBASE_H_
#define _OSGMATERIALDRAWABLEBASE_H_

#include "OSGDrawable.h"
#include "OSGMaterial.h"
#include "OSGMaterialDrawableFields.h"
#include "OSGMaterialFields.h"

namespace osg {

class MaterialDrawable;

// Drawable with its own material (abstract); setMaterial is reference counted.
class OSG_SYSTEMLIB_DLLMAPPING MaterialDrawableBase : public Drawable
{
public:
    typedef Drawable Inherited;
    typedef MaterialDrawablePtr Ptr;

    enum
    {
        MaterialFieldId = Inherited::NextFieldId,
        NextFieldId = MaterialFieldId + 1
    };
    static constexpr BitVector MaterialFieldMask = TypeTraits<BitVector>::One << MaterialFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL

    OSG_SFIELD_REF_ACCESSORS(SFMaterialPtr, MaterialPtr, Material)

protected:
    MaterialDrawableBase();
    MaterialDrawableBase(const MaterialDrawableBase& source);
    ~MaterialDrawableBase() override; // releases the referenced containers
};

} // namespace osg

#endif
