#include <zeAnimation/zeAnimationStrip.h>

#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationUnit.h>

osg::UInt32 zeAnimationStrip::_typeID = TypeStrip;
zeAnimationStrip zeAnimationStrip::_the;

zeAnimationStrip::zeAnimationStrip() : zeAnimationObject() {}

zeAnimationStrip::zeAnimationStrip(const std::string& stripName, osg::UInt64 stripId) : zeAnimationStrip()
{
    id = stripId != 0 ? stripId : zeAnimationManager::the()->createUID();
    name = stripName;
}

zeAnimationStrip::zeAnimationStrip(const zeAnimationStrip& other) : zeAnimationStrip()
{
    zeAnimationManager* m = zeAnimationManager::the();
    copyContainerState(other);
    // Adding renumbers the copies 0, 1, 2, ... in the source's list order.
    for (zeAnimationStreak* track : other.tracks())
        addObject(m->duplicateStreak(track));
    linkToParentOf(other);
}

osg::UInt32 zeAnimationStrip::getTypeID() const
{
    return _typeID;
}

std::vector<zeAnimationStreak*> zeAnimationStrip::tracks() const
{
    return typedChildren<zeAnimationStreak>();
}

zeAnimationObject* zeAnimationStrip::addObject(zeAnimationObject* object)
{
    if (!object)
        return nullptr;
    const osg::UInt32 type = object->getTypeID();
    // Anything but a track goes one level deeper, on a track of its own.
    if ((type != TypeStreak && !isTrackContent(type)) || !canAdopt(object, type == TypeStreak ? 1 : 2))
        return nullptr;
    if (type == TypeStreak) {
        // Numbered by the rows the clip has without it: a track it holds already moves to the end.
        const bool held = object->getParentId() == id && findObject(object->getId()).first;
        const std::size_t others = childIds.size() - (held ? 1 : 0);
        static_cast<zeAnimationStreak*>(object)->setNumber(static_cast<osg::UInt32>(others));
        adopt(object);
        return object;
    }
    zeAnimationStreak* track = zeAnimationManager::the()->createStreak(0);
    if (!track)
        return nullptr;
    addObject(track);
    track->addObject(object);
    return track;
}

zeAnimationStreak* zeAnimationStrip::insertObject(zeAnimationObject* object)
{
    if (!object || !isTrackContent(object->getTypeID()) || !canAdopt(object, 2))
        return nullptr;
    // The first track in list order that takes it; tracks that certainly have no room are not asked.
    const auto tryTrack = [](zeAnimationObject* track, void* candidate) {
        return static_cast<zeAnimationStreak*>(track)->insertObject(
            static_cast<zeAnimationObject*>(candidate));
    };
    if (zeAnimationObject* track = firstTrackWithRoom(object->getBegin(), object->getEnd(), tryTrack, object))
        return static_cast<zeAnimationStreak*>(track);
    zeAnimationObject* added = addObject(object);
    return zeAnimationCast<zeAnimationStreak>(added);
}

zeAnimationObject* zeAnimationStrip::subObject(zeAnimationObject* object, bool destroy)
{
    if (!object)
        return nullptr;
    const osg::UInt32 type = object->getTypeID();
    if (type != TypeStreak && !isTrackContent(type))
        return nullptr;
    if (type == TypeStreak) {
        if (!unlinkChild(object))
            return nullptr;
        if (destroy) {
            zeAnimationManager::the()->destroyObject(object);
            return nullptr;
        }
        return object;
    }
    for (zeAnimationStreak* track : tracks()) {
        if (track->findObject(object->getId()).first) {
            track->subObject(object, destroy);
            return track;
        }
    }
    return nullptr;
}

void zeAnimationStrip::move(float delta, bool notify)
{
    containerMove(delta, notify, TypeStreak);
}

void zeAnimationStrip::moveBegin(float newBegin, bool notify)
{
    containerMoveBegin(newBegin, notify, false, TypeStreak);
}

void zeAnimationStrip::moveEnd(float newEnd, bool notify)
{
    containerMoveEnd(newEnd, notify, false, TypeStreak);
}

void zeAnimationStrip::flip()
{
    containerFlip(TypeStreak);
}

void zeAnimationStrip::triggerLoop(float frame)
{
    containerTriggerLoop(frame, true, TypeStreak);
}

zeAnimationStreak* zeAnimationStrip::getStreak(osg::UInt32 number) const
{
    for (zeAnimationStreak* track : tracks()) {
        if (track->getNumber() == number)
            return track;
    }
    return nullptr;
}

zeAnimationStrip::StreakMap zeAnimationStrip::getStreaks() const
{
    StreakMap streaks;
    for (zeAnimationStreak* track : tracks())
        streaks.emplace(track->getNumber(), track);
    return streaks;
}

namespace {

// What one of the track's lists gives, over the tracks in order.
template <class T>
std::vector<T*> onTracks(const std::vector<zeAnimationStreak*>& tracks,
                         std::vector<T*> (zeAnimationStreak::*list)() const)
{
    std::vector<T*> all;
    for (const zeAnimationStreak* track : tracks) {
        const std::vector<T*> more = (track->*list)();
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

} // namespace

std::vector<zeAnimationUnit*> zeAnimationStrip::getUnits() const
{
    return onTracks(tracks(), &zeAnimationStreak::getUnits);
}

std::vector<zeAnimationStrip*> zeAnimationStrip::getStrips() const
{
    return onTracks(tracks(), &zeAnimationStreak::getStrips);
}

std::vector<zeAnimationSequence*> zeAnimationStrip::getSequences() const
{
    return onTracks(tracks(), &zeAnimationStreak::getSequences);
}

void zeAnimationStrip::destroyEmptyStreaks()
{
    std::vector<zeAnimationStreak*> empty;
    for (const StreakMap::value_type& entry : getStreaks()) {
        if (entry.second && entry.second->isEmpty())
            empty.push_back(entry.second);
    }
    for (zeAnimationStreak* track : empty)
        subObject(track, true);
}

void zeAnimationStrip::destroyEmptyStreaksAtEnd()
{
    std::vector<zeAnimationStreak*> empty;
    osg::UInt32 n = getStreakAmount();
    while (n > 0) {
        --n;
        zeAnimationStreak* track = getStreak(n);
        if (!track || !track->isEmpty())
            break;
        empty.push_back(track);
    }
    for (zeAnimationStreak* track : empty)
        subObject(track, true);
}
