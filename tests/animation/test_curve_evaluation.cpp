// Curve evaluation and tangent placement through the curve and its keys: which keys a frame reads,
// that edits reach the evaluator, and that keys get their neighbours. The segment maths and the
// tangent rules cell by cell are tested on the kernel (test_curve_kernel.cpp).

#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <cmath>

namespace {

typedef zeControlPoint2D CP;
typedef CP::TangentMode Mode;

class CurveEvaluationTest : public AnimationTest
{
protected:
    zeAnimationCurve2D* curve = nullptr;

    void SetUp() override
    {
        AnimationTest::SetUp();
        curve = manager->createCurve2D();
    }

    // A key with free handles, so that the curve leaves them where the test puts them.
    zeControlPoint2D* freeKey(float x, float y)
    {
        zeControlPoint2D* key = manager->createPoint2D(x, y);
        key->setTangentType(CP::TangentFree);
        curve->addObject(key);
        return key;
    }

    zeControlPoint2D* key(float x, float y, Mode type, Mode length = CP::TangentLengthHalf)
    {
        zeControlPoint2D* point = manager->createPoint2D(x, y);
        point->setTangentType(type);
        point->setTangentLengthMode(length);
        curve->addObject(point);
        return point;
    }

    bool eval(float frame, float& value)
    {
        return zeAnimationController::computeCurveValue(curve, frame, value);
    }

    // The value at a frame, expected to be computed.
    float at(float frame)
    {
        float value = -12345.0f;
        EXPECT_TRUE(eval(frame, value)) << frame;
        return value;
    }
};

TEST_F(CurveEvaluationTest, OutsideTheKeysTheSecondKeyRulesBeforeAndTheLastKeyAtAndAfter)
{
    float value = 7.0f;
    EXPECT_FALSE(zeAnimationController::computeCurveValue(nullptr, 1.0f, value));
    EXPECT_FALSE(eval(1.0f, value));
    freeKey(3.0f, 9.0f);
    EXPECT_FALSE(eval(3.0f, value)); // one key is too few, wherever the frame falls
    EXPECT_EQ(7.0f, value);
    curve = manager->createCurve2D();

    freeKey(0.0f, 1.0f);
    freeKey(10.0f, 5.0f);
    EXPECT_EQ(5.0f, at(-3.0f));
    EXPECT_EQ(5.0f, at(10.0f));
    EXPECT_EQ(5.0f, at(12.0f));
    // Free handles left on their keys make a step holding the first key's value.
    for (float frame : {0.0f, 3.0f, 9.999f})
        EXPECT_EQ(1.0f, at(frame)) << frame;

    // With a third key the second key's value is not the last one's.
    freeKey(20.0f, 9.0f);
    EXPECT_EQ(5.0f, at(-3.0f));
    EXPECT_EQ(9.0f, at(20.0f));
    EXPECT_EQ(9.0f, at(1e9f));
    EXPECT_EQ(9.0f, at(std::nanf("")));
}

TEST_F(CurveEvaluationTest, EditsBetweenEvaluationsAreSeen)
{
    zeControlPoint2D* a = freeKey(0.0f, 0.0f);
    zeControlPoint2D* b = freeKey(10.0f, 10.0f);
    // A free key whose handles lie on it: adding or detaching it writes no position, so only the
    // curve itself can tell the evaluator that its remembered segment is gone.
    zeControlPoint2D* middle = manager->createPoint2D(5.0f, 42.0f);
    middle->setTangentType(CP::TangentFree);
    const float before = at(7.0f);
    curve->addObject(middle);
    EXPECT_EQ(42.0f, at(7.0f));
    curve->subObject(middle, false);
    EXPECT_EQ(before, at(7.0f));
    manager->destroyPoint2D(middle);

    // A new last key, a moved key, a changed value and a removed key each change the answer.
    zeControlPoint2D* c = freeKey(30.0f, 30.0f);
    EXPECT_EQ(30.0f, at(40.0f));
    b->setY(-4.0f);
    EXPECT_EQ(-4.0f, at(-5.0f));
    const float beforeHandle = at(20.0f);
    c->setInTangentY(60.0f); // a raised in-handle lifts the segment before the key
    EXPECT_LT(beforeHandle, at(20.0f));
    a->setX(35.0f); // direct write: the child list is now out of order
    EXPECT_EQ(0.0f, at(40.0f));
    EXPECT_EQ(30.0f, at(-5.0f)); // second key by x
    curve->subObject(a, true);
    EXPECT_EQ(30.0f, at(40.0f));
}

// ---- Tangents ---------------------------------------------------------------------------------
// The rules cell by cell are tested on the kernel (test_curve_kernel.cpp); here, that keys reach
// them with the right neighbours, and when they do not.

class TangentTest : public CurveEvaluationTest
{
protected:
    static void expectHandles(const zeControlPoint2D* k, float ix, float iy, float ox, float oy)
    {
        EXPECT_FLOAT_EQ(ix, k->getInTangentX());
        EXPECT_FLOAT_EQ(iy, k->getInTangentY());
        EXPECT_FLOAT_EQ(ox, k->getOutTangentX());
        EXPECT_FLOAT_EQ(oy, k->getOutTangentY());
    }
};

TEST_F(TangentTest, InnerKeysOnTheWorkedExamples)
{
    key(0.0f, 0.0f, CP::TangentFree);
    key(3.0f, 3.0f, CP::TangentFree);
    zeControlPoint2D* smooth = key(1.0f, 0.0f, CP::TangentSmooth, CP::TangentSmooth);
    expectHandles(smooth, 0.0f, -1.0f, 2.0f, 1.0f);
}

TEST_F(TangentTest, FreeKeysAndLoneKeysAreLeftAlone)
{
    zeControlPoint2D* lone = key(4.0f, 1.0f, CP::TangentSmooth);
    lone->setInTangent(osg::Vec2f(3.0f, 7.0f));
    EXPECT_FALSE(lone->computeTangents());
    EXPECT_EQ(3.0f, lone->getInTangentX());
    EXPECT_EQ(7.0f, lone->getInTangentY());

    zeControlPoint2D* other = key(8.0f, 2.0f, CP::TangentFree);
    other->setOutTangent(osg::Vec2f(11.0f, -3.0f));
    EXPECT_FALSE(other->computeTangents());
    EXPECT_EQ(11.0f, other->getOutTangentX());
    EXPECT_EQ(-3.0f, other->getOutTangentY());
    // The lone key now has a neighbour and gets handles.
    EXPECT_TRUE(lone->computeTangents());
    EXPECT_EQ(2.0f, lone->getInTangentX());
}

TEST_F(TangentTest, InsertingAKeyRecomputesItsNeighbours)
{
    zeControlPoint2D* a = key(0.0f, 0.0f, CP::TangentFlat);
    zeControlPoint2D* c = key(20.0f, 0.0f, CP::TangentFlat);
    EXPECT_EQ(10.0f, a->getOutTangentX());
    key(4.0f, 1.0f, CP::TangentFlat);
    EXPECT_EQ(2.0f, a->getOutTangentX());
    EXPECT_EQ(12.0f, c->getInTangentX());
}

} // namespace
