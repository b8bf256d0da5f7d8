#include <zeAnimation/zeAnimationManager.h>

#include "zeAnimationFile.h"
#include "zeAnimationHelpers.h"
#include "zeAnimationIdIndex.h"
#include "zeAnimationRevision.h"
#include "zeEditIndex.h"
#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeQt4Ext/QZEDomDocumentWriter.h>
#include <zeUtils/zeFile.h>

#include <QFileDialog>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <iostream>

osg::NodePtr zeAnimationManager::_sceneRoot;
osg::UInt32 zeAnimationManager::_nodeCounter = 0;
osg::UInt32 zeAnimationManager::_importNodeCount = 0;
zeAnimationManager::SetFromAtUpCB zeAnimationManager::_sCamFAU = nullptr;
zeAnimationManager::GetFromAtUpCB zeAnimationManager::_gCamFAU = nullptr;
zeAnimationManager::SetRollCB zeAnimationManager::_sCamRoll = nullptr;
zeAnimationManager::GetRollCB zeAnimationManager::_gCamRoll = nullptr;
zeAnimationManager::ShowCurvesCB zeAnimationManager::_showCurvesFP = nullptr;
zeAnimationManager::FileIOProgressCB zeAnimationManager::_progressFP = nullptr;
zeAnimationManager::UpdatePasteCB zeAnimationManager::_updatePasteFP = nullptr;
osg::UInt64 zeAnimationManager::_uidSeed = 0;

// ---- Singleton and set-up ---------------------------------------------------------------------

zeAnimationManager* zeAnimationManager::the()
{
    static zeAnimationManager instance;
    return &instance;
}

zeAnimationManager::zeAnimationManager()
    : QObject(nullptr), _oldID(0), _newID(0), _objectIndex(new zeAnimationIdIndex<zeAnimationObject>()),
      _fieldIndex(new zeAnimationIdIndex<zeAnimationField>()), _bulkSurvivors(nullptr)
{}

zeAnimationManager::~zeAnimationManager()
{
    // Objects and fields still registered at exit are released without touching the scene (which
    // may already be gone) and without the destructors' recursion into the registry.
    for (ObjectMap::value_type& entry : _objects) {
        if (entry.second) {
            entry.second->childIds.clear();
            deleteObject(entry.second);
        }
    }
    for (FieldMap::value_type& entry : _fields)
        delete entry.second;
    _objects.clear();
    _objectIndex->clear();
    _fields.clear();
    _fieldIndex->clear();
    zeAnimationRevision::bump();
}

void zeAnimationManager::init(QWidget*)
{
    _oldID = 0;
    _newID = 0;
    const osg::UInt64 now = static_cast<osg::UInt64>(std::time(nullptr));
    if (now != 0)
        _uidSeed = now;
    step();
}

void zeAnimationManager::terminate()
{
    clearCopyBuffer(true);
}

void zeAnimationManager::setSceneRootNode(const osg::NodePtr& root)
{
    _sceneRoot = root;
}

// ---- Identifiers ------------------------------------------------------------------------------

osg::UInt64 zeAnimationManager::step()
{
    _uidSeed = _uidSeed * 1664525ULL + 1013904223ULL;
    return _uidSeed;
}

osg::UInt64 zeAnimationManager::random(osg::UInt64 seed)
{
    if (seed != 0)
        _uidSeed = seed;
    return step();
}

osg::UInt64 zeAnimationManager::drawFreshID()
{
    for (;;) {
        const osg::UInt64 candidate = step();
        if (candidate != 0 && !_objectIndex->find(candidate) && !_fieldIndex->find(candidate))
            return candidate;
    }
}

osg::UInt64 zeAnimationManager::createUID()
{
    return drawFreshID();
}

bool zeAnimationManager::isIDUnique(osg::UInt64 id)
{
    return !_objectIndex->find(id) && !_fieldIndex->find(id);
}

void zeAnimationManager::setID(osg::UInt64 id, zeAnimationObject* obj)
{
    if (!obj)
        return;
    const osg::UInt64 old = obj->id;
    osg::UInt64 target = id;
    if (!isIDUnique(id)) {
        // Attachments that referred to the requested identifier now refer to the fresh one.
        target = drawFreshID();
        if (_sceneRoot != osg::NullFC) {
            _oldID = id;
            _newID = target;
            walkScene(&zeAnimationManager::changeSceneAnimAttachmentIDs);
        }
    }
    const bool registered = getObject(old) == obj;
    // A registered object keeps its place: its parent lists it, its children name it as parent
    // and the summaries and connections carry it under the new identifier.
    if (registered) {
        obj->renumberLinks(target);
        for (auto& connection : _objectConnections) {
            if (connection.second.first == old)
                connection.second.first = target;
        }
    }
    obj->id = target;
    if (registered) {
        unregisterObject(old);
        registerObject(obj);
    }
}

void zeAnimationManager::setID(osg::UInt64 id, zeAnimationField* field)
{
    if (!field)
        return;
    const osg::UInt64 old = field->id;
    osg::UInt64 target = id;
    if (!isIDUnique(id)) {
        target = drawFreshID();
        if (_sceneRoot != osg::NullFC) {
            _oldID = id;
            _newID = target;
            walkScene(&zeAnimationManager::changeSceneAnimAttachmentFieldIDs);
        }
    }
    FieldMap::iterator entry = _fields.find(old);
    const bool registered = entry != _fields.end() && entry->second == field;
    field->id = target;
    if (registered) {
        _fields.erase(entry);
        _fields.emplace(target, field);
        _fieldIndex->erase(old);
        zeAnimationRevision::bump();
        _fieldIndex->assign(target, field);
    }
}

// ---- Registration -----------------------------------------------------------------------------

void zeAnimationManager::registerObject(zeAnimationObject* object)
{
    // An identifier that is already registered keeps its first object.
    if (!_objectIndex->insert(object->id, object))
        return;
    // A file lists its objects in ascending identifier order: each new entry then goes last and is
    // placed without a walk down the tree.
    const bool last = _objects.empty() || _objects.rbegin()->first < object->id;
    _objects.emplace_hint(last ? _objects.end() : _objects.lower_bound(object->id), object->id, object);
    // A new object can only be reached from elsewhere as a curve (through curve sets) or as the
    // child of the parent it names; a fresh key or container on its own changes nothing derived.
    if (object->parentId != 0 || object->getTypeID() == zeAnimationObject::TypeCurve2D)
        zeAnimationRevision::bump();
}

void zeAnimationManager::unregisterObject(osg::UInt64 id)
{
    _objects.erase(id);
    if (_objectIndex->erase(id))
        zeAnimationRevision::bump();
    if (!_copyBufferLive.empty())
        _copyBufferLive.erase(id);
}

void zeAnimationManager::unregisterPointer(zeAnimationObject* object)
{
    if (getObject(object->id) == object) {
        unregisterObject(object->id);
        return;
    }
    // Registered under another identifier (an assigned twin): find the entry by address, so no
    // entry ever outlives its object.
    for (ObjectMap::iterator entry = _objects.begin(); entry != _objects.end(); ++entry) {
        if (entry->second == object) {
            unregisterObject(entry->first);
            return;
        }
    }
}

void zeAnimationManager::registerField(zeAnimationField* field)
{
    if (_fields.emplace(field->id, field).second)
        _fieldIndex->insert(field->id, field);
    zeAnimationRevision::bump();
}

template <class T>
T* zeAnimationManager::registerCreated(T* object)
{
    registerObject(object);
    return object;
}

// Every object is deleted through its concrete type, chosen by its type id; the destructors are
// deliberately not virtual, and this is the one place that knows all the types.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdelete-non-virtual-dtor"
void zeAnimationManager::deleteObject(zeAnimationObject* object)
{
    switch (object->getTypeID()) {
    case zeAnimationObject::TypePoint2D:
        delete static_cast<zeControlPoint2D*>(object);
        break;
    case zeAnimationObject::TypeCurve2D:
        delete static_cast<zeAnimationCurve2D*>(object);
        break;
    case zeAnimationObject::TypeUnit:
        delete static_cast<zeAnimationUnit*>(object);
        break;
    case zeAnimationObject::TypeStreak:
        delete static_cast<zeAnimationStreak*>(object);
        break;
    case zeAnimationObject::TypeStrip:
        delete static_cast<zeAnimationStrip*>(object);
        break;
    case zeAnimationObject::TypeSequence:
        delete static_cast<zeAnimationSequence*>(object);
        break;
    default:
        delete object;
        break;
    }
}
#pragma GCC diagnostic pop

