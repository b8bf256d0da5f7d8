#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGNode.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGExt/OSGTransformAttachment.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(Transform3DBase, Transform3D, Transform3DPtr)

FieldContainerType& Transform3DBase::getClassType()
{
    static FieldContainerType type(
        "Transform3D", &Transform::getClassType(), nullptr, &osgCreateTransform3D,
        {OSG_SFIELD_DESC(Transform3DBase, SFVec3f, "translation", Translation, false),
         OSG_SFIELD_DESC(Transform3DBase, SFVec3f, "scale", Scale, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(Transform3DBase)

Transform3DBase::Transform3DBase() : _sfScale(Vec3f(1.f, 1.f, 1.f)) {}

Transform3DBase::Transform3DBase(const Transform3DBase& source)
    : Inherited(source), _sfTranslation(source._sfTranslation), _sfScale(source._sfScale)
{}

Transform3DBase::~Transform3DBase() = default;

Transform3D::Transform3D() = default;

Transform3D::Transform3D(const Transform3D& source) : Inherited(source) {}

Transform3D::~Transform3D() = default;

Quaternion Transform3D::rotationFromAngles(const Vec3f& anglesDeg)
{
    Quaternion q;
    q.setValue(osgdegree2rad(anglesDeg[0]), osgdegree2rad(anglesDeg[1]), osgdegree2rad(anglesDeg[2]));
    return q;
}

void Transform3D::updateMatrix(const Vec3f& rotationAnglesDeg)
{
    editMatrix().setTransform(getTranslation(), rotationFromAngles(rotationAnglesDeg), getScale());
}

void Transform3D::updateMatrix()
{
    Vec3f angles;
    if (getParents().size() > 0) {
        TransformAttachmentPtr att = TransformAttachmentPtr::dcast(
            getParents()[0]->findAttachment(TransformAttachment::getClassType().getGroupId()));
        if (att != NullFC)
            angles = att->getRotationAngles();
    }
    updateMatrix(angles);
}

void Transform3D::changed(BitVector whichField, UInt32 origin)
{
    if (whichField & (TranslationFieldMask | ScaleFieldMask))
        updateMatrix();
    Inherited::changed(whichField, origin);
}

namespace {
[[maybe_unused]] const bool registered = (Transform3D::getClassType(), true);
} // namespace

} // namespace osg
