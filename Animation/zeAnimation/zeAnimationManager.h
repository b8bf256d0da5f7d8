#ifndef ZEANIMATIONMANAGER_H
#define ZEANIMATIONMANAGER_H

#include <zeAnimation/zeAnimationConfig.h>

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVector.h>
#include <zeOpenSGExt/OSGAnimationBlock.h>
#include <zeOpenSGExt/OSGAnimationClip.h>
#include <zeOpenSGExt/OSGAnimationControlPoint.h>
#include <zeOpenSGExt/OSGAnimationCurve.h>
#include <zeOpenSGExt/OSGAnimationTrack.h>

#include <QDomDocument>
#include <QDomElement>
#include <QObject>
#include <QString>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class QWidget;

class zeAnimationObject;
class zeControlPoint2D;
class zeAnimationCurve2D;
class zeAnimationUnit;
class zeAnimationStreak;
class zeAnimationStrip;
class zeAnimationSequence;
class zeAnimationField;
template <class T>
class zeAnimationIdIndex;

// The one registry and factory of the library. Every animation object and every animation field
// lives in one of its two maps under a 64-bit identifier; everything else refers to objects by
// identifier and resolves them here at each use, so a destroyed object is simply not found.
class ZEANIMATION_EXPORT zeAnimationManager : public QObject
{
    Q_OBJECT

public:
    // Both enumerations have a fixed 32-bit type: a connection stores whatever kind or action the
    // host gives and passes it on unchanged, values beyond the named ones included.
    enum AnimationTrigger : osg::UInt32
    {
        TriggerStart = 0,
        TriggerEnd = 1
    };

    enum AnimationAction : osg::UInt32
    {
        ActionStart = 0,
        ActionStop = 1
    };

    typedef std::map<osg::UInt64, zeAnimationObject*> ObjectMap;
    typedef std::map<osg::UInt64, zeAnimationField*> FieldMap;

    typedef void (*SetFromAtUpCB)(int camera, const osg::Point<float, 3>& from,
                                  const osg::Point<float, 3>& at, const osg::Vector<float, 3>& up);
    typedef void (*GetFromAtUpCB)(int camera, osg::Point<float, 3>& from, osg::Point<float, 3>& at,
                                  osg::Vector<float, 3>& up);
    typedef void (*SetRollCB)(int camera, const float& roll);
    typedef float (*GetRollCB)(int camera);
    typedef void (*ShowCurvesCB)(const std::vector<zeAnimationCurve2D*>& curves);
    typedef void (*FileIOProgressCB)(unsigned int progress);
    typedef void (*UpdatePasteCB)(bool available);
    typedef void (*ConnectionFunction)();

    // ---- Singleton and set-up -------------------------------------------------------------
    static zeAnimationManager* the();
    void init(QWidget* parent);
    void terminate();
    static void setSceneRootNode(const osg::NodePtr& root);
    static osg::NodePtr getSceneRootNode() { return _sceneRoot; }

    // ---- Identifiers ----------------------------------------------------------------------
    osg::UInt64 random(osg::UInt64 seed);
    osg::UInt64 createUID();
    bool isIDUnique(osg::UInt64 id);
    void setID(osg::UInt64 id, zeAnimationObject* obj);
    void setID(osg::UInt64 id, zeAnimationField* field);

    // ---- Lookups --------------------------------------------------------------------------
    zeAnimationObject* getObject(osg::UInt64 id) const;
    zeAnimationObject* getObject(const std::string& name) const;
    zeControlPoint2D* getPoint2D(osg::UInt64 id) const;
    zeAnimationCurve2D* getCurve2D(osg::UInt64 id) const;
    zeAnimationUnit* getUnit(osg::UInt64 id) const;
    zeAnimationStreak* getStreak(osg::UInt64 id) const;
    zeAnimationStrip* getStrip(osg::UInt64 id) const;
    zeAnimationSequence* getSequence(osg::UInt64 id) const;
    zeAnimationField* getField(osg::UInt64 id) const;
    // The node's field for an attribute ("translateX" and "rotateX" style names are accepted);
    // the node's animation fields are created first when it has none.
    zeAnimationField* getField(const osg::NodePtr& node, std::string attribute);
    ObjectMap getObjects() const { return _objects; }
    FieldMap getFields() const { return _fields; }
    std::size_t getObjectCount() const { return _objects.size(); }
    std::size_t getFieldCount() const { return _fields.size(); }
    bool isObjectNameUnique(const std::string& name) const;

