#include <zeAnimation/zeAnimationUnit.h>

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>

#include <OpenSG/OSGFieldContainerFactory.h>

osg::UInt32 zeAnimationUnit::_typeID = TypeUnit;
zeAnimationUnit zeAnimationUnit::_the;

zeAnimationUnit::zeAnimationUnit() : zeAnimationObject(), parentNodeId(0) {}

zeAnimationUnit::zeAnimationUnit(const std::string& unitName, osg::UInt64 unitId) : zeAnimationUnit()
{
    id = unitId != 0 ? unitId : zeAnimationManager::the()->createUID();
    name = unitName;
}

zeAnimationUnit::zeAnimationUnit(const zeAnimationUnit& other) : zeAnimationUnit()
{
    zeAnimationManager* m = zeAnimationManager::the();
    parentNodeId = other.parentNodeId;
    copyContainerState(other);
    for (osg::UInt64 curveId : other.childIds) {
        if (zeAnimationCurve2D* curve = other.typedChild<zeAnimationCurve2D>(curveId))
            addObject(m->duplicateCurve2D(curve));
    }
    linkToParentOf(other);
}

osg::UInt32 zeAnimationUnit::getTypeID() const
{
    return _typeID;
}

zeAnimationObject* zeAnimationUnit::addObject(zeAnimationObject* object)
{
    zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object);
    if (!curve || !canAdopt(curve))
        return nullptr;
    if (parentNodeId == 0) {
        const zeAnimationField* field = curve->getAnimationField();
        if (field)
            parentNodeId = static_cast<osg::UInt32>(field->nodeID);
    }
    adopt(object);
    return object;
}

zeAnimationObject* zeAnimationUnit::subObject(zeAnimationObject* object, bool destroy)
{
    zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object);
    if (!curve || !unlinkChild(curve))
        return nullptr;
    if (destroy) {
        zeAnimationManager::the()->destroyCurve2D(curve);
        return nullptr;
    }
    return object;
}

void zeAnimationUnit::setParentOSGNode(const osg::NodePtr& node)
{
    parentNodeId = node != osg::NullFC ? osg::getContainerId(node) : 0;
}

osg::NodePtr zeAnimationUnit::getParentOSGNode() const
{
    if (parentNodeId == 0)
        return osg::NullFC;
    return osg::NodePtr::dcast(osg::FieldContainerFactory::the()->getContainer(parentNodeId));
}
