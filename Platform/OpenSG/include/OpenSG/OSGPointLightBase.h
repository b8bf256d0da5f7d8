#ifndef _OSGPOINTLIGHTBASE_H_
#define _OSGPOINTLIGHTBASE_H_

#include "OSGLight.h"
#include "OSGPointLightFields.h"
#include "OSGSFVecTypes.h"

namespace osg {

class PointLight;

// Light radiating from "position" (in the beacon's space).
class OSG_SYSTEMLIB_DLLMAPPING PointLightBase : public Light
{
public:
    typedef Light Inherited;
    typedef PointLightPtr Ptr;

    enum
    {
        PositionFieldId = Inherited::NextFieldId,
        NextFieldId = PositionFieldId + 1
    };
    static constexpr BitVector PositionFieldMask = TypeTraits<BitVector>::One << PositionFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(PointLightPtr)

    OSG_SFIELD_ACCESSORS(SFPnt3f, Pnt3f, Position)

protected:
    PointLightBase();
    PointLightBase(const PointLightBase& source);
    ~PointLightBase() override;
};

} // namespace osg

#endif
