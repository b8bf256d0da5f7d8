#ifndef _OSGCAMERASETTINGBASE_H_
#define _OSGCAMERASETTINGBASE_H_

#include "OSGCameraSettingFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGNodeCore.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

namespace osg {

class CameraSetting;

// Camera settings of the host, kept as a core on the camera's node: eye point "from", target "at",
// "up" vector, roll (degrees), lens fStop and focalLength (mm), eye height, distance, turntable
// angle (degrees); isViewpoint marks the settings that drive the main view; fieldOfView is the
// vertical opening angle of the lens in radians (default pi/4).
class OSG_ZEOPENSGEXT_DLLMAPPING CameraSettingBase : public NodeCore
{
public:
    typedef NodeCore Inherited;
    typedef CameraSettingPtr Ptr;

    enum
    {
        FromFieldId = Inherited::NextFieldId,
        AtFieldId = FromFieldId + 1,
        UpFieldId = AtFieldId + 1,
        RollFieldId = UpFieldId + 1,
        FStopFieldId = RollFieldId + 1,
        HeightFieldId = FStopFieldId + 1,
        DistanceFieldId = HeightFieldId + 1,
        FocalLengthFieldId = DistanceFieldId + 1,
        TurnTableAngleFieldId = FocalLengthFieldId + 1,
        IsViewpointFieldId = TurnTableAngleFieldId + 1,
        FieldOfViewFieldId = IsViewpointFieldId + 1,
        NextFieldId = FieldOfViewFieldId + 1
    };
    static constexpr BitVector FromFieldMask = TypeTraits<BitVector>::One << FromFieldId;
    static constexpr BitVector AtFieldMask = TypeTraits<BitVector>::One << AtFieldId;
    static constexpr BitVector UpFieldMask = TypeTraits<BitVector>::One << UpFieldId;
    static constexpr BitVector RollFieldMask = TypeTraits<BitVector>::One << RollFieldId;
    static constexpr BitVector FStopFieldMask = TypeTraits<BitVector>::One << FStopFieldId;
    static constexpr BitVector HeightFieldMask = TypeTraits<BitVector>::One << HeightFieldId;
    static constexpr BitVector DistanceFieldMask = TypeTraits<BitVector>::One << DistanceFieldId;
    static constexpr BitVector FocalLengthFieldMask = TypeTraits<BitVector>::One << FocalLengthFieldId;
    static constexpr BitVector TurnTableAngleFieldMask = TypeTraits<BitVector>::One << TurnTableAngleFieldId;
    static constexpr BitVector IsViewpointFieldMask = TypeTraits<BitVector>::One << IsViewpointFieldId;
    static constexpr BitVector FieldOfViewFieldMask = TypeTraits<BitVector>::One << FieldOfViewFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(CameraSettingPtr)

    OSG_SFIELD_ACCESSORS(SFPnt3f, Pnt3f, From)
    OSG_SFIELD_ACCESSORS(SFPnt3f, Pnt3f, At)
    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Up)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Roll)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, FStop)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Height)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Distance)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, FocalLength)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, TurnTableAngle)
    OSG_SFIELD_ACCESSORS(SFBool, bool, IsViewpoint)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, FieldOfView)

protected:
    CameraSettingBase();
    CameraSettingBase(const CameraSettingBase& source);
    ~CameraSettingBase() override;
};

} // namespace osg

#endif