// ---- Lookups ----------------------------------------------------------------------------------

zeAnimationObject* zeAnimationManager::getObject(osg::UInt64 id) const
{
    return _objectIndex->find(id);
}

zeControlPoint2D* zeAnimationManager::getPoint2D(osg::UInt64 id) const
{
    return zeAnimationCast<zeControlPoint2D>(getObject(id));
}

zeAnimationCurve2D* zeAnimationManager::getCurve2D(osg::UInt64 id) const
{
    return zeAnimationCast<zeAnimationCurve2D>(getObject(id));
}

zeAnimationUnit* zeAnimationManager::getUnit(osg::UInt64 id) const
{
    return zeAnimationCast<zeAnimationUnit>(getObject(id));
}

zeAnimationStreak* zeAnimationManager::getStreak(osg::UInt64 id) const
{
    return zeAnimationCast<zeAnimationStreak>(getObject(id));
}

zeAnimationStrip* zeAnimationManager::getStrip(osg::UInt64 id) const
{
    return zeAnimationCast<zeAnimationStrip>(getObject(id));
}

zeAnimationSequence* zeAnimationManager::getSequence(osg::UInt64 id) const
{
    return zeAnimationCast<zeAnimationSequence>(getObject(id));
}

zeAnimationField* zeAnimationManager::getField(osg::UInt64 id) const
{
    return _fieldIndex->find(id);
}

zeAnimationObject* zeAnimationManager::getObject(const std::string& name) const
{
    if (name.empty())
        return nullptr;
    for (const ObjectMap::value_type& entry : _objects) {
        if (entry.second && entry.second->name == name)
            return entry.second;
    }
    return nullptr;
}

bool zeAnimationManager::isObjectNameUnique(const std::string& name) const
{
    if (name.empty())
        return false;
    return getObject(name) == nullptr;
}

zeAnimationObject* zeAnimationManager::registeredParent(const zeAnimationObject* object) const
{
    return object->parentId ? getObject(object->parentId) : nullptr;
}

std::vector<zeAnimationUnit*> zeAnimationManager::getSceneUnits() const
{
    std::vector<zeAnimationUnit*> units;
    for (const ObjectMap::value_type& entry : _objects) {
        zeAnimationUnit* unit = zeAnimationCast<zeAnimationUnit>(entry.second);
        if (unit && !unit->hidden && !registeredParent(unit))
            units.push_back(unit);
    }
    return units;
}

std::vector<zeAnimationUnit*> zeAnimationManager::getActiveSceneUnits() const
{
    std::vector<zeAnimationUnit*> units;
    for (const ObjectMap::value_type& entry : _objects) {
        zeAnimationUnit* unit = zeAnimationCast<zeAnimationUnit>(entry.second);
        if (unit && unit->active && !unit->hidden && !registeredParent(unit))
            units.push_back(unit);
    }
    return units;
}

std::vector<zeAnimationStrip*> zeAnimationManager::getSceneStrips() const
{
    std::vector<zeAnimationStrip*> strips;
    for (const ObjectMap::value_type& entry : _objects) {
        zeAnimationStrip* strip = zeAnimationCast<zeAnimationStrip>(entry.second);
        if (strip && !strip->hidden && !registeredParent(strip))
            strips.push_back(strip);
    }
    return strips;
}

std::vector<zeAnimationField*> zeAnimationManager::getReferencedFields(osg::UInt32 containerId) const
{
    std::vector<zeAnimationField*> fields;
    for (const ObjectMap::value_type& entry : _objects) {
        const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(entry.second);
        if (!curve)
            continue;
        zeAnimationField* field = getField(curve->fieldId);
        if (field && field->fcID == containerId)
            fields.push_back(field);
    }
    return fields;
}

std::vector<zeAnimationCurve2D*> zeAnimationManager::getReferencedCurves(osg::UInt64 fieldId) const
{
    std::vector<zeAnimationCurve2D*> curves;
    const zeAnimationField* field = getField(fieldId);
    if (!field)
        return curves;
    for (const ObjectMap::value_type& entry : _objects) {
        zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(entry.second);
        if (!curve)
            continue;
        if (getField(curve->fieldId) == field)
            curves.push_back(curve);
    }
    return curves;
}

// ---- Factory ----------------------------------------------------------------------------------

zeAnimationObject* zeAnimationManager::createObject(osg::UInt64 id)
{
    zeAnimationObject* object = new zeAnimationObject();
    object->id = id != 0 ? id : createUID();
    return registerCreated(object);
}

zeAnimationField* zeAnimationManager::createField(osg::UInt64 id)
{
    zeAnimationField* field = new zeAnimationField(id);
    registerField(field);
    return field;
}

zeControlPoint2D* zeAnimationManager::createPoint2D(osg::UInt64 id)
{
    return registerCreated(new zeControlPoint2D("Point", id, false));
}

zeControlPoint2D* zeAnimationManager::createPoint2D(float x, float y, osg::UInt64 id)
{
    // A key lies at a finite frame and value; NaN and infinities have no place on a curve.
    if (!std::isfinite(x) || !std::isfinite(y))
        return nullptr;
    return registerCreated(new zeControlPoint2D(x, y, "Point", id, false));
}

zeAnimationCurve2D* zeAnimationManager::createCurve2D(osg::UInt64 id)
{
    return registerCreated(new zeAnimationCurve2D("Curve", id));
}

zeAnimationCurve2D* zeAnimationManager::createCurve2D(zeAnimationField* field, std::string name,
                                                      osg::UInt64 id, bool attach)
{
    zeAnimationCurve2D* curve = registerCreated(new zeAnimationCurve2D(name, id));
    curve->setAnimationField(field);
    if (attach && field) {
        osg::NodePtr node = osg::NodePtr::dcast(
            osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(field->nodeID)));
        if (node != osg::NullFC)
            zeAnimationUtils::addAnimationObject(node, curve);
    }
    return curve;
}

zeAnimationUnit* zeAnimationManager::createUnit(osg::UInt64 id)
{
    return registerCreated(new zeAnimationUnit("Block", id));
}

zeAnimationUnit* zeAnimationManager::createUnit(const std::string& name, osg::UInt64 id)
{
    return registerCreated(new zeAnimationUnit(name, id));
}

zeAnimationUnit* zeAnimationManager::createUnit(const std::vector<zeAnimationCurve2D*>& curves,
                                                std::string name, osg::UInt64 id, bool attach)
{
    if (curves.empty())
        return nullptr;
    zeAnimationUnit* unit = registerCreated(new zeAnimationUnit(name, id));
    for (zeAnimationCurve2D* curve : curves) {
        if (curve)
            unit->addObject(curve);
    }
    if (attach)
        attachUnit(unit);
    return unit;
}

zeAnimationStreak* zeAnimationManager::createStreak(osg::UInt64 id)
{
    return registerCreated(new zeAnimationStreak("Track", id));
}

zeAnimationStreak* zeAnimationManager::createStreak(const std::string& name, osg::UInt64 id)
{
    return registerCreated(new zeAnimationStreak(name, id));
}

zeAnimationStrip* zeAnimationManager::createStrip(osg::UInt64 id)
{
    return registerCreated(new zeAnimationStrip("Clip", id));
}

zeAnimationStrip* zeAnimationManager::createStrip(const std::string& name, osg::UInt64 id)
{
    return registerCreated(new zeAnimationStrip(name, id));
}

zeAnimationSequence* zeAnimationManager::createSequence(const std::string& name, osg::UInt64 id)
{
    return registerCreated(new zeAnimationSequence(name, id));
}

bool zeAnimationManager::createCurvePoint(zeAnimationCurve2D* curve, float x, bool select)
{
    if (!curve)
        return false;
    float y = 0.0f;
    if (!zeAnimationController::computeCurveValue(curve, x, y)) {
        const zeAnimationCurve2D::PointMap points = curve->getPoints();
        if (!points.empty())
            y = points.begin()->second->getY();
    }
    return createCurvePoint(curve, x, y, select, false, false);
}

bool zeAnimationManager::createCurvePoint(zeAnimationCurve2D* curve, float x, float y, bool select, bool lock,
                                          bool snap)
{
    if (!curve)
        return false;
    if (snap)
        x = zeAnimationUtils::snap(x);
    if (!curve->checkInsertConstraints(x))
        return false;
    zeControlPoint2D* point = createPoint2D(x, y, 0);
    if (!point)
        return false; // no key at a NaN or infinite position
    point->setSelected(select);
    point->setLocked(lock);
    if (!curve->addObject(point)) {
        destroyPoint2D(point);
        return false;
    }
    return true;
}

