// Evaluation: which curve wins a field, at which local frame each curve is read, the whole-frame
// sequence step and the finished test, read back from the scene.
#include "PlaybackTestSupport.h"
#include "ReferenceCurveEvaluation.h"

#include <zeOpenSGExt/OSGCameraSetting.h>

#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

class EvaluationTest : public PlaybackTest
{
protected:
    static std::vector<std::string>& executed()
    {
        static std::vector<std::string> names;
        return names;
    }
    static void recordSequence(const std::string& name) { executed().push_back(name); }

    void SetUp() override
    {
        PlaybackTest::SetUp();
        executed().clear();
    }
};

// Which curve wins a field and at which frame each curve is read are compared with the
// step-by-step evaluation (PlanMatchesTheStepByStepEvaluationThroughEdits); here, what the
// evaluation reports and the cases the random edits reach rarely.
TEST_F(EvaluationTest, ObjectsFinishPastTheirEdgeAndNeverWhileRepeating)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* unit = block(field, 10.0f, 0.0f, 20.0f, 100.0f);
    // Not started: read at the curve's own begin, the first key, not the value before the keys.
    EXPECT_FALSE(controller->evaluateObject(unit, 5.0f, false));
    EXPECT_NEAR(scene(field), 0.0f, 1e-4f);
    EXPECT_FALSE(controller->evaluateObject(unit, 20.0f, false));
    EXPECT_TRUE(controller->evaluateObject(unit, 21.0f, false));
    EXPECT_NEAR(scene(field), 100.0f, 1e-4f);

    unit->setRepeating(true);
    EXPECT_FALSE(controller->evaluateObject(unit, 21.0f, false));
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(unit), 11.0f));
    EXPECT_FALSE(controller->evaluateObject(unit, 1000.5f, false));
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(unit), 10.5f));

    unit->setRepeating(false);
    unit->setReversePlay(true);
    EXPECT_FALSE(controller->evaluateObject(unit, 30.0f, false));
    EXPECT_TRUE(controller->evaluateObject(unit, 9.0f, false));
    EXPECT_TRUE(controller->evaluateObject(nullptr, 9.0f, false));

    // Motion blur reads only flagged curves of objects at the frame.
    zeAnimationField* later = translation();
    zeAnimationUnit* notYet = block(later, 50.0f, 5.0f, 60.0f, 6.0f);
    firstCurve(notYet)->setMotionBlur(true);
    controller->evaluateObject(notYet, 10.0f, true);
    EXPECT_EQ(scene(later), -1.0f);
}

TEST_F(EvaluationTest, SequencesRunOnceForEachNewWholeFrame)
{
    zeAnimationController::setExecuteSequenceCB(&EvaluationTest::recordSequence);
    zeAnimationField* field = translation();
    zeAnimationStreak* track = manager->createStreak(0);
    track->addObject(block(field, 0.0f, 0.0f, 50.0f, 100.0f));
    track->addObject(sequence(10.0f, 20.0f, "wave"));

    controller->evaluateObject(track, 10.2f, false);
    controller->evaluateObject(track, 10.7f, false);
    EXPECT_EQ(executed(), std::vector<std::string>({"wave"}));
    EXPECT_EQ(track->getLastFullFrame(), 10.0f);
    controller->evaluateObject(track, 11.0f, false);
    EXPECT_EQ(executed().size(), 2u);
    // Truncated toward zero: -0.5 and 0.5 are the same whole frame 0.
    controller->evaluateObject(track, -0.5f, false);
    EXPECT_EQ(track->getLastFullFrame(), 0.0f);
}

TEST_F(EvaluationTest, CurveListReadsFutureThenFinishedThenActiveAndSkipsInactiveOnes)
{
    zeAnimationField* field = translation();
    zeAnimationCurve2D* early = curve(field, 0.0f, 1.0f, 10.0f, 2.0f);
    zeAnimationCurve2D* late = curve(field, 20.0f, 3.0f, 30.0f, 4.0f);
    controller->evaluateCurves({late, early}, 15.0f, false);
    EXPECT_NEAR(scene(field), 2.0f, 1e-4f);
    controller->evaluateCurves({late, early}, 25.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(late, 25.0f));
    // The frame is clamped into the range given.
    controller->evaluateCurves({late, early}, 0.0f, 5.0f, 100.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(early, 5.0f));

    zeAnimationField* a = translation();
    zeAnimationField* b = translation();
    zeAnimationCurve2D* inactive = curve(a, 0.0f, 0.0f, 10.0f, 10.0f);
    zeAnimationCurve2D* unflagged = curve(b, 0.0f, 0.0f, 10.0f, 10.0f);
    inactive->setActive(false);
    controller->evaluateCurves({inactive, nullptr}, 5.0f, false);
    controller->evaluateCurves({unflagged}, 5.0f, true);
    EXPECT_EQ(scene(a), -1.0f);
    EXPECT_EQ(scene(b), -1.0f);
}

