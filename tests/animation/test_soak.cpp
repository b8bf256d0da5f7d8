// Random-operation soak: seeded runs of thousands of random calls across the whole public API,
// with host callbacks that destroy, re-enter and reconfigure, and the pool's invariants checked
// after every step. A failure names its seed; run that seed alone with
//   ZE_SOAK_SEED=<seed> [ZE_SOAK_TRACE=1] zeAnimationTests --gtest_filter='Soak*'
// and many more seeds with ZE_SOAK_SEEDS=<count> from ZE_SOAK_FIRST=<seed> (and ZE_SOAK_STEPS=<steps
// per seed>).
#include "PlaybackTestSupport.h"

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGSwitch.h>
#include <zeOpenSGExt/OSGAnimationAttachment.h>
#include <zeOpenSGExt/OSGAnimationBlock.h>
#include <zeOpenSGExt/OSGAnimationClip.h>
#include <zeOpenSGExt/OSGAnimationControlPoint.h>
#include <zeOpenSGExt/OSGAnimationCurve.h>
#include <zeOpenSGExt/OSGAnimationTrack.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGPerspectiveCamera2.h>
#include <zeOpenSGExt/OSGTransform3D.h>

#include <QString>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

typedef zeAnimationManager M;
typedef zeAnimationController C;

osg::UInt64 environmentNumber(const char* name, osg::UInt64 fallback)
{
    const char* text = std::getenv(name);
    return text && *text ? std::strtoull(text, nullptr, 10) : fallback;
}

class Soak;
Soak* g_soak = nullptr;

// One seeded run: a scene with a few animatable nodes, the pool, and the host.
class Soak
{
public:
    Soak(osg::UInt64 seed, bool trace) : seed(seed), trace(trace), rng(seed) {}

    // Runs the steps; false (with `failure` set) at the first broken invariant.
    bool run(int steps)
    {
        buildScene();
        for (step = 0; step < steps; ++step) {
            randomOperation();
            if (!checkPool())
                return false;
        }
        return true;
    }

    // The host's callbacks point into this run: none of them may outlive it, nor act on the way
    // out. The controller's class-wide state is the fixture's to reset.
    ~Soak()
    {
        reentered = 2;
        silent = true;
        installCallbacks();
        C::setSimulationTimeCB(nullptr);
        for (osg::NodePtr& node : nodes)
            osg::subRefCP(node);
        osg::subRefCP(camera);
    }

    std::string failure;

private:
    static M* manager() { return M::the(); }

