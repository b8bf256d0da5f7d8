#include <OpenSG/OSGSpotLight.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(SpotLightBase, SpotLight, SpotLightPtr)

FieldContainerType& SpotLightBase::getClassType()
{
    static FieldContainerType type(
        "SpotLight", &PointLight::getClassType(), nullptr, &osgCreateSpotLight,
        {OSG_SFIELD_DESC(SpotLightBase, SFVec3f, "direction", Direction, false),
         OSG_SFIELD_DESC(SpotLightBase, SFReal32, "spotExponent", SpotExponent, false),
         OSG_SFIELD_DESC(SpotLightBase, SFReal32, "spotCutOff", SpotCutOff, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(SpotLightBase)

SpotLightBase::SpotLightBase()
    : _sfDirection(Vec3f(0.f, 0.f, 1.f)), _sfSpotExponent(Real32(0.f)), _sfSpotCutOff(Real32(0.f))
{}

SpotLightBase::SpotLightBase(const SpotLightBase& source)
    : Inherited(source), _sfDirection(source._sfDirection), _sfSpotExponent(source._sfSpotExponent),
      _sfSpotCutOff(source._sfSpotCutOff)
{}

SpotLightBase::~SpotLightBase() = default;

SpotLight::SpotLight() = default;

SpotLight::SpotLight(const SpotLight& source) : Inherited(source) {}

SpotLight::~SpotLight() = default;

namespace {
[[maybe_unused]] const bool registered = (SpotLight::getClassType(), true);
} // namespace

} // namespace osg
