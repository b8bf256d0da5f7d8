#ifndef ZEANIMATIONSTREAK_H
#define ZEANIMATIONSTREAK_H

#include <zeAnimation/zeAnimationObject.h>

#include <string>
#include <vector>

class zeAnimationUnit;
class zeAnimationStrip;
class zeAnimationSequence;

// A track: one numbered row of a clip, holding blocks, clips and sequences along time. The track
// is the only container with a layout rule: insertObject refuses an object that overlaps one it
// already holds (addObject does not check).
class ZEANIMATION_EXPORT zeAnimationStreak final : public zeAnimationObject
{
    friend class zeAnimationManager;

public:
    void setActive(bool value) override { containerSetActive(value); }
    void setRepeating(bool value) override { containerSetRepeating(value); }
    void setMotionBlur(bool value) override { containerSetMotionBlur(value); }
    osg::UInt32 getTypeID() const override;
    zeAnimationObject* addObject(zeAnimationObject* object) override;
    zeAnimationObject* subObject(zeAnimationObject* object, bool destroy) override;
    void move(float delta, bool notify) override { containerMove(delta, notify, TypeObject); }
    void moveBegin(float newBegin, bool notify) override
    {
        containerMoveBegin(newBegin, notify, false, TypeObject);
    }
    void moveEnd(float newEnd, bool notify) override { containerMoveEnd(newEnd, notify, false, TypeObject); }
    void flip() override { containerFlip(TypeObject); }
    void triggerLoop(float frame) override { containerTriggerLoop(frame, true, TypeObject); }

    // Adds a block, clip or sequence when its interval neither overlaps nor covers, nor is
    // covered by, an object already on the track; intervals that only touch are accepted.
    bool insertObject(zeAnimationObject* object);

    void setNumber(osg::UInt32 value) { number = value; }
    osg::UInt32 getNumber() const { return number; }
    std::vector<zeAnimationUnit*> getUnits() const;
    std::vector<zeAnimationStrip*> getStrips() const;
    std::vector<zeAnimationSequence*> getSequences() const;

protected:
    zeAnimationStreak(const std::string& name, osg::UInt64 id);
    zeAnimationStreak(const zeAnimationStreak& other);
    ~zeAnimationStreak() = default;

    osg::UInt32 number;

    static zeAnimationStreak _the;

private:
    zeAnimationStreak();

    static osg::UInt32 _typeID;
};

#endif // ZEANIMATIONSTREAK_H
