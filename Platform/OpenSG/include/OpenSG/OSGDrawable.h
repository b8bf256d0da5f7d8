#ifndef _OSGDRAWABLE_H_
#define _OSGDRAWABLE_H_

#include "OSGDrawableBase.h"

namespace osg {

// Base of cores that draw something (abstract).
class OSG_SYSTEMLIB_DLLMAPPING Drawable : public DrawableBase
{
public:
    typedef DrawableBase Inherited;

protected:
    friend class DrawableBase;

    Drawable();
    Drawable(const Drawable& source);
    ~Drawable() override;
};

} // namespace osg

#endif
