#include <zeAnimation/zeAnimationStreak.h>

#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>

osg::UInt32 zeAnimationStreak::_typeID = TypeStreak;
zeAnimationStreak zeAnimationStreak::_the;

zeAnimationStreak::zeAnimationStreak() : zeAnimationObject(), number(0) {}

zeAnimationStreak::zeAnimationStreak(const std::string& streakName, osg::UInt64 streakId)
    : zeAnimationStreak()
{
    id = streakId != 0 ? streakId : zeAnimationManager::the()->createUID();
    name = streakName;
}

zeAnimationStreak::zeAnimationStreak(const zeAnimationStreak& other) : zeAnimationStreak()
{
    zeAnimationManager* m = zeAnimationManager::the();
    number = other.number;
    copyContainerState(other);
    for (osg::UInt64 childId : other.childIds) {
        if (zeAnimationObject* child = other.resolveChild(childId)) {
            if (zeAnimationObject* copy = m->duplicateObject(child))
                addObject(copy);
        }
    }
    linkToParentOf(other);
}

osg::UInt32 zeAnimationStreak::getTypeID() const
{
    return _typeID;
}

zeAnimationObject* zeAnimationStreak::addObject(zeAnimationObject* object)
{
    return object && adopt(object) ? object : nullptr;
}

bool zeAnimationStreak::insertObject(zeAnimationObject* object)
{
    if (!object)
        return false;
    if (!isTrackContent(object->getTypeID()))
        return false;
    if (collidesWithChild(object->getBegin(), object->getEnd()))
        return false;
    return addObject(object) != nullptr;
}

zeAnimationObject* zeAnimationStreak::subObject(zeAnimationObject* object, bool destroy)
{
    if (!object || !unlinkChild(object))
        return nullptr;
    if (destroy) {
        zeAnimationManager::the()->destroyObject(object);
        return nullptr;
    }
    return object;
}

std::vector<zeAnimationUnit*> zeAnimationStreak::getUnits() const
{
    return typedChildren<zeAnimationUnit>();
}

std::vector<zeAnimationStrip*> zeAnimationStreak::getStrips() const
{
    return typedChildren<zeAnimationStrip>();
}

std::vector<zeAnimationSequence*> zeAnimationStreak::getSequences() const
{
    return typedChildren<zeAnimationSequence>();
}
