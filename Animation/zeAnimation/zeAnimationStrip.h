#ifndef ZEANIMATIONSTRIP_H
#define ZEANIMATIONSTRIP_H

#include <zeAnimation/zeAnimationObject.h>

#include <map>
#include <string>
#include <vector>

class zeAnimationStreak;
class zeAnimationUnit;
class zeAnimationSequence;

// A clip: a stack of numbered tracks. Its direct children are tracks only; a block, clip or
// sequence given to it is placed on a track. A track's number is the clip's child count when the
// track was added; removing a track does not renumber the others, so numbers may have gaps and,
// after a later addition, repeat.
class ZEANIMATION_EXPORT zeAnimationStrip final : public zeAnimationObject
{
    friend class zeAnimationManager;

public:
    typedef std::map<osg::UInt32, zeAnimationStreak*> StreakMap;

    void setActive(bool value) override { containerSetActive(value); }
    void setRepeating(bool value) override { containerSetRepeating(value); }
    void setMotionBlur(bool value) override { containerSetMotionBlur(value); }
    osg::UInt32 getTypeID() const override;
    // A track is numbered and appended; a block, clip or sequence gets a new track of its own,
    // and the new track is returned.
    zeAnimationObject* addObject(zeAnimationObject* object) override;
    // A track is unlinked from the clip; anything else is removed from the first track holding
    // it, and that track (left in place, possibly empty) is returned.
    zeAnimationObject* subObject(zeAnimationObject* object, bool destroy) override;
    void move(float delta, bool notify) override;
    void moveBegin(float newBegin, bool notify) override;
    void moveEnd(float newEnd, bool notify) override;
    void flip() override;
    void triggerLoop(float frame) override;

    // Places a block, clip or sequence on the first track with room, or on a new track.
    zeAnimationStreak* insertObject(zeAnimationObject* object);

    osg::UInt32 getStreakAmount() const { return static_cast<osg::UInt32>(childIds.size()); }
    zeAnimationStreak* getStreak(osg::UInt32 number) const;
    // One entry per track number; of tracks sharing a number, the first in the list is kept.
    StreakMap getStreaks() const;
    std::vector<zeAnimationUnit*> getUnits() const;
    std::vector<zeAnimationStrip*> getStrips() const;
    std::vector<zeAnimationSequence*> getSequences() const;
    void destroyEmptyStreaks();
    // Removes empty tracks from the top only, stopping at the first track with children or at
    // a number no track carries.
    void destroyEmptyStreaksAtEnd();

protected:
    zeAnimationStrip(const std::string& name, osg::UInt64 id);
    zeAnimationStrip(const zeAnimationStrip& other);
    ~zeAnimationStrip() = default;

    static zeAnimationStrip _the;

private:
    zeAnimationStrip();
    std::vector<zeAnimationStreak*> tracks() const;

    static osg::UInt32 _typeID;
};

#endif // ZEANIMATIONSTRIP_H
