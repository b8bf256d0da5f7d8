#include <OpenSG/OSGSwitch.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(SwitchBase, Switch, SwitchPtr)

FieldContainerType& SwitchBase::getClassType()
{
    static FieldContainerType type("Switch", &Group::getClassType(), nullptr, &osgCreateSwitch,
                                   {OSG_SFIELD_DESC(SwitchBase, SFInt32, "choice", Choice, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(SwitchBase)

SwitchBase::SwitchBase() : _sfChoice(Int32(-1)) {}

SwitchBase::SwitchBase(const SwitchBase& source) : Inherited(source), _sfChoice(source._sfChoice) {}

SwitchBase::~SwitchBase() = default;

Switch::Switch() = default;

Switch::Switch(const Switch& source) : Inherited(source) {}

Switch::~Switch() = default;

namespace {
[[maybe_unused]] const bool registered = (Switch::getClassType(), true);
} // namespace

} // namespace osg