// ---- Duplication ------------------------------------------------------------------------------

zeAnimationObject* zeAnimationManager::duplicateObject(zeAnimationObject* object)
{
    if (!object)
        return nullptr;
    switch (object->getTypeID()) {
    case zeAnimationObject::TypePoint2D:
        return duplicatePoint2D(static_cast<zeControlPoint2D*>(object));
    case zeAnimationObject::TypeCurve2D:
        return duplicateCurve2D(static_cast<zeAnimationCurve2D*>(object));
    case zeAnimationObject::TypeUnit:
        return duplicateUnit(static_cast<zeAnimationUnit*>(object), false);
    case zeAnimationObject::TypeStreak:
        return duplicateStreak(static_cast<zeAnimationStreak*>(object));
    case zeAnimationObject::TypeStrip:
        return duplicateStrip(static_cast<zeAnimationStrip*>(object));
    default:
        return nullptr;
    }
}

zeControlPoint2D* zeAnimationManager::duplicatePoint2D(zeControlPoint2D* point)
{
    return point ? registerCreated(new zeControlPoint2D(*point)) : nullptr;
}

zeAnimationCurve2D* zeAnimationManager::duplicateCurve2D(zeAnimationCurve2D* curve)
{
    return curve ? registerCreated(new zeAnimationCurve2D(*curve)) : nullptr;
}

zeAnimationUnit* zeAnimationManager::duplicateUnit(zeAnimationUnit* unit, bool attach)
{
    if (!unit)
        return nullptr;
    zeAnimationUnit* copy = registerCreated(new zeAnimationUnit(*unit));
    if (attach)
        attachUnit(copy);
    return copy;
}

zeAnimationStreak* zeAnimationManager::duplicateStreak(zeAnimationStreak* streak)
{
    return streak ? registerCreated(new zeAnimationStreak(*streak)) : nullptr;
}

zeAnimationStrip* zeAnimationManager::duplicateStrip(zeAnimationStrip* strip)
{
    return strip ? registerCreated(new zeAnimationStrip(*strip)) : nullptr;
}

zeAnimationSequence* zeAnimationManager::duplicateSequence(zeAnimationSequence* sequence)
{
    return sequence ? registerCreated(new zeAnimationSequence(*sequence)) : nullptr;
}

zeAnimationField* zeAnimationManager::duplicateField(zeAnimationField* field)
{
    if (!field)
        return nullptr;
    zeAnimationField* copy = new zeAnimationField(*field);
    registerField(copy);
    return copy;
}

// ---- Copy and paste ---------------------------------------------------------------------------

zeAnimationObject* zeAnimationManager::bufferedObject(osg::UInt64 id) const
{
    return _copyBufferLive.count(id) ? getObject(id) : nullptr;
}

std::vector<zeAnimationObject*> zeAnimationManager::getCopyBuffer() const
{
    std::vector<zeAnimationObject*> objects;
    for (osg::UInt64 id : _copyBuffer) {
        if (zeAnimationObject* object = bufferedObject(id))
            objects.push_back(object);
    }
    return objects;
}

// Empties the buffer before anything else happens, so that a host callback or a destructor
// reached from the caller never sees objects that are on their way out.
std::vector<zeAnimationObject*> zeAnimationManager::takeCopyBuffer()
{
    std::vector<zeAnimationObject*> objects = getCopyBuffer();
    _copyBuffer.clear();
    _copyBufferLive.clear();
    return objects;
}

void zeAnimationManager::clearCopyBuffer(bool destroy)
{
    if (_copyBuffer.empty())
        return;
    std::vector<osg::UInt64> ids;
    for (zeAnimationObject* object : takeCopyBuffer())
        ids.push_back(object->getId());
    if (destroy) {
        // One buffered object may have been added below another meanwhile and gone with it.
        for (osg::UInt64 id : ids) {
            if (zeAnimationObject* object = getObject(id))
                destroyObject(object);
        }
    }
    updatePaste(false);
}

void zeAnimationManager::fillCopyBuffer(const std::vector<zeAnimationObject*>& duplicates)
{
    for (zeAnimationObject* duplicate : duplicates) {
        // A duplicate keeps a link to its source's parent without being listed there; in the
        // buffer it stands alone, so that once pasted it is a top-level object of its node.
        duplicate->setParent(nullptr);
        _copyBuffer.push_back(duplicate->getId());
        _copyBufferLive.insert(duplicate->getId());
    }
    updatePaste(true);
}

bool zeAnimationManager::copy(zeAnimationObject* object)
{
    if (!object)
        return false;
    return copy(std::vector<zeAnimationObject*>(1, object));
}

bool zeAnimationManager::copy(const std::vector<zeAnimationObject*>& objects)
{
    // The duplicates are made before the old buffer goes, since the objects to copy may lie in
    // it (or below an object in it).
    std::vector<zeAnimationObject*> duplicates;
    for (zeAnimationObject* object : objects) {
        if (zeAnimationObject* duplicate = duplicateObject(object))
            duplicates.push_back(duplicate);
    }
    std::vector<osg::UInt64> ids;
    for (zeAnimationObject* duplicate : duplicates)
        ids.push_back(duplicate->getId());
    clearCopyBuffer(true);
    // The paste callback may have destroyed some of them.
    duplicates.clear();
    for (osg::UInt64 id : ids) {
        if (zeAnimationObject* duplicate = getObject(id))
            duplicates.push_back(duplicate);
    }
    if (duplicates.empty())
        return false;
    fillCopyBuffer(duplicates);
    return true;
}

bool zeAnimationManager::copy(const osg::NodePtr& node)
{
    if (node == osg::NullFC)
        return false;
    const std::vector<zeAnimationObject*> objects = zeAnimationUtils::getAnimationObjects(node);
    return !objects.empty() && copy(objects);
}

bool zeAnimationManager::paste(const osg::NodePtr& node, bool force)
{
    if (node == osg::NullFC)
        return false;
    if (!force && !zeAnimationUtils::checkPasteTo(node, getCopyBuffer()))
        return false;
    if (_copyBuffer.empty())
        return true;
    // The node's own fields are made first, so that the objects animate this node and not the one
    // they were copied from.
    createAnimationFields(node);
    for (zeAnimationObject* object : takeCopyBuffer()) {
        zeAnimationUtils::changeObjectReferenceFields(object, node);
        zeAnimationUtils::addAnimationObject(node, object);
    }
    updatePaste(false);
    return true;
}

// ---- Import of older scenes -------------------------------------------------------------------

namespace {

// Old clips and tracks nest. Each level of old nesting is at least one level of the new
// hierarchy, which cannot be deeper than MaxDepth, so the conversion goes no deeper either.
const osg::UInt32 kMaxImportDepth = zeAnimationObject::MaxDepth;

// Removes a node's old animation attachment.
void removeOldAttachment(const osg::NodePtr& node, const osg::AnimationAttachmentPtr& old)
{
    osg::beginEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    node->subAttachment(old);
    osg::endEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
}

osg::Action::ResultE collectStep(osg::NodePtr& node)
{
    return zeAnimationManager::collectKORUAnimations(node);
}

} // namespace

bool zeAnimationManager::firstImport(const osg::FieldContainerPtr& container)
{
    return _importSeen.insert(osg::getContainerId(container)).second;
}

zeAnimationObject* zeAnimationManager::adoptImported(zeAnimationObject* parent, zeAnimationObject* child)
{
    if (parent->addObject(child))
        return child;
    // Refused (the hierarchy would grow too deep): the converted subtree goes again.
    destroyObject(child);
    return nullptr;
}

