#ifndef ZEANIMATIONCONTROLLER_H
#define ZEANIMATIONCONTROLLER_H

#include <zeAnimation/zeAnimationConfig.h>

#include <OpenSG/OSGBaseTypes.h>
#include <zeOpenSGExt/OSGPerspectiveCamera2.h>

#include <list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

class zeAnimationObject;
class zeAnimationCurve2D;
class zeAnimationSequence;
class zeAnimationField;

// The playback engine. The host drives it once per rendered frame (loop() for objects playing on
// their own, playLoop() for global playback) and listens through callbacks and the messages
// "currentFrameChanged", "currentFullFrameChanged" and "finishedPlayingGlobal". Nearly all state
// is class-wide; the one instance holds the play queue.
class ZEANIMATION_EXPORT zeAnimationController
{
public:
    // Who moved the current frame. The library itself only ever sends PlayGlobal (3); any other
    // value the host's widgets use is passed through unchanged (hence the fixed 32-bit type).
    enum AnimationWidget : osg::UInt32
    {
        NoWidget = 0,
        TimeLine = 1,
        CurveEditor = 2,
        PlayGlobal = 3,
        ClipMaker = 4,
        Navigator = 5
    };

    typedef double (*SimulationTimeCB)();
    typedef osg::PerspectiveCamera2Ptr (*MainCameraCB)();
    typedef void (*ExecuteSequenceCB)(const std::string& name);
    typedef void (*CurrentFrameCB)(float frame);
    typedef void (*UpdateNavigatorCB)(bool update);
    typedef void (*EnableSimulationCB)(bool enable);
    typedef bool (*IsSimulationEnableCB)();
    typedef void (*FrameListenerCB)();

    static zeAnimationController* the();

    // ---- Plain state ----------------------------------------------------------------------
    static void setFPS(float fps) { _fps = fps; }
    static float getFPS() { return _fps; }
    static float getCurrentFrame() { return _currentFrame; }
    static void setCallWidgets(bool value) { _callWidgets = value; }
    static bool getCallWidgets() { return _callWidgets; }
    static void setForcePlayLoopFullFrame(bool value) { _forcePlayLoopFullFrame = value; }
    static bool getForcePlayLoopFullFrame() { return _forcePlayLoopFullFrame; }
    void setCurrentObject(osg::UInt64 id) { currentObject = id; }
    osg::UInt64 getCurrentObject() const { return currentObject; }
    void setCurrentCurves(const std::vector<osg::UInt64>& ids) { currentCurves = ids; }
    std::vector<osg::UInt64> getCurrentCurves() const { return currentCurves; }
    void setEvaluateActiveUnits(bool value) { evaluateActiveUnits = value; }
    bool getEvaluateActiveUnits() const { return evaluateActiveUnits; }

    // ---- Host callbacks -------------------------------------------------------------------
    static void setSimulationTimeCB(SimulationTimeCB cb) { _timeCB = cb; }
    static void setMainCameraCB(MainCameraCB cb) { _cameraCB = cb; }
    static void setExecuteSequenceCB(ExecuteSequenceCB cb) { _seqCB = cb; }
    static void setTimeLineCurrentFrameCB(CurrentFrameCB cb) { _currentFrameTimeLineCB = cb; }
    static void setCurveEditorCurrentFrameCB(CurrentFrameCB cb) { _currentFrameCurveEditorCB = cb; }
    static void setClipMakerCurrentFrameCB(CurrentFrameCB cb) { _currentFrameClipMakerCB = cb; }
    static void setUpdateNavigatorCB(UpdateNavigatorCB cb) { _updateNavCB = cb; }
    static void setEnableSimulationCB(EnableSimulationCB cb) { _enableSimCB = cb; }
    static void setIsSimulationEnableCB(IsSimulationEnableCB cb) { _isSimEnableCB = cb; }

    static void setTimeLineCurrentFrame(float frame);
    static void setCurveEditorCurrentFrame(float frame);
    static void setClipMakerCurrentFrame(float frame);
    static void executeSequence(const std::string& name);
    static void updateNavigator(bool update);
    static void enableSimulation(bool enable);
    static bool isSimulationEnable();

    static void addFrameListenerCB(FrameListenerCB cb);
    static void subFrameListenerCB(FrameListenerCB cb);
    static void callFrameListeners();

    // Seconds from the host's time callback, else from the library's own monotonic clock whose
    // origin is its first use.
    static float getSimulationTime();
    // Stores the frame and sends "currentFrameChanged" with "frame" and "sender".
    static void setCurrentFrame(float frame, AnimationWidget sender);

    // ---- Curve evaluation -----------------------------------------------------------------
    // The value of a curve at a frame: each segment between two keys is a cubic Bezier in the
    // (frame, value) plane whose inner control points are the keys' handles; x(t) = frame is
    // solved in closed form and y(t) evaluated. Before the first key the second key's value is
    // returned, at or after the last key the last key's value. Returns false, leaving `value`
    // untouched, for a null curve, fewer than two keys, or a segment without an admissible root.
    static bool computeCurveValue(zeAnimationCurve2D* curve, float frame, float& value);

