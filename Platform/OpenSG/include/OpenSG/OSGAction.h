#ifndef _OSGACTION_H_
#define _OSGACTION_H_

#include "OSGNode.h"
#include "OSGTypedFunctors.h"

namespace osg {

// Only the traversal protocol of actions: the result codes. Draw and render actions, and their
// per-type enter/leave registries, are absent (there is no renderer).
class OSG_SYSTEMLIB_DLLMAPPING Action
{
public:
    enum ResultE
    {
        Continue, // descend into the children
        Skip,     // do not descend, carry on with the siblings
        Quit      // stop the whole traversal
    };
};

typedef TypedFunctor1Base<Action::ResultE, CPtrRefCallArg<NodePtr>> TraverseEnterFunctor;

// Pre-order walk calling `func` on every node, whatever its travMask. Skip does not descend but
// counts as Continue for the caller; Quit stops everything and is returned. The functor is also
// called for a null root (the result is then Continue). A node the callee destroyed is not
// descended into. Children are visited by index over the
// live list, so a callee that removes nodes does not break the walk (it may skip a sibling).
OSG_SYSTEMLIB_DLLMAPPING Action::ResultE traverse(NodePtr root, TraverseEnterFunctor func);

} // namespace osg

#endif
