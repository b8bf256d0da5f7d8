#ifndef _OSGPERSPECTIVECAMERA2BASE_H_
#define _OSGPERSPECTIVECAMERA2BASE_H_

#include "OSGPerspectiveCamera2Fields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGSFSysTypes.h>

namespace osg {

class PerspectiveCamera2;

// Perspective camera of the host with an exposure: shutterSpeed s means an exposure of 1/s seconds.
class OSG_ZEOPENSGEXT_DLLMAPPING PerspectiveCamera2Base : public PerspectiveCamera
{
public:
    typedef PerspectiveCamera Inherited;
    typedef PerspectiveCamera2Ptr Ptr;

    enum
    {
        ShutterSpeedFieldId = Inherited::NextFieldId,
        NextFieldId = ShutterSpeedFieldId + 1
    };
    static constexpr BitVector ShutterSpeedFieldMask = TypeTraits<BitVector>::One << ShutterSpeedFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(PerspectiveCamera2Ptr)

    OSG_SFIELD_ACCESSORS(SFReal32, Real32, ShutterSpeed)

protected:
    PerspectiveCamera2Base();
    PerspectiveCamera2Base(const PerspectiveCamera2Base& source);
    ~PerspectiveCamera2Base() override;
};

} // namespace osg

#endif