void zeAnimationManager::importKORUAnimations(const osg::NodePtr& root, const osg::NodePtr& cameraNode,
                                              osg::UInt32 nodeCount)
{
    if (root == osg::NullFC)
        return;
    _importSeen.clear();
    _importDepth = 0;
    osg::AnimationAttachmentPtr old = zeAnimationUtils::getOldAnimationAttachment(root);
    if (old != osg::NullFC) {
        // The attachment is held while it is read: a host callback reached from the conversion
        // must not be able to release it under the loops.
        osg::addRefCP(old);
        for (const osg::AnimationClipPtr& clip :
             std::vector<osg::AnimationClipPtr>(old->getClips().begin(), old->getClips().end()))
            importClip(clip, nullptr);
        // The root's own blocks animate the camera.
        if (cameraNode != osg::NullFC) {
            for (const osg::AnimationBlockPtr& oldBlock :
                 std::vector<osg::AnimationBlockPtr>(old->getBlocks().begin(), old->getBlocks().end())) {
                if (oldBlock == osg::NullFC || !firstImport(oldBlock))
                    continue;
                zeAnimationUnit* block = createUnit(oldBlock->getName(), 0);
                const zeAnimationObject::Watch watched(block);
                for (const osg::AnimationCurvePtr& curve : std::vector<osg::AnimationCurvePtr>(
                         oldBlock->getCurves().begin(), oldBlock->getCurves().end())) {
                    if (watched.alive())
                        importCurve(curve, block, cameraNode);
                }
                if (!watched.alive())
                    continue; // destroyed by the host's camera while its curves were made
                block->setRepeating(oldBlock->getRepeating());
                block->setMotionBlur(oldBlock->getMotionBlur());
                block->setFlipped(oldBlock->getFlipped());
                if (block->getParentOSGNodeId() == 0)
                    block->setParentOSGNode(cameraNode);
                zeAnimationUtils::addAnimationObject(cameraNode, block);
            }
        } else {
            std::printf("Error importing old camera animations! No perspective camera found!\n");
            std::fflush(stdout);
        }
        removeOldAttachment(root, old);
        osg::subRefCP(old);
    }
    _importNodeCount = nodeCount;
    _nodeCounter = 0;
    osg::traverse(root,
                  osg::osgTypedFunctionFunctor1CPtrRef<osg::Action::ResultE, osg::NodePtr>(&collectStep));
    _importSeen.clear();
}

osg::Action::ResultE zeAnimationManager::collectKORUAnimations(const osg::NodePtr& node)
{
    ++_nodeCounter;
    // The share of the expected nodes visited so far, never beyond 100 (also when the host
    // expects fewer nodes than the walk finds, or none).
    const float percent = static_cast<float>(_nodeCounter) / (static_cast<float>(_importNodeCount) / 100.0f);
    the()->setFileIOProgress(percent < 100.0f ? zeAnimationUtils::floatToInt(percent) : 100u);

    osg::AnimationAttachmentPtr old = zeAnimationUtils::getOldAnimationAttachment(node);
    if (old == osg::NullFC)
        return osg::Action::Continue;
    zeAnimationManager* manager = the();
    osg::addRefCP(old);
    zeAnimationUtils::createAnimationAttachment(node, true);
    for (const osg::AnimationBlockPtr& oldBlock :
         std::vector<osg::AnimationBlockPtr>(old->getBlocks().begin(), old->getBlocks().end())) {
        if (zeAnimationUnit* block = manager->importBlock(oldBlock, nullptr))
            zeAnimationUtils::addAnimationObject(node, block);
    }
    for (const osg::AnimationClipPtr& oldClip :
         std::vector<osg::AnimationClipPtr>(old->getClips().begin(), old->getClips().end())) {
        if (zeAnimationStrip* clip = manager->importClip(oldClip, nullptr))
            zeAnimationUtils::addAnimationObject(node, clip);
    }
    removeOldAttachment(node, old);
    osg::subRefCP(old);
    return osg::Action::Continue;
}

zeAnimationStrip* zeAnimationManager::importClip(const osg::AnimationClipPtr& oldClip,
                                                 zeAnimationStreak* parent)
{
    if (oldClip == osg::NullFC || _importDepth >= kMaxImportDepth || !firstImport(oldClip))
        return nullptr;
    // Converting the content may call the host (reading a camera's view for its new fields),
    // which may destroy what is being built or the parent it is for: both are looked up again
    // after every part, and the conversion of a container the host destroyed ends there.
    const zeAnimationObject::Watch parentWatch(parent);
    ++_importDepth;
    zeAnimationStrip* clip = createStrip(oldClip->getName(), 0);
    const zeAnimationObject::Watch watched(clip);
    for (const osg::AnimationBlockPtr& oldBlock :
         std::vector<osg::AnimationBlockPtr>(oldClip->getBlocks().begin(), oldClip->getBlocks().end())) {
        zeAnimationUnit* block = watched.alive() ? importBlock(oldBlock, nullptr) : nullptr;
        if (block && watched.alive())
            adoptImported(clip, block);
    }
    for (const osg::AnimationClipPtr& oldNested :
         std::vector<osg::AnimationClipPtr>(oldClip->getClips().begin(), oldClip->getClips().end())) {
        zeAnimationStrip* nested = watched.alive() ? importClip(oldNested, nullptr) : nullptr;
        if (nested && watched.alive())
            adoptImported(clip, nested);
    }
    for (const osg::AnimationTrackPtr& oldTrack :
         std::vector<osg::AnimationTrackPtr>(oldClip->getTracks().begin(), oldClip->getTracks().end())) {
        if (watched.alive())
            importTrack(oldTrack, clip);
    }
    --_importDepth;
    if (!watched.alive())
        return nullptr;
    clip->setFlipped(oldClip->getFlipped());
    clip->setRepeating(oldClip->getRepeating());
    clip->setMotionBlur(oldClip->getMotionBlur());
    if (parent && !parentWatch.alive())
        parent = nullptr; // the clip stands alone
    return parent ? zeAnimationCast<zeAnimationStrip>(adoptImported(parent, clip)) : clip;
}

zeAnimationStreak* zeAnimationManager::importTrack(const osg::AnimationTrackPtr& oldTrack,
                                                   zeAnimationStrip* parent)
{
    if (oldTrack == osg::NullFC || _importDepth >= kMaxImportDepth || !firstImport(oldTrack))
        return nullptr;
    const zeAnimationObject::Watch parentWatch(parent);
    ++_importDepth;
    zeAnimationStreak* track = createStreak(0);
    const zeAnimationObject::Watch watched(track);
    for (const osg::AnimationBlockPtr& oldBlock :
         std::vector<osg::AnimationBlockPtr>(oldTrack->getBlocks().begin(), oldTrack->getBlocks().end())) {
        if (watched.alive())
            importBlock(oldBlock, track);
    }
    for (const osg::AnimationBlockPtr& oldBlock : std::vector<osg::AnimationBlockPtr>(
             oldTrack->getSequences().begin(), oldTrack->getSequences().end())) {
        if (watched.alive())
            importSequence(oldBlock, track);
    }
    for (const osg::AnimationClipPtr& oldClip :
         std::vector<osg::AnimationClipPtr>(oldTrack->getClips().begin(), oldTrack->getClips().end())) {
        if (watched.alive())
            importClip(oldClip, track);
    }
    --_importDepth;
    if (!watched.alive())
        return nullptr;
    if (parent && !parentWatch.alive())
        parent = nullptr;
    return parent ? zeAnimationCast<zeAnimationStreak>(adoptImported(parent, track)) : track;
}

zeAnimationUnit* zeAnimationManager::importBlock(const osg::AnimationBlockPtr& oldBlock,
                                                 zeAnimationStreak* parent)
{
    if (oldBlock == osg::NullFC || !firstImport(oldBlock))
        return nullptr;
    const zeAnimationObject::Watch parentWatch(parent);
    zeAnimationUnit* block = createUnit(oldBlock->getName(), 0);
    const zeAnimationObject::Watch watched(block);
    const osg::NodePtr node = oldBlock->getNode();
    for (const osg::AnimationCurvePtr& oldCurve :
         std::vector<osg::AnimationCurvePtr>(oldBlock->getCurves().begin(), oldBlock->getCurves().end())) {
        if (watched.alive())
            importCurve(oldCurve, block, node);
    }
    if (!watched.alive())
        return nullptr;
    if (parent && !parentWatch.alive())
        parent = nullptr;
    // A block none of whose curves could be converted still belongs to its old node.
    if (block->getParentOSGNodeId() == 0)
        block->setParentOSGNode(node);
    block->setRepeating(oldBlock->getRepeating());
    block->setMotionBlur(oldBlock->getMotionBlur());
    block->setFlipped(oldBlock->getFlipped());
    return parent ? zeAnimationCast<zeAnimationUnit>(adoptImported(parent, block)) : block;
}

zeAnimationSequence* zeAnimationManager::importSequence(const osg::AnimationBlockPtr& oldBlock,
                                                        zeAnimationStreak* parent)
{
    if (oldBlock == osg::NullFC)
        return nullptr;
    zeAnimationSequence* sequence = createSequence(oldBlock->getName(), 0);
    sequence->setBegin(oldBlock->getStart());
    sequence->setEnd(oldBlock->getEnd());
    return parent ? zeAnimationCast<zeAnimationSequence>(adoptImported(parent, sequence)) : sequence;
}

