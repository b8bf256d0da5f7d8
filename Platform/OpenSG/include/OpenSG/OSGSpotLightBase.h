#ifndef _OSGSPOTLIGHTBASE_H_
#define _OSGSPOTLIGHTBASE_H_

#include "OSGPointLight.h"
#include "OSGSFSysTypes.h"
#include "OSGSFVecTypes.h"
#include "OSGSpotLightFields.h"

namespace osg {

class SpotLight;

// Point light limited to a cone along "direction"; spotCutOff is in radians.
class OSG_SYSTEMLIB_DLLMAPPING SpotLightBase : public PointLight
{
public:
    typedef PointLight Inherited;
    typedef SpotLightPtr Ptr;

    enum
    {
        DirectionFieldId = Inherited::NextFieldId,
        SpotExponentFieldId = DirectionFieldId + 1,
        SpotCutOffFieldId = SpotExponentFieldId + 1,
        NextFieldId = SpotCutOffFieldId + 1
    };
    static constexpr BitVector DirectionFieldMask = TypeTraits<BitVector>::One << DirectionFieldId;
    static constexpr BitVector SpotExponentFieldMask = TypeTraits<BitVector>::One << SpotExponentFieldId;
    static constexpr BitVector SpotCutOffFieldMask = TypeTraits<BitVector>::One << SpotCutOffFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(SpotLightPtr)

    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Direction)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, SpotExponent)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, SpotCutOff)

protected:
    SpotLightBase();
    SpotLightBase(const SpotLightBase& source);
    ~SpotLightBase() override;
};

} // namespace osg

#endif
