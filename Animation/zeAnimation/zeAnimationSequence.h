#ifndef ZEANIMATIONSEQUENCE_H
#define ZEANIMATIONSEQUENCE_H

#include <zeAnimation/zeAnimationObject.h>

#include <string>

// Stands for a host sequence, named by the object's name, placed on a track: an interval of its
// own with no children, at which playback asks the host to run the sequence. Its begin and end
// are set directly, never computed.
class ZEANIMATION_EXPORT zeAnimationSequence final : public zeAnimationObject
{
    friend class zeAnimationManager;

public:
    osg::UInt32 getTypeID() const override;
    // Prints "moving sequence by offset ..." and, when notifying, "telling parent ..." lines.
    void move(float delta, bool notify) override;
    void moveBegin(float newBegin, bool notify) override;
    void moveEnd(float newEnd, bool notify) override;
    void trimBegin(float newBegin, bool notify) override;
    void trimEnd(float newEnd, bool notify) override;
    void triggerLoop(float frame) override { triggerSpan(frame); }

    // Armed: not yet executed in the current run.
    void setDirty(bool value) { dirty = value; }
    bool isDirty() const { return dirty; }

    zeAnimationSequence& operator=(const zeAnimationSequence& other);

protected:
    zeAnimationSequence(const std::string& name, osg::UInt64 id);
    zeAnimationSequence(const zeAnimationSequence& other);
    ~zeAnimationSequence() = default;

    bool dirty;

    static zeAnimationSequence _the;

private:
    zeAnimationSequence();
    bool takeBegin(float newBegin, bool notify);
    bool takeEnd(float newEnd, bool notify);

    static osg::UInt32 _typeID;
};

#endif // ZEANIMATIONSEQUENCE_H
