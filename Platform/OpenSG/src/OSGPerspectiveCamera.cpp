#include <OpenSG/OSGPerspectiveCamera.h>
#include <cmath>

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

void PerspectiveCamera::getProjection(Matrix& result, UInt32 width, UInt32 height)
{
    Real32 fov = getFov();
    if (fov > Real32(Pi))
        fov = osgdegree2rad(fov);
    Real32 aspect = height > 0 ? Real32(width) / Real32(height) : 1.f;
    aspect *= getAspect();
    if (getFovMode() == FOV_horizontal || (getFovMode() == FOV_smaller && aspect < 1.f))
        fov = 2.f * std::atan(std::tan(fov / 2.f) / aspect);
    Real32 n = getNear(), f = getFar();
    Real32 ct = std::tan(fov / 2.f);
    result.setIdentity();
    if (ct <= 0.f || f - n == 0.f || aspect <= 0.f)
        return;
    Real32 cot = 1.f / ct;
    result.setValue(cot / aspect, 0.f, 0.f, 0.f, 0.f, cot, 0.f, 0.f, 0.f, 0.f, (f + n) / (n - f),
                    2.f * f * n / (n - f), 0.f, 0.f, -1.f, 0.f);
}

namespace {
[[maybe_unused]] const bool registered = (PerspectiveCamera::getClassType(), true);
} // namespace

} // namespace osg
