#ifndef _OSGGROUP_H_
#define _OSGGROUP_H_

#include "OSGGroupBase.h"

namespace osg {

// Core that only groups its node's children.
class OSG_SYSTEMLIB_DLLMAPPING Group : public GroupBase
{
public:
    typedef GroupBase Inherited;

protected:
    friend class GroupBase;

    Group();
    Group(const Group& source);
    ~Group() override;
};

} // namespace osg

#endif
