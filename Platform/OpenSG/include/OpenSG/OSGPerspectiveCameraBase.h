#ifndef _OSGPERSPECTIVECAMERABASE_H_
#define _OSGPERSPECTIVECAMERABASE_H_

#include "OSGCamera.h"
#include "OSGPerspectiveCameraFields.h"
#include "OSGSFSysTypes.h"

namespace osg {

class PerspectiveCamera;

// Perspective camera. "fov" is in radians.
class OSG_SYSTEMLIB_DLLMAPPING PerspectiveCameraBase : public Camera
{
public:
    typedef Camera Inherited;
    typedef PerspectiveCameraPtr Ptr;

    enum
    {
        FovFieldId = Inherited::NextFieldId,
        FovModeFieldId = FovFieldId + 1,
        AspectFieldId = FovModeFieldId + 1,
        NextFieldId = AspectFieldId + 1
    };
    static constexpr BitVector FovFieldMask = TypeTraits<BitVector>::One << FovFieldId;
    static constexpr BitVector FovModeFieldMask = TypeTraits<BitVector>::One << FovModeFieldId;
    static constexpr BitVector AspectFieldMask = TypeTraits<BitVector>::One << AspectFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(PerspectiveCameraPtr)

    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Fov)
    OSG_SFIELD_ACCESSORS(SFUInt32, UInt32, FovMode)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Aspect)

protected:
    PerspectiveCameraBase();
    PerspectiveCameraBase(const PerspectiveCameraBase& source);
    ~PerspectiveCameraBase() override;
};

} // namespace osg

#endif
