#include <OpenSG/OSGPerspectiveCamera.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(PerspectiveCameraBase, PerspectiveCamera, PerspectiveCameraPtr)

FieldContainerType& PerspectiveCameraBase::getClassType()
{
    static FieldContainerType type(
        "PerspectiveCamera", &Camera::getClassType(), nullptr, &osgCreatePerspectiveCamera,
        {OSG_SFIELD_DESC(PerspectiveCameraBase, SFReal32, "fov", Fov, false),
         OSG_SFIELD_DESC(PerspectiveCameraBase, SFUInt32, "fovMode", FovMode, false),
         OSG_SFIELD_DESC(PerspectiveCameraBase, SFReal32, "aspect", Aspect, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(PerspectiveCameraBase)

PerspectiveCameraBase::PerspectiveCameraBase()
    : _sfFov(Real32(0.f)), _sfFovMode(UInt32(0u)), _sfAspect(Real32(1.f))
{}

PerspectiveCameraBase::PerspectiveCameraBase(const PerspectiveCameraBase& source)
    : Inherited(source), _sfFov(source._sfFov), _sfFovMode(source._sfFovMode), _sfAspect(source._sfAspect)
{}

PerspectiveCameraBase::~PerspectiveCameraBase() = default;

PerspectiveCamera::PerspectiveCamera() = default;

PerspectiveCamera::PerspectiveCamera(const PerspectiveCamera& source) : Inherited(source) {}

PerspectiveCamera::~PerspectiveCamera() = default;

namespace {
[[maybe_unused]] const bool registered = (PerspectiveCamera::getClassType(), true);
} // namespace

} // namespace osg
