#include <zeAnimation/zeAnimationController.h>

#include "zeAnimationHelpers.h"
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <zeOpenSGUtils/zeOpenSGUtils.h>
#include <zeUtils/zeMessage.h>

#include "zeAnimationRevision.h"
#include "zeCurveKernel.h"
#include "zeEditIndex.h"
#include "zeEvaluationPlan.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <unordered_set>

float zeAnimationController::_fps = 25.0f;
float zeAnimationController::_currentFrame = 0.0f;
float zeAnimationController::_fullFrame = 0.0f;
float zeAnimationController::_begin = 0.0f;
float zeAnimationController::_end = 0.0f;
float zeAnimationController::_start = 0.0f;
float zeAnimationController::_startTime = 0.0f;
float zeAnimationController::_pauseStartTime = 0.0f;
bool zeAnimationController::_playing = false;
bool zeAnimationController::_pausing = false;
bool zeAnimationController::_repeat = false;
bool zeAnimationController::_reverse = false;
bool zeAnimationController::_forcePlayLoopFullFrame = false;
bool zeAnimationController::_callWidgets = false;
bool zeAnimationController::_emitCurrentFrame = false;
std::vector<osg::UInt64> zeAnimationController::_playingObjects;
std::vector<zeAnimationCurve2D*> zeAnimationController::_curves;
std::vector<zeAnimationSequence*> zeAnimationController::_seqs;
std::list<zeAnimationController::FrameListenerCB> zeAnimationController::_frameListeners;
zeAnimationController::SimulationTimeCB zeAnimationController::_timeCB = nullptr;
zeAnimationController::MainCameraCB zeAnimationController::_cameraCB = nullptr;
zeAnimationController::ExecuteSequenceCB zeAnimationController::_seqCB = nullptr;
zeAnimationController::CurrentFrameCB zeAnimationController::_currentFrameTimeLineCB = nullptr;
zeAnimationController::CurrentFrameCB zeAnimationController::_currentFrameCurveEditorCB = nullptr;
zeAnimationController::CurrentFrameCB zeAnimationController::_currentFrameClipMakerCB = nullptr;
zeAnimationController::UpdateNavigatorCB zeAnimationController::_updateNavCB = nullptr;
zeAnimationController::EnableSimulationCB zeAnimationController::_enableSimCB = nullptr;
zeAnimationController::IsSimulationEnableCB zeAnimationController::_isSimEnableCB = nullptr;

namespace {

// The range an object plays over: its play range when it uses one, else its interval.
void objectRange(const zeAnimationObject* object, float& b, float& e)
{
    if (object->usesPlayRange()) {
        b = object->getStartPlayRange();
        e = object->getEndPlayRange();
    } else {
        b = object->getBegin();
        e = object->getEnd();
    }
}

// A whole frame as the int the host is told; frames beyond the int range saturate.
int wholeFrameNumber(float whole)
{
    if (whole >= 2147483648.0f)
        return std::numeric_limits<int>::max();
    if (whole < -2147483648.0f)
        return std::numeric_limits<int>::min();
    return static_cast<int>(whole);
}

enum MessageName
{
    CurrentFrameChanged,
    CurrentFullFrameChanged,
    FinishedPlayingGlobal
};

void sendMessage(MessageName name, zeMessage& message)
{
    // Built once: playback sends two messages every frame, and a name longer than the short-string
    // buffer would cost an allocation each time. What remains per frame is what the message record
    // needs for its values.
    static const std::string names[] = {"currentFrameChanged", "currentFullFrameChanged",
                                        "finishedPlayingGlobal"};
    zeOpenSGUtils::call(names[name], message, 0);
}

} // namespace

// ---- Singleton and host callbacks -------------------------------------------------------------

zeAnimationController::zeAnimationController() : currentObject(0), evaluateActiveUnits(false) {}

zeAnimationController* zeAnimationController::the()
{
    static zeAnimationController instance;
    return &instance;
}

void zeAnimationController::setTimeLineCurrentFrame(float frame)
{
    callIfSet(_currentFrameTimeLineCB, frame);
}

void zeAnimationController::setCurveEditorCurrentFrame(float frame)
{
    callIfSet(_currentFrameCurveEditorCB, frame);
}

