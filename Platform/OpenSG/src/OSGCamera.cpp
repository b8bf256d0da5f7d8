#include <OpenSG/OSGCamera.h>

namespace osg {

FieldContainerType& CameraBase::getClassType()
{
    static FieldContainerType type("Camera", &AttachmentContainer::getClassType(), nullptr, nullptr,
                                   {OSG_SFIELD_DESC(CameraBase, SFNodePtr, "beacon", Beacon, false),
                                    OSG_SFIELD_DESC(CameraBase, SFReal32, "near", Near, false),
                                    OSG_SFIELD_DESC(CameraBase, SFReal32, "far", Far, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(CameraBase)

CameraBase::CameraBase() : _sfNear(Real32(0.f)), _sfFar(Real32(0.f)) {}

CameraBase::CameraBase(const CameraBase& source)
    : Inherited(source), _sfBeacon(source._sfBeacon), _sfNear(source._sfNear), _sfFar(source._sfFar)
{}

CameraBase::~CameraBase() = default;

Camera::Camera() = default;

Camera::Camera(const Camera& source) : Inherited(source) {}

Camera::~Camera() = default;

namespace {
[[maybe_unused]] const bool registered = (Camera::getClassType(), true);
} // namespace

} // namespace osg
