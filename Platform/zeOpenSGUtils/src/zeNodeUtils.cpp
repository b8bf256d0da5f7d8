#include <zeOpenSGUtils/zeNodeUtils.h>

#include <zeOpenSGExt/OSGTransform3D.h>

using namespace osg;

TransformAttachmentPtr zeNodeUtils::getTransformAttachment(const NodePtr& node)
{
    if (node == NullFC)
        return TransformAttachmentPtr();
    return TransformAttachmentPtr::dcast(
        node->findAttachment(TransformAttachment::getClassType().getGroupId()));
}

void zeNodeUtils::setTransformNodeRotation(const NodePtr& node, float x, float y, float z, int origin)
{
    if (node == NullFC)
        return;
    UInt32 editOrigin = origin != 0 ? UInt32(origin) : ChangedOrigin::External;

    TransformAttachmentPtr att = getTransformAttachment(node);
    if (att == NullFC) {
        att = TransformAttachment::create();
        beginEditCP(node, AttachmentContainer::AttachmentsFieldMask, editOrigin);
        node->addAttachment(att);
        endEditCP(node, AttachmentContainer::AttachmentsFieldMask, editOrigin);
    }

    // Ending the attachment's edit rebuilds the matrix of a Transform3D core of this node.
    beginEditCP(att, TransformAttachment::RotationAnglesFieldMask, editOrigin);
    att->setRotationAngles(Vec3f(x, y, z));
    endEditCP(att, TransformAttachment::RotationAnglesFieldMask, editOrigin);

    // Record the core's matrix change too, for whoever watches the core.
    Transform3DPtr core = Transform3DPtr::dcast(node->getCore());
    if (core != NullFC)
        endEditNotChangedCP(core, Transform::MatrixFieldMask, editOrigin);
}
