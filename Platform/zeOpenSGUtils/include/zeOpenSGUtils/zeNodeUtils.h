#ifndef ZEOPENSGUTILS_ZENODEUTILS_H
#define ZEOPENSGUTILS_ZENODEUTILS_H

#include <OpenSG/OSGNode.h>
#include <zeOpenSGExt/OSGTransformAttachment.h>

class zeNodeUtils
{
public:
    // The node's TransformAttachment, or NullFC (null node, or none attached).
    static osg::TransformAttachmentPtr getTransformAttachment(const osg::NodePtr& node);

    // Stores the rotation angles (degrees about x, y, z, as Transform3D reads them) in the node's
    // TransformAttachment, creating and attaching it when missing, inside begin/endEditCP. When
    // the node's core is a Transform3D its matrix is rebuilt, so the rotation takes effect at once.
    // origin is the ChangedOrigin passed to the edits (0 means ChangedOrigin::External).
    // A null node is ignored.
    static void setTransformNodeRotation(const osg::NodePtr& node, float x, float y, float z, int origin);
};

#endif
