#ifndef _OSGDRAWABLEBASE_H_
#define _OSGDRAWABLEBASE_H_

#include "OSGDrawableFields.h"
#include "OSGNodeCore.h"

namespace osg {

class Drawable;

// Base of cores that draw something (abstract).
class OSG_SYSTEMLIB_DLLMAPPING DrawableBase : public NodeCore
{
public:
    typedef NodeCore Inherited;
    typedef DrawablePtr Ptr;

    enum
    {
        NextFieldId = Inherited::NextFieldId
    };

    OSG_FC_TYPE_FUNCTIONS_DECL

protected:
    DrawableBase();
    DrawableBase(const DrawableBase& source);
    ~DrawableBase() override;
};

} // namespace osg

#endif
