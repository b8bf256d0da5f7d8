// The library's cached evaluation and key lookups against the plain versions in
// ReferenceCurveEvaluation.h, on random curves that are edited between evaluations.

#include "AnimationTestSupport.h"
#include "ReferenceCurveEvaluation.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <cmath>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

namespace {

typedef zeControlPoint2D::TangentMode Mode;

const Mode kTypes[] = {zeControlPoint2D::TangentNone,
                       zeControlPoint2D::TangentLinear,
                       zeControlPoint2D::TangentFlat,
                       zeControlPoint2D::TangentSmooth,
                       zeControlPoint2D::TangentForward,
                       zeControlPoint2D::TangentFree,
                       static_cast<Mode>(3)};
const Mode kLengths[] = {zeControlPoint2D::TangentSmooth, zeControlPoint2D::TangentLengthFixed,
                         zeControlPoint2D::TangentLengthHalf, zeControlPoint2D::TangentNone};

class CurveDifferentialTest : public AnimationTest
{
protected:
    std::mt19937 rng{20240611u};
    long compared = 0;
    long rejected = 0; // frames inside a segment without an admissible root

    int uniform(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); }
    float real(float lo, float hi) { return std::uniform_real_distribution<float>(lo, hi)(rng); }
    bool chance(int percent) { return uniform(0, 99) < percent; }

    // Keys on whole frames (so that handles can sit exactly on thirds) or on arbitrary floats.
    float randomX(bool whole)
    {
        return whole ? static_cast<float>(uniform(-60, 60) * 3) : real(-200.0f, 200.0f);
    }

    zeControlPoint2D* addRandomKey(zeAnimationCurve2D* curve, bool whole)
    {
        zeControlPoint2D* key =
            manager->createPoint2D(randomX(whole), chance(10) ? 0.0f : real(-50.0f, 50.0f));
        key->setTangentType(kTypes[uniform(0, 6)]);
        key->setTangentLengthMode(kLengths[uniform(0, 3)]);
        if (!curve->addObject(key))
            manager->destroyPoint2D(key);
        return key;
    }