    // ---- Randomness --------------------------------------------------------------------------
    int uniform(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); }
    bool chance(int percent) { return uniform(0, 99) < percent; }
    float real(float low, float high) { return std::uniform_real_distribution<float>(low, high)(rng); }
    // Runs one of the given actions, chosen at random.
    template <class... Actions>
    void oneOf(Actions... actions)
    {
        const std::function<void()> table[] = {actions...};
        table[uniform(0, static_cast<int>(sizeof...(Actions)) - 1)]();
    }
    float hostile()
    {
        const float inf = std::numeric_limits<float>::infinity();
        const float values[] = {std::nanf(""), inf,   -inf,     1.0e30f, -1.0e30f,
                                3.0e38f,       -0.0f, 1.0e-40f, 0.0f,    2147483648.0f};
        return values[uniform(0, 9)];
    }
    // A frame: mostly whole or ordinary, sometimes anything a hostile host might send.
    float frame()
    {
        if (chance(3))
            return hostile();
        return chance(40) ? static_cast<float>(uniform(-20, 120)) : real(-30.0f, 130.0f);
    }
    std::string name()
    {
        static const char* names[] = {"a", "b", "walk", "Unnamed", "", "seq"};
        return names[uniform(0, 5)];
    }
    template <class T>
    T& pick(std::vector<T>& items)
    {
        return items[uniform(0, static_cast<int>(items.size()) - 1)];
    }

    // ---- Picking from the pool ---------------------------------------------------------------
    static osg::UInt64 idOf(const zeAnimationObject* object) { return object ? object->getId() : 0; }
    // Any object of the type (any type when negative), or null when there is none.
    zeAnimationObject* anyOf(int type)
    {
        std::vector<zeAnimationObject*> objects;
        for (const auto& entry : manager()->getObjects()) {
            if (entry.second && (type < 0 || static_cast<int>(entry.second->getTypeID()) == type))
                objects.push_back(entry.second);
        }
        zeAnimationObject* object = objects.empty() ? nullptr : pick(objects);
        held = idOf(object);
        return object;
    }
    zeAnimationObject* anyObject() { return anyOf(-1); }
    zeAnimationObject* anyContainer() { return anyOf(uniform(2, 5)); }
    zeControlPoint2D* anyKey() { return static_cast<zeControlPoint2D*>(anyOf(1)); }
    zeAnimationCurve2D* anyCurve() { return static_cast<zeAnimationCurve2D*>(anyOf(2)); }
    zeAnimationStreak* anyTrack() { return static_cast<zeAnimationStreak*>(anyOf(4)); }
    zeAnimationStrip* anyClip() { return static_cast<zeAnimationStrip*>(anyOf(5)); }
    zeAnimationSequence* anySequence() { return static_cast<zeAnimationSequence*>(anyOf(6)); }
    template <class T>
    std::vector<T*> some(int most, T* (Soak::*any)())
    {
        std::vector<T*> result;
        for (int i = uniform(0, most); i > 0; --i)
            result.push_back((this->*any)());
        return result;
    }
    zeAnimationField* anyField()
    {
        const M::FieldMap fields = manager()->getFields();
        if (fields.empty())
            return nullptr;
        return std::next(fields.begin(), uniform(0, static_cast<int>(fields.size()) - 1))->second;
    }
    osg::NodePtr anyNode() { return pick(nodes); }

    // ---- Scene and host ----------------------------------------------------------------------
    void buildScene()
    {
        const auto add = [&](const osg::NodeCorePtr& core) {
            osg::NodePtr node = osg::Node::create();
            node->setCore(core);
            if (!nodes.empty())
                nodes[0]->addChild(node);
            osg::addRefCP(node);
            nodes.push_back(node);
        };
        add(osg::Group::create());
        for (int i = 0; i < 3; ++i)
            add(osg::ComponentTransform::create());
        add(osg::Transform3D::create());
        add(osg::Switch::create());
        osg::CameraSettingPtr viewpoint = osg::CameraSetting::create();
        viewpoint->setIsViewpoint(true);
        add(viewpoint);
        add(osg::CameraSetting::create());
        M::setSceneRootNode(nodes[0]);
        camera = osg::PerspectiveCamera2::create();
        osg::addRefCP(camera);
        camera->setShutterSpeed(50.0f);
        installCallbacks();
    }

    // What every host callback does: mostly nothing unusual; otherwise destroy (often what the
    // library is working on), re-enter or reconfigure, never more than two callbacks deep.
    static void act(int percent = 100, int destroying = 20)
    {
        Soak& s = *g_soak;
        if (!s.chance(percent) || s.reentered > 1)
            return;
        ++s.reentered;
        C* c = C::the();
        if (s.chance(destroying))
            s.destroyInHand();
        else if (s.chance(40))
            s.oneOf([&] { manager()->destroyAllFields(); }, [&] { c->loop(); }, [&] { c->playLoop(); },
                    [&] { c->evaluateObject(s.anyObject(), s.frame(), s.chance(20)); }, [&] { c->stop(); },
                    [&] { c->stopGlobal(); }, [&] { c->reset(s.anyObject()); },
                    [&] { C::setFPS(s.chance(20) ? s.hostile() : s.real(1.0f, 60.0f)); },
                    [&] { s.installCallbacks(); }, [&] { c->setCurrentObject(idOf(s.anyObject())); },
                    [&] { s.move(); });
        --s.reentered;
    }
    // The object last handed to the library, a trigger's source (perhaps the one firing), any
    // object, or every field (perhaps while a batch of them is being written).
    void destroyInHand()
    {
        M* m = manager();
        osg::UInt64 id = chance(40) ? held : 0;
        if (!id && !sources.empty() && chance(60)) {
            // A trigger's source, perhaps the one firing, or its parent, perhaps walking its children.
            const zeAnimationObject* source = m->getObject(pick(sources));
            id = source && chance(50) ? source->getParentId() : idOf(source);
        }
        if (zeAnimationObject* object = m->getObject(id))
            m->destroyObject(object);
        else if (chance(30))
            m->destroyAllFields();
        else
            destroy();
    }

    // The callback, or none (always none once the run is over).
    template <class F>
    F maybe(int percent, F callback)
    {
        return !silent && chance(percent) ? callback : nullptr;
    }

    // Sets or clears each host callback at random.
    void installCallbacks()
    {
        // Always the run's own clock: the library's would make a run depend on the machine. It is
        // asked for all the time, so it acts seldom, but then mostly destroys.
        C::setSimulationTimeCB(+[] {
            act(3, 50);
            return g_soak->seconds;
        });
        C::setMainCameraCB(maybe(
            80, +[] {
                act();
                return g_soak->chance(90) ? g_soak->camera : osg::PerspectiveCamera2Ptr(osg::NullFC);
            }));
        C::setExecuteSequenceCB(maybe(
            80, +[](const std::string&) { act(); }));
        const auto frameCB = +[](float) { act(); };
        C::setTimeLineCurrentFrameCB(maybe(60, frameCB));
        C::setCurveEditorCurrentFrameCB(maybe(60, frameCB));
        C::setClipMakerCurrentFrameCB(maybe(60, frameCB));
        const auto switchCB = +[](bool) { act(); };
        C::setUpdateNavigatorCB(maybe(60, switchCB));
        C::setEnableSimulationCB(maybe(60, switchCB));
        C::setIsSimulationEnableCB(maybe(
            60, +[] {
                act();
                return g_soak->chance(50);
            }));
        M::setGetFromAtUpCB(maybe(
            80, +[](int, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
                act();
                from = g_soak->from;
                at = g_soak->at;
                up = g_soak->up;
            }));
        M::setFromAtUpCB(maybe(
            80, +[](int, const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up) {
                act();
                g_soak->from = from;
                g_soak->at = at;
                g_soak->up = up;
            }));
        M::setGetRollCB(maybe(
            80, +[](int) {
                act();
                return g_soak->roll;
            }));
        M::setRollCB(maybe(
            80, +[](int, const float& value) {
                act();
                g_soak->roll = value;
            }));
        M::setUpdatePasteCB(maybe(70, switchCB));
        // Reported once per element loaded: acting on every one would make a load the whole run.
        M::setFileIOProgressCB(maybe(
            70, +[](unsigned int) { act(3); }));
        M::setShowCurvesCB(maybe(
            70, +[](const std::vector<zeAnimationCurve2D*>&) { act(); }));
    }

    // ---- Operations --------------------------------------------------------------------------
    struct Operation
    {
        const char* name;
        int weight;
        void (Soak::*run)();
    };

    void randomOperation()
    {
        static const Operation table[] = {
            {"create key", 12, &Soak::createKey},
            {"create curve", 6, &Soak::createCurve},
            {"create container", 8, &Soak::createContainer},
            {"relink", 25, &Soak::relink},
            {"curve keys", 5, &Soak::curveKeys},
            {"move selected keys", 5, &Soak::moveSelectedKeys},
            {"edit a key", 4, &Soak::editKey},
            {"move", 5, &Soak::move},
            {"stretch or trim", 5, &Soak::stretch},
            {"flip", 2, &Soak::flip},
            {"flags", 3, &Soak::flags},
            {"destroy", 7, &Soak::destroy},
            {"connect", 3, &Soak::connect},
            {"play objects", 6, &Soak::playObjects},
            {"play globally", 4, &Soak::playGlobally},
            {"transport", 5, &Soak::transport},
            {"evaluate", 7, &Soak::evaluate},
            {"motion blur", 2, &Soak::motionBlur},
            {"renumber", 2, &Soak::renumber},
            {"copy and paste", 4, &Soak::copyAndPaste},
            {"save and load", 2, &Soak::saveAndLoad},
            {"import", 1, &Soak::importOld},
        };
        int total = 0;
        for (const Operation& op : table)
            total += op.weight;
        int pick = uniform(0, total - 1);
        std::size_t chosen = 0;
        while (pick >= table[chosen].weight)
            pick -= table[chosen++].weight;
        const Operation& op = table[chosen];
        operation = op.name;
        if (trace)
            std::printf("soak %llu step %d: %s\n", static_cast<unsigned long long>(seed), step, operation);
        (this->*op.run)();
    }

    // A creation in a crowded pool destroys instead.
    bool crowded()
    {
        if (manager()->getObjectCount() <= 300)
            return false;
        destroy();
        return true;
    }

    void createKey()
    {
        if (crowded())
            return;
        zeAnimationCurve2D* curve = anyCurve();
        const float x = chance(5) ? hostile() : static_cast<float>(uniform(-10, 110));
        if (curve && chance(20)) {
            if (chance(50))
                manager()->createCurvePoint(curve, frame(), chance(50));
            else
                manager()->createCurvePoint(curve, frame(), real(-5.0f, 5.0f), chance(50), chance(20),
                                            chance(50));
        } else if (zeControlPoint2D* key = manager()->createPoint2D(x, real(-10.0f, 10.0f))) {
            if (curve && chance(70))
                curve->addObject(key);
        }
    }

    void createCurve()
    {
        static const char* attributes[] = {"translationX", "translateY", "choice", "from",   "roll",
                                           "visible",      "rotateZ",    "fStop",  "nothing"};
        if (crowded())
            return;
        const int kind = uniform(0, 2);
        zeAnimationCurve2D* curve = kind == 0 ? manager()->createCurve2D()
                                    : kind == 1
                                        ? manager()->createCurve2D(anyField(), name(), 0, chance(30))
                                        : manager()->createCurve2D(anyNode(), attributes[uniform(0, 8)]);
        if (!curve)
            return;
        float x = static_cast<float>(uniform(-10, 60));
        for (int keys = uniform(0, 6); keys > 0; --keys, x += static_cast<float>(uniform(1, 20)))
            curve->addObject(manager()->createPoint2D(x, real(-5.0f, 5.0f)));
    }

    void createContainer()
    {
        if (crowded())
            return;
        M* m = manager();
        oneOf([&] { m->createUnit(some(3, &Soak::anyCurve), name(), 0, chance(30)); },
              [&] { m->createUnit(name(), 0); }, [&] { m->createStreak(name(), 0); },
              [&] { m->createStrip(name(), 0); },
              [&] {
                  zeAnimationSequence* sequence = m->createSequence(name(), 0);
                  const float begin = static_cast<float>(uniform(-10, 100));
                  sequence->setBegin(begin);
                  sequence->setEnd(begin + static_cast<float>(uniform(0, 30)));
              },
              [&] { m->duplicateObject(anyObject()); });
    }

    // Children added, inserted by the overlap rule, taken out, moved between tracks or given a
    // parent directly.
    void relink()
    {
        zeAnimationObject* container = anyContainer();
        zeAnimationObject* object = anyOf(uniform(3, 6));
        oneOf(
            [&] {
                zeAnimationObject* child = uniform(0, 3) == 0 ? anyKey() : anyObject();
                if (container && child)
                    container->addObject(child);
            },
            [&] {
                zeAnimationObject* child = chance(80) ? object : anyOf(uniform(0, 6));
                if (zeAnimationStreak* track = child && chance(50) ? anyTrack() : nullptr)
                    track->insertObject(child);
                else if (zeAnimationStrip* clip = child ? anyClip() : nullptr)
                    clip->insertObject(child);
            },
            [&] {
                if (!container)
                    return;
                // One of its children mostly, any object sometimes.
                const std::list<zeAnimationObject*> list = container->getObjects();
                std::vector<zeAnimationObject*> children(list.begin(), list.end());
                container->subObject(children.empty() || chance(20) ? anyObject() : pick(children),
                                     chance(50));
            },
            [&] {
                if (chance(50))
                    manager()->moveObjectToStreak(object, anyTrack());
                else
                    manager()->moveObjectToStreak(object, anyClip(), static_cast<osg::UInt32>(uniform(0, 5)));
            },
            [&] {
                if (zeAnimationObject* any = anyObject())
                    any->setParent(chance(20) ? nullptr : anyObject());
            });
    }

    // A curve's keys given all at once (some missing, some twice), or deleted, perhaps into another.
    void curveKeys()
    {
        zeAnimationCurve2D* curve = anyCurve();
        if (!curve)
            return;
        zeAnimationCurve2D* target = chance(50) ? anyCurve() : nullptr;
        oneOf(
            [&] {
                std::vector<zeControlPoint2D*> keys;
                for (int i = uniform(0, 6); i > 0; --i)
                    keys.push_back(chance(10) ? nullptr : anyKey());
                if (!keys.empty() && chance(20))
                    keys.push_back(keys.front());
                curve->setPoints(keys);
            },
            [&] { curve->deletePoints(chance(50), target); },
            [&] { curve->deleteSelectedPoints(chance(50), target); });
    }

    void moveSelectedKeys()
    {
        zeAnimationCurve2D* curve = anyCurve();
        if (!curve)
            return;
        for (zeControlPoint2D* key : curve->getPointsAndTangentPoints()) {
            if (key && chance(40)) {
                key->setSelected(true);
                key->setTempPosition(key->getPosition());
            }
        }
        const osg::Vec2f delta(chance(5) ? hostile() : real(-10.0f, 10.0f), real(-3.0f, 3.0f));
        if (chance(70))
            curve->moveSelectedPoints(delta, chance(50), chance(30), false, chance(50));
        else
            curve->moveSelectedPointsTo(osg::Pnt2f(frame(), real(-5.0f, 5.0f)), chance(50), chance(30),
                                        chance(50));
        if (chance(30))
            curve->changeTangentsOfSelectedPoints(
                static_cast<zeControlPoint2D::TangentMode>(1u << uniform(0, 7)));
        if (chance(50))
            curve->setSelected(false);
    }

    void editKey()
    {
        zeControlPoint2D* key = anyKey();
        if (!key)
            return;
        oneOf(
            [&] {
                // Direct position writes only where no curve relies on the order of its keys.
                if (key->getParentId() == 0)
                    key->setPosition(
                        osg::Pnt2f(chance(20) ? hostile() : frame(), chance(10) ? hostile() : 1.0f));
            },
            [&] {
                key->setInTangent(osg::Vec2f(chance(10) ? hostile() : key->getX() - 1.0f, real(-5.0f, 5.0f)));
                key->setOutTangentX(chance(10) ? hostile() : key->getX() + real(0.0f, 3.0f));
            },
            [&] {
                key->setTangentType(static_cast<zeControlPoint2D::TangentMode>(
                    chance(10) ? 1000u + uniform(0, 5) : 1u << uniform(0, 4)));
                key->setTangentLengthMode(static_cast<zeControlPoint2D::TangentMode>(chance(50) ? 32u : 64u));
                key->computeTangents();
            },
            [&] { key->setSelected(chance(50)); },
            // A handle is not the manager's to destroy.
            [&] {
                manager()->destroyObject(chance(50) ? key->getInTangentPoint() : key->getOutTangentPoint());
            });
    }

    void move()
    {
        if (zeAnimationObject* object = anyObject())
            object->move(chance(5) ? hostile() : real(-20.0f, 20.0f), true);
    }

    // Stretching and trimming leave the edited object's own bounds other than its children's by
    // design (a trim narrows the visible interval; a refused stretch keeps the edge it was
    // given), and stretch the children with rounding: the subtree is no longer checked against
    // its children. A flip refreshes the object but does not tell its parent, and its interval
    // changes when it was trimmed or stretched. Either way the parent is brought up to date as a
    // host's editor does.
    void stretch()
    {
        zeAnimationObject* object = anyObject();
        if (!object)
            return;
        const float value = chance(5) ? hostile() : frame();
        oneOf([&] { object->moveBegin(value, true); }, [&] { object->moveEnd(value, true); },
              [&] { object->trimBegin(value, true); }, [&] { object->trimEnd(value, true); });
        for (std::vector<zeAnimationObject*> pending(1, object); !pending.empty();) {
            zeAnimationObject* loosened = pending.back();
            pending.pop_back();
            loose.insert(loosened->getId());
            for (zeAnimationObject* child : loosened->getObjects())
                pending.push_back(child);
        }
        if (zeAnimationObject* parent = object->getParent())
            parent->updateBy(object, zeAnimationObject::Change, true);
    }

    void flip()
    {
        zeAnimationObject* object = anyObject();
        if (object)
            object->flip();
        if (zeAnimationObject* parent = object ? object->getParent() : nullptr)
            parent->updateBy(object, zeAnimationObject::Change, true);
    }

    void flags()
    {
        zeAnimationObject* object = anyObject();
        if (!object)
            return;
        oneOf([&] { object->setActive(chance(70)); }, [&] { object->setRepeating(chance(30)); },
              [&] { object->setMotionBlur(chance(50)); }, [&] { object->setReversePlay(chance(30)); },
              [&] { object->setHidden(chance(20)); },
              [&] {
                  object->setUsePlayRange(chance(30));
                  object->setStartPlayRange(frame());
                  object->setEndPlayRange(frame());
                  object->setStartPlay(frame());
              },
              [&] {
                  object->setLocked(chance(20));
                  object->setSelected(chance(50));
              });
    }

    void destroy()
    {
        M* m = manager();
        if (chance(85)) {
            if (zeAnimationObject* object = anyObject())
                m->destroyObject(object);
            if (chance(10))
                m->destroyField(anyField());
            return;
        }
        oneOf([&] { m->destroyAllObjects(chance(50)); }, [&] { m->destroyUnreferencedObjectsAndFields(); },
              [&] { m->destroyNodeObjects(anyNode(), chance(50)); }, [&] { m->terminate(); });
    }

    void connect()
    {
        zeAnimationObject* source = anyObject();
        const M::AnimationTrigger trigger = static_cast<M::AnimationTrigger>(chance(10) ? 5u : uniform(0, 1));
        if (chance(50))
            manager()->createConnection(source, trigger, anyObject(),
                                        static_cast<M::AnimationAction>(chance(10) ? 9u : uniform(0, 1)));
        else
            manager()->createConnection(source, trigger, chance(90) ? +[] { act(100, 50); } : nullptr);
        if (source)
            sources.push_back(source->getId());
        if (source && chance(10) && !source->getTriggers().empty())
            source->subTrigger(source->getTriggers().begin()->second);
    }

    void advanceClock()
    {
        if (chance(3))
            seconds = hostile();
        else if (!std::isfinite(seconds) || std::fabs(seconds) > 1.0e6)
            seconds = 0.0;
        else
            seconds += chance(10) ? -real(0.0f, 1.0f) : real(0.0f, 0.5f);
    }

    void playObjects()
    {
        C* controller = C::the();
        for (int i = uniform(0, 2); i > 0; --i)
            controller->enqueueObject(anyObject(), chance(50));
        if (chance(10))
            controller->dequeueObject(anyObject());
        for (int i = uniform(1, 4); i > 0; --i) {
            advanceClock();
            controller->loop();
        }
    }

    void playGlobally()
    {
        C* controller = C::the();
        std::vector<osg::UInt64> ids;
        for (zeAnimationObject* object : some(3, &Soak::anyObject))
            ids.push_back(object ? object->getId() : 12345);
        if (chance(60))
            controller->playGlobal(ids, chance(20), chance(30), 0.0f, 0.0f, 0.0f);
        else
            controller->playGlobal(ids, chance(20), chance(30), frame(), frame(), frame());
        C::setForcePlayLoopFullFrame(chance(30));
        for (int i = uniform(1, 5); i > 0; --i) {
            advanceClock();
            controller->playLoop();
        }
    }

    void transport()
    {
        C* c = C::the();
        oneOf([&] { c->pause(chance(50)); }, [&] { c->pause(anyObject(), chance(50)); }, [&] { c->stop(); },
              [&] { c->reset(); }, [&] { c->reset(anyObject()); }, [&] { c->gotoEnd(anyObject()); },
              [&] { c->gotoGlobalBegin(anyObject()); }, [&] { c->gotoGlobalEnd(anyObject()); },
              [&] { c->gotoGlobalBegin(some(3, &Soak::anyCurve)); },
              [&] { c->gotoGlobalEnd(some(3, &Soak::anyCurve)); }, [&] { c->stopGlobal(); },
              [&] { C::setCurrentFrame(frame(), static_cast<C::AnimationWidget>(uniform(0, 9))); },
              [&] {
                  installCallbacks();
                  C::setFPS(chance(10) ? hostile() : real(10.0f, 60.0f));
              });
    }

    void evaluate()
    {
        C* c = C::the();
        const std::vector<zeAnimationCurve2D*> curves = some(4, &Soak::anyCurve);
        oneOf([&] { c->evaluateObject(anyObject(), frame(), chance(20)); },
              [&] {
                  c->setCurrentObject(idOf(anyObject()));
                  std::vector<osg::UInt64> ids;
                  for (zeAnimationCurve2D* curve : curves)
                      ids.push_back(idOf(curve));
                  c->setCurrentCurves(ids);
                  c->setEvaluateActiveUnits(chance(50));
                  c->evaluate(frame(), chance(20));
              },
              [&] { c->evaluateCurves(curves, frame(), chance(20)); },
              [&] {
                  float value = 0.0f;
                  C::computeCurveValue(anyCurve(), frame(), value);
              },
              [&] {
                  if (zeAnimationObject* object = anyObject())
                      object->triggerLoop(frame());
              },
              [&] {
                  const std::vector<zeAnimationSequence*> list = some(3, &Soak::anySequence);
                  if (chance(30))
                      C::initSequences(list);
                  C::evaluateSequences(list, frame());
              });
    }

    void motionBlur()
    {
        C* c = C::the();
        const float t = chance(5) ? hostile() : real(0.0f, 1.0f);
        oneOf([&] { c->executeMotionBlur(t); }, [&] { c->executeMotionBlur(t, anyObject()); },
              [&] { c->executeMotionBlurOnActiveUnits(t); }, [&] { c->resetMotionBlur(); });
    }

    void renumber()
    {
        zeAnimationObject* object = anyObject();
        zeAnimationObject* other = anyObject();
        if (chance(70) && object) {
            const osg::UInt64 old = object->getId();
            manager()->setID(chance(50) && other ? other->getId() : manager()->createUID(), object);
            if (loose.erase(old))
                loose.insert(object->getId());
        } else {
            manager()->setID(manager()->createUID(), anyField());
        }
    }

    void copyAndPaste()
    {
        M* m = manager();
        oneOf([&] { m->copy(anyObject()); }, [&] { m->copy(some(3, &Soak::anyObject)); },
              [&] { m->copy(anyNode()); }, [&] { m->paste(anyNode(), chance(50)); },
              [&] { m->paste(anyNode(), chance(50)); }, [&] { m->clearCopyBuffer(chance(70)); });
    }

    // The pool saved and loaded back into itself (every identifier collides and is renumbered),
    // sometimes cut short or damaged on the way.
    void saveAndLoad()
    {
        if (manager()->getObjectCount() > 150)
            return destroy();
        std::string text = manager()->createAnimationXML().toStdString();
        if (chance(30) && !text.empty()) {
            const std::size_t at = static_cast<std::size_t>(uniform(0, static_cast<int>(text.size()) - 1));
            if (chance(50))
                text.resize(at);
            else
                text[at] = "<>\"x9 ="[uniform(0, 6)];
        }
        if (chance(20)) {
            manager()->destroyAllObjects(true);
            manager()->destroyAllFields();
        }
        manager()->loadAnimations(QString::fromStdString(text), false);
    }

    // An older scene's animation on a node, converted.
    void importOld()
    {
        osg::NodePtr node = anyNode();
        osg::AnimationBlockPtr block = osg::AnimationBlock::create();
        block->setName(name());
        block->setNode(node);
        for (int c = uniform(0, 2); c > 0; --c) {
            osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
            curve->setAFAppNode(chance(80) ? node : anyNode());
            curve->setAFFieldName(chance(50) ? "translationX" : "choice");
            for (int k = uniform(0, 4); k > 0; --k) {
                osg::AnimationControlPointPtr point = osg::AnimationControlPoint::create();
                point->setPosition(osg::Pnt2f(chance(5) ? hostile() : frame(), real(-5.0f, 5.0f)));
                point->setTangentType(static_cast<osg::UInt32>(uniform(0, 7)));
                curve->pushToControlPoints(point);
            }
            block->pushToCurves(curve);
        }
        osg::AnimationAttachmentPtr old = osg::AnimationAttachment::create();
        if (chance(50)) {
            old->pushToBlocks(block);
        } else {
            osg::AnimationClipPtr clip = osg::AnimationClip::create();
            clip->setName(name());
            osg::AnimationTrackPtr track = osg::AnimationTrack::create();
            track->pushToBlocks(block);
            clip->pushToTracks(track);
            old->pushToClips(clip);
        }
        node->addAttachment(old);
        manager()->importKORUAnimations(nodes[0], nodes[6], static_cast<osg::UInt32>(nodes.size()));
    }

    // ---- Invariants --------------------------------------------------------------------------
    bool fail(const std::string& what)
    {
        std::ostringstream text;
        text << "seed " << seed << ", step " << step << " (" << operation << "): " << what;
        failure = text.str();
        return false;
    }

    static bool near(float a, float b)
    {
        if (a == b || (std::isnan(a) && std::isnan(b)))
            return true;
        const float scale = std::max(1.0f, std::max(std::fabs(a), std::fabs(b)));
        return std::fabs(a - b) <= 1e-4f * scale;
    }

    bool checkPool()
    {
        M* m = manager();
        std::set<osg::UInt64> listed;
        for (const auto& entry : m->getObjects()) {
            const zeAnimationObject* object = entry.second;
            if (!object || object->getId() != entry.first || m->getObject(entry.first) != object)
                return fail("object " + std::to_string(entry.first) + " is not reachable by its identifier");
            // One parent per object: every listed child names its lister as parent, once.
            for (osg::UInt64 childId : object->getChildIds()) {
                const zeAnimationObject* child = m->getObject(childId);
                if (!child)
                    return fail("a child list names a destroyed object");
                if (child->getParentId() != object->getId())
                    return fail("a container lists a child whose parent is another");
                if (!listed.insert(childId).second)
                    return fail("a child is listed twice");
            }
            // No cycle, and no chain deeper than the limit.
            int levels = 0;
            for (const zeAnimationObject* up = object; up; up = up->getParent()) {
                if (++levels > zeAnimationObject::MaxDepth)
                    return fail("a parent chain loops or is deeper than the limit");
            }
            const osg::UInt32 type = object->getTypeID();
            if (type == 2) {
                const zeAnimationCurve2D* curve = static_cast<const zeAnimationCurve2D*>(object);
                if (curve->getAnimationField() &&
                    m->getField(curve->getAnimationFieldId()) != curve->getAnimationField())
                    return fail("a curve's field is neither registered nor unbound");
                if (!checkKeys(curve))
                    return false;
            }
            if (type >= 2 && type <= 5 && !checkBounds(object))
                return false;
        }
        return true;
    }

    bool checkKeys(const zeAnimationCurve2D* curve)
    {
        float previous = -std::numeric_limits<float>::infinity();
        for (zeAnimationObject* child : curve->getObjects()) {
            if (child->getTypeID() != 1)
                return fail("a curve holds something other than keys");
            const zeControlPoint2D* key = static_cast<const zeControlPoint2D*>(child);
            if (!std::isfinite(key->getX()) || !std::isfinite(key->getY()))
                return fail("a key lies at a non-finite position");
            if (key->getX() < previous)
                return fail("a curve's keys are out of order");
            previous = key->getX();
            for (const zeControlPoint2D* handle : {key->getInTangentPoint(), key->getOutTangentPoint()}) {
                if (!handle || handle->getParentId() != key->getId() || !std::isfinite(handle->getX()))
                    return fail("a key's handle is missing, stray or at a non-finite position");
            }
        }
        return true;
    }

    // A container's bounds are its children's, empty containers (but not sequences and keys)
    // left out; stretched and trimmed subtrees are exempt.
    bool checkBounds(const zeAnimationObject* container)
    {
        if (loose.count(container->getId()) || container->isTrimmed())
            return true;
        float begin = zeAnimationObject::EmptyLow;
        float end = zeAnimationObject::EmptyHigh;
        bool counted = false;
        for (const zeAnimationObject* child : container->getObjects()) {
            const osg::UInt32 type = child->getTypeID();
            if (child->isEmpty() && type != 6 && type != 1)
                continue;
            counted = true;
            begin = std::min(begin, child->getBegin());
            end = std::max(end, child->getEnd());
        }
        if (!counted || (near(container->getBegin(), begin) && near(container->getEnd(), end)))
            return true;
        std::ostringstream text;
        text << "bounds [" << container->getBegin() << ", " << container->getEnd() << "] of type "
             << container->getTypeID() << " differ from its children's [" << begin << ", " << end << "]";
        return fail(text.str());
    }

    const osg::UInt64 seed;
    const bool trace;
    std::mt19937_64 rng;
    int step = 0;
    const char* operation = "";
    std::vector<osg::NodePtr> nodes;
    osg::PerspectiveCamera2Ptr camera;
    std::set<osg::UInt64> loose;
    double seconds = 0.0;
    int reentered = 0;
    osg::UInt64 held = 0;
    std::vector<osg::UInt64> sources;
    bool silent = false;
    osg::Pnt3f from = osg::Pnt3f(0.0f, 0.0f, 10.0f);
    osg::Pnt3f at = osg::Pnt3f(0.0f, 0.0f, 0.0f);
    osg::Vec3f up = osg::Vec3f(0.0f, 1.0f, 0.0f);
    float roll = 0.0f;
};

