#include <OpenSG/OSGPointLight.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(PointLightBase, PointLight, PointLightPtr)

FieldContainerType& PointLightBase::getClassType()
{
    static FieldContainerType type("PointLight", &Light::getClassType(), nullptr, &osgCreatePointLight,
                                   {OSG_SFIELD_DESC(PointLightBase, SFPnt3f, "position", Position, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(PointLightBase)

PointLightBase::PointLightBase() {}

PointLightBase::PointLightBase(const PointLightBase& source)
    : Inherited(source), _sfPosition(source._sfPosition)
{}

PointLightBase::~PointLightBase() = default;

PointLight::PointLight() = default;

PointLight::PointLight(const PointLight& source) : Inherited(source) {}

PointLight::~PointLight() = default;

namespace {
[[maybe_unused]] const bool registered = (PointLight::getClassType(), true);
} // namespace

} // namespace osg