TEST_F(EvaluationTest, EvaluateShowsCurrentObjectCurvesAndActiveBlocks)
{
    zeAnimationField* objectField = translation();
    zeAnimationField* curveField = translation();
    zeAnimationField* sceneField = translation();
    zeAnimationUnit* current = block(objectField, 0.0f, 0.0f, 50.0f, 100.0f);
    zeAnimationCurve2D* edited = curve(curveField, 0.0f, 0.0f, 50.0f, 100.0f);
    zeAnimationUnit* inScene = block(sceneField, 0.0f, 0.0f, 50.0f, 100.0f);
    // Inside a track the current block is no longer one of the scene's own blocks.
    manager->createStreak(0)->addObject(current);
    controller->setCurrentObject(current->getId());
    controller->setCurrentCurves({edited->getId(), 987654321u});

    controller->evaluate(20.0f, false);
    EXPECT_FLOAT_EQ(scene(objectField), at(firstCurve(current), 20.0f));
    EXPECT_FLOAT_EQ(scene(curveField), at(edited, 20.0f));
    EXPECT_EQ(scene(sceneField), -1.0f);

    controller->setEvaluateActiveUnits(true);
    controller->evaluate(30.0f, false, false, true, false);
    EXPECT_FLOAT_EQ(scene(objectField), at(firstCurve(current), 20.0f));
    EXPECT_FLOAT_EQ(scene(sceneField), at(firstCurve(inScene), 30.0f));
}