    // Scene queries: parentless, visible objects of one type, in identifier order.
    std::vector<zeAnimationUnit*> getSceneUnits() const;
    std::vector<zeAnimationUnit*> getActiveSceneUnits() const;
    std::vector<zeAnimationStrip*> getSceneStrips() const;
    std::vector<zeAnimationField*> getReferencedFields(osg::UInt32 containerId) const;
    std::vector<zeAnimationCurve2D*> getReferencedCurves(osg::UInt64 fieldId) const;

    // ---- Factory --------------------------------------------------------------------------
    zeAnimationObject* createObject(osg::UInt64 id = 0);
    zeAnimationField* createField(osg::UInt64 id = 0);
    // A field taken over from an animation curve of an older scene.
    zeAnimationField* createField(const osg::AnimationCurvePtr& curve, osg::UInt64 id = 0);
    zeControlPoint2D* createPoint2D(osg::UInt64 id = 0);
    zeControlPoint2D* createPoint2D(float x, float y, osg::UInt64 id = 0);
    zeAnimationCurve2D* createCurve2D(osg::UInt64 id = 0);
    zeAnimationCurve2D* createCurve2D(zeAnimationField* field, std::string name, osg::UInt64 id = 0,
                                      bool attach = false);
    // A curve on the node's field of that attribute; null when the node has no such field.
    zeAnimationCurve2D* createCurve2D(const osg::NodePtr& node, const std::string& attribute);
    zeAnimationUnit* createUnit(osg::UInt64 id = 0);
    zeAnimationUnit* createUnit(const std::string& name, osg::UInt64 id = 0);
    zeAnimationUnit* createUnit(const std::vector<zeAnimationCurve2D*>& curves, std::string name,
                                osg::UInt64 id = 0, bool attach = false);
    zeAnimationStreak* createStreak(osg::UInt64 id = 0);
    zeAnimationStreak* createStreak(const std::string& name, osg::UInt64 id = 0);
    zeAnimationStrip* createStrip(osg::UInt64 id = 0);
    zeAnimationStrip* createStrip(const std::string& name, osg::UInt64 id = 0);
    zeAnimationSequence* createSequence(const std::string& name, osg::UInt64 id = 0);

    // A key added to a curve at x (its value read from the curve there) or at (x, y). Both
    // refuse (false) a null curve or an x that the curve's insert constraint rejects; the new key
    // takes the curve's selection and lock state from the flags.
    bool createCurvePoint(zeAnimationCurve2D* curve, float x, bool select = false);
    bool createCurvePoint(zeAnimationCurve2D* curve, float x, float y, bool select, bool lock, bool snap);

    // ---- Duplication ----------------------------------------------------------------------
    zeAnimationObject* duplicateObject(zeAnimationObject* object);
    zeControlPoint2D* duplicatePoint2D(zeControlPoint2D* point);
    zeAnimationCurve2D* duplicateCurve2D(zeAnimationCurve2D* curve);
    zeAnimationUnit* duplicateUnit(zeAnimationUnit* unit, bool attach = false);
    zeAnimationStreak* duplicateStreak(zeAnimationStreak* streak);
    zeAnimationStrip* duplicateStrip(zeAnimationStrip* strip);
    zeAnimationSequence* duplicateSequence(zeAnimationSequence* sequence);
    zeAnimationField* duplicateField(zeAnimationField* field);

    // ---- Copy and paste --------------------------------------------------------------------
    // The copy buffer holds duplicates of the copied objects, standing alone (no parent) and
    // bound to no node until pasted. Every change of its state is reported through the paste
    // callback: false when a full buffer is emptied, true when it is filled. An object of the
    // buffer that is destroyed meanwhile simply drops out of it.
    bool copy(zeAnimationObject* object);
    bool copy(const std::vector<zeAnimationObject*>& objects);
    bool copy(const osg::NodePtr& node);
    // Hands the buffered objects over to the node (made to animate its fields) and empties the
    // buffer; without `force` only when they fit the node (zeAnimationUtils::checkPasteTo).
    bool paste(const osg::NodePtr& node, bool force);
    void clearCopyBuffer(bool destroy);
    // The objects in the buffer, in order.
    std::vector<zeAnimationObject*> getCopyBuffer() const;