void zeAnimationController::setClipMakerCurrentFrame(float frame)
{
    callIfSet(_currentFrameClipMakerCB, frame);
}

void zeAnimationController::executeSequence(const std::string& name)
{
    callIfSet(_seqCB, name);
}

void zeAnimationController::updateNavigator(bool update)
{
    callIfSet(_updateNavCB, update);
}

void zeAnimationController::enableSimulation(bool enable)
{
    callIfSet(_enableSimCB, enable);
}

bool zeAnimationController::isSimulationEnable()
{
    return askIfSet(_isSimEnableCB, false);
}

void zeAnimationController::addFrameListenerCB(FrameListenerCB cb)
{
    if (cb)
        _frameListeners.push_back(cb);
}

void zeAnimationController::subFrameListenerCB(FrameListenerCB cb)
{
    if (cb)
        _frameListeners.remove(cb);
}

void zeAnimationController::callFrameListeners()
{
    // A listener may add or remove listeners; walk a copy.
    const std::list<FrameListenerCB> listeners = _frameListeners;
    for (FrameListenerCB cb : listeners) {
        if (cb)
            cb();
    }
}

float zeAnimationController::getSimulationTime()
{
    if (_timeCB)
        return static_cast<float>(_timeCB());
    typedef std::chrono::steady_clock Clock;
    static std::once_flag once;
    static Clock::time_point origin;
    std::call_once(once, [] { origin = Clock::now(); });
    const std::chrono::duration<double> elapsed = Clock::now() - origin;
    return static_cast<float>(elapsed.count());
}

void zeAnimationController::setCurrentFrame(float frame, AnimationWidget sender)
{
    _currentFrame = frame;
    zeMessage message;
    message.setValue("frame", boost::any(frame), true);
    message.setValue("sender", boost::any(sender), true);
    sendMessage(CurrentFrameChanged, message);
}

osg::PerspectiveCamera2Ptr zeAnimationController::getMainCamera()
{
    return askIfSet(_cameraCB, osg::PerspectiveCamera2Ptr(osg::NullFC));
}

// ---- Evaluation -------------------------------------------------------------------------------

namespace {

void readAt(zeAnimationCurve2D* curve, float frame, std::vector<zeAnimationField*>& changed)
{
    float value = 0.0f;
    if (!zeAnimationController::computeCurveValue(curve, frame, value))
        return;
    zeAnimationField* field = curve->getAnimationField();
    if (!field)
        return;
    field->value = value;
    changed.push_back(field);
}

} // namespace

namespace {

// The plans of the objects evaluated so far, by identifier. A plan is rebuilt when the pool
// changed; idle plans are dropped when the set grows large, as objects come and go.
typedef std::unordered_map<osg::UInt64, std::unique_ptr<zeEvaluationPlan>> PlanMap;

PlanMap& plans()
{
    static PlanMap byId;
    return byId;
}

const std::size_t kMaxPlans = 4096;

void evaluateWithPlan(zeAnimationObject* object, float frame, bool motionBlurOnly)
{
    PlanMap& all = plans();
    PlanMap::iterator found = all.find(object->getId());
    if (found == all.end()) {
        if (all.size() >= kMaxPlans) {
            for (PlanMap::iterator it = all.begin(); it != all.end();)
                it = it->second->busy() ? std::next(it) : all.erase(it);
        }
        found = all.emplace(object->getId(), std::unique_ptr<zeEvaluationPlan>(new zeEvaluationPlan)).first;
    }
    if (!found->second->busy()) {
        found->second->evaluate(object, frame, motionBlurOnly);
        return;
    }
    // Evaluated again from inside its own scene writes (through a host callback): a plan of its
    // own for this call.
    zeEvaluationPlan nested;
    nested.evaluate(object, frame, motionBlurOnly);
}

} // namespace