    // Free handles: random, on the key, or exactly on the thirds of the segment to the next key.
    void placeFreeHandles(zeAnimationCurve2D* curve)
    {
        const std::vector<zeControlPoint2D*> keys = reference::keys(curve);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            zeControlPoint2D* key = keys[i];
            if (key->getTangentType() != zeControlPoint2D::TangentFree)
                continue;
            const float x = key->getX();
            const float y = key->getY();
            switch (uniform(0, 3)) {
            case 0:
                key->setInTangent(osg::Vec2f(x, y));
                key->setOutTangent(osg::Vec2f(x, y));
                break;
            case 1:
                if (i + 1 < keys.size()) {
                    const float span = keys[i + 1]->getX() - x;
                    key->setOutTangent(osg::Vec2f(x + span / 3.0f, real(-60.0f, 60.0f)));
                    keys[i + 1]->setInTangent(osg::Vec2f(x + 2.0f * span / 3.0f, real(-60.0f, 60.0f)));
                    break;
                }
                // fall through
            default:
                key->setInTangent(osg::Vec2f(x - real(0.0f, 30.0f), y + real(-30.0f, 30.0f)));
                key->setOutTangent(osg::Vec2f(x + real(0.0f, 30.0f), y + real(-30.0f, 30.0f)));
                break;
            }
        }
    }

    // Edits that each invalidate the cache in a different way.
    void randomEdit(zeAnimationCurve2D* curve, bool whole)
    {
        const std::vector<zeControlPoint2D*> keys = reference::keys(curve);
        zeControlPoint2D* some = keys.empty() ? nullptr : keys[uniform(0, static_cast<int>(keys.size()) - 1)];
        switch (uniform(0, 7)) {
        case 0:
            addRandomKey(curve, whole);
            break;
        case 1:
            if (some)
                curve->subObject(some, true);
            break;
        case 2:
            if (some)
                some->setY(real(-50.0f, 50.0f));
            break;
        case 3:
            // A direct write: the child list is left out of order, or two keys share an x.
            if (some)
                some->setX(chance(50) && !keys.empty() ? keys[0]->getX() : randomX(whole));
            break;
        case 4:
            if (some)
                manager->destroyPoint2D(some);
            break;
        case 5:
            if (some) {
                some->setSelected(true);
                curve->moveSelectedPoints(osg::Vec2f(real(-20.0f, 20.0f), real(-5.0f, 5.0f)), whole, false,
                                          false, false);
                some->setSelected(false);
            }
            break;
        case 6:
            if (some) {
                some->setTangentType(kTypes[uniform(0, 4)]);
                some->computeTangents();
            }
            break;
        default:
            if (some && chance(20))
                some->setX(std::numeric_limits<float>::quiet_NaN());
            else
                placeFreeHandles(curve);
            break;
        }
    }

    void expectSameValue(zeAnimationCurve2D* curve, float frame)
    {
        float expected = -777.25f;
        float actual = -777.25f;
        const bool expectedOk = reference::computeCurveValue(curve, frame, expected);
        const bool actualOk = zeAnimationController::computeCurveValue(curve, frame, actual);
        ASSERT_EQ(expectedOk, actualOk) << "frame " << frame;
        ASSERT_EQ(bits(expected), bits(actual)) << "frame " << frame << ": " << expected << " vs " << actual;
        ++compared;
        if (!expectedOk && reference::keys(curve).size() >= 2)
            ++rejected;
    }

    // Frames on every key and handle, just around them, outside the keys, and random ones, first
    // in playback order and then shuffled.
    void compareFrames(zeAnimationCurve2D* curve)
    {
        std::vector<float> frames;
        for (zeControlPoint2D* key : reference::keys(curve)) {
            const float x = key->getX();
            frames.push_back(x);
            frames.push_back(std::nextafter(x, -1e30f));
            frames.push_back(std::nextafter(x, 1e30f));
            frames.push_back(key->getInTangentX());
            frames.push_back(key->getOutTangentX());
        }
        frames.push_back(-1e6f);
        frames.push_back(1e6f);
        for (int i = 0; i < 12; ++i)
            frames.push_back(real(-220.0f, 220.0f));
        std::vector<float> playback;
        for (float f = -200.0f; f <= 200.0f; f += real(0.5f, 9.0f))
            playback.push_back(f);
        for (float frame : playback)
            ASSERT_NO_FATAL_FAILURE(expectSameValue(curve, frame));
        std::shuffle(frames.begin(), frames.end(), rng);
        for (float frame : frames)
            ASSERT_NO_FATAL_FAILURE(expectSameValue(curve, frame));
    }

    void compareLookups(zeAnimationCurve2D* curve)
    {
        const std::vector<zeControlPoint2D*> keys = reference::keys(curve);
        ASSERT_EQ(keys.size(), curve->getPointCount());
        std::vector<float> xs;
        for (zeControlPoint2D* key : keys)
            xs.push_back(key->getX());
        xs.push_back(real(-220.0f, 220.0f));
        xs.push_back(std::numeric_limits<float>::quiet_NaN());
        for (float x : xs) {
            EXPECT_EQ(reference::findPoint(curve, x), curve->findPoint(x)) << x;
            EXPECT_EQ(reference::neighboursAround(curve, x), curve->getPreviousAndNextPoint(x)) << x;
            const zeControlPoint2D* p0 = nullptr;
            const zeControlPoint2D* n0 = nullptr;
            const zeControlPoint2D* p1 = nullptr;
            const zeControlPoint2D* n1 = nullptr;
            const bool found = reference::mapNeighbours(curve, x, p0, n0);
            ASSERT_EQ(found, curve->getMapNeighbours(x, p1, n1)) << x;
            if (found) {
                EXPECT_EQ(p0, p1) << x;
                EXPECT_EQ(n0, n1) << x;
            }
        }
        for (zeControlPoint2D* key : keys)
            EXPECT_EQ(reference::neighboursOf(curve, key), curve->getPreviousAndNextPoint(key));
        EXPECT_EQ(reference::neighboursOf(curve, nullptr), curve->getPreviousAndNextPoint(nullptr));
    }
};