    // ---- Import of older scenes -------------------------------------------------------------
    // Converts the animation containers of older scenes below `root` into objects of the pool,
    // binds them to the nodes they animate and removes the old attachments. The root's own old
    // blocks animate the camera and go to `cameraNode`. Progress (0 to 100) goes to the file
    // progress callback, counting every node of the walk, the root included, against `nodeCount`.
    void importKORUAnimations(const osg::NodePtr& root, const osg::NodePtr& cameraNode,
                              osg::UInt32 nodeCount);
    // The step of that walk for one node.
    static osg::Action::ResultE collectKORUAnimations(const osg::NodePtr& node);
    // A curve from the host's interchange importer: "Fov", "TransformTX"... "TransformSZ" name
    // the node's field, the points become its keys as given. Null, with a message for an
    // attribute that is not one of these, when the node has no such field.
    zeAnimationCurve2D* createCurve2D(const osg::NodePtr& node, std::string attribute,
                                      const std::vector<zeControlPoint2D*>& points, osg::UInt64 id,
                                      bool attach);

    // ---- Destruction ----------------------------------------------------------------------
    void destroyObject(zeAnimationObject* object);
    void destroyPoint2D(zeControlPoint2D* point);
    void destroyCurve2D(zeAnimationCurve2D* curve);
    void destroyUnit(zeAnimationUnit* unit);
    void destroyStreak(zeAnimationStreak* streak);
    void destroyStrip(zeAnimationStrip* strip);
    void destroySequence(zeAnimationSequence* sequence);
    void destroyField(zeAnimationField* field);
    void destroyAllObjects(bool includeHidden);
    void destroyAllFields();
    void destroyUnreferencedObjectsAndFields();
    // Destroys the animation objects and fields bound to the node and removes its animation
    // attachment; with `recursive`, the same for every node below it.
    void destroyNodeObjects(const osg::NodePtr& node, bool recursive);

    // ---- Scene synchronisation ------------------------------------------------------------
    // Makes the node's animation fields, one per animatable float: the components of its core's
    // fields (of the material's for a material group), a transform's rotation, a camera's view,
    // and "visible"; records them in the node's animation attachment. A node that already has
    // fields keeps them. Returns the node's fields.
    std::vector<zeAnimationField*> createAnimationFields(const osg::NodePtr& node);
    const std::vector<std::string>& getAnimationAttributes() const { return _animationAttributes; }
    // The scene walks of setID replace getReplacedID() by getReplacementID() in the attachments.
    osg::UInt64 getReplacedID() const { return _oldID; }
    osg::UInt64 getReplacementID() const { return _newID; }
    static osg::Action::ResultE changeSceneAnimAttachmentIDs(osg::NodePtr& node);
    static osg::Action::ResultE changeSceneAnimAttachmentFieldIDs(osg::NodePtr& node);
    static osg::Action::ResultE collectActualObjectsAndFields(osg::NodePtr& node);

    // ---- Moving ---------------------------------------------------------------------------
    bool moveObjectToStreak(zeAnimationObject* obj, zeAnimationStreak* track);
    // Appends tracks named "Track" until the clip has one at `index`, then moves the object there.
    bool moveObjectToStreak(zeAnimationObject* obj, zeAnimationStrip* clip, osg::UInt32 index);

    // ---- Connections and triggers ---------------------------------------------------------
    bool createConnection(zeAnimationObject* source, AnimationTrigger trigger, zeAnimationObject* target,
                          AnimationAction action);
    bool createConnection(zeAnimationObject* source, AnimationTrigger trigger, ConnectionFunction function);
    void executeTriggers(std::vector<osg::UInt64> keys);

