#include <zeOpenSGExt/OSGCameraSetting.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(CameraSettingBase, CameraSetting, CameraSettingPtr)

FieldContainerType& CameraSettingBase::getClassType()
{
    static FieldContainerType type(
        "CameraSetting", &NodeCore::getClassType(), nullptr, &osgCreateCameraSetting,
        {OSG_SFIELD_DESC(CameraSettingBase, SFPnt3f, "from", From, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFPnt3f, "at", At, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFVec3f, "up", Up, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "roll", Roll, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "fStop", FStop, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "height", Height, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "distance", Distance, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "focalLength", FocalLength, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "turnTableAngle", TurnTableAngle, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFBool, "isViewpoint", IsViewpoint, false),
         OSG_SFIELD_DESC(CameraSettingBase, SFReal32, "fieldOfView", FieldOfView, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(CameraSettingBase)

CameraSettingBase::CameraSettingBase()
    : _sfFrom(Pnt3f(0.f, 0.f, 10.f)), _sfUp(Vec3f(0.f, 1.f, 0.f)), _sfRoll(Real32(0.f)),
      _sfFStop(Real32(8.f)), _sfHeight(Real32(0.f)), _sfDistance(Real32(10.f)), _sfFocalLength(Real32(35.f)),
      _sfTurnTableAngle(Real32(0.f)), _sfIsViewpoint(bool(false)), _sfFieldOfView(Real32(0.785398163f))
{}

CameraSettingBase::CameraSettingBase(const CameraSettingBase& source)
    : Inherited(source), _sfFrom(source._sfFrom), _sfAt(source._sfAt), _sfUp(source._sfUp),
      _sfRoll(source._sfRoll), _sfFStop(source._sfFStop), _sfHeight(source._sfHeight),
      _sfDistance(source._sfDistance), _sfFocalLength(source._sfFocalLength),
      _sfTurnTableAngle(source._sfTurnTableAngle), _sfIsViewpoint(source._sfIsViewpoint),
      _sfFieldOfView(source._sfFieldOfView)
{}

CameraSettingBase::~CameraSettingBase() = default;

CameraSetting::CameraSetting() = default;

CameraSetting::CameraSetting(const CameraSetting& source) : Inherited(source) {}

CameraSetting::~CameraSetting() = default;

namespace {
[[maybe_unused]] const bool registered = (CameraSetting::getClassType(), true);
} // namespace

} // namespace osg
