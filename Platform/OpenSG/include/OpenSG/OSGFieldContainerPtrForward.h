#ifndef _OSGFIELDCONTAINERPTRFORWARD_H_
#define _OSGFIELDCONTAINERPTRFORWARD_H_

#include "OSGBaseTypes.h"

namespace osg {

class FieldContainer;
class AttachmentContainer;
class Attachment;
class Node;
class NodeCore;

class FieldContainerPtrBase;
class FieldContainerPtr;
class NullFieldContainerPtr;
class AttachmentContainerPtr;
class AttachmentPtr;
class NodePtr;
class CNodePtr;

template <class BasePtrT, class FieldContainerTypeT>
class FCPtr;

typedef FCPtr<AttachmentContainerPtr, NodeCore> NodeCorePtr;

} // namespace osg

#endif