// Playback reads the curves from a plan built from the objects; after any edit it must give what
// the step-by-step evaluation of the objects gives, bit for bit, field by field.
TEST_F(EvaluationTest, PlanMatchesTheStepByStepEvaluationThroughEdits)
{
    std::mt19937 random(1414);
    const auto uniform = [&](float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    };
    const auto pick = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    std::vector<zeAnimationField*> fields;
    for (int i = 0; i < 5; ++i)
        fields.push_back(translation(static_cast<osg::UInt32>(i % 3)));
    zeAnimationStrip* clip = manager->createStrip("clip", 0);
    std::vector<zeAnimationUnit*> blocks;
    std::vector<zeAnimationCurve2D*> curves;
    // Free keys get their handles before they join, so that joining is the only change.
    const auto addKey = [&](zeAnimationCurve2D* c, float x) {
        zeControlPoint2D* key = manager->createPoint2D(x, uniform(-5.0f, 5.0f), 0);
        key->setTangentType(random() % 2 == 0 ? zeControlPoint2D::TangentFree
                                              : zeControlPoint2D::TangentSmooth);
        if (key->getTangentType() == zeControlPoint2D::TangentFree) {
            key->setInTangent(osg::Vec2f(x - uniform(0.0f, 3.0f), uniform(-5.0f, 5.0f)));
            key->setOutTangent(osg::Vec2f(x + uniform(0.0f, 3.0f), uniform(-5.0f, 5.0f)));
        }
        c->addObject(key);
    };
    for (int b = 0; b < 12; ++b) {
        zeAnimationUnit* unit = manager->createUnit("block", 0);
        const float begin = uniform(0.0f, 80.0f);
        for (int c = 0; c < 1 + b % 3; ++c) {
            zeAnimationCurve2D* curveOf =
                manager->createCurve2D(fields[pick(fields.size())], "curve", 0, false);
            for (int k = 0; k < 2 + b % 4; ++k)
                addKey(curveOf, begin + 4.0f * k + uniform(0.0f, 3.0f));
            unit->addObject(curveOf);
            curves.push_back(curveOf);
        }
        clip->insertObject(unit);
        blocks.push_back(unit);
    }
    // Keys made (or detached) earlier join later, so that joining is the only change in between.
    std::vector<zeControlPoint2D*> loose;
    zeAnimationCurve2D* holder = manager->createCurve2D();
    for (int k = 0; k < 40; ++k)
        addKey(holder, uniform(0.0f, 100.0f));
    for (zeControlPoint2D* key : reference::keys(holder)) {
        holder->subObject(key, false);
        loose.push_back(key);
    }
    int compared = 0;
    for (int step = 0; step < 400; ++step) {
        zeAnimationUnit* unit = blocks[pick(blocks.size())];
        zeAnimationCurve2D* c = curves[pick(curves.size())];
        std::vector<zeControlPoint2D*> keys = reference::keys(c);
        // Plans of the block and the curve made just before the edit, which they must not outlive.
        controller->evaluateObject(unit, 50.0f, false);
        controller->evaluateObject(c, 50.0f, false);
        switch (step % 12) {
        case 0:
            if (!keys.empty())
                keys[pick(keys.size())]->setPosition(osg::Pnt2f(uniform(0.0f, 100.0f), uniform(-5.0f, 5.0f)));
            break;
        case 1:
            if (!loose.empty() && random() % 2 == 0) {
                c->addObject(loose.back());
                loose.pop_back();
            } else {
                addKey(c, uniform(0.0f, 100.0f));
            }
            break;
        case 2:
            if (keys.size() > 1) {
                zeControlPoint2D* key = keys[pick(keys.size())];
                const bool destroy = random() % 2 == 0;
                c->subObject(key, destroy);
                if (!destroy)
                    loose.push_back(key);
            }
            break;
        case 3:
            c->setActive(!c->isActive());
            break;
        case 4:
            unit->setRepeating(!unit->isRepeating());
            break;
        case 5:
            unit->setUsePlayRange(!unit->usesPlayRange());
            unit->setStartPlayRange(unit->getBegin() + 1.0f);
            unit->setEndPlayRange(unit->getEnd() + 5.0f);
            break;
        case 6:
            if (random() % 2 == 0)
                unit->move(uniform(-10.0f, 10.0f), true);
            else
                unit->setEnd(uniform(0.0f, 120.0f)); // the interval alone, keys unmoved
            break;
        case 7:
            c->setAnimationField(fields[pick(fields.size())]);
            break;
        case 9:
            // Flags a frame reads of a curve, each on its own.
            if (random() % 2 == 0)
                c->setMotionBlur(!c->getMotionBlur());
            else
                c->setRepeating(!c->isRepeating());
            break;
        case 10:
            // A play range moved while in use, or one edge of a curve's interval alone.
            if (random() % 2 == 0)
                unit->setStartPlayRange(uniform(-10.0f, 90.0f));
            else
                c->setBegin(uniform(0.0f, 100.0f));
            break;
        case 11:
            unit->setEndPlayRange(uniform(0.0f, 120.0f));
            break;
        default:
            if (!keys.empty())
                keys[pick(keys.size())]->setOutTangentY(uniform(-9.0f, 9.0f));
            break;
        }
        // A few frames after each edit, forward and back, some inside, some beyond the clip, of the
        // clip and of the edited block and curve.
        for (int f = 0; f < 9; ++f) {
            zeAnimationObject* root = f % 3 == 0   ? static_cast<zeAnimationObject*>(clip)
                                      : f % 3 == 1 ? static_cast<zeAnimationObject*>(unit)
                                                   : c;
            const bool motionBlurOnly = random() % 3 == 0;
            // Motion blur moves only objects the frame is inside of.
            const float b = root->getBegin();
            const float e = root->getEnd();
            const float frame = motionBlurOnly && b < e ? uniform(b, e) : uniform(-20.0f, 130.0f);
            const std::map<zeAnimationField*, float> expected =
                reference::evaluateObject(root, frame, motionBlurOnly);
            for (zeAnimationField* field : fields)
                field->value = -777.0f;
            controller->evaluateObject(root, frame, motionBlurOnly);
            for (zeAnimationField* field : fields) {
                const auto it = expected.find(field);
                const float want = it == expected.end() ? -777.0f : it->second;
                EXPECT_EQ(0, std::memcmp(&want, &field->value, sizeof(float)))
                    << "step " << step << " frame " << frame << ": " << field->value << " instead of "
                    << want;
                if (it != expected.end() && !std::isnan(want)) {
                    EXPECT_EQ(scene(field), want);
                }
                ++compared;
            }
        }
    }
    EXPECT_EQ(compared, 400 * 9 * 5);
}