    // ---- Host callbacks -------------------------------------------------------------------
    static void setFromAtUpCB(SetFromAtUpCB cb) { _sCamFAU = cb; }
    static void setGetFromAtUpCB(GetFromAtUpCB cb) { _gCamFAU = cb; }
    static void setRollCB(SetRollCB cb) { _sCamRoll = cb; }
    static void setGetRollCB(GetRollCB cb) { _gCamRoll = cb; }
    static void setShowCurvesCB(ShowCurvesCB cb) { _showCurvesFP = cb; }
    static void setFileIOProgressCB(FileIOProgressCB cb) { _progressFP = cb; }
    static void setUpdatePasteCB(UpdatePasteCB cb) { _updatePasteFP = cb; }

    void setFromAtUp(const osg::Point<float, 3>& from, const osg::Point<float, 3>& at,
                     const osg::Vector<float, 3>& up);
    void getFromAtUp(osg::Point<float, 3>& from, osg::Point<float, 3>& at, osg::Vector<float, 3>& up);
    void setRoll(float roll);
    void getRoll(float& roll);
    void showCurves(const std::vector<zeAnimationCurve2D*>& curves);
    void setFileIOProgress(unsigned int progress);
    void updatePaste(bool available);

    // ---- Diagnostics ----------------------------------------------------------------------
    void objectInfo();
    void printFieldInfo(zeAnimationField* field);

    // ---- Animation file -------------------------------------------------------------------
    // The pool as the text of its XML document, built as a DOM document.
    QString createAnimationXML();
    QDomElement createFieldDomElement(QDomDocument& document, zeAnimationField* field);
    QDomElement createPointDomElement(QDomDocument& document, zeControlPoint2D* point);
    QDomElement createCurveDomElement(QDomDocument& document, zeAnimationCurve2D* curve);
    QDomElement createBlockDomElement(QDomDocument& document, zeAnimationUnit* unit);
    QDomElement createTrackDomElement(QDomDocument& document, zeAnimationStreak* track);
    QDomElement createClipDomElement(QDomDocument& document, zeAnimationStrip* clip);
    QDomElement createSequenceDomElement(QDomDocument& document, zeAnimationSequence* sequence);
    // Writes the same text as createAnimationXML without building the document, and atomically:
    // on failure the file at `path` is left as it was. Only a regular file is ever replaced.
    bool saveAnimations(const char* path);
    bool saveAnimations(QWidget* parent);
    // Reads a document (a file, or with isFile false the text itself) without building it in
    // memory. False when nothing could be read: an empty source, an unreadable file, text that is
    // not a well-formed animation document (getLastFileError tells where and why); the pool is
    // then unchanged. Bad parts of a well-formed document are skipped.
    bool loadAnimations(const QString& source, bool isFile);
    bool loadAnimations(QWidget* parent);
    // The same load from a document already parsed by the caller.
    bool loadAnimations(const QDomDocument& document);
    // Why the last load returned false; empty after a successful one.
    QString getLastFileError() const { return _lastFileError; }
    zeAnimationField* readFieldDomElement(const QDomElement& element);
    zeControlPoint2D* readPointDomElement(const QDomElement& element);
    zeAnimationCurve2D* readCurveDomElement(const QDomElement& element);
    zeAnimationUnit* readBlockDomElement(const QDomElement& element);
    zeAnimationStreak* readTrackDomElement(const QDomElement& element);
    zeAnimationStrip* readClipDomElement(const QDomElement& element);
    zeAnimationSequence* readSequenceDomElement(const QDomElement& element);
    void readChildren(const QDomElement& element);

    // Not part of the interface: the library's own sources define this type and take their bulk
    // steps (linking a loaded file, the editing indexes) through it. It is never defined in an
    // installed header, so a host cannot use it.
    struct Internal;

private:
    zeAnimationManager();
    ~zeAnimationManager();
    zeAnimationManager(const zeAnimationManager&) = delete;
    zeAnimationManager& operator=(const zeAnimationManager&) = delete;

