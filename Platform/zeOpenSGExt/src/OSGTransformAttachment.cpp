#include <OpenSG/OSGNode.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGExt/OSGTransformAttachment.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(TransformAttachmentBase, TransformAttachment, TransformAttachmentPtr)

FieldContainerType& TransformAttachmentBase::getClassType()
{
    static FieldContainerType type(
        "TransformAttachment", &Attachment::getClassType(), nullptr, &osgCreateTransformAttachment,
        {OSG_SFIELD_DESC(TransformAttachmentBase, SFVec3f, "rotationAngles", RotationAngles, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(TransformAttachmentBase)

TransformAttachmentBase::TransformAttachmentBase() {}

TransformAttachmentBase::TransformAttachmentBase(const TransformAttachmentBase& source)
    : Inherited(source), _sfRotationAngles(source._sfRotationAngles)
{}

TransformAttachmentBase::~TransformAttachmentBase() = default;

TransformAttachment::TransformAttachment() = default;

TransformAttachment::TransformAttachment(const TransformAttachment& source) : Inherited(source) {}

TransformAttachment::~TransformAttachment() = default;

void TransformAttachment::changed(BitVector whichField, UInt32 origin)
{
    if (whichField & RotationAnglesFieldMask) {
        for (const FieldContainerPtr& parent : getParents()) {
            NodePtr node = NodePtr::dcast(parent);
            Transform3DPtr core = node != NullFC ? Transform3DPtr::dcast(node->getCore()) : Transform3DPtr();
            if (core != NullFC)
                core->updateMatrix(getRotationAngles());
        }
    }
    Inherited::changed(whichField, origin);
}

namespace {
[[maybe_unused]] const bool registered = (TransformAttachment::getClassType(), true);
} // namespace

} // namespace osg