TEST_F(CurveDifferentialTest, EvaluationMatchesTheStraightforwardAlgorithmBitForBit)
{
    for (int round = 0; round < 160; ++round) {
        zeAnimationCurve2D* curve = manager->createCurve2D();
        const bool whole = chance(60);
        const int count = uniform(2, 50);
        for (int i = 0; i < count; ++i)
            addRandomKey(curve, whole);
        placeFreeHandles(curve);
        ASSERT_NO_FATAL_FAILURE(compareFrames(curve));
        for (int edit = 0; edit < 3; ++edit) {
            randomEdit(curve, whole);
            ASSERT_NO_FATAL_FAILURE(compareFrames(curve));
        }
        manager->destroyCurve2D(curve);
    }
    EXPECT_GE(compared, 100000);
    // Handles on exact thirds and the like must have been reached.
    EXPECT_GT(rejected, 0);
}

TEST_F(CurveDifferentialTest, KeyLookupsMatchTheChildListAndTheKeyMap)
{
    for (int round = 0; round < 300; ++round) {
        zeAnimationCurve2D* curve = manager->createCurve2D();
        const bool whole = chance(60);
        const int count = uniform(0, 30);
        for (int i = 0; i < count; ++i)
            addRandomKey(curve, whole);
        ASSERT_NO_FATAL_FAILURE(compareLookups(curve));
        for (int edit = 0; edit < 6; ++edit) {
            randomEdit(curve, whole);
            ASSERT_NO_FATAL_FAILURE(compareLookups(curve));
        }
        manager->destroyCurve2D(curve);
    }
}

// Keys that leave the curve or change identifier: the child list and the key cache follow, and
// a key registered under an identifier the curve once listed is not the curve's.
TEST_F(CurveDifferentialTest, CacheFollowsKeysThatLeaveOrAreRenumbered)
{
    zeAnimationCurve2D* curve = manager->createCurve2D();
    std::vector<zeControlPoint2D*> keys;
    for (int i = 0; i < 6; ++i) {
        keys.push_back(manager->createPoint2D(i * 10.0f, static_cast<float>(i * i)));
        curve->addObject(keys.back());
    }
    float value = 0.0f;
    ASSERT_TRUE(zeAnimationController::computeCurveValue(curve, 25.0f, value));

    const osg::UInt64 goneId = keys[3]->getId();
    keys[3]->setParent(nullptr);
    manager->destroyPoint2D(keys[3]);
    ASSERT_EQ(5u, curve->getChildIds().size());
    EXPECT_EQ(5u, curve->getPointCount());
    EXPECT_EQ(nullptr, curve->findPoint(30.0f));
    for (float frame : {25.0f, 30.0f, 35.0f})
        ASSERT_NO_FATAL_FAILURE(expectSameValue(curve, frame));

    zeControlPoint2D* newcomer = manager->createPoint2D(33.0f, -4.0f, goneId);
    ASSERT_EQ(goneId, newcomer->getId());
    EXPECT_EQ(5u, curve->getPointCount());
    EXPECT_EQ(nullptr, curve->findPoint(33.0f));

    manager->setID(manager->createUID(), keys[4]);
    EXPECT_EQ(keys[4], curve->findPoint(40.0f));
    EXPECT_EQ(keys[4]->getId(), *std::next(curve->getChildIds().begin(), 3));
    EXPECT_EQ(keys[4]->getInTangentPoint()->getParentId(), keys[4]->getId());
    for (float frame : {35.0f, 40.0f, 45.0f})
        ASSERT_NO_FATAL_FAILURE(expectSameValue(curve, frame));
}

} // namespace
