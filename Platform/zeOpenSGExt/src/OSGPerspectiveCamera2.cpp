#include <zeOpenSGExt/OSGPerspectiveCamera2.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(PerspectiveCamera2Base, PerspectiveCamera2, PerspectiveCamera2Ptr)

FieldContainerType& PerspectiveCamera2Base::getClassType()
{
    static FieldContainerType type(
        "PerspectiveCamera2", &PerspectiveCamera::getClassType(), nullptr, &osgCreatePerspectiveCamera2,
        {OSG_SFIELD_DESC(PerspectiveCamera2Base, SFReal32, "shutterSpeed", ShutterSpeed, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(PerspectiveCamera2Base)

PerspectiveCamera2Base::PerspectiveCamera2Base() : _sfShutterSpeed(Real32(50.f)) {}

PerspectiveCamera2Base::PerspectiveCamera2Base(const PerspectiveCamera2Base& source)
    : Inherited(source), _sfShutterSpeed(source._sfShutterSpeed)
{}

PerspectiveCamera2Base::~PerspectiveCamera2Base() = default;

PerspectiveCamera2::PerspectiveCamera2() = default;

PerspectiveCamera2::PerspectiveCamera2(const PerspectiveCamera2& source) : Inherited(source) {}

PerspectiveCamera2::~PerspectiveCamera2() = default;

namespace {
[[maybe_unused]] const bool registered = (PerspectiveCamera2::getClassType(), true);
} // namespace

} // namespace osg