zeAnimationCurve2D* zeAnimationManager::importCurve(const osg::AnimationCurvePtr& oldCurve,
                                                    zeAnimationUnit* block, osg::NodePtr node)
{
    if (!block || oldCurve == osg::NullFC)
        return nullptr;
    // The node the old curve names, else the node its old block animates, else the node the new
    // block is bound to by an earlier curve.
    osg::NodePtr animated = oldCurve->getAFAppNode();
    if (animated == osg::NullFC)
        animated = oldCurve->getAFAppropriateNode();
    if (animated == osg::NullFC)
        animated = node;
    if (animated == osg::NullFC)
        animated = block->getParentOSGNode();
    if (animated == osg::NullFC)
        return nullptr;
    const std::string name =
        oldCurve->getAFFieldName().empty() ? oldCurve->getAFAttribute() : oldCurve->getAFFieldName();
    std::string curveName = name;
    // Making the node's fields may call the host's camera, which may destroy the block.
    const zeAnimationObject::Watch watched(block);
    zeAnimationField* field = getField(animated, name);
    if (!watched.alive())
        return nullptr;
    if (!field) {
        // Some old curves name the scene field ("translation") and its component apart; the
        // curve is then named by the attribute it animates.
        for (zeAnimationField* candidate : zeAnimationUtils::getAnimationFields(animated)) {
            if (!field && candidate->name == name && candidate->valuePos == oldCurve->getAFValuePosition())
                field = candidate;
        }
        if (!field)
            return nullptr;
        curveName = field->attribute;
    }
    zeAnimationCurve2D* curve = createCurve2D(field, curveName, 0, false);
    // All keys go in at once and their handles are placed afterwards: the same keys and handles
    // as adding them one by one (each key's handles follow from its final neighbours, the last
    // key given at an x wins), without updating the curve once per key.
    std::vector<zeControlPoint2D*> points;
    points.reserve(oldCurve->getControlPoints().size());
    for (const osg::AnimationControlPointPtr& oldPoint : std::vector<osg::AnimationControlPointPtr>(
             oldCurve->getControlPoints().begin(), oldCurve->getControlPoints().end())) {
        if (zeControlPoint2D* point = importPoint(oldPoint, nullptr))
            points.push_back(point);
    }
    if (!points.empty()) {
        curve->setPoints(points);
        for (zeControlPoint2D* key : curve->keys())
            zeKeyIndex::recomputeTangents(curve, key);
    }
    return zeAnimationCast<zeAnimationCurve2D>(adoptImported(block, curve));
}

zeControlPoint2D* zeAnimationManager::importPoint(const osg::AnimationControlPointPtr& oldPoint,
                                                  zeAnimationCurve2D* curve)
{
    if (oldPoint == osg::NullFC)
        return nullptr;
    const osg::Pnt2f& position = oldPoint->getPosition();
    zeControlPoint2D* point = createPoint2D(position[0], position[1], 0);
    if (!point)
        return nullptr; // not a finite position
    // Handles are taken over only when the old point has them; otherwise they stay on the key
    // until the tangent type's rule places them (a free key keeps them there).
    if (oldPoint->getHasTangents()) {
        const osg::Pnt2f& in = oldPoint->getInTangent();
        const osg::Pnt2f& out = oldPoint->getOutTangent();
        point->setInTangent(osg::Vec2f(in[0], in[1]));
        point->setOutTangent(osg::Vec2f(out[0], out[1]));
    }
    point->setTangentType(zeAnimationUtils::convertTangentType(oldPoint->getTangentType()));
    if (curve)
        curve->addObject(point);
    return point;
}

// ---- Interchange curves -----------------------------------------------------------------------

zeAnimationCurve2D* zeAnimationManager::createCurve2D(const osg::NodePtr& node, std::string attribute,
                                                      const std::vector<zeControlPoint2D*>& points,
                                                      osg::UInt64 id, bool attach)
{
    if (node == osg::NullFC)
        return nullptr;
    createAnimationFields(node);
    static const char* const channels[][2] = {
        {"Fov", "fieldOfView"},          {"TransformTX", "translationX"}, {"TransformTY", "translationY"},
        {"TransformTZ", "translationZ"}, {"TransformRX", "rotationX"},    {"TransformRY", "rotationY"},
        {"TransformRZ", "rotationZ"},    {"TransformSX", "scaleX"},       {"TransformSY", "scaleY"},
        {"TransformSZ", "scaleZ"}};
    const char* fieldAttribute = nullptr;
    for (const auto& channel : channels) {
        if (attribute == channel[0])
            fieldAttribute = channel[1];
    }
    if (!fieldAttribute) {
        std::printf("zeAnimationManager::importKWXCurve failed! Could not recognize attribute %s!\n",
                    attribute.c_str());
        std::fflush(stdout);
        return nullptr;
    }
    zeAnimationField* field = getField(node, fieldAttribute);
    if (!field)
        return nullptr;
    // An identifier already in use would leave the curve unregistered; it gets a fresh one.
    zeAnimationCurve2D* curve = createCurve2D(field, fieldAttribute, isIDUnique(id) ? id : 0, attach);
    if (!points.empty())
        curve->setPoints(points);
    return curve;
}

// ---- Destruction ------------------------------------------------------------------------------

void zeAnimationManager::attachUnit(zeAnimationUnit* unit)
{
    osg::NodePtr node = unit->getParentOSGNode();
    if (node != osg::NullFC)
        zeAnimationUtils::addAnimationObject(node, unit);
}

void zeAnimationManager::detachFromScene(zeAnimationObject* object)
{
    osg::NodePtr node;
    if (const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object))
        node = curve->getParentOSGNode();
    else if (const zeAnimationUnit* unit = zeAnimationCast<zeAnimationUnit>(object))
        node = unit->getParentOSGNode();
    if (node != osg::NullFC)
        zeAnimationUtils::subAnimationObject(node, object);
}

bool zeAnimationManager::isRegistered(const zeAnimationObject* object) const
{
    if (getObject(object->id) == object)
        return true;
    // An assigned twin is registered under its former identifier.
    for (const ObjectMap::value_type& entry : _objects) {
        if (entry.second == object)
            return true;
    }
    return false;
}

// Each object is deleted through its concrete type (deleteObject), whichever operation is used.
void zeAnimationManager::destroyObject(zeAnimationObject* object)
{
    // Only what the registry holds is the manager's to destroy: a key's handles, reachable
    // through the key, belong to the key.
    if (!object || !isRegistered(object))
        return;
    detachFromScene(object);
    zeAnimationCurve2D* curve = nullptr;
    if (zeAnimationObject* parent = registeredParent(object)) {
        // Whatever container lists the object lets it go, so no list ever names a destroyed
        // object. During destroyAllObjects only parents that outlive the run are told; the others
        // are destroyed later in it.
        if (!_bulkSurvivors || _bulkSurvivors->count(parent->id) != 0) {
            const zeAnimationObject::Watch watched(parent);
            object->leaveParent();
            if (object->getTypeID() == zeAnimationObject::TypePoint2D)
                curve = zeAnimationCast<zeAnimationCurve2D>(watched.get());
        } else {
            parent->invalidateChildState(); // its entry for the object would outlive the object
        }
    }
    // A key that left its curve: the curve's key index may survive its leaving the registry.
    zeKeyIndex::keepAcross(curve, zeAnimationCast<zeControlPoint2D>(object), [this, object] {
        unregisterPointer(object);
        deleteObject(object);
    });
}

void zeAnimationManager::destroyPoint2D(zeControlPoint2D* point)
{
    destroyObject(point);
}

void zeAnimationManager::destroyCurve2D(zeAnimationCurve2D* curve)
{
    destroyObject(curve);
}

void zeAnimationManager::destroyUnit(zeAnimationUnit* unit)
{
    destroyObject(unit);
}

void zeAnimationManager::destroyStreak(zeAnimationStreak* streak)
{
    destroyObject(streak);
}

void zeAnimationManager::destroyStrip(zeAnimationStrip* strip)
{
    destroyObject(strip);
}

void zeAnimationManager::destroySequence(zeAnimationSequence* sequence)
{
    destroyObject(sequence);
}

void zeAnimationManager::destroyField(zeAnimationField* field)
{
    if (!field)
        return;
    FieldMap::iterator entry = _fields.find(field->id);
    if (entry == _fields.end() || entry->second != field) {
        // An assigned twin carries another field's identifier: find its own entry by address.
        for (entry = _fields.begin(); entry != _fields.end() && entry->second != field; ++entry) {
        }
    }
    if (entry != _fields.end()) {
        _fieldIndex->erase(entry->first);
        _fields.erase(entry);
        zeAnimationRevision::bump();
    }
    delete field;
}

