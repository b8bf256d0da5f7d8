#ifndef _OSGDIRECTIONALLIGHTBASE_H_
#define _OSGDIRECTIONALLIGHTBASE_H_

#include "OSGDirectionalLightFields.h"
#include "OSGLight.h"
#include "OSGSFVecTypes.h"

namespace osg {

class DirectionalLight;

// Light from infinitely far away along "direction".
class OSG_SYSTEMLIB_DLLMAPPING DirectionalLightBase : public Light
{
public:
    typedef Light Inherited;
    typedef DirectionalLightPtr Ptr;

    enum
    {
        DirectionFieldId = Inherited::NextFieldId,
        NextFieldId = DirectionFieldId + 1
    };
    static constexpr BitVector DirectionFieldMask = TypeTraits<BitVector>::One << DirectionFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(DirectionalLightPtr)

    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Direction)

protected:
    DirectionalLightBase();
    DirectionalLightBase(const DirectionalLightBase& source);
    ~DirectionalLightBase() override;
};

} // namespace osg

#endif
