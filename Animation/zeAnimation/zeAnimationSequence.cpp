#include <zeAnimation/zeAnimationSequence.h>

#include "zeAnimationHelpers.h"
#include <zeAnimation/zeAnimationManager.h>

#include "zeAnimationRevision.h"

#include <cstdio>

osg::UInt32 zeAnimationSequence::_typeID = TypeSequence;
zeAnimationSequence zeAnimationSequence::_the;

zeAnimationSequence::zeAnimationSequence() : zeAnimationObject(), dirty(true) {}

zeAnimationSequence::zeAnimationSequence(const std::string& sequenceName, osg::UInt64 sequenceId)
    : zeAnimationSequence()
{
    id = sequenceId != 0 ? sequenceId : zeAnimationManager::the()->createUID();
    name = sequenceName;
    // The self-entry carries the sequence's identifier into every ancestor when it is added.
    sequenceIds.insert(id);
}

zeAnimationSequence::zeAnimationSequence(const zeAnimationSequence& other) : zeAnimationSequence()
{
    dirty = other.dirty;
    id = zeAnimationManager::the()->createUID();
    setBegin(other.getBegin());
    setEnd(other.getEnd());
    name = other.name;
    setActive(other.active);
    setPlaying(other.playing);
    setRepeating(other.repeating);
    zeAnimationObject* parent = other.getParent();
    parentId = parent ? parent->getId() : 0;
    sequenceIds.insert(id);
}

zeAnimationSequence& zeAnimationSequence::operator=(const zeAnimationSequence& other)
{
    zeAnimationObject::operator=(other);
    dirty = other.dirty;
    zeAnimationRevision::bump();
    return *this;
}

osg::UInt32 zeAnimationSequence::getTypeID() const
{
    return _typeID;
}

void zeAnimationSequence::move(float delta, bool notify)
{
    std::printf("moving sequence by offset %f\n", delta);
    setBegin(getBegin() + delta);
    setEnd(delta + getEnd());
    if (notify) {
        zeAnimationObject* parent = getParent();
        std::printf("telling parent %p\n", static_cast<void*>(parent));
        if (parent)
            parent->updateBy(this, Change, true);
    }
    std::fflush(stdout);
}

bool zeAnimationSequence::takeBegin(float newBegin, bool notify)
{
    if (!(newBegin < getEnd() - kEditTolerance))
        return false;
    setBegin(newBegin);
    if (notify)
        notifyParent();
    return true;
}

bool zeAnimationSequence::takeEnd(float newEnd, bool notify)
{
    if (!(newEnd > getBegin() + kEditTolerance))
        return false;
    setEnd(newEnd);
    if (notify)
        notifyParent();
    return true;
}

void zeAnimationSequence::moveBegin(float newBegin, bool notify)
{
    takeBegin(newBegin, notify);
}

void zeAnimationSequence::moveEnd(float newEnd, bool notify)
{
    takeEnd(newEnd, notify);
}

void zeAnimationSequence::trimBegin(float newBegin, bool notify)
{
    if (takeBegin(newBegin, notify))
        trimmed = true;
}

void zeAnimationSequence::trimEnd(float newEnd, bool notify)
{
    if (takeEnd(newEnd, notify))
        trimmed = true;
}