void zeAnimationManager::destroyAllObjects(bool includeHidden)
{
    // The outcome is that of repeatedly destroying the registered object with the smallest
    // identifier that may be destroyed (with its subtree) while at least two objects remain.
    // Whether an object may be destroyed never changes during the run, so a rescan from the
    // start finds nothing before the last position: one forward pass gives the same order. It
    // is worked out on identifiers first, so the survivors are known before anything is
    // destroyed and parents that die anyway need not be kept up to date child by child.
    if (_objects.size() < 2)
        return;
    std::unordered_set<osg::UInt64> dead;
    dead.reserve(_objects.size());
    std::vector<osg::UInt64> roots;
    std::size_t alive = _objects.size();
    std::vector<osg::UInt64> pending;
    for (const ObjectMap::value_type& entry : _objects) {
        if (alive < 2)
            break;
        if (dead.count(entry.first))
            continue;
        const zeAnimationObject* object = entry.second;
        if (object && !includeHidden && object->hidden)
            continue;
        roots.push_back(entry.first);
        pending.assign(1, entry.first);
        while (!pending.empty()) {
            const osg::UInt64 current = pending.back();
            pending.pop_back();
            if (!dead.insert(current).second)
                continue;
            --alive;
            const zeAnimationObject* victim = getObject(current);
            if (!victim)
                continue;
            for (osg::UInt64 childId : victim->childIds) {
                if (victim->resolveChild(childId) && !dead.count(childId))
                    pending.push_back(childId);
            }
        }
    }
    std::unordered_set<osg::UInt64> survivors;
    for (const ObjectMap::value_type& entry : _objects) {
        if (!dead.count(entry.first))
            survivors.insert(entry.first);
    }
    _bulkSurvivors = &survivors;
    for (osg::UInt64 rootId : roots) {
        ObjectMap::iterator entry = _objects.find(rootId);
        if (entry == _objects.end())
            continue;
        if (entry->second)
            destroyObject(entry->second);
        else
            unregisterObject(rootId);
    }
    _bulkSurvivors = nullptr;
}

void zeAnimationManager::destroyAllFields()
{
    for (FieldMap::value_type& entry : _fields)
        delete entry.second;
    _fields.clear();
    _fieldIndex->clear();
    zeAnimationRevision::bump();
}

void zeAnimationManager::destroyUnreferencedObjectsAndFields()
{
    // Field identifiers collected by earlier walks still count as referenced: the field set is
    // deliberately not emptied.
    if (_sceneRoot != osg::NullFC) {
        _actualObjectIDs.clear();
        walkScene(&zeAnimationManager::collectActualObjectsAndFields);
    }
    std::vector<zeAnimationObject*> objects;
    for (const ObjectMap::value_type& entry : _objects) {
        zeAnimationObject* object = entry.second;
        if (object && object->getTypeID() != zeAnimationObject::TypeStrip && !registeredParent(object) &&
            !object->hidden && _actualObjectIDs.count(entry.first) == 0)
            objects.push_back(object);
    }
    // Destroying one listed object may take another listed one with it (a stale child entry);
    // resolve each again by identifier before destroying it.
    std::vector<osg::UInt64> ids;
    ids.reserve(objects.size());
    for (zeAnimationObject* object : objects)
        ids.push_back(object->id);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        zeAnimationObject* object = getObject(ids[i]);
        if (object == objects[i])
            destroyObject(object);
    }
    std::vector<zeAnimationField*> fields;
    for (const FieldMap::value_type& entry : _fields) {
        if (_actualFieldIDs.count(entry.first) == 0)
            fields.push_back(entry.second);
    }
    for (zeAnimationField* field : fields)
        destroyField(field);
}

// ---- Moving -----------------------------------------------------------------------------------

bool zeAnimationManager::moveObjectToStreak(zeAnimationObject* obj, zeAnimationStreak* track)
{
    if (!obj || !track)
        return false;
    zeAnimationObject* parent = registeredParent(obj);
    if (!parent || parent->getTypeID() != zeAnimationObject::TypeStreak || parent == track)
        return false;
    if (!parent->subObject(obj, false))
        return false;
    track->addObject(obj);
    return true;
}

bool zeAnimationManager::moveObjectToStreak(zeAnimationObject* obj, zeAnimationStrip* clip, osg::UInt32 index)
{
    // Tracks are appended until one sits at the index; each append costs the same whatever the
    // clip's size.
    if (!obj || !clip)
        return false;
    while (clip->getStreakAmount() <= index)
        clip->addObject(createStreak(0));
    return moveObjectToStreak(obj, clip->getStreak(index));
}

// ---- Connections and triggers -----------------------------------------------------------------

bool zeAnimationManager::createConnection(zeAnimationObject* source, AnimationTrigger trigger,
                                          zeAnimationObject* target, AnimationAction action)
{
    if (!source || !target)
        return false;
    const osg::UInt64 key = drawFreshID();
    source->addTrigger(key, trigger);
    _objectConnections[key] = std::make_pair(target->id, action);
    return true;
}

bool zeAnimationManager::createConnection(zeAnimationObject* source, AnimationTrigger trigger,
                                          ConnectionFunction function)
{
    if (!source || !function)
        return false;
    const osg::UInt64 key = drawFreshID();
    source->addTrigger(key, trigger);
    _functionConnections[key] = function;
    return true;
}

void zeAnimationManager::executeTriggers(std::vector<osg::UInt64> keys)
{
    zeAnimationController* controller = zeAnimationController::the();
    for (osg::UInt64 key : keys) {
        const auto objectConnection = _objectConnections.find(key);
        if (objectConnection != _objectConnections.end()) {
            // Targets are resolved now; a destroyed target is simply not found.
            zeAnimationObject* target = getObject(objectConnection->second.first);
            if (!target)
                continue;
            if (objectConnection->second.second == ActionStop)
                controller->removeRunning(target);
            else if (objectConnection->second.second == ActionStart && target->isActive())
                controller->scheduleStart(target);
            continue;
        }
        const auto functionConnection = _functionConnections.find(key);
        if (functionConnection != _functionConnections.end() && functionConnection->second)
            functionConnection->second();
    }
}

// ---- Host callbacks ---------------------------------------------------------------------------

void zeAnimationManager::setFromAtUp(const osg::Point<float, 3>& from, const osg::Point<float, 3>& at,
                                     const osg::Vector<float, 3>& up)
{
    callIfSet(_sCamFAU, -1, from, at, up);
}

void zeAnimationManager::getFromAtUp(osg::Point<float, 3>& from, osg::Point<float, 3>& at,
                                     osg::Vector<float, 3>& up)
{
    if (_gCamFAU) {
        _gCamFAU(-1, from, at, up);
        return;
    }
    from.setValues(0.0f, 0.0f, 0.0f);
    at.setValues(0.0f, 0.0f, 0.0f);
    up.setValues(0.0f, 0.0f, 0.0f);
}

void zeAnimationManager::setRoll(float roll)
{
    callIfSet(_sCamRoll, -1, roll);
}

void zeAnimationManager::getRoll(float& roll)
{
    roll = askIfSet(_gCamRoll, 0.0f, -1);
}

void zeAnimationManager::showCurves(const std::vector<zeAnimationCurve2D*>& curves)
{
    callIfSet(_showCurvesFP, curves);
}

void zeAnimationManager::setFileIOProgress(unsigned int progress)
{
    callIfSet(_progressFP, progress);
}

void zeAnimationManager::updatePaste(bool available)
{
    callIfSet(_updatePasteFP, available);
}

// ---- Diagnostics ------------------------------------------------------------------------------

void zeAnimationManager::objectInfo()
{
    std::cout << "ANIMATION_MANAGER Object Info" << std::endl;
    std::cout << "=============================" << std::endl;
    for (const ObjectMap::value_type& entry : _objects) {
        if (entry.second)
            std::cout << "Object " << entry.first << " name " << entry.second->name << " type "
                      << entry.second->getTypeID() << std::endl;
    }
    for (const FieldMap::value_type& entry : _fields) {
        if (entry.second)
            std::cout << "Field " << entry.first << " node id " << entry.second->nodeID << " fcid "
                      << entry.second->fcID << std::endl;
    }
}