bool zeAnimationController::evaluateObject(zeAnimationObject* object, float frame, bool motionBlurOnly)
{
    if (!object)
        return true;
    // Writing the scene may call the host's camera, which may destroy this object.
    const zeAnimationObject::Watch watched(object);
    evaluateWithPlan(object, frame, motionBlurOnly);
    object = watched.get();
    if (!object)
        return true; // destroyed by the host: nothing of it plays on

    // Everything that reads the object is done before the host's sequences run: a host sequence
    // may destroy this very object.
    float b = 0.0f;
    float e = 0.0f;
    objectRange(object, b, e);
    const bool finished =
        zeCurveKernel::playedPast(frame, b, e, object->isRepeating(), object->getReversePlay());

    const float whole = std::trunc(frame);
    const bool newWholeFrame = whole != object->getLastFullFrame();
    object->setLastFullFrame(whole);
    if (newWholeFrame) {
        const std::vector<zeAnimationSequence*> sequences = object->getSequencesRecursive();
        if (!sequences.empty())
            evaluateSequences(sequences, whole);
    }
    return finished;
}

void zeAnimationController::evaluate(float frame, bool motionBlurOnly)
{
    evaluate(frame, true, true, evaluateActiveUnits, motionBlurOnly);
}

void zeAnimationController::evaluate(float frame, bool evaluateCurrentObject, bool evaluateCurrentCurves,
                                     bool evaluateActive, bool motionBlurOnly)
{
    zeAnimationManager* m = manager();
    if (evaluateCurrentObject) {
        if (zeAnimationObject* object = m->getObject(currentObject))
            evaluateObject(object, frame, motionBlurOnly);
    }
    if (evaluateCurrentCurves && !currentCurves.empty()) {
        std::vector<zeAnimationCurve2D*> curves;
        for (osg::UInt64 id : currentCurves) {
            if (zeAnimationCurve2D* curve = m->getCurve2D(id))
                curves.push_back(curve);
        }
        evaluateCurves(curves, frame, motionBlurOnly);
    }
    if (evaluateActive) {
        // One block's evaluation may call the host, which may destroy the others: each is looked
        // up again when its turn comes.
        std::vector<osg::UInt64> ids;
        for (zeAnimationUnit* unit : m->getActiveSceneUnits())
            ids.push_back(unit->getId());
        for (osg::UInt64 id : ids) {
            if (zeAnimationUnit* unit = m->getUnit(id))
                evaluateObject(unit, frame, motionBlurOnly);
        }
    }
}

void zeAnimationController::evaluateCurves(const std::vector<zeAnimationCurve2D*>& curves, float frame,
                                           bool motionBlurOnly)
{
    IntervalUnion span;
    for (zeAnimationCurve2D* curve : curves) {
        if (curve && curve->isActive())
            span.add(curve->getBegin(), curve->getEnd());
    }
    evaluateCurves(curves, span.begin, span.end, frame, motionBlurOnly);
}

void zeAnimationController::evaluateCurves(const std::vector<zeAnimationCurve2D*>& curves, float begin,
                                           float end, float frame, bool motionBlurOnly)
{
    std::vector<zeAnimationCurve2D*> sorted;
    sorted.reserve(curves.size());
    for (zeAnimationCurve2D* curve : curves) {
        if (curve)
            sorted.push_back(curve);
    }
    const float f = std::min(end, std::max(begin, frame));
    const auto wanted = [motionBlurOnly](const zeAnimationCurve2D* curve) {
        return curve->isActive() && (!motionBlurOnly || curve->getMotionBlur());
    };
    std::vector<zeAnimationField*> changed;
    std::stable_sort(sorted.begin(), sorted.end(), zeAnimationUtils::sortBeginBased);
    for (zeAnimationCurve2D* curve : sorted) {
        if (wanted(curve) && curve->getBegin() > f)
            readAt(curve, curve->getBegin(), changed);
    }
    std::stable_sort(sorted.begin(), sorted.end(), zeAnimationUtils::sortEndBased);
    for (zeAnimationCurve2D* curve : sorted) {
        if (wanted(curve) && curve->getEnd() < f)
            readAt(curve, curve->getEnd(), changed);
    }
    for (zeAnimationCurve2D* curve : sorted) {
        if (wanted(curve) && curve->getBegin() <= f && f <= curve->getEnd())
            readAt(curve, f, changed);
    }
    updateAnimationFields(changed);
}

