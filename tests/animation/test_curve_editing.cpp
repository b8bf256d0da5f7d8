// Keys, their handles and the edits a curve offers: adding, replacing, constraints, moving,
// deleting, whole-curve time edits. Evaluation and the tangent tables are covered elsewhere.
#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <cstdio>
#include <vector>

namespace {

typedef zeControlPoint2D CP;

class CurveEditTest : public AnimationTest
{
protected:
    // A key whose handles collapse onto it whenever they are recomputed.
    zeControlPoint2D* key(float x, float y = 0.0f, CP::TangentMode type = CP::TangentNone)
    {
        zeControlPoint2D* point = manager->createPoint2D(x, y, 0);
        point->setTangentType(type);
        return point;
    }

    zeAnimationCurve2D* curveAt(std::initializer_list<float> xs)
    {
        zeAnimationCurve2D* curve = manager->createCurve2D(0);
        for (float x : xs)
            curve->addObject(key(x));
        return curve;
    }

    std::vector<float> xs(const zeAnimationCurve2D* curve)
    {
        std::vector<float> result;
        for (const auto& entry : curve->getPoints())
            result.push_back(entry.first);
        return result;
    }
};

TEST_F(CurveEditTest, KeyDefaultsHandlesAndSelectionPassedDownFromTheCurve)
{
    zeControlPoint2D* point = manager->createPoint2D(3.0f, 4.0f, 0);
    EXPECT_EQ(point->getTangentType(), CP::TangentSmooth);
    EXPECT_EQ(point->getTangentLengthMode(), CP::TangentLengthHalf);
    EXPECT_FALSE(point->isTangent());

    zeControlPoint2D* in = point->getInTangentPoint();
    zeControlPoint2D* out = point->getOutTangentPoint();
    ASSERT_TRUE(in && out);
    EXPECT_EQ(in->getName(), "InTangent");
    EXPECT_EQ(out->getName(), "OutTangent");
    EXPECT_TRUE(in->isTangent() && out->isTangent());
    EXPECT_EQ(in->getParentId(), point->getId());
    EXPECT_EQ(out->getParentId(), point->getId());
    EXPECT_NE(in->getId(), out->getId());
    EXPECT_EQ(in->getPosition(), osg::Pnt2f(3.0f, 4.0f));

    // A handle owns no handles: as a vector it reads (0, 0), component-wise it lies on itself.
    EXPECT_EQ(in->getInTangentPoint(), nullptr);
    EXPECT_EQ(in->getInTangent(), osg::Vec2f(0.0f, 0.0f));
    EXPECT_EQ(in->getInTangentX(), 3.0f);
    EXPECT_EQ(in->getOutTangentY(), 4.0f);
    in->setInTangent(osg::Vec2f(9.0f, 9.0f)); // ignored, nothing to write to
    EXPECT_EQ(in->getInTangent(), osg::Vec2f(0.0f, 0.0f));

    // Selecting or deselecting a key deselects its selected handles.
    out->setSelected(true);
    point->setSelected(true);
    EXPECT_TRUE(point->isSelected());
    EXPECT_FALSE(out->isSelected());
    in->setSelected(true);
    point->setSelected(false);
    EXPECT_FALSE(in->isSelected());

    // A curve passes selection and lock to its keys, and has neither without keys.
    zeAnimationCurve2D* empty = manager->createCurve2D(0);
    empty->setSelected(true);
    empty->setLocked(true);
    EXPECT_FALSE(empty->isSelected());
    EXPECT_FALSE(empty->isLocked());

    zeAnimationCurve2D* curve = curveAt({0.0f, 1.0f});
    curve->setSelected(true);
    curve->setLocked(true);
    EXPECT_TRUE(curve->isSelected() && curve->isLocked());
    for (zeControlPoint2D* selected : curve->getSelectedPoints())
        EXPECT_TRUE(selected->isLocked());
    EXPECT_EQ(curve->getSelectedPoints().size(), 2u);
    EXPECT_EQ(curve->getSelectedPointsAndTangentPoints().size(), 6u);
}

TEST_F(CurveEditTest, DuplicatedKeyGetsItsOwnHandles)
{
    zeControlPoint2D* point = manager->createPoint2D(1.0f, 2.0f, 0);
    point->setTangentType(CP::TangentFree);
    point->setInTangent(osg::Vec2f(0.5f, 1.0f));
    point->setOutTangent(osg::Vec2f(2.0f, 3.0f));
    zeControlPoint2D* copy = manager->duplicatePoint2D(point);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(manager->getPoint2D(copy->getId()), copy);
    EXPECT_EQ(copy->getTangentType(), CP::TangentFree);
    EXPECT_EQ(copy->getInTangentPoint()->getParentId(), copy->getId());
    EXPECT_EQ(copy->getInTangent(), osg::Vec2f(0.5f, 1.0f));
    EXPECT_EQ(copy->getOutTangent(), osg::Vec2f(2.0f, 3.0f));
    // Independent: moving the copy's handle leaves the source's alone.
    copy->setOutTangentX(7.0f);
    EXPECT_EQ(point->getOutTangentX(), 2.0f);
}

TEST_F(CurveEditTest, UtilityMappingsSnapAndColours)
{
    const CP::TangentMode expected[] = {CP::TangentFlat,   CP::TangentNone, CP::TangentLinear,
                                        CP::TangentSmooth, CP::TangentFlat, CP::TangentForward,
                                        CP::TangentFree,   CP::TangentFlat};
    for (unsigned legacy = 0; legacy < 8; ++legacy)
        EXPECT_EQ(zeAnimationUtils::convertTangentType(legacy), expected[legacy]) << legacy;
    EXPECT_EQ(zeAnimationUtils::convertTangentType(1000u), CP::TangentFlat);

    EXPECT_EQ(zeAnimationUtils::snap(2.5f), 3.0f);
    EXPECT_EQ(zeAnimationUtils::snap(-2.5f), -3.0f);
    EXPECT_EQ(zeAnimationUtils::snap(-0.4f), 0.0f);
    EXPECT_EQ(zeAnimationUtils::snap(osg::Pnt2f(1.6f, 1.6f), true, false), osg::Pnt2f(2.0f, 1.6f));
    EXPECT_EQ(zeAnimationUtils::snap(osg::Pnt2f(1.6f, -1.6f), false, true), osg::Pnt2f(1.6f, -2.0f));

    zeAnimationField* field = manager->createField(0);
    field->attribute = "rotationY";
    EXPECT_EQ(zeAnimationUtils::getDefaultCurveColor(field), osg::Color3f(0.298f, 0.898f, 0.298f));
    field->attribute = "value";
    EXPECT_EQ(zeAnimationUtils::getDefaultCurveColor(field), osg::Color3f(0.953f, 0.557f, 0.271f));
    field->attribute = "";
    EXPECT_EQ(zeAnimationUtils::getDefaultCurveColor(field), osg::Color3f(0.0f, 0.0f, 0.0f));
    EXPECT_EQ(zeAnimationUtils::getDefaultCurveColor(nullptr), osg::Color3f(0.0f, 0.0f, 0.0f));

    // Binding takes the colour; unbinding keeps it.
    field->attribute = "positionX";
    zeAnimationCurve2D* curve = manager->createCurve2D(field, "c", 0, false);
    EXPECT_EQ(curve->getColor(), osg::Color3f(0.898f, 0.298f, 0.298f));
    curve->setAnimationField(nullptr);
    EXPECT_EQ(curve->getColor(), osg::Color3f(0.898f, 0.298f, 0.298f));
}

TEST_F(CurveEditTest, AddObjectReplacesAKeyAtTheSameXAndRefusesOthers)
{
    zeAnimationCurve2D* curve = curveAt({10.0f, 0.0f, 5.0f});
    EXPECT_EQ(xs(curve), (std::vector<float>{0.0f, 5.0f, 10.0f}));
    // The child list itself is ordered by x.
    std::vector<float> listed;
    for (zeAnimationObject* child : curve->getObjects())
        listed.push_back(child->getBegin());
    EXPECT_EQ(listed, (std::vector<float>{0.0f, 5.0f, 10.0f}));

    zeControlPoint2D* old = curve->findPoint(5.0f);
    const osg::UInt64 oldId = old->getId();
    zeControlPoint2D* replacement = key(5.0f, 7.0f);
    EXPECT_EQ(curve->addObject(replacement), replacement);
    EXPECT_EQ(manager->getObject(oldId), nullptr);
    EXPECT_EQ(curve->findPoint(5.0f), replacement);
    EXPECT_EQ(curve->getMaximum(), 7.0f);

    // Adding the key that is already there changes nothing.
    EXPECT_EQ(curve->addObject(replacement), replacement);
    EXPECT_EQ(manager->getObject(replacement->getId()), replacement);

    // Null, handles and non-keys are refused.
    EXPECT_EQ(curve->addObject(nullptr), nullptr);
    EXPECT_EQ(curve->addObject(replacement->getOutTangentPoint()), nullptr);
    EXPECT_EQ(curve->addObject(manager->createUnit(0)), nullptr);
    EXPECT_EQ(curve->addObject(manager->createCurve2D(0)), nullptr);
    EXPECT_EQ(curve->getChildIds().size(), 3u);
}

TEST_F(CurveEditTest, InsertAndMoveConstraintsRespectNeighbourHandles)
{
    zeAnimationCurve2D* curve = manager->createCurve2D(0);
    zeControlPoint2D* first = key(0.0f, 0.0f, CP::TangentFree);
    zeControlPoint2D* last = key(10.0f, 0.0f, CP::TangentFree);
    curve->addObject(first);
    curve->addObject(last);
    first->setOutTangent(osg::Vec2f(4.0f, 1.0f));
    last->setInTangent(osg::Vec2f(8.0f, 1.0f));
    EXPECT_FALSE(curve->checkInsertConstraints(3.0f));
    EXPECT_TRUE(curve->checkInsertConstraints(4.0f));
    EXPECT_TRUE(curve->checkInsertConstraints(8.0f));
    EXPECT_FALSE(curve->checkInsertConstraints(8.5f));
    EXPECT_TRUE(curve->checkInsertConstraints(20.0f));

    zeControlPoint2D* middle = key(6.0f, 0.0f, CP::TangentFree);
    curve->addObject(middle);
    middle->setInTangent(osg::Vec2f(5.0f, 0.0f));
    middle->setOutTangent(osg::Vec2f(7.0f, 0.0f));
    // Absolute form: the key must lie between its own handles, past the previous key's out-handle
    // and before the next key's in-handle, and its handles must not pass the neighbour keys.
    EXPECT_TRUE(curve->checkMoveConstraints(middle, 6.0f, 5.0f, 7.0f));
    EXPECT_FALSE(curve->checkMoveConstraints(middle, 6.0f, 6.5f, 7.0f));
    EXPECT_FALSE(curve->checkMoveConstraints(middle, 3.5f, 3.0f, 4.0f));
    EXPECT_TRUE(curve->checkMoveConstraints(middle, 4.0f, 0.0f, 5.0f));
    EXPECT_FALSE(curve->checkMoveConstraints(middle, 4.0f, -0.5f, 5.0f));
    EXPECT_FALSE(curve->checkMoveConstraints(middle, 8.0f, 7.0f, 10.5f));
    EXPECT_FALSE(curve->checkMoveConstraints(nullptr, 6.0f, 5.0f, 7.0f));

    // Relative form, current positions: +2 puts the key at 8 (allowed), +3 its out-handle past 10.
    EXPECT_TRUE(curve->checkMoveConstraints2(middle, 2.0f, false));
    EXPECT_FALSE(curve->checkMoveConstraints2(middle, 3.5f, false));
    // Saved positions: a free key moves its saved handles, any other key keeps the current ones.
    middle->setTempPosition(osg::Pnt2f(6.0f, 0.0f));
    middle->setTempInTangent(osg::Vec2f(5.0f, 0.0f));
    middle->setTempOutTangent(osg::Vec2f(9.0f, 0.0f));
    EXPECT_TRUE(curve->checkMoveConstraints2(middle, 1.5f, false));
    EXPECT_FALSE(curve->checkMoveConstraints2(middle, 1.5f, true)); // saved out-handle to 10.5
    middle->setTangentType(CP::TangentSmooth);
    EXPECT_TRUE(curve->checkMoveConstraints2(middle, 1.5f, true));
    EXPECT_TRUE(curve->checkMoveConstraints2(middle, 2.0f, true));
    EXPECT_FALSE(curve->checkMoveConstraints2(middle, 2.1f, true)); // past the next in-handle at 8
    EXPECT_FALSE(curve->checkMoveConstraints2(nullptr, 0.0f, true));
}

TEST_F(CurveEditTest, MoveSelectedPointsMovesOnlyKeysThatFit)
{
    zeAnimationCurve2D* curve = curveAt({0.0f, 10.0f, 20.0f, 30.0f});
    zeControlPoint2D* k10 = curve->findPoint(10.0f);
    zeControlPoint2D* k30 = curve->findPoint(30.0f);
    k10->setSelected(true);
    k30->setSelected(true);
    curve->moveSelectedPoints(osg::Vec2f(12.0f, 1.0f), false, false, false, false);
    EXPECT_EQ(k10->getPosition(), osg::Pnt2f(10.0f, 0.0f)); // would pass the key at 20
    EXPECT_EQ(k30->getPosition(), osg::Pnt2f(42.0f, 1.0f));
    EXPECT_EQ(curve->getEnd(), 42.0f);
    EXPECT_EQ(curve->getMaximum(), 1.0f);

    // Snapping rounds the flagged coordinates of the result.
    curve->moveSelectedPoints(osg::Vec2f(0.6f, 0.4f), true, false, false, false);
    EXPECT_EQ(k10->getX(), 11.0f);
    EXPECT_FLOAT_EQ(k10->getY(), 0.4f);

    // The saved form starts from the saved positions; a free key's handles from the saved ones.
    k30->setTangentType(CP::TangentFree);
    k30->setTempPosition(osg::Pnt2f(40.0f, 0.0f));
    k30->setTempInTangent(osg::Vec2f(39.0f, 0.0f));
    k30->setTempOutTangent(osg::Vec2f(41.0f, 2.0f));
    k10->setSelected(false);
    curve->moveSelectedPoints(osg::Vec2f(5.0f, 1.0f), false, false, false, true);
    EXPECT_EQ(k30->getPosition(), osg::Pnt2f(45.0f, 1.0f));
    EXPECT_EQ(k30->getInTangent(), osg::Vec2f(44.0f, 1.0f));
    EXPECT_EQ(k30->getOutTangent(), osg::Vec2f(46.0f, 3.0f));
    EXPECT_EQ(xs(curve), (std::vector<float>{0.0f, 11.0f, 20.0f, 45.0f}));
}

TEST_F(CurveEditTest, MoveSelectedPointsToPutsTheFirstSelectedKeyOnTheTarget)
{
    zeAnimationCurve2D* curve = curveAt({0.0f, 10.0f, 20.0f, 30.0f});
    zeControlPoint2D* k10 = curve->findPoint(10.0f);
    zeControlPoint2D* k20 = curve->findPoint(20.0f);
    curve->moveSelectedPointsTo(osg::Pnt2f(5.0f, 5.0f), false, false, false); // nothing selected
    EXPECT_EQ(xs(curve), (std::vector<float>{0.0f, 10.0f, 20.0f, 30.0f}));

    k20->setSelected(true);
    k10->setSelected(true);
    curve->moveSelectedPointsTo(osg::Pnt2f(13.0f, 5.0f), false, false, false);
    EXPECT_EQ(k10->getPosition(), osg::Pnt2f(13.0f, 5.0f));
    EXPECT_EQ(k20->getPosition(), osg::Pnt2f(23.0f, 5.0f));

    // From the saved positions, with snapping.
    k10->setTempPosition(osg::Pnt2f(10.0f, 0.0f));
    k20->setTempPosition(osg::Pnt2f(20.0f, 0.0f));
    curve->moveSelectedPointsTo(osg::Pnt2f(11.7f, 2.0f), true, false, true);
    EXPECT_EQ(k10->getPosition(), osg::Pnt2f(12.0f, 2.0f));
    EXPECT_EQ(k20->getPosition(), osg::Pnt2f(22.0f, 2.0f));
}

TEST_F(CurveEditTest, DeletingKeysDestroysOrHandsThemOver)
{
    zeAnimationCurve2D* curve = curveAt({0.0f, 10.0f, 20.0f});
    zeAnimationCurve2D* target = curveAt({10.0f});
    const osg::UInt64 targetOld = target->findPoint(10.0f)->getId();
    zeControlPoint2D* k0 = curve->findPoint(0.0f);
    zeControlPoint2D* k10 = curve->findPoint(10.0f);
    k0->setSelected(true);
    k10->setSelected(true);
    EXPECT_EQ(curve->deleteSelectedPoints(false, target), 2u);
    EXPECT_EQ(xs(curve), (std::vector<float>{20.0f}));
    EXPECT_EQ(xs(target), (std::vector<float>{0.0f, 10.0f}));
    EXPECT_EQ(target->findPoint(10.0f), k10); // replaced the target's own key at 10
    EXPECT_EQ(manager->getObject(targetOld), nullptr);
    EXPECT_EQ(k0->getParentId(), target->getId());

    // Without a target the keys are only detached; with destroy they are gone.
    zeControlPoint2D* k20 = curve->findPoint(20.0f);
    EXPECT_EQ(curve->deletePoints(false), 1u);
    EXPECT_TRUE(curve->isEmpty());
    EXPECT_EQ(manager->getPoint2D(k20->getId()), k20);
    EXPECT_EQ(k20->getParentId(), 0u);
    EXPECT_EQ(curve->deleteSelectedPoints(true), 0u);

    const osg::UInt64 id0 = k0->getId();
    const osg::UInt64 id10 = k10->getId();
    EXPECT_EQ(target->deletePoints(true), 2u);
    EXPECT_TRUE(target->isEmpty());
    EXPECT_EQ(manager->getObject(id0), nullptr);
    EXPECT_EQ(manager->getObject(id10), nullptr);
}

TEST_F(CurveEditTest, SetPointsReplacesAllKeysAsGiven)
{
    zeAnimationCurve2D* curve = curveAt({0.0f, 5.0f});
    zeControlPoint2D* kept = curve->findPoint(5.0f);
    const osg::UInt64 dropped = curve->findPoint(0.0f)->getId();
    zeControlPoint2D* a = key(30.0f, 1.0f, CP::TangentSmooth);
    a->setInTangent(osg::Vec2f(29.0f, 9.0f)); // a file's handles are kept as they are
    zeControlPoint2D* early = key(20.0f, 1.0f);
    zeControlPoint2D* late = key(20.0f, 2.0f);
    const osg::UInt64 earlyId = early->getId();
    curve->setPoints({a, nullptr, early, kept, late, a->getOutTangentPoint()});
    EXPECT_EQ(xs(curve), (std::vector<float>{5.0f, 20.0f, 30.0f}));
    EXPECT_EQ(curve->findPoint(20.0f), late);
    EXPECT_EQ(manager->getObject(earlyId), nullptr);
    EXPECT_EQ(manager->getObject(dropped), nullptr);
    EXPECT_EQ(a->getInTangent(), osg::Vec2f(29.0f, 9.0f));
    EXPECT_EQ(a->getParentId(), curve->getId());
    EXPECT_EQ(curve->getBegin(), 5.0f);
    EXPECT_EQ(curve->getEnd(), 30.0f);

    const osg::UInt64 aId = a->getId();
    curve->setPoints({});
    EXPECT_TRUE(curve->isEmpty());
    EXPECT_EQ(manager->getObject(aId), nullptr);
}

TEST_F(CurveEditTest, CreateCurvePointRespectsConstraintsAndFlags)
{
    zeAnimationCurve2D* curve = manager->createCurve2D(0);
    EXPECT_FALSE(manager->createCurvePoint(nullptr, 1.0f, 1.0f, false, false, false));
    EXPECT_TRUE(manager->createCurvePoint(curve, 0.0f, 2.0f, false, false, false));
    EXPECT_TRUE(manager->createCurvePoint(curve, 10.4f, 2.0f, true, true, true));
    zeControlPoint2D* snapped = curve->findPoint(10.0f);
    ASSERT_NE(snapped, nullptr);
    EXPECT_TRUE(snapped->isSelected());
    EXPECT_TRUE(snapped->isLocked());
    // The value is read from the curve where none is given.
    EXPECT_TRUE(manager->createCurvePoint(curve, 5.0f, false));
    ASSERT_NE(curve->findPoint(5.0f), nullptr);
    EXPECT_FLOAT_EQ(curve->findPoint(5.0f)->getY(), 2.0f);

    // An x that an out-handle already passes is refused, and nothing is left registered.
    zeControlPoint2D* free = curve->findPoint(0.0f);
    free->setTangentType(CP::TangentFree);
    free->setOutTangentX(3.0f);
    const std::size_t before = manager->getObjectCount();
    EXPECT_FALSE(manager->createCurvePoint(curve, 2.0f, 0.0f, false, false, false));
    EXPECT_EQ(manager->getObjectCount(), before);
    EXPECT_EQ(curve->getChildIds().size(), 3u);
}

TEST_F(CurveEditTest, WholeCurveMoveAndStretch)
{
    zeAnimationUnit* block = manager->createUnit(0);
    zeAnimationCurve2D* curve = curveAt({0.0f, 10.0f, 20.0f});
    block->addObject(curve);
    zeControlPoint2D* k10 = curve->findPoint(10.0f);
    k10->setTangentType(CP::TangentFree);
    k10->setInTangentX(9.0f);
    k10->setOutTangentX(11.0f);

    // move refreshes the curve itself and tells the parent only when asked.
    curve->move(5.0f, false);
    EXPECT_EQ(xs(curve), (std::vector<float>{5.0f, 15.0f, 25.0f}));
    EXPECT_EQ(k10->getInTangentX(), 14.0f);
    EXPECT_EQ(k10->getOutTangentX(), 16.0f);
    EXPECT_EQ(curve->getBegin(), 5.0f);
    EXPECT_EQ(block->getBegin(), 0.0f);
    curve->move(-5.0f, true);
    EXPECT_EQ(block->getBegin(), 0.0f);
    EXPECT_EQ(block->getEnd(), 20.0f);

    // moveEnd scales about the begin; only the parent is told, and only when asked.
    curve->moveEnd(40.0f, false);
    EXPECT_EQ(xs(curve), (std::vector<float>{0.0f, 20.0f, 40.0f}));
    EXPECT_EQ(k10->getInTangentX(), 18.0f);
    EXPECT_EQ(curve->getEnd(), 40.0f);
    EXPECT_EQ(block->getEnd(), 20.0f);
    // moveBegin scales about the end.
    curve->moveBegin(20.0f, true);
    EXPECT_EQ(xs(curve), (std::vector<float>{20.0f, 30.0f, 40.0f}));
    EXPECT_EQ(k10->getOutTangentX(), 31.0f);
    EXPECT_EQ(block->getBegin(), 20.0f);
    EXPECT_EQ(block->getEnd(), 40.0f);

    // Within 1e-6 of the other edge, or beyond it: nothing at all.
    curve->moveBegin(40.0f, true);
    curve->moveEnd(19.0f, true);
    EXPECT_EQ(xs(curve), (std::vector<float>{20.0f, 30.0f, 40.0f}));
    EXPECT_EQ(curve->getBegin(), 20.0f);
    EXPECT_EQ(curve->getEnd(), 40.0f);

    zeAnimationCurve2D* none = manager->createCurve2D(0);
    none->move(3.0f, true);
    none->moveEnd(3.0f, true);
    EXPECT_EQ(bits(none->getBegin()), 0x65A96816u);
}

TEST_F(CurveEditTest, FlipMirrorsKeysAndSwapsHandles)
{
    zeAnimationCurve2D* curve = manager->createCurve2D(0);
    zeControlPoint2D* a = key(0.0f, 1.0f, CP::TangentFree);
    zeControlPoint2D* b = key(4.0f, 2.0f, CP::TangentFree);
    zeControlPoint2D* c = key(10.0f, 3.0f, CP::TangentFree);
    curve->addObject(a);
    curve->addObject(b);
    curve->addObject(c);
    b->setInTangent(osg::Vec2f(3.0f, 1.5f));
    b->setOutTangent(osg::Vec2f(6.0f, 2.5f));

    curve->flip();
    EXPECT_TRUE(curve->isFlipped());
    EXPECT_EQ(a->getPosition(), osg::Pnt2f(10.0f, 1.0f));
    EXPECT_EQ(b->getPosition(), osg::Pnt2f(6.0f, 2.0f));
    EXPECT_EQ(c->getPosition(), osg::Pnt2f(0.0f, 3.0f));
    // The mirrored out-handle (now left of the key) becomes the in-handle.
    EXPECT_EQ(b->getInTangent(), osg::Vec2f(4.0f, 2.5f));
    EXPECT_EQ(b->getOutTangent(), osg::Vec2f(7.0f, 1.5f));
    EXPECT_EQ(xs(curve), (std::vector<float>{0.0f, 6.0f, 10.0f}));
    EXPECT_EQ(curve->getObjects().front(), c);

    curve->flip();
    EXPECT_FALSE(curve->isFlipped());
    EXPECT_EQ(b->getPosition(), osg::Pnt2f(4.0f, 2.0f));
    EXPECT_EQ(b->getInTangent(), osg::Vec2f(3.0f, 1.5f));
    EXPECT_EQ(b->getOutTangent(), osg::Vec2f(6.0f, 2.5f));
    EXPECT_EQ(curve->getObjects().front(), a);
}

TEST_F(CurveEditTest, TriggerLoopFollowsTheSpanOrThePlayRange)
{
    zeAnimationCurve2D* curve = curveAt({0.0f, 10.0f});
    const std::pair<float, bool> span[] = {{-1.0f, false}, {0.0f, true}, {10.0f, true}, {10.5f, false}};
    for (const auto& frame : span) {
        curve->triggerLoop(frame.first);
        EXPECT_EQ(curve->isPlaying(), frame.second) << frame.first;
    }
    curve->setUsePlayRange(true);
    curve->setStartPlayRange(4.0f);
    curve->setEndPlayRange(6.0f);
    const std::pair<float, bool> range[] = {{3.0f, false}, {5.0f, true}, {7.0f, false}};
    for (const auto& frame : range) {
        curve->triggerLoop(frame.first);
        EXPECT_EQ(curve->isPlaying(), frame.second) << frame.first;
    }
}

TEST_F(CurveEditTest, PrintInfoReportsKeysBoundsAndField)
{
    zeAnimationField* field = manager->createField(77);
    field->name = "translation";
    field->attribute = "positionX";
    field->nodeID = 3;
    field->fcID = 4;
    field->value = 1.5f;
    field->valuePos = 2;
    zeAnimationCurve2D* curve = manager->createCurve2D(field, "move", 0, false);
    curve->addObject(key(0.0f, -1.0f));
    curve->addObject(key(10.0f, 2.0f));
    testing::internal::CaptureStdout();
    curve->printInfo();
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(text, "Curve move:\n"
                    "Points: 2\n"
                    "Begin: 0.000000 End: 10.000000 Min: -1.000000 Max: 2.000000\n"
                    "FieldPtr \n"
                    "Field Info:\n\tid 77\n\tname translation\n\tattribute positionX\n\tfcID 4\n"
                    "\tnodeID 3\n\tvalue 1.5\n\tvaluePos 2\n\tdirty 1\n\n");
}

} // namespace