void zeAnimationManager::printFieldInfo(zeAnimationField* field)
{
    if (!field)
        return;
    std::cout << "Field Info:" << std::endl;
    std::cout << "\tid " << field->id << std::endl;
    std::cout << "\tname " << field->name << std::endl;
    std::cout << "\tattribute " << field->attribute << std::endl;
    std::cout << "\tfcID " << field->fcID << std::endl;
    std::cout << "\tnodeID " << field->nodeID << std::endl;
    std::cout << "\tvalue " << field->value << std::endl;
    std::cout << "\tvaluePos " << field->valuePos << std::endl;
    std::cout << "\tdirty " << (field->dirty ? 1 : 0) << std::endl;
    std::cout << std::endl;
}

// ---- Scene synchronisation --------------------------------------------------------------------

namespace {

// Field containers of a node whose fields are animated, with the container that holds each:
// the core, and for a material group its material.
std::vector<osg::FieldContainerPtr> animatedContainers(const osg::NodePtr& node)
{
    std::vector<osg::FieldContainerPtr> containers;
    osg::NodeCorePtr core = node->getCore();
    if (core == osg::NullFC)
        return containers;
    containers.push_back(core);
    if (osg::MaterialGroupPtr group = osg::MaterialGroupPtr::dcast(core)) {
        if (group->getMaterial() != osg::NullFC)
            containers.push_back(group->getMaterial());
    }
    return containers;
}

} // namespace

std::vector<zeAnimationField*> zeAnimationManager::createAnimationFields(const osg::NodePtr& node)
{
    std::vector<zeAnimationField*> fields = zeAnimationUtils::getAnimationFields(node);
    if (node == osg::NullFC || !fields.empty())
        return fields;
    const osg::UInt32 nodeId = osg::getContainerId(node);
    const auto add = [&](osg::UInt32 containerId, const std::string& name, const std::string& attribute,
                         osg::UInt32 valuePos) {
        zeAnimationField* field = createField(0);
        field->fcID = containerId;
        field->nodeID = nodeId;
        field->name = name;
        field->attribute = attribute;
        field->valuePos = valuePos;
        fields.push_back(field);
        if (std::find(_animationAttributes.begin(), _animationAttributes.end(), attribute) ==
            _animationAttributes.end())
            _animationAttributes.push_back(attribute);
    };

    osg::NodeCorePtr core = node->getCore();
    osg::CameraSettingPtr camera = osg::CameraSettingPtr::dcast(core);
    for (const osg::FieldContainerPtr& container : animatedContainers(node)) {
        const osg::FieldContainerType& type = container->getType();
        for (osg::UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
            const osg::FieldDescription* description = type.getFieldDescription(i);
            if (!description)
                continue;
            for (const zeAnimationUtils::FieldAttribute& attribute :
                 zeAnimationUtils::computeAnimationFieldAttributes(osg::getContainerId(container),
                                                                   description->getCName())) {
                // A camera's roll is animated as part of its view (below); a second field of the
                // same attribute would make lookups and rebinding disagree.
                if (camera != osg::NullFC && attribute.attribute == "roll")
                    continue;
                add(osg::getContainerId(container), attribute.name, attribute.attribute, attribute.valuePos);
            }
        }
    }
    // A transform's rotation lives in the node's transform attachment, in degrees.
    if (core != osg::NullFC && core->getType().isDerivedFrom(osg::Transform3D::getClassType())) {
        add(nodeId, "rotationX", "rotationX", 0);
        add(nodeId, "rotationY", "rotationY", 1);
        add(nodeId, "rotationZ", "rotationZ", 2);
    }
    // A camera that is the viewpoint is animated through the host's view as a whole; any other
    // camera through its own from, at, up and roll fields.
    if (camera != osg::NullFC) {
        const osg::UInt32 cameraId = osg::getContainerId(camera);
        for (const char* part : {"from", "at", "up"}) {
            for (osg::UInt32 i = 0; i < 3; ++i)
                add(cameraId, "viewpoint", part, i);
        }
        add(cameraId, "viewpoint", "roll", 0);
    }
    add(nodeId, "visible", "visible", 0);

    osg::AnimAttachmentPtr attachment = zeAnimationUtils::createAnimationAttachment(node, true);
    std::vector<osg::UInt64> ids;
    ids.reserve(fields.size());
    osg::beginEditCP(attachment, osg::AnimAttachment::FieldIdsFieldMask, 1);
    for (zeAnimationField* field : fields) {
        ids.push_back(field->getId());
        attachment->getFieldIds().push_back(field->getId());
    }
    osg::endEditCP(attachment, osg::AnimAttachment::FieldIdsFieldMask, 1);
    // The values come last, once the scene no longer needs to be looked at: reading a
    // viewpoint's view calls the host's camera, which may destroy fields (these ones too).
    fields.clear();
    for (osg::UInt64 id : ids) {
        zeAnimationField* field = getField(id);
        if (!field)
            continue;
        const float value = zeAnimationUtils::getOSGFieldValue(field);
        if ((field = getField(id)))
            field->value = value;
    }
    for (osg::UInt64 id : ids) {
        if (zeAnimationField* field = getField(id))
            fields.push_back(field);
    }
    return fields;
}

zeAnimationField* zeAnimationManager::getField(const osg::NodePtr& node, std::string attribute)
{
    if (node == osg::NullFC)
        return nullptr;
    attribute = zeAnimationUtils::canonicalAttribute(attribute);
    std::vector<zeAnimationField*> fields = zeAnimationUtils::getAnimationFields(node);
    if (fields.empty())
        fields = createAnimationFields(node);
    for (zeAnimationField* field : fields) {
        if (field->attribute == attribute)
            return field;
    }
    return nullptr;
}

zeAnimationCurve2D* zeAnimationManager::createCurve2D(const osg::NodePtr& node, const std::string& attribute)
{
    zeAnimationField* field = getField(node, attribute);
    return field ? createCurve2D(field, attribute, 0, false) : nullptr;
}

zeAnimationField* zeAnimationManager::createField(const osg::AnimationCurvePtr& curve, osg::UInt64 id)
{
    if (curve == osg::NullFC)
        return nullptr;
    zeAnimationField* field = createField(id);
    osg::NodePtr node = curve->getAFAppNode();
    field->nodeID = node != osg::NullFC ? osg::getContainerId(node) : 0;
    field->attribute = curve->getAFFieldName();
    field->name = curve->getAFGlobalFieldName();
    field->value = curve->getAFValue();
    field->valuePos = curve->getAFValuePosition();
    field->dirty = curve->getAFDirty();
    zeAnimationUtils::computeCoreTypeID(field);
    return field;
}

void zeAnimationManager::destroyNodeObjects(const osg::NodePtr& node, bool recursive)
{
    if (node == osg::NullFC)
        return;
    // The nodes below first, deepest first, as a recursion would; walked with a list of our own
    // so that a deep scene cannot exhaust the stack.
    std::vector<osg::NodePtr> nodes(1, node);
    for (std::size_t i = 0; recursive && i < nodes.size(); ++i) {
        for (osg::UInt32 c = 0; c < nodes[i]->getNChildren(); ++c)
            nodes.push_back(nodes[i]->getChild(c));
    }
    for (std::vector<osg::NodePtr>::reverse_iterator it = nodes.rbegin(); it != nodes.rend(); ++it) {
        osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(*it);
        if (attachment == osg::NullFC)
            continue;
        // By identifier: destroying one object may take another listed one with it.
        const std::vector<osg::UInt64> objectIds(attachment->getObjectIds().begin(),
                                                 attachment->getObjectIds().end());
        for (osg::UInt64 id : objectIds) {
            if (zeAnimationObject* object = getObject(id))
                destroyObject(object);
        }
        for (zeAnimationField* field : zeAnimationUtils::getAnimationFields(*it))
            destroyField(field);
        zeAnimationUtils::removeAnimationAttachment(*it);
    }
}

namespace {

// Replaces _oldID by _newID in the node's list of object identifiers (or of field identifiers).
void replaceAttachmentIds(const osg::NodePtr& node, bool objects)
{
    osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(node);
    if (attachment == osg::NullFC)
        return;
    const osg::BitVector mask =
        objects ? osg::AnimAttachment::ObjectIdsFieldMask : osg::AnimAttachment::FieldIdsFieldMask;
    osg::MFUInt64& ids = objects ? attachment->getObjectIds() : attachment->getFieldIds();
    const osg::UInt64 oldId = zeAnimationManager::the()->getReplacedID();
    const osg::UInt64 newId = zeAnimationManager::the()->getReplacementID();
    osg::beginEditCP(attachment, mask, 1);
    for (osg::UInt64& id : ids) {
        if (id == oldId)
            id = newId;
    }
    osg::endEditCP(attachment, mask, 1);
}

} // namespace

