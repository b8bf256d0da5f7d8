#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGNode.h>

namespace osg {

AttachmentContainerPtr::AttachmentContainerPtr(const AttachmentContainer& obj) : Base(&obj) {}
AttachmentContainerPtr::AttachmentContainerPtr(const AttachmentContainer* obj) : Base(obj) {}

NodePtr::NodePtr(const Node& obj) : Base(&obj) {}
NodePtr::NodePtr(const Node* obj) : Base(obj) {}

CNodePtr::CNodePtr(const NodePtr& node) : AttachmentContainerPtr(node.getCPtr()) {}

AttachmentPtr::AttachmentPtr(const Attachment& obj) : Base(&obj) {}
AttachmentPtr::AttachmentPtr(const Attachment* obj) : Base(obj) {}

} // namespace osg