void zeAnimationController::updateAnimationFields(const std::vector<zeAnimationField*>& fields)
{
    // A write may call the host's camera, which may destroy fields of this very batch: once the
    // pool changed, a field is written only while the registry still holds it.
    const zeAnimationManager* m = manager();
    const osg::UInt64 epoch = zeAnimationRevision::current();
    std::size_t i = 0;
    for (; i < fields.size() && zeAnimationRevision::current() == epoch; ++i)
        zeAnimationUtils::setOSGFieldValue(fields[i]);
    if (i == fields.size())
        return;
    std::unordered_set<const zeAnimationField*> live;
    osg::UInt64 liveEpoch = ~zeAnimationRevision::current();
    for (; i < fields.size(); ++i) {
        if (liveEpoch != zeAnimationRevision::current()) {
            live.clear();
            for (const zeAnimationManager::FieldMap::value_type& entry : m->getFields())
                live.insert(entry.second);
            liveEpoch = zeAnimationRevision::current();
        }
        if (live.count(fields[i]))
            zeAnimationUtils::setOSGFieldValue(fields[i]);
    }
}

// ---- Transport --------------------------------------------------------------------------------

bool zeAnimationController::enqueueObject(zeAnimationObject* object, bool immediately)
{
    if (!object || !object->isActive())
        return false;
    if (immediately)
        playQueue.insert(object->getId());
    else
        waitingObjects.push_back(object->getId());
    return true;
}

void zeAnimationController::enqueueObjects(const std::vector<zeAnimationObject*>& objects, bool immediately)
{
    for (zeAnimationObject* object : objects)
        enqueueObject(object, immediately);
}

bool zeAnimationController::dequeueObject(zeAnimationObject* object)
{
    return object && playQueue.erase(object->getId()) != 0;
}

void zeAnimationController::enqueueWaitingObjects()
{
    // Moved out first: starting an object may queue others, which wait for the next pass.
    std::vector<osg::UInt64> waiting;
    waiting.swap(waitingObjects);
    playQueue.insert(waiting.begin(), waiting.end());
}

void zeAnimationController::scheduleStart(zeAnimationObject* object)
{
    if (object && object->isActive())
        waitingObjects.push_back(object->getId());
}

void zeAnimationController::removeRunning(zeAnimationObject* object)
{
    if (object)
        playQueue.erase(object->getId());
}

std::vector<osg::UInt64> zeAnimationController::getPlayQueue() const
{
    std::vector<osg::UInt64> ids;
    zeAnimationManager* m = manager();
    for (osg::UInt64 id : playQueue) {
        if (m->getObject(id))
            ids.push_back(id);
    }
    return ids;
}

void zeAnimationController::loop()
{
    if (_pausing)
        return;
    const float t = getSimulationTime();
    zeAnimationManager* m = manager();
    std::vector<osg::UInt64> finished;
    // A snapshot: triggers fired during the pass may stop (erase) queued objects, which are then
    // no longer visited.
    const std::vector<osg::UInt64> queued(playQueue.begin(), playQueue.end());
    for (osg::UInt64 id : queued) {
        if (playQueue.count(id) == 0)
            continue;
        zeAnimationObject* object = m->getObject(id);
        if (!object) {
            playQueue.erase(id); // destroyed while queued
            continue;
        }
        if (!object->isActive() || object->isPausing())
            continue;
        float b = 0.0f;
        float e = 0.0f;
        objectRange(object, b, e);
        if (!object->isPlaying()) {
            object->setStartTime(t);
            object->setStopTime(t + (e - b) / _fps);
            for (zeAnimationSequence* sequence : object->getSequencesRecursive())
                sequence->setDirty(true);
        }
        const float s = object->usesPlayRange() ? object->getStartPlay() : b;
        const float dt = (t - object->getStartTime()) * _fps;
        const float frame = object->getReversePlay() ? s - dt : s + dt;
        _currentFrame = frame;
        if (evaluateObject(object, frame, false))
            finished.push_back(id);
        // The object may have been destroyed by a host callback during its evaluation.
        if (m->getObject(id) == object)
            object->triggerLoop(frame);
    }
    for (osg::UInt64 id : finished) {
        if (zeAnimationObject* object = m->getObject(id))
            object->setUsePlayRange(false);
        playQueue.erase(id);
    }
    enqueueWaitingObjects();
}