// A field whose name makes it an angle is animated in degrees and stored in radians, also once
// playback writes it straight to the scene field it found on the first frame.
TEST_F(EvaluationTest, AngleFieldStaysInRadiansFrameAfterFrame)
{
    osg::CameraSettingPtr camera = osg::CameraSetting::create();
    osg::addRefCP(camera);
    zeAnimationField* field = manager->createField(0);
    field->fcID = osg::getContainerId(camera);
    field->name = field->attribute = "fieldOfView";
    zeAnimationUnit* unit = block(field, 0.0f, 0.0f, 10.0f, 90.0f);
    for (float frame : {0.0f, 10.0f, 0.0f, 10.0f})
        controller->evaluateObject(unit, frame, false);
    EXPECT_EQ(camera->getFieldOfView(), 90.0f * 2.0f * 3.1415927f / 360.0f);
    osg::subRefCP(camera);
}

// Playback writes every field on every frame, so fields made one after another lie one after
// another; fields given back are reused without touching the fields still alive.
TEST_F(EvaluationTest, FieldsLieSideBySideAndSurviveReuse)
{
    std::vector<zeAnimationField*> fields;
    for (int i = 0; i < 3000; ++i)
        fields.push_back(manager->createField(0));
#if !defined(__SANITIZE_ADDRESS__) // there each field is an allocation of its own
    int adjacent = 0;
    for (std::size_t i = 1; i < fields.size(); ++i)
        adjacent += fields[i] == fields[i - 1] + 1;
    EXPECT_GE(adjacent, 2990);
#endif
    for (std::size_t i = 0; i < fields.size(); i += 2)
        manager->destroyField(fields[i]);
    for (std::size_t i = 0; i < fields.size(); i += 2)
        fields[i] = manager->createField(0);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i]->value = static_cast<float>(i);
        fields[i]->name = std::string(20, static_cast<char>('a' + i % 26)); // beyond a short string
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        ASSERT_EQ(fields[i]->value, static_cast<float>(i));
        ASSERT_EQ(fields[i]->name, std::string(20, static_cast<char>('a' + i % 26)));
        ASSERT_EQ(manager->getField(fields[i]->getId()), fields[i]);
    }
    for (zeAnimationField* field : fields)
        manager->destroyField(field);
}

// Playback finds a field's place in the scene once and then writes straight to it: a field the
// host points elsewhere between frames (another component, container or scene field) is followed,
// and a container that is gone is not written to.
TEST_F(EvaluationTest, WritesFollowAFieldRetargetedBetweenFrames)
{
    zeAnimationField* field = translation(0);
    zeAnimationField* other = translation(0);
    zeAnimationUnit* unit = block(field, 0.0f, 0.0f, 10.0f, 90.0f);
    const auto core = [](const zeAnimationField* f) {
        return osg::ComponentTransformPtr::dcast(
            osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(f->fcID)));
    };
    controller->evaluateObject(unit, 10.0f, false);
    field->valuePos = 2;
    controller->evaluateObject(unit, 0.0f, false);
    EXPECT_EQ(core(field)->getTranslation(), osg::Vec3f(90.0f, -1.0f, 0.0f));
    field->fcID = other->fcID;
    controller->evaluateObject(unit, 10.0f, false);
    EXPECT_EQ(core(other)->getTranslation(), osg::Vec3f(-1.0f, -1.0f, 90.0f));
    field->name = "scale";
    controller->evaluateObject(unit, 0.0f, false);
    EXPECT_EQ(core(other)->getScale(), osg::Vec3f(1.0f, 1.0f, 0.0f));
    EXPECT_EQ(core(other)->getTranslation()[2], 90.0f);
    osg::subRefCP(nodes.back()); // the node of `other`, and its core with it
    nodes.pop_back();
    controller->evaluateObject(unit, 10.0f, false);
    EXPECT_EQ(field->value, 90.0f);
}

} // namespace
