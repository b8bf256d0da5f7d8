#include <OpenSG/OSGComponentTransform.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(ComponentTransformBase, ComponentTransform, ComponentTransformPtr)

FieldContainerType& ComponentTransformBase::getClassType()
{
    static FieldContainerType type(
        "ComponentTransform", &Transform::getClassType(), nullptr, &osgCreateComponentTransform,
        {OSG_SFIELD_DESC(ComponentTransformBase, SFVec3f, "center", Center, false),
         OSG_SFIELD_DESC(ComponentTransformBase, SFQuaternion, "rotation", Rotation, false),
         OSG_SFIELD_DESC(ComponentTransformBase, SFVec3f, "scale", Scale, false),
         OSG_SFIELD_DESC(ComponentTransformBase, SFQuaternion, "scaleOrientation", ScaleOrientation, false),
         OSG_SFIELD_DESC(ComponentTransformBase, SFVec3f, "translation", Translation, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(ComponentTransformBase)

ComponentTransformBase::ComponentTransformBase() : _sfScale(Vec3f(1.f, 1.f, 1.f)) {}

ComponentTransformBase::ComponentTransformBase(const ComponentTransformBase& source)
    : Inherited(source), _sfCenter(source._sfCenter), _sfRotation(source._sfRotation),
      _sfScale(source._sfScale), _sfScaleOrientation(source._sfScaleOrientation),
      _sfTranslation(source._sfTranslation)
{}

ComponentTransformBase::~ComponentTransformBase() = default;

ComponentTransform::ComponentTransform() = default;

ComponentTransform::ComponentTransform(const ComponentTransform& source) : Inherited(source) {}

ComponentTransform::~ComponentTransform() = default;

void ComponentTransform::changed(BitVector whichField, UInt32 origin)
{
    const BitVector components = CenterFieldMask | RotationFieldMask | ScaleFieldMask |
                                 ScaleOrientationFieldMask | TranslationFieldMask;
    if (whichField & components) {
        editMatrix().setTransform(getTranslation(), getRotation(), getScale(), getScaleOrientation(),
                                  getCenter());
    }
    Inherited::changed(whichField, origin);
}

namespace {
[[maybe_unused]] const bool registered = (ComponentTransform::getClassType(), true);
} // namespace

} // namespace osg