void zeAnimationController::playLoop()
{
    if (_pausing || !_playing)
        return;
    const float t = getSimulationTime();
    float frame = (t - _startTime) * _fps;
    if (_reverse)
        frame = -frame;
    frame += _start;
    if (_repeat)
        frame = zeCurveKernel::repeatWrap(frame, _begin, _end);
    if (_forcePlayLoopFullFrame)
        frame = roundHalfAway(frame);
    setCurrentFrame(frame, PlayGlobal);
    const float whole = floorf(frame);
    // NaN is no frame: no whole-frame message for it, and the last whole frame stays.
    if (whole != _fullFrame && !std::isnan(whole)) {
        _fullFrame = whole;
        zeMessage message;
        message.setValue("frame", boost::any(wholeFrameNumber(whole)), true);
        sendMessage(CurrentFullFrameChanged, message);
    }
    zeAnimationManager* m = manager();
    // By index: a host callback may change the list while it is walked.
    for (std::size_t i = 0; i < _playingObjects.size(); ++i)
        evaluateObject(m->getObject(_playingObjects[i]), frame, false);
    if ((frame < _begin && _reverse) || (frame > _end && !_reverse)) {
        _playing = false;
        zeMessage message;
        message.setValue("finished", boost::any(true), true);
        sendMessage(FinishedPlayingGlobal, message);
    }
}

void zeAnimationController::pause(bool pausing)
{
    if (pausing == _pausing)
        return;
    const float t = getSimulationTime();
    if (pausing) {
        _pauseStartTime = t;
        _pausing = true;
        return;
    }
    zeAnimationManager* m = manager();
    for (osg::UInt64 id : playQueue) {
        if (zeAnimationObject* object = m->getObject(id))
            object->setStartTime(object->getStartTime() + (t - _pauseStartTime));
    }
    _pausing = false;
}

void zeAnimationController::pause(zeAnimationObject* object, bool pausing)
{
    if (!object)
        return;
    // The host's clock may destroy the object.
    const zeAnimationObject::Watch watched(object);
    const float t = getSimulationTime();
    object = watched.get();
    if (!object)
        return;
    object->setPausing(pausing);
    if (pausing)
        object->setPauseTime(t);
    else
        object->setStartTime(object->getStartTime() + (t - object->getPauseTime()));
}

void zeAnimationController::stop()
{
    zeAnimationManager* m = manager();
    for (osg::UInt64 id : std::vector<osg::UInt64>(playQueue.begin(), playQueue.end())) {
        if (zeAnimationObject* object = m->getObject(id))
            object->setPlaying(false);
    }
    playQueue.clear();
}

void zeAnimationController::reset()
{
    zeAnimationManager* m = manager();
    for (osg::UInt64 id : std::vector<osg::UInt64>(playQueue.begin(), playQueue.end())) {
        if (zeAnimationObject* object = m->getObject(id)) {
            const zeAnimationObject::Watch watched(object);
            evaluateObject(object, object->getBegin(), false);
            if ((object = watched.get()))
                object->setPlaying(false);
        }
    }
    playQueue.clear();
}

void zeAnimationController::reset(zeAnimationObject* object)
{
    if (!object)
        return;
    // A host sequence run by the evaluation may destroy the object.
    const osg::UInt64 id = object->getId();
    const zeAnimationObject::Watch watched(object);
    evaluateObject(object, object->usesPlayRange() ? object->getStartPlayRange() : object->getBegin(), false);
    if ((object = watched.get()))
        object->setPlaying(false);
    playQueue.erase(id);
}

void zeAnimationController::gotoEnd(zeAnimationObject* object)
{
    if (!object)
        return;
    const osg::UInt64 id = object->getId();
    evaluateObject(object, object->usesPlayRange() ? object->getEndPlayRange() : object->getEnd(), false);
    playQueue.erase(id);
}

void zeAnimationController::playGlobal(const std::vector<osg::UInt64>& ids, bool reverse, bool repeat,
                                       float begin, float end, float start)
{
    if (&ids != &_playingObjects)
        _playingObjects = ids;
    _reverse = reverse;
    _repeat = repeat;
    if (begin != 0.0f || end != 0.0f || start != 0.0f) {
        _begin = begin;
        _end = end;
        _start = start;
    } else {
        IntervalUnion span;
        zeAnimationManager* m = manager();
        for (osg::UInt64 id : _playingObjects) {
            if (const zeAnimationObject* object = m->getObject(id))
                span.add(object->getBegin(), object->getEnd());
        }
        _begin = span.begin;
        _end = span.end;
        _start = _currentFrame;
    }
    reset();
    _startTime = getSimulationTime();
    _playing = true;
}