    osg::UInt64 step();
    osg::UInt64 drawFreshID();
    void registerObject(zeAnimationObject* object);
    void unregisterObject(osg::UInt64 id);
    void unregisterPointer(zeAnimationObject* object);
    void registerField(zeAnimationField* field);
    static void deleteObject(zeAnimationObject* object);
    template <class T>
    T* registerCreated(T* object);
    bool isRegistered(const zeAnimationObject* object) const;
    void detachFromScene(zeAnimationObject* object);
    zeAnimationObject* registeredParent(const zeAnimationObject* object) const;
    void walkScene(osg::Action::ResultE (*step)(osg::NodePtr&));
    void attachUnit(zeAnimationUnit* unit);

    // Copy and paste.
    zeAnimationObject* bufferedObject(osg::UInt64 id) const;
    std::vector<zeAnimationObject*> takeCopyBuffer();
    void fillCopyBuffer(const std::vector<zeAnimationObject*>& duplicates);

    // Import of older scenes: each converter returns the new object, or null when there is
    // nothing to convert.
    zeAnimationStrip* importClip(const osg::AnimationClipPtr& clip, zeAnimationStreak* parent);
    zeAnimationStreak* importTrack(const osg::AnimationTrackPtr& track, zeAnimationStrip* parent);
    zeAnimationUnit* importBlock(const osg::AnimationBlockPtr& block, zeAnimationStreak* parent);
    zeAnimationSequence* importSequence(const osg::AnimationBlockPtr& block, zeAnimationStreak* parent);
    zeAnimationCurve2D* importCurve(const osg::AnimationCurvePtr& curve, zeAnimationUnit* block,
                                    osg::NodePtr node);
    zeControlPoint2D* importPoint(const osg::AnimationControlPointPtr& point, zeAnimationCurve2D* curve);
    // False when the old container was converted before in this import (it may be listed twice,
    // or contain itself); otherwise it is marked as converted.
    bool firstImport(const osg::FieldContainerPtr& container);
    // Adds a converted object to its new parent; when the parent refuses it, the object and its
    // subtree are destroyed and the result is null.
    zeAnimationObject* adoptImported(zeAnimationObject* parent, zeAnimationObject* child);

    osg::UInt64 _oldID;
    osg::UInt64 _newID;
    std::vector<std::string> _animationAttributes;
    ObjectMap _objects;
    FieldMap _fields;
    std::set<osg::UInt64> _actualObjectIDs;
    std::set<osg::UInt64> _actualFieldIDs;
    // Connection targets are kept by identifier and resolved when a trigger fires, so destroying
    // a target can never leave a dangling pointer behind.
    std::map<osg::UInt64, std::pair<osg::UInt64, AnimationAction>> _objectConnections;
    std::map<osg::UInt64, ConnectionFunction> _functionConnections;
    // The copy buffer holds identifiers. An identifier leaves _copyBufferLive when its object
    // leaves the registry, so a destroyed buffered object is never resolved again, even should
    // its identifier be given to another object later.
    std::vector<osg::UInt64> _copyBuffer;
    std::unordered_set<osg::UInt64> _copyBufferLive;
    // While an import runs: the old containers converted so far, and how deep it is nested.
    std::unordered_set<osg::UInt32> _importSeen;
    osg::UInt32 _importDepth = 0;

    // Index over _objects: lookups by identifier run on every hierarchy update and frame.
    std::unique_ptr<zeAnimationIdIndex<zeAnimationObject>> _objectIndex;
    // The same over _fields: every curve evaluation looks its field up.
    std::unique_ptr<zeAnimationIdIndex<zeAnimationField>> _fieldIndex;
    // While destroyAllObjects runs: the objects known to survive the run. Only they are told when
    // a child goes; every other parent is destroyed later in the same run anyway.
    const std::unordered_set<osg::UInt64>* _bulkSurvivors;
    QString _lastFileError;

    static osg::NodePtr _sceneRoot;
    static osg::UInt32 _nodeCounter;
    static osg::UInt32 _importNodeCount;
    static SetFromAtUpCB _sCamFAU;
    static GetFromAtUpCB _gCamFAU;
    static SetRollCB _sCamRoll;
    static GetRollCB _gCamRoll;
    static ShowCurvesCB _showCurvesFP;
    static FileIOProgressCB _progressFP;
    static UpdatePasteCB _updatePasteFP;
    static osg::UInt64 _uidSeed;

    friend class zeAnimationObject;
};

#endif // ZEANIMATIONMANAGER_H
