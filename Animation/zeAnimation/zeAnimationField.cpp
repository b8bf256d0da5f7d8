#include <zeAnimation/zeAnimationField.h>

#include <zeAnimation/zeAnimationManager.h>

zeAnimationField::zeAnimationField(osg::UInt64 fieldId)
    : fcID(0), nodeID(0), value(0.0f), valuePos(0), dirty(true),
      id(fieldId != 0 ? fieldId : zeAnimationManager::the()->createUID())
{}

zeAnimationField::zeAnimationField(const zeAnimationField& other)
    : fcID(other.fcID), nodeID(other.nodeID), name(other.name), attribute(other.attribute),
      value(other.value), valuePos(other.valuePos), dirty(other.dirty),
      id(zeAnimationManager::the()->createUID())
{}

zeAnimationField::~zeAnimationField() = default;

zeAnimationField& zeAnimationField::operator=(const zeAnimationField& other)
{
    fcID = other.fcID;
    nodeID = other.nodeID;
    name = other.name;
    attribute = other.attribute;
    value = other.value;
    valuePos = other.valuePos;
    dirty = other.dirty;
    id = other.id;
    return *this;
}
