#ifndef _OSGLIGHTBASE_H_
#define _OSGLIGHTBASE_H_

#include "OSGGroup.h"
#include "OSGLightFields.h"
#include "OSGNodeFields.h"
#include "OSGSFBaseTypes.h"
#include "OSGSFSysTypes.h"

namespace osg {

class Light;

// Base of lights (abstract). Colours are Color4f. The beacon node's world transform places the light;
// the beacon is reference counted (so it must not be an ancestor of the light's node, or the two
// keep each other alive). The lit subtree is the light node's children.
class OSG_SYSTEMLIB_DLLMAPPING LightBase : public Group
{
public:
    typedef Group Inherited;
    typedef LightPtr Ptr;

    enum
    {
        AmbientFieldId = Inherited::NextFieldId,
        DiffuseFieldId = AmbientFieldId + 1,
        SpecularFieldId = DiffuseFieldId + 1,
        BeaconFieldId = SpecularFieldId + 1,
        OnFieldId = BeaconFieldId + 1,
        ConstantAttenuationFieldId = OnFieldId + 1,
        LinearAttenuationFieldId = ConstantAttenuationFieldId + 1,
        QuadraticAttenuationFieldId = LinearAttenuationFieldId + 1,
        ShadowIntensityFieldId = QuadraticAttenuationFieldId + 1,
        ShadowModeFieldId = ShadowIntensityFieldId + 1,
        NextFieldId = ShadowModeFieldId + 1
    };
    static constexpr BitVector AmbientFieldMask = TypeTraits<BitVector>::One << AmbientFieldId;
    static constexpr BitVector DiffuseFieldMask = TypeTraits<BitVector>::One << DiffuseFieldId;
    static constexpr BitVector SpecularFieldMask = TypeTraits<BitVector>::One << SpecularFieldId;
    static constexpr BitVector BeaconFieldMask = TypeTraits<BitVector>::One << BeaconFieldId;
    static constexpr BitVector OnFieldMask = TypeTraits<BitVector>::One << OnFieldId;
    static constexpr BitVector ConstantAttenuationFieldMask = TypeTraits<BitVector>::One
                                                              << ConstantAttenuationFieldId;
    static constexpr BitVector LinearAttenuationFieldMask = TypeTraits<BitVector>::One
                                                            << LinearAttenuationFieldId;
    static constexpr BitVector QuadraticAttenuationFieldMask = TypeTraits<BitVector>::One
                                                               << QuadraticAttenuationFieldId;
    static constexpr BitVector ShadowIntensityFieldMask = TypeTraits<BitVector>::One
                                                          << ShadowIntensityFieldId;
    static constexpr BitVector ShadowModeFieldMask = TypeTraits<BitVector>::One << ShadowModeFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL

    OSG_SFIELD_ACCESSORS(SFColor4f, Color4f, Ambient)
    OSG_SFIELD_ACCESSORS(SFColor4f, Color4f, Diffuse)
    OSG_SFIELD_ACCESSORS(SFColor4f, Color4f, Specular)
    OSG_SFIELD_REF_ACCESSORS(SFNodePtr, NodePtr, Beacon)
    OSG_SFIELD_ACCESSORS(SFBool, bool, On)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, ConstantAttenuation)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, LinearAttenuation)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, QuadraticAttenuation)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, ShadowIntensity)
    OSG_SFIELD_ACCESSORS(SFUInt32, UInt32, ShadowMode)

protected:
    LightBase();
    LightBase(const LightBase& source);
    ~LightBase() override; // releases the referenced containers
};

} // namespace osg

#endif