void zeAnimationController::playGlobal(osg::UInt64 id, bool reverse, bool repeat, float begin, float end,
                                       float start)
{
    playGlobal(std::vector<osg::UInt64>(1, id), reverse, repeat, begin, end, start);
}

void zeAnimationController::showGlobalFrame(float frame)
{
    setTimeLineCurrentFrame(frame);
    setCurveEditorCurrentFrame(frame);
    setClipMakerCurrentFrame(frame);
}

void zeAnimationController::gotoGlobal(zeAnimationObject* object, bool atEnd)
{
    _playing = false;
    if (!object)
        return;
    _curves = object->getCurves();
    _seqs = object->getSequencesRecursive();
    const float frame = atEnd ? object->getEnd() : object->getBegin();
    evaluateObject(object, frame, false);
    showGlobalFrame(frame);
}

void zeAnimationController::gotoGlobal(const std::vector<zeAnimationCurve2D*>& curves, bool atEnd)
{
    _playing = false;
    if (curves.empty())
        return;
    _curves = curves;
    _seqs.clear();
    // The search starts from 0 on purpose: curves that all begin after 0 are shown at frame 0
    // (and curves that all end before 0 at frame 0).
    float frame = 0.0f;
    for (zeAnimationCurve2D* curve : _curves) {
        if (curve)
            frame = atEnd ? std::max(frame, curve->getEnd()) : std::min(frame, curve->getBegin());
    }
    evaluateCurves(_curves, frame, false);
    showGlobalFrame(frame);
}

void zeAnimationController::gotoGlobalBegin(zeAnimationObject* object)
{
    gotoGlobal(object, false);
}

void zeAnimationController::gotoGlobalEnd(zeAnimationObject* object)
{
    gotoGlobal(object, true);
}

void zeAnimationController::gotoGlobalBegin(const std::vector<zeAnimationCurve2D*>& curves)
{
    gotoGlobal(curves, false);
}

void zeAnimationController::gotoGlobalEnd(const std::vector<zeAnimationCurve2D*>& curves)
{
    gotoGlobal(curves, true);
}

void zeAnimationController::stopGlobal()
{
    _playing = false;
    _curves.clear();
    _seqs.clear();
}

bool zeAnimationController::isPlaying() const
{
    zeAnimationManager* m = manager();
    for (osg::UInt64 id : playQueue) {
        if (m->getObject(id))
            return true;
    }
    return false;
}

bool zeAnimationController::isPlaying(const std::string& name) const
{
    zeAnimationManager* m = manager();
    for (osg::UInt64 id : playQueue) {
        const zeAnimationObject* object = m->getObject(id);
        if (object && object->getName() == name && !object->isPausing())
            return true;
    }
    return false;
}

// ---- Sequences --------------------------------------------------------------------------------

void zeAnimationController::initSequences(const std::vector<zeAnimationSequence*>& sequences)
{
    for (zeAnimationSequence* sequence : sequences) {
        if (sequence)
            sequence->setDirty(true);
    }
}

void zeAnimationController::evaluateSequences(const std::vector<zeAnimationSequence*>& sequences, float frame)
{
    // Every host callback below may destroy animation objects, these sequences among them: the
    // identifiers are taken before the first one, and each sequence is looked up again before it
    // is touched; a destroyed one is skipped.
    std::vector<osg::UInt64> ids;
    ids.reserve(sequences.size());
    for (zeAnimationSequence* sequence : sequences)
        ids.push_back(sequence ? sequence->getId() : 0);
    const bool simulationWasOn = isSimulationEnable();
    if (simulationWasOn)
        enableSimulation(false);
    zeAnimationManager* m = manager();
    for (std::size_t i = 0; i < ids.size(); ++i) {
        zeAnimationSequence* sequence = m->getSequence(ids[i]);
        if (!sequence || sequence != sequences[i] || !sequence->isActive())
            continue;
        // An armed sequence fires once as soon as playback is at or past its begin, even after a
        // jump past its end; inside its range it fires at every whole-frame change.
        if (frame >= sequence->getBegin() && (sequence->isDirty() || frame <= sequence->getEnd())) {
            executeSequence(std::string(sequence->getName()));
            if (m->getSequence(ids[i]) == sequence)
                sequence->setDirty(false);
        }
    }
    if (simulationWasOn)
        enableSimulation(true);
}

