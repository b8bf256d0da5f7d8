#include <OpenSG/OSGDirectionalLight.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(DirectionalLightBase, DirectionalLight, DirectionalLightPtr)

FieldContainerType& DirectionalLightBase::getClassType()
{
    static FieldContainerType type(
        "DirectionalLight", &Light::getClassType(), nullptr, &osgCreateDirectionalLight,
        {OSG_SFIELD_DESC(DirectionalLightBase, SFVec3f, "direction", Direction, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(DirectionalLightBase)

DirectionalLightBase::DirectionalLightBase() : _sfDirection(Vec3f(0.f, 0.f, 1.f)) {}

DirectionalLightBase::DirectionalLightBase(const DirectionalLightBase& source)
    : Inherited(source), _sfDirection(source._sfDirection)
{}

DirectionalLightBase::~DirectionalLightBase() = default;

DirectionalLight::DirectionalLight() = default;

DirectionalLight::DirectionalLight(const DirectionalLight& source) : Inherited(source) {}

DirectionalLight::~DirectionalLight() = default;

namespace {
[[maybe_unused]] const bool registered = (DirectionalLight::getClassType(), true);
} // namespace

} // namespace osg
