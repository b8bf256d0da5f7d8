#ifndef _OSGGROUPBASE_H_
#define _OSGGROUPBASE_H_

#include "OSGGroupFields.h"
#include "OSGNodeCore.h"

namespace osg {

class Group;

// Core that only groups its node's children.
class OSG_SYSTEMLIB_DLLMAPPING GroupBase : public NodeCore
{
public:
    typedef NodeCore Inherited;
    typedef GroupPtr Ptr;

    enum
    {
        NextFieldId = Inherited::NextFieldId
    };

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(GroupPtr)

protected:
    GroupBase();
    GroupBase(const GroupBase& source);
    ~GroupBase() override;
};

} // namespace osg

#endif
