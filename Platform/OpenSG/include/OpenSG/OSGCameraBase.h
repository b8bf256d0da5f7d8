#ifndef _OSGCAMERABASE_H_
#define _OSGCAMERABASE_H_

#include "OSGAttachmentContainer.h"
#include "OSGCameraFields.h"
#include "OSGNodeFields.h"
#include "OSGSFSysTypes.h"

namespace osg {

class Camera;

// Base of cameras (abstract). A camera is not part of the graph: its beacon node places it. The
// beacon is not reference counted, so it must outlive the camera's use of it.
class OSG_SYSTEMLIB_DLLMAPPING CameraBase : public AttachmentContainer
{
public:
    typedef AttachmentContainer Inherited;
    typedef CameraPtr Ptr;

    enum
    {
        BeaconFieldId = Inherited::NextFieldId,
        NearFieldId = BeaconFieldId + 1,
        FarFieldId = NearFieldId + 1,
        NextFieldId = FarFieldId + 1
    };
    static constexpr BitVector BeaconFieldMask = TypeTraits<BitVector>::One << BeaconFieldId;
    static constexpr BitVector NearFieldMask = TypeTraits<BitVector>::One << NearFieldId;
    static constexpr BitVector FarFieldMask = TypeTraits<BitVector>::One << FarFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL

    OSG_SFIELD_ACCESSORS(SFNodePtr, NodePtr, Beacon)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Near)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Far)

protected:
    CameraBase();
    CameraBase(const CameraBase& source);
    ~CameraBase() override;
};

} // namespace osg

#endif
