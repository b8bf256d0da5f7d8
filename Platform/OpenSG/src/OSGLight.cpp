#include <OpenSG/OSGLight.h>

namespace osg {

FieldContainerType& LightBase::getClassType()
{
    static FieldContainerType type(
        "Light", &Group::getClassType(), nullptr, nullptr,
        {OSG_SFIELD_DESC(LightBase, SFColor4f, "ambient", Ambient, false),
         OSG_SFIELD_DESC(LightBase, SFColor4f, "diffuse", Diffuse, false),
         OSG_SFIELD_DESC(LightBase, SFColor4f, "specular", Specular, false),
         OSG_SFIELD_DESC(LightBase, SFNodePtr, "beacon", Beacon, false),
         OSG_SFIELD_DESC(LightBase, SFBool, "on", On, false),
         OSG_SFIELD_DESC(LightBase, SFReal32, "constantAttenuation", ConstantAttenuation, false),
         OSG_SFIELD_DESC(LightBase, SFReal32, "linearAttenuation", LinearAttenuation, false),
         OSG_SFIELD_DESC(LightBase, SFReal32, "quadraticAttenuation", QuadraticAttenuation, false),
         OSG_SFIELD_DESC(LightBase, SFReal32, "shadowIntensity", ShadowIntensity, false),
         OSG_SFIELD_DESC(LightBase, SFUInt32, "shadowMode", ShadowMode, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(LightBase)

LightBase::LightBase()
    : _sfAmbient(Color4f(0.f, 0.f, 0.f, 1.f)), _sfDiffuse(Color4f(1.f, 1.f, 1.f, 1.f)),
      _sfSpecular(Color4f(1.f, 1.f, 1.f, 1.f)), _sfOn(bool(true)), _sfConstantAttenuation(Real32(1.f)),
      _sfLinearAttenuation(Real32(0.f)), _sfQuadraticAttenuation(Real32(0.f)),
      _sfShadowIntensity(Real32(0.f)), _sfShadowMode(UInt32(0u))
{}

LightBase::LightBase(const LightBase& source)
    : Inherited(source), _sfAmbient(source._sfAmbient), _sfDiffuse(source._sfDiffuse),
      _sfSpecular(source._sfSpecular), _sfBeacon(source._sfBeacon), _sfOn(source._sfOn),
      _sfConstantAttenuation(source._sfConstantAttenuation),
      _sfLinearAttenuation(source._sfLinearAttenuation),
      _sfQuadraticAttenuation(source._sfQuadraticAttenuation), _sfShadowIntensity(source._sfShadowIntensity),
      _sfShadowMode(source._sfShadowMode)
{
    // The copy shares the referenced containers, so it takes its own references.
    addRefCP(_sfBeacon.getValue());
}

LightBase::~LightBase()
{
    clearRefCP(_sfBeacon.getValue());
}

Light::Light() = default;

Light::Light(const Light& source) : Inherited(source) {}

Light::~Light() = default;

namespace {
[[maybe_unused]] const bool registered = (Light::getClassType(), true);
} // namespace

} // namespace osg
