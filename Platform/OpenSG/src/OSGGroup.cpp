#include <OpenSG/OSGGroup.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(GroupBase, Group, GroupPtr)

FieldContainerType& GroupBase::getClassType()
{
    static FieldContainerType type("Group", &NodeCore::getClassType(), nullptr, &osgCreateGroup, {});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(GroupBase)

GroupBase::GroupBase() {}

GroupBase::GroupBase(const GroupBase& source) : Inherited(source) {}

GroupBase::~GroupBase() = default;

Group::Group() = default;

Group::Group(const Group& source) : Inherited(source) {}

Group::~Group() = default;

namespace {
[[maybe_unused]] const bool registered = (Group::getClassType(), true);
} // namespace

} // namespace osg
