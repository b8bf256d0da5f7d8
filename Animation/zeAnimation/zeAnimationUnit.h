#ifndef ZEANIMATIONUNIT_H
#define ZEANIMATIONUNIT_H

#include <zeAnimation/zeAnimationObject.h>

#include <OpenSG/OSGNode.h>

#include <string>

// A block: the leaf container of the timeline. It holds the curves that animate one scene node
// and remembers that node; moving, stretching, trimming and flipping it act on its curves.
class ZEANIMATION_EXPORT zeAnimationUnit final : public zeAnimationObject
{
    friend class zeAnimationManager;

public:
    void setActive(bool value) override { containerSetActive(value); }
    void setRepeating(bool value) override { containerSetRepeating(value); }
    void setMotionBlur(bool value) override { containerSetMotionBlur(value); }
    osg::UInt32 getTypeID() const override;
    // Takes curves only. The first curve whose field is known decides the block's node.
    zeAnimationObject* addObject(zeAnimationObject* object) override;
    zeAnimationObject* subObject(zeAnimationObject* object, bool destroy) override;
    void move(float delta, bool notify) override { containerMove(delta, notify, TypeObject); }
    void moveBegin(float newBegin, bool notify) override
    {
        containerMoveBegin(newBegin, notify, true, TypeObject);
    }
    void moveEnd(float newEnd, bool notify) override { containerMoveEnd(newEnd, notify, true, TypeObject); }
    void trimBegin(float newBegin, bool notify) override { containerTrimBegin(newBegin, notify); }
    void trimEnd(float newEnd, bool notify) override { containerTrimEnd(newEnd, notify); }
    void flip() override { containerFlip(TypeObject); }
    void triggerLoop(float frame) override { containerTriggerLoop(frame, false, TypeObject); }

    // The scene node the block's curves animate, stored by container identifier (0 = unknown).
    void setParentOSGNode(const osg::NodePtr& node);
    osg::NodePtr getParentOSGNode() const;
    osg::UInt32 getParentOSGNodeId() const { return parentNodeId; }

protected:
    zeAnimationUnit(const std::string& name, osg::UInt64 id);
    zeAnimationUnit(const zeAnimationUnit& other);
    ~zeAnimationUnit() = default;

    osg::UInt32 parentNodeId;

    static zeAnimationUnit _the;

private:
    zeAnimationUnit();

    static osg::UInt32 _typeID;
};

#endif // ZEANIMATIONUNIT_H