    // ---- Evaluation -----------------------------------------------------------------------
    // Writes the values of every curve below the object at the frame into the scene; true when
    // the object has played past its range (and for a null object).
    bool evaluateObject(zeAnimationObject* object, float frame, bool motionBlurOnly);
    void evaluate(float frame, bool motionBlurOnly);
    void evaluate(float frame, bool evaluateCurrentObject, bool evaluateCurrentCurves, bool evaluateActive,
                  bool motionBlurOnly);
    void evaluateCurves(const std::vector<zeAnimationCurve2D*>& curves, float frame, bool motionBlurOnly);
    void evaluateCurves(const std::vector<zeAnimationCurve2D*>& curves, float begin, float end, float frame,
                        bool motionBlurOnly);
    static void updateAnimationFields(const std::vector<zeAnimationField*>& fields);

    // ---- Transport ------------------------------------------------------------------------
    bool enqueueObject(zeAnimationObject* object, bool immediately);
    void enqueueObjects(const std::vector<zeAnimationObject*>& objects, bool immediately);
    bool dequeueObject(zeAnimationObject* object);
    void loop();
    void playLoop();
    void pause(bool pausing);
    void pause(zeAnimationObject* object, bool pausing);
    void stop();
    void reset();
    void reset(zeAnimationObject* object);
    void gotoEnd(zeAnimationObject* object);
    void playGlobal(const std::vector<osg::UInt64>& ids, bool reverse, bool repeat, float begin, float end,
                    float start);
    void playGlobal(osg::UInt64 id, bool reverse, bool repeat, float begin, float end, float start);
    void gotoGlobalBegin(zeAnimationObject* object);
    void gotoGlobalBegin(const std::vector<zeAnimationCurve2D*>& curves);
    void gotoGlobalEnd(zeAnimationObject* object);
    void gotoGlobalEnd(const std::vector<zeAnimationCurve2D*>& curves);
    void stopGlobal();
    // True while the play queue holds an object (global playback does not count).
    bool isPlaying() const;
    // True when an object of that name is queued and not pausing.
    bool isPlaying(const std::string& name) const;
    static bool isPlayingGlobal() { return _playing; }
    static bool isPausing() { return _pausing; }
    static float getGlobalBegin() { return _begin; }
    static float getGlobalEnd() { return _end; }
    // The identifiers in the play queue, in order. Destroyed objects are never reported.
    std::vector<osg::UInt64> getPlayQueue() const;

    // ---- Sequences ------------------------------------------------------------------------
    static void initSequences(const std::vector<zeAnimationSequence*>& sequences);
    static void evaluateSequences(const std::vector<zeAnimationSequence*>& sequences, float frame);

    // ---- Motion blur ----------------------------------------------------------------------
    void executeMotionBlur(float t);
    void executeMotionBlur(float t, zeAnimationObject* object);
    void executeMotionBlurOnActiveUnits(float t);
    void resetMotionBlur();

    // Connections fire through these: a started target joins the play queue at the end of the
    // current pass, a stopped one leaves it at once.
    void scheduleStart(zeAnimationObject* object);
    void removeRunning(zeAnimationObject* object);

    zeAnimationController();
    zeAnimationController(const zeAnimationController&) = default;
    zeAnimationController(zeAnimationController&&) = default;
    zeAnimationController& operator=(const zeAnimationController&) = default;
    zeAnimationController& operator=(zeAnimationController&&) = default;

private:
    void enqueueWaitingObjects();
    static void showGlobalFrame(float frame);
    void gotoGlobal(zeAnimationObject* object, bool atEnd);
    void gotoGlobal(const std::vector<zeAnimationCurve2D*>& curves, bool atEnd);
    bool motionBlurFrame(float t, const char* where, float& frame);
    static osg::PerspectiveCamera2Ptr getMainCamera();

    static float _fps;
    static float _currentFrame;
    static float _fullFrame;
    static float _begin;
    static float _end;
    static float _start;
    static float _startTime;
    static float _pauseStartTime;
    static bool _playing;
    static bool _pausing;
    static bool _repeat;
    static bool _reverse;
    static bool _forcePlayLoopFullFrame;
    static bool _callWidgets;
    static bool _emitCurrentFrame;
    static std::vector<osg::UInt64> _playingObjects;
    static std::vector<zeAnimationCurve2D*> _curves;
    static std::vector<zeAnimationSequence*> _seqs;
    static std::list<FrameListenerCB> _frameListeners;
    static SimulationTimeCB _timeCB;
    static MainCameraCB _cameraCB;
    static ExecuteSequenceCB _seqCB;
    static CurrentFrameCB _currentFrameTimeLineCB;
    static CurrentFrameCB _currentFrameCurveEditorCB;
    static CurrentFrameCB _currentFrameClipMakerCB;
    static UpdateNavigatorCB _updateNavCB;
    static EnableSimulationCB _enableSimCB;
    static IsSimulationEnableCB _isSimEnableCB;

    // The play queue and the waiting list hold identifiers, resolved at every pass, so an
    // object destroyed while queued is simply dropped.
    std::set<osg::UInt64> playQueue;
    std::vector<osg::UInt64> waitingObjects;
    osg::UInt64 currentObject;
    std::vector<osg::UInt64> currentCurves;
    bool evaluateActiveUnits;
};

#endif // ZEANIMATIONCONTROLLER_H