// ---- Motion blur ------------------------------------------------------------------------------

bool zeAnimationController::motionBlurFrame(float t, const char* where, float& frame)
{
    osg::PerspectiveCamera2Ptr camera = getMainCamera();
    if (camera == osg::NullFC) {
        std::printf("ERROR: zeAnimationController::%s: Can't get active camera!\n", where);
        std::fflush(stdout);
        return false;
    }
    frame = static_cast<float>((1.0 / camera->getShutterSpeed()) * _fps * t + _currentFrame);
    return true;
}

void zeAnimationController::executeMotionBlur(float t)
{
    float frame = 0.0f;
    if (!motionBlurFrame(t, "executeMotionBlur", frame))
        return;
    evaluate(frame, true);
    updateNavigator(false);
}

void zeAnimationController::executeMotionBlur(float t, zeAnimationObject* object)
{
    // The host's camera callback may destroy the object.
    const zeAnimationObject::Watch watched(object);
    float frame = 0.0f;
    if (!motionBlurFrame(t, "executeMotionBlur", frame) || !(object = watched.get()))
        return;
    std::vector<zeAnimationCurve2D*> curves;
    for (zeAnimationCurve2D* curve : object->getCurves()) {
        if (curve->isActive() && curve->getMotionBlur() && curve->getBegin() <= frame &&
            frame <= curve->getEnd())
            curves.push_back(curve);
    }
    if (!curves.empty())
        evaluateCurves(curves, object->getBegin(), object->getEnd(), frame, true);
}

void zeAnimationController::executeMotionBlurOnActiveUnits(float t)
{
    float frame = 0.0f;
    if (!motionBlurFrame(t, "executeMotionBlurOnActiveUnits", frame))
        return;
    std::vector<zeAnimationCurve2D*> curves;
    IntervalUnion span;
    for (zeAnimationUnit* unit : manager()->getActiveSceneUnits()) {
        float ub = 0.0f;
        float ue = 0.0f;
        objectRange(unit, ub, ue);
        if (!(ub <= frame && frame <= ue))
            continue;
        for (zeAnimationCurve2D* curve : unit->getCurves()) {
            if (curve->isActive() && curve->getMotionBlur() && curve->getBegin() <= frame &&
                frame <= curve->getEnd()) {
                curves.push_back(curve);
                span.add(curve->getBegin(), curve->getEnd());
            }
        }
    }
    evaluateCurves(curves, span.begin, span.end, frame, true);
}

void zeAnimationController::resetMotionBlur()
{
    evaluate(_currentFrame, true);
}

// ---- Curve evaluation --------------------------------------------------------------------------

bool zeAnimationController::computeCurveValue(zeAnimationCurve2D* curve, float frame, float& value)
{
    if (!curve)
        return false;
    // The curve's key index answers the map's upper bound without building the map.
    const zeControlPoint2D* k0 = nullptr;
    const zeControlPoint2D* k1 = nullptr;
    switch (zeKeyIndex::locateSegment(curve, frame, k0, k1)) {
    case zeKeyIndex::TooFewKeys:
        return false;
    case zeKeyIndex::BeforeFirst: // the second key's value, as it has always been
    case zeKeyIndex::AfterLast:
        value = k0->getY();
        return true;
    case zeKeyIndex::InsideSegment:
        break;
    }
    zeCurveKernel::Segment segment;
    zeCurveKernel::prepareSegment(segment, k0->getX(), k0->getY(), k0->getOutTangentX(), k0->getOutTangentY(),
                                  k1->getInTangentX(), k1->getInTangentY(), k1->getX(), k1->getY());
    return zeCurveKernel::solveSegment(segment, frame, value);
}