typedef PlaybackTest SoakTest;

TEST_F(SoakTest, RandomOperationsKeepThePoolWhole)
{
    const osg::UInt64 only = environmentNumber("ZE_SOAK_SEED", 0);
    const osg::UInt64 first = only ? only : environmentNumber("ZE_SOAK_FIRST", 1);
    const osg::UInt64 count = only ? 1 : environmentNumber("ZE_SOAK_SEEDS", 60);
    const int steps = static_cast<int>(environmentNumber("ZE_SOAK_STEPS", 1500));
    const bool trace = environmentNumber("ZE_SOAK_TRACE", 0) != 0;
    for (osg::UInt64 seed = first; seed < first + count; ++seed) {
        // Printed first, so that a crash (which ends the process) still names its seed.
        std::printf("soak seed %llu\n", static_cast<unsigned long long>(seed));
        std::fflush(stdout);
        // Every seed starts from the state a fresh test has, so that it replays alone as it ran
        // among others.
        TearDown();
        SetUp();
        manager->random(seed * 2654435761ULL + 1);
        std::string failure;
        {
            Soak soak(seed, trace);
            g_soak = &soak;
            if (!soak.run(steps))
                failure = soak.failure;
        }
        g_soak = nullptr;
        ASSERT_TRUE(failure.empty()) << failure << "\nreplay: ZE_SOAK_SEED=" << seed
                                     << " ZE_SOAK_STEPS=" << steps
                                     << " zeAnimationTests --gtest_filter='Soak*'";
    }
}

} // namespace