osg::Action::ResultE zeAnimationManager::changeSceneAnimAttachmentIDs(osg::NodePtr& node)
{
    replaceAttachmentIds(node, true);
    return osg::Action::Continue;
}

osg::Action::ResultE zeAnimationManager::changeSceneAnimAttachmentFieldIDs(osg::NodePtr& node)
{
    replaceAttachmentIds(node, false);
    return osg::Action::Continue;
}

osg::Action::ResultE zeAnimationManager::collectActualObjectsAndFields(osg::NodePtr& node)
{
    osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(node);
    if (attachment != osg::NullFC) {
        zeAnimationManager* m = the();
        m->_actualObjectIDs.insert(attachment->getObjectIds().begin(), attachment->getObjectIds().end());
        m->_actualFieldIDs.insert(attachment->getFieldIds().begin(), attachment->getFieldIds().end());
    }
    return osg::Action::Continue;
}

void zeAnimationManager::walkScene(osg::Action::ResultE (*step)(osg::NodePtr&))
{
    if (_sceneRoot != osg::NullFC)
        osg::traverse(_sceneRoot,
                      osg::osgTypedFunctionFunctor1CPtrRef<osg::Action::ResultE, osg::NodePtr>(step));
}

// ---- Animation file ---------------------------------------------------------------------------
//
// The text is built here as a DOM document; saving and loading stream it through zeAnimationFile,
// which shares the encodings and the loader with the builders and readers below.

namespace {

QDomElement buildElement(QDomDocument& document, const zeAnimationObject* object)
{
    const osg::UInt32 type = object->getTypeID();
    QDomElement element = document.createElement(QString::fromLatin1(zeAnimationFile::tagName(type)));
    for (const zeAnimationFile::Attributes::value_type& attribute : zeAnimationFile::objectAttributes(object))
        element.setAttribute(QString::fromLatin1(attribute.first), attribute.second);
    const QString childTag = QString::fromLatin1(zeAnimationFile::childTagName(type));
    for (osg::UInt64 id : zeAnimationFile::listedChildren(object)) {
        QDomElement child = document.createElement(childTag);
        child.setAttribute(QStringLiteral("id"), QString::number(static_cast<qulonglong>(id)));
        element.appendChild(child);
    }
    return element;
}

} // namespace

QString zeAnimationManager::createAnimationXML()
{
    std::printf("creating animation xml...\n");
    std::fflush(stdout);
    QDomDocument document(QStringLiteral("KORU"));
    QDomElement root = document.createElement(QStringLiteral("AnimationPool"));
    root.setAttribute(QStringLiteral("objects"),
                      QString::number(static_cast<qulonglong>(_objects.size() + _fields.size())));
    document.appendChild(root);
    for (const FieldMap::value_type& entry : _fields) {
        if (entry.second)
            root.appendChild(createFieldDomElement(document, entry.second));
    }
    const std::vector<const zeAnimationObject*> rest = zeAnimationFile::fileOrder(
        [&](const zeControlPoint2D* key) { root.appendChild(buildElement(document, key)); });
    for (const zeAnimationObject* object : rest)
        root.appendChild(buildElement(document, object));
    return QZEDomDocumentWriter::toString(document);
}

QDomElement zeAnimationManager::createFieldDomElement(QDomDocument& document, zeAnimationField* field)
{
    if (!field)
        return QDomElement();
    QDomElement element = document.createElement(QStringLiteral("field"));
    for (const zeAnimationFile::Attributes::value_type& attribute : zeAnimationFile::fieldAttributes(field))
        element.setAttribute(QString::fromLatin1(attribute.first), attribute.second);
    return element;
}

QDomElement zeAnimationManager::createPointDomElement(QDomDocument& document, zeControlPoint2D* point)
{
    return point ? buildElement(document, point) : QDomElement();
}

QDomElement zeAnimationManager::createCurveDomElement(QDomDocument& document, zeAnimationCurve2D* curve)
{
    return curve ? buildElement(document, curve) : QDomElement();
}

QDomElement zeAnimationManager::createBlockDomElement(QDomDocument& document, zeAnimationUnit* unit)
{
    return unit ? buildElement(document, unit) : QDomElement();
}

QDomElement zeAnimationManager::createTrackDomElement(QDomDocument& document, zeAnimationStreak* track)
{
    return track ? buildElement(document, track) : QDomElement();
}

QDomElement zeAnimationManager::createClipDomElement(QDomDocument& document, zeAnimationStrip* clip)
{
    return clip ? buildElement(document, clip) : QDomElement();
}

QDomElement zeAnimationManager::createSequenceDomElement(QDomDocument& document,
                                                         zeAnimationSequence* sequence)
{
    return sequence ? buildElement(document, sequence) : QDomElement();
}

bool zeAnimationManager::saveAnimations(const char* path)
{
    return zeAnimationFile::save(path);
}

bool zeAnimationManager::saveAnimations(QWidget* parent)
{
    QString name = QFileDialog::getSaveFileName(parent, QStringLiteral("Save Animations"), QString(),
                                                QStringLiteral("*.xml"));
    if (name.isEmpty())
        return false;
    if (name.right(4) != QLatin1String(".xml"))
        name += QLatin1String(".xml");
    const QByteArray path = name.toUtf8();
    if (!zeFile::checkWrite(path.toStdString(), true, false))
        return false;
    return saveAnimations(path.constData());
}

bool zeAnimationManager::loadAnimations(const QString& source, bool isFile)
{
    QString error;
    zeAnimationFile::Document document;
    if (source.isEmpty())
        error = QStringLiteral("nothing to read");
    else if (zeAnimationFile::isLoading())
        error = QStringLiteral("another load is running");
    else if (isFile ? zeAnimationFile::parseFile(source, document, error)
                    : zeAnimationFile::parseText(source, document, error))
        zeAnimationFile::load(document);
    _lastFileError = error;
    return error.isEmpty();
}

bool zeAnimationManager::loadAnimations(QWidget* parent)
{
    const QString name =
        QFileDialog::getOpenFileName(parent, tr("Load Animations"), QString(), QStringLiteral("*.xml"));
    if (name.isEmpty())
        return false;
    return loadAnimations(name, true);
}

bool zeAnimationManager::loadAnimations(const QDomDocument& dom)
{
    QString error;
    zeAnimationFile::Document document;
    if (zeAnimationFile::isLoading())
        error = QStringLiteral("another load is running");
    else if (zeAnimationFile::parseDom(dom, document, error))
        zeAnimationFile::load(document);
    _lastFileError = error;
    return error.isEmpty();
}

namespace {

template <class T>
T* readObject(const QDomElement& domElement)
{
    zeAnimationFile::Document document;
    const zeAnimationFile::Element element = zeAnimationFile::readElement(domElement, document);
    return zeAnimationCast<T>(zeAnimationFile::createObject(element, document, zeAnimationTypeOf<T>::value));
}

} // namespace

zeAnimationField* zeAnimationManager::readFieldDomElement(const QDomElement& domElement)
{
    zeAnimationFile::Document document;
    const zeAnimationFile::Element element = zeAnimationFile::readElement(domElement, document);
    return zeAnimationFile::createField(element, document);
}

zeControlPoint2D* zeAnimationManager::readPointDomElement(const QDomElement& element)
{
    return readObject<zeControlPoint2D>(element);
}

zeAnimationCurve2D* zeAnimationManager::readCurveDomElement(const QDomElement& element)
{
    return readObject<zeAnimationCurve2D>(element);
}

zeAnimationUnit* zeAnimationManager::readBlockDomElement(const QDomElement& element)
{
    return readObject<zeAnimationUnit>(element);
}

zeAnimationStreak* zeAnimationManager::readTrackDomElement(const QDomElement& element)
{
    return readObject<zeAnimationStreak>(element);
}

zeAnimationStrip* zeAnimationManager::readClipDomElement(const QDomElement& element)
{
    return readObject<zeAnimationStrip>(element);
}

zeAnimationSequence* zeAnimationManager::readSequenceDomElement(const QDomElement& element)
{
    return readObject<zeAnimationSequence>(element);
}

void zeAnimationManager::readChildren(const QDomElement& domElement)
{
    zeAnimationFile::Document document;
    const zeAnimationFile::Element element = zeAnimationFile::readElement(domElement, document);
    zeAnimationFile::readChildren(element, document);
}
