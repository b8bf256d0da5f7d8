// Blocks, tracks, clips and sequences: adoption rules, stretch arithmetic, flipping, track
// numbering, duplication and destruction of whole subtrees.
#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <vector>

namespace {

class ContainerTest : public AnimationTest
{
protected:
    // A curve with keys at (begin, 0) and (end, 1) whose handles stay on the keys.
    zeAnimationCurve2D* curve(float begin, float end)
    {
        zeAnimationCurve2D* c = manager->createCurve2D(0);
        for (float x : {begin, end}) {
            zeControlPoint2D* key = manager->createPoint2D(x, x == begin ? 0.0f : 1.0f, 0);
            key->setTangentType(zeControlPoint2D::TangentNone);
            c->addObject(key);
        }
        return c;
    }

    zeAnimationUnit* block(float begin, float end)
    {
        zeAnimationUnit* b = manager->createUnit(0);
        b->addObject(curve(begin, end));
        return b;
    }

    zeAnimationStreak* track(std::initializer_list<zeAnimationObject*> children)
    {
        zeAnimationStreak* t = manager->createStreak(0);
        for (zeAnimationObject* child : children)
            t->addObject(child);
        return t;
    }

    // Every key's x in the curves below, in ascending order.
    static std::vector<float> keyXs(const zeAnimationObject* blockOrCurve)
    {
        std::vector<float> result;
        for (zeAnimationCurve2D* c : blockOrCurve->getCurves())
            for (const auto& entry : c->getPoints())
                result.push_back(entry.first);
        std::sort(result.begin(), result.end());
        return result;
    }

    // Every identifier in the subtree, keys included.
    void collect(const zeAnimationObject* object, std::set<osg::UInt64>& ids)
    {
        ids.insert(object->getId());
        for (zeAnimationObject* child : object->getObjects())
            collect(child, ids);
    }

    std::set<osg::UInt64> subtree(const zeAnimationObject* object)
    {
        std::set<osg::UInt64> ids;
        collect(object, ids);
        return ids;
    }
};

TEST_F(ContainerTest, BlockTakesCurvesOnlyAndTheFirstKnownNode)
{
    zeAnimationStreak* t = manager->createStreak(0);
    zeAnimationUnit* b = manager->createUnit("b", 0);
    t->addObject(b);
    EXPECT_EQ(b->addObject(nullptr), nullptr);
    EXPECT_EQ(b->addObject(manager->createPoint2D(0)), nullptr);
    EXPECT_EQ(b->addObject(manager->createUnit(0)), nullptr);
    EXPECT_EQ(b->addObject(sequence(0, 1)), nullptr);
    EXPECT_TRUE(b->isEmpty());

    zeAnimationField* first = manager->createField(0);
    first->nodeID = 7;
    zeAnimationField* second = manager->createField(0);
    second->nodeID = 9;
    zeAnimationCurve2D* unbound = curve(0, 10);
    zeAnimationCurve2D* c7 = curve(5, 20);
    c7->setAnimationField(first);
    zeAnimationCurve2D* c9 = curve(-5, 1);
    c9->setAnimationField(second);
    EXPECT_EQ(b->addObject(unbound), unbound);
    EXPECT_EQ(b->getParentOSGNodeId(), 0u); // a curve without field decides nothing
    b->addObject(c7);
    b->addObject(c9);
    EXPECT_EQ(b->getParentOSGNodeId(), 7u);
    EXPECT_EQ(b->getBegin(), -5.0f);
    EXPECT_EQ(b->getEnd(), 20.0f);
    // Curve identifiers climb to every ancestor.
    EXPECT_EQ(t->getCurveIds(), (std::set<osg::UInt64>{unbound->getId(), c7->getId(), c9->getId()}));

    // Only its own curves come out, and their identifiers leave every ancestor.
    zeAnimationUnit* other = block(20, 30);
    zeAnimationCurve2D* theirs = other->getCurves().front();
    EXPECT_EQ(b->subObject(theirs, false), nullptr);
    EXPECT_EQ(b->subObject(nullptr, false), nullptr);
    EXPECT_EQ(b->subObject(other, false), nullptr);
    EXPECT_EQ(b->subObject(unbound, false), unbound);
    EXPECT_EQ(b->subObject(c9, false), c9);
    EXPECT_EQ(c9->getParentId(), 0u);
    EXPECT_EQ(manager->getCurve2D(c9->getId()), c9);
    const osg::UInt64 id = c7->getId();
    EXPECT_EQ(b->subObject(c7, true), nullptr);
    EXPECT_EQ(manager->getObject(id), nullptr);
    EXPECT_TRUE(b->isEmpty());
    EXPECT_TRUE(t->getCurveIds().empty());
}

// Shrinking or growing at either edge, at any level of nesting, keeps every curve in its
// proportional place: no child edge is refused on the way.
TEST_F(ContainerTest, StretchKeepsEveryChildInItsProportionalPlaceAndATrackHasNoGuard)
{
    struct Stretch
    {
        bool atBegin;
        float edge;
        float (*map)(float);
    };
    const Stretch stretches[] = {
        {true, 20.0f, [](float x) { return 40.0f - (40.0f - x) * 0.5f; }},
        {true, -40.0f, [](float x) { return 40.0f - (40.0f - x) * 2.0f; }},
        {false, 20.0f, [](float x) { return x * 0.5f; }},
        {false, 80.0f, [](float x) { return x * 2.0f; }},
    };
    for (const Stretch& stretch : stretches) {
        for (int level = 0; level < 3; ++level) {
            SCOPED_TRACE(testing::Message() << "edge " << stretch.edge << " level " << level);
            zeAnimationCurve2D* a = curve(0, 20);
            zeAnimationCurve2D* c = curve(20, 40);
            zeAnimationUnit* b = manager->createUnit(0);
            b->addObject(a);
            b->addObject(c);
            zeAnimationStreak* t = track({b});
            zeAnimationStrip* clip = manager->createStrip(0);
            clip->addObject(t);
            zeAnimationObject* target = level == 0   ? static_cast<zeAnimationObject*>(b)
                                        : level == 1 ? static_cast<zeAnimationObject*>(t)
                                                     : static_cast<zeAnimationObject*>(clip);
            if (stretch.atBegin)
                target->moveBegin(stretch.edge, true);
            else
                target->moveEnd(stretch.edge, true);
            std::vector<float> xs = keyXs(a);
            for (float x : keyXs(c))
                xs.push_back(x);
            ASSERT_EQ(xs.size(), 4u);
            const float expected[] = {0.0f, 20.0f, 20.0f, 40.0f};
            for (int i = 0; i < 4; ++i)
                EXPECT_NEAR(xs[i], stretch.map(expected[i]), 1e-4f);
            // Every container up to the root follows.
            for (const zeAnimationObject* container :
                 {static_cast<zeAnimationObject*>(b), static_cast<zeAnimationObject*>(clip)}) {
                EXPECT_NEAR(container->getBegin(), stretch.map(0.0f), 1e-4f);
                EXPECT_NEAR(container->getEnd(), stretch.map(40.0f), 1e-4f);
            }
            manager->destroyObject(clip);
        }
    }
    // Without notify the parent keeps its bounds.
    zeAnimationUnit* b = block(0, 10);
    zeAnimationStreak* t = track({b});
    b->moveEnd(80.0f, false);
    EXPECT_EQ(keyXs(b), (std::vector<float>{0.0f, 80.0f}));
    EXPECT_EQ(t->getEnd(), 10.0f);

    // A track has no guard: stretched onto its own end, it still asks every child (scale 0).
    zeAnimationSequence* first = sequence(0, 5);
    zeAnimationSequence* second = sequence(5, 10);
    zeAnimationStreak* row = track({first, second});
    zeAnimationStrip* clip = manager->createStrip(0);
    clip->addObject(row);
    row->moveEnd(20.0f, true);
    EXPECT_EQ(first->getEnd(), 10.0f);
    EXPECT_EQ(second->getBegin(), 10.0f);
    EXPECT_EQ(second->getEnd(), 20.0f);
    EXPECT_EQ(clip->getEnd(), 20.0f);
    row->moveBegin(20.0f, false);
    EXPECT_EQ(row->getBegin(), 20.0f);
    EXPECT_EQ(first->getBegin(), 0.0f);
    EXPECT_EQ(first->getEnd(), 20.0f);
}

TEST_F(ContainerTest, RefusedBlockStretchStoresTheEdgeOnlyAndTrimmingLeavesTheCurves)
{
    zeAnimationUnit* b = block(0, 10);
    zeAnimationStreak* t = track({b});
    b->moveBegin(10.0f, true);
    EXPECT_EQ(b->getBegin(), 10.0f); // stored before the test
    EXPECT_EQ(keyXs(b), (std::vector<float>{0.0f, 10.0f}));
    EXPECT_EQ(t->getBegin(), 0.0f);

    zeAnimationUnit* e = block(0, 10);
    zeAnimationStreak* u = track({e});
    e->moveEnd(0.0000001f, true);
    EXPECT_EQ(e->getEnd(), 0.0000001f);
    EXPECT_EQ(keyXs(e), (std::vector<float>{0.0f, 10.0f}));
    EXPECT_EQ(u->getEnd(), 10.0f);

    // An empty block stores nothing at all.
    zeAnimationUnit* empty = manager->createUnit(0);
    empty->moveBegin(3.0f, true);
    empty->moveEnd(3.0f, true);
    empty->trimBegin(-3.0f, true);
    EXPECT_EQ(bits(empty->getBegin()), 0x65A96816u);
    EXPECT_EQ(bits(empty->getEnd()), 0xE5A96816u);
    EXPECT_FALSE(empty->isTrimmed());

    // Trimming narrows the interval without touching the curves.
    b = block(0, 10);
    t = track({b});
    b->trimBegin(10.0f, true);
    EXPECT_FALSE(b->isTrimmed());
    EXPECT_EQ(b->getBegin(), 0.0f);

    b->trimBegin(2.0f, true);
    b->trimEnd(8.0f, false);
    EXPECT_TRUE(b->isTrimmed());
    EXPECT_EQ(b->getBegin(), 2.0f);
    EXPECT_EQ(b->getEnd(), 8.0f);
    EXPECT_EQ(keyXs(b), (std::vector<float>{0.0f, 10.0f}));
    EXPECT_EQ(t->getBegin(), 2.0f);
    EXPECT_EQ(t->getEnd(), 10.0f);
    EXPECT_EQ(bits(b->getUntrimmedBegin()), 0x65A96816u);
    b->trimEnd(2.0f, true);
    EXPECT_EQ(b->getEnd(), 8.0f);
}

TEST_F(ContainerTest, FlipMirrorsTheContentAndTwiceRestoresIt)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationUnit* x = block(0, 10);
    zeAnimationUnit* y = block(15, 20);
    zeAnimationUnit* z = block(2, 4);
    clip->addObject(track({x, y}));
    clip->addObject(track({z}));
    zeControlPoint2D* firstKey = x->getCurves().front()->findPoint(0.0f);

    clip->flip();
    EXPECT_TRUE(clip->isFlipped());
    EXPECT_TRUE(x->isFlipped() && z->isFlipped());
    EXPECT_EQ(firstKey->getPosition(), osg::Pnt2f(20.0f, 0.0f));
    EXPECT_EQ(keyXs(x), (std::vector<float>{10.0f, 20.0f}));
    EXPECT_EQ(keyXs(y), (std::vector<float>{0.0f, 5.0f}));
    EXPECT_EQ(keyXs(z), (std::vector<float>{16.0f, 18.0f}));
    EXPECT_EQ(clip->getBegin(), 0.0f);
    EXPECT_EQ(clip->getEnd(), 20.0f);

    clip->flip();
    EXPECT_FALSE(clip->isFlipped() || x->isFlipped() || z->isFlipped());
    EXPECT_EQ(keyXs(x), (std::vector<float>{0.0f, 10.0f}));
    EXPECT_EQ(keyXs(y), (std::vector<float>{15.0f, 20.0f}));

    zeAnimationUnit* empty = manager->createUnit(0);
    empty->flip();
    EXPECT_FALSE(empty->isFlipped());
}

TEST_F(ContainerTest, MoveShiftsEverythingAndSharedFlagsReachDescendants)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationUnit* b = block(0, 10);
    zeAnimationSequence* s = sequence(20, 30);
    zeAnimationStreak* t = track({b, s});
    clip->addObject(t);
    testing::internal::CaptureStdout();
    clip->move(5.0f, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "moving sequence by offset 5.000000\n");
    EXPECT_EQ(keyXs(b), (std::vector<float>{5.0f, 15.0f}));
    EXPECT_EQ(s->getBegin(), 25.0f);
    EXPECT_EQ(clip->getBegin(), 5.0f);
    EXPECT_EQ(clip->getEnd(), 35.0f);

    clip->setRepeating(true);
    clip->setMotionBlur(true);
    clip->setActive(false);
    zeAnimationCurve2D* c = b->getCurves().front();
    for (zeAnimationObject* o : std::vector<zeAnimationObject*>{t, b, c}) {
        EXPECT_TRUE(o->isRepeating());
        EXPECT_TRUE(o->getMotionBlur());
        EXPECT_FALSE(o->isActive());
    }
    EXPECT_FALSE(s->isActive());
}

TEST_F(ContainerTest, TriggerLoopSetsPlayFlagsAndPassesDownBelowBlocks)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationUnit* b = block(0, 10);
    zeAnimationStreak* t = static_cast<zeAnimationStreak*>(clip->addObject(b));
    zeAnimationCurve2D* c = b->getCurves().front();
    clip->triggerLoop(-1.0f);
    EXPECT_FALSE(clip->isPlaying() || t->isPlaying() || b->isPlaying());
    clip->triggerLoop(0.0f);
    EXPECT_TRUE(clip->isPlaying() && t->isPlaying() && b->isPlaying());
    EXPECT_FALSE(c->isPlaying()); // a block does not pass the frame on
    clip->triggerLoop(10.5f);
    EXPECT_FALSE(clip->isPlaying() || t->isPlaying() || b->isPlaying());

    // A frame past the end starts and ends in one call: not playing afterwards.
    zeAnimationUnit* late = block(0, 10);
    late->triggerLoop(50.0f);
    EXPECT_FALSE(late->isPlaying());
    late->setUsePlayRange(true);
    late->setStartPlayRange(20.0f);
    late->setEndPlayRange(60.0f);
    late->triggerLoop(50.0f);
    EXPECT_TRUE(late->isPlaying());

    zeAnimationUnit* empty = manager->createUnit(0);
    empty->setUsePlayRange(true);
    empty->triggerLoop(0.0f);
    EXPECT_FALSE(empty->isPlaying());
}

// (Which overlaps are refused: the random layouts of test_hardening.cpp check the rule itself.)
TEST_F(ContainerTest, TrackInsertObjectTakesTrackContentOnlyAndAddObjectHasNoLayoutRule)
{
    zeAnimationStreak* t = track({sequence(10, 20)});
    EXPECT_FALSE(t->insertObject(nullptr));
    EXPECT_FALSE(t->insertObject(curve(30, 40)));
    EXPECT_FALSE(t->insertObject(manager->createStreak(0)));
    EXPECT_FALSE(t->insertObject(sequence(15, 25)));
    EXPECT_TRUE(t->insertObject(block(0, 10)));
    EXPECT_TRUE(t->insertObject(sequence(20, 30)));
    EXPECT_EQ(t->getChildIds().size(), 3u);
    zeAnimationSequence* overlapping = sequence(5, 25);
    EXPECT_EQ(t->addObject(overlapping), overlapping);
    EXPECT_EQ(t->getChildIds().size(), 4u);
}

TEST_F(ContainerTest, ClipNumbersTracksWithGapsAndRepeats)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationStreak* t0 = manager->createStreak(0);
    zeAnimationStreak* t1 = manager->createStreak(0);
    zeAnimationStreak* t2 = manager->createStreak(0);
    EXPECT_EQ(clip->addObject(t0), t0);
    clip->addObject(t1);
    clip->addObject(t2);
    EXPECT_EQ(t0->getNumber(), 0u);
    EXPECT_EQ(t1->getNumber(), 1u);
    EXPECT_EQ(t2->getNumber(), 2u);

    EXPECT_EQ(clip->subObject(t1, false), t1);
    EXPECT_EQ(t2->getNumber(), 2u);
    EXPECT_EQ(clip->getStreak(1), nullptr);

    // The new track repeats number 2 and, holding earlier content, sorts before the old one.
    zeAnimationStreak* t3 = track({sequence(0, 5)});
    clip->addObject(t3);
    EXPECT_EQ(t3->getNumber(), 2u);
    EXPECT_EQ(clip->getStreakAmount(), 3u);
    EXPECT_EQ(clip->getStreak(2), t3);
    const zeAnimationStrip::StreakMap streaks = clip->getStreaks();
    ASSERT_EQ(streaks.size(), 2u);
    EXPECT_EQ(streaks.at(0), t0);
    EXPECT_EQ(streaks.at(2), t3);
}

TEST_F(ContainerTest, ClipPlacesObjectsOnTracks)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationUnit* b1 = block(0, 10);
    zeAnimationObject* first = clip->addObject(b1);
    ASSERT_NE(first, nullptr);
    zeAnimationStreak* t0 = static_cast<zeAnimationStreak*>(first);
    EXPECT_EQ(t0->getNumber(), 0u);

    zeAnimationStreak* t1 = clip->insertObject(block(5, 15));
    ASSERT_NE(t1, nullptr);
    EXPECT_EQ(t1->getNumber(), 1u);
    zeAnimationUnit* b3 = block(10, 20);
    EXPECT_EQ(clip->insertObject(b3), t0); // the first track with room
    EXPECT_EQ(clip->insertObject(manager->createStreak(0)), nullptr);
    EXPECT_EQ(clip->addObject(curve(0, 1)), nullptr);
    EXPECT_EQ(clip->addObject(nullptr), nullptr);
    EXPECT_EQ(clip->getStreakAmount(), 2u);

    EXPECT_EQ(clip->subObject(b1, false), t0);
    EXPECT_EQ(clip->subObject(b1, false), nullptr);
    const osg::UInt64 b3Id = b3->getId();
    EXPECT_EQ(clip->subObject(b3, true), t0);
    EXPECT_EQ(manager->getObject(b3Id), nullptr);
    EXPECT_TRUE(t0->isEmpty());
    EXPECT_EQ(clip->getStreakAmount(), 2u); // the emptied track stays
}

TEST_F(ContainerTest, ClipDestroysEmptyTracks)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationStreak* t0 = manager->createStreak(0);
    zeAnimationStreak* t1 = track({sequence(0, 1)});
    zeAnimationStreak* t2 = manager->createStreak(0);
    for (zeAnimationStreak* t : {t0, t1, t2})
        clip->addObject(t);
    const osg::UInt64 id0 = t0->getId();
    clip->destroyEmptyStreaks();
    EXPECT_EQ(clip->getStreakAmount(), 1u);
    EXPECT_EQ(clip->getStreak(1), t1);
    EXPECT_EQ(manager->getObject(id0), nullptr);

    // Only empty tracks at the top go: 0 full, 1 and 2 empty.
    zeAnimationStrip* top = manager->createStrip(0);
    zeAnimationStreak* full = track({sequence(0, 1)});
    zeAnimationStreak* e1 = manager->createStreak(0);
    zeAnimationStreak* e2 = manager->createStreak(0);
    for (zeAnimationStreak* t : {full, e1, e2})
        top->addObject(t);
    const osg::UInt64 e1Id = e1->getId();
    top->destroyEmptyStreaksAtEnd();
    EXPECT_EQ(top->getStreakAmount(), 1u);
    EXPECT_EQ(top->getStreak(0), full);
    EXPECT_EQ(manager->getObject(e1Id), nullptr);

    // An empty track below a full one survives.
    zeAnimationStrip* middle = manager->createStrip(0);
    zeAnimationStreak* empty = manager->createStreak(0);
    for (zeAnimationStreak* t : {track({sequence(0, 1)}), empty, track({sequence(2, 3)})})
        middle->addObject(t);
    middle->destroyEmptyStreaksAtEnd();
    EXPECT_EQ(middle->getStreakAmount(), 3u);
    EXPECT_EQ(middle->getStreak(1), empty);
}

TEST_F(ContainerTest, ClipListsWhatLiesDirectlyOnItsTracks)
{
    zeAnimationStrip* inner = manager->createStrip(0);
    inner->addObject(block(40, 50));
    zeAnimationUnit* b = block(0, 10);
    zeAnimationSequence* s = sequence(20, 30);
    zeAnimationStrip* clip = manager->createStrip(0);
    clip->addObject(track({b, s}));
    clip->addObject(track({inner}));
    EXPECT_EQ(clip->getUnits(), std::vector<zeAnimationUnit*>{b});
    EXPECT_EQ(clip->getSequences(), std::vector<zeAnimationSequence*>{s});
    EXPECT_EQ(clip->getStrips(), std::vector<zeAnimationStrip*>{inner});
    // The summaries, unlike the lists, reach all the way down.
    EXPECT_EQ(clip->getCurveIds().size(), 2u);
    EXPECT_EQ(clip->getSequencesRecursive(), std::vector<zeAnimationSequence*>{s});
}

TEST_F(ContainerTest, SequencePrintsItsMovesAndGuardsItsEdges)
{
    zeAnimationSequence* s = sequence(0, 10);
    EXPECT_EQ(s->getSequencesRecursive(), std::vector<zeAnimationSequence*>{s});
    zeAnimationUnit* stray = block(0, 1);
    EXPECT_EQ(s->addObject(stray), stray); // returned, not adopted
    EXPECT_TRUE(s->isEmpty());
    zeAnimationStreak* t = track({s});
    EXPECT_EQ(t->getSequenceIds(), std::set<osg::UInt64>{s->getId()});

    char expected[128];
    std::snprintf(expected, sizeof expected, "moving sequence by offset 2.500000\ntelling parent %p\n",
                  static_cast<void*>(t));
    testing::internal::CaptureStdout();
    s->move(2.5f, true);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
    EXPECT_EQ(s->getEnd(), 12.5f);
    EXPECT_EQ(t->getEnd(), 12.5f);

    zeAnimationSequence* orphan = sequence(0, 1);
    std::snprintf(expected, sizeof expected, "moving sequence by offset 0.000000\ntelling parent %p\n",
                  static_cast<void*>(nullptr));
    testing::internal::CaptureStdout();
    orphan->move(0.0f, true);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);

    s->moveBegin(12.5f, true);
    s->moveEnd(2.5f, true);
    EXPECT_EQ(s->getBegin(), 2.5f);
    EXPECT_EQ(s->getEnd(), 12.5f);
    s->moveBegin(4.0f, true);
    EXPECT_EQ(t->getBegin(), 4.0f);
    EXPECT_FALSE(s->isTrimmed());
    s->trimEnd(3.0f, true);
    EXPECT_FALSE(s->isTrimmed());
    s->trimEnd(8.0f, true);
    EXPECT_TRUE(s->isTrimmed());
    EXPECT_EQ(s->getEnd(), 8.0f);
    EXPECT_EQ(t->getEnd(), 8.0f);
    EXPECT_EQ(bits(s->getUntrimmedEnd()), 0xE5A96816u);
}

// (That no parent chain ever loops: the soak checks it after every step.)
TEST_F(ContainerTest, ARefusedAncestorOpensNoTrackAndUpdatesEndAtTheRoot)
{
    zeAnimationStrip* outer = manager->createStrip(0);
    zeAnimationStrip* inner = manager->createStrip(0);
    zeAnimationStreak* outerTrack = static_cast<zeAnimationStreak*>(outer->addObject(inner));
    ASSERT_NE(outerTrack, nullptr);
    zeAnimationStreak* innerTrack = manager->createStreak(0);
    inner->addObject(innerTrack);
    const std::size_t objects = manager->getObjectCount();
    EXPECT_EQ(inner->addObject(outer), nullptr);
    EXPECT_EQ(inner->insertObject(outer), nullptr);
    EXPECT_FALSE(innerTrack->insertObject(outer));
    EXPECT_EQ(manager->getObjectCount(), objects);
    outer->setParent(innerTrack);
    EXPECT_EQ(outer->getParent(), nullptr);
    innerTrack->addObject(sequence(0.0f, 4.0f));
    EXPECT_EQ(outer->getEnd(), 4.0f);
    EXPECT_EQ(outer->getSequencesRecursive().size(), 1u);
}

TEST_F(ContainerTest, DuplicateBlockCopiesTheListedMembersAndItsCurves)
{
    zeAnimationField* field = manager->createField(0);
    field->nodeID = 7;
    zeAnimationStreak* t = manager->createStreak(0);
    zeAnimationUnit* b = manager->createUnit("walk", 0);
    zeAnimationCurve2D* c = curve(0, 10);
    c->setAnimationField(field);
    b->addObject(c);
    b->addObject(curve(2, 4));
    t->addObject(b);
    b->setActive(false);
    b->setPlaying(true);
    b->setRepeating(true);
    b->setFlipped(true);
    b->setTrimmed(true);
    b->setMotionBlur(true);
    b->setUntrimmedBegin(-1.0f);
    b->setUntrimmedEnd(11.0f);
    b->setReversePlay(true);
    b->setSelected(true);
    b->setLocked(true);
    b->setHidden(true);
    b->setUsePlayRange(true);
    b->setStartPlayRange(3.0f);
    b->setStartPlay(4.0f);
    b->setStartTime(5.0f);
    b->addTrigger(42, zeAnimationManager::TriggerStart);
    const std::set<osg::UInt64> sourceIds = subtree(b);
    const std::set<osg::UInt64> trackCurves = t->getCurveIds();
    const std::size_t before = manager->getObjectCount();

    zeAnimationUnit* copy = manager->duplicateUnit(b);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "walk");
    EXPECT_EQ(copy->getParentOSGNodeId(), 7u);
    EXPECT_FALSE(copy->isActive());
    EXPECT_TRUE(copy->isPlaying() && copy->isRepeating() && copy->isFlipped() && copy->isTrimmed());
    EXPECT_TRUE(copy->getMotionBlur());
    EXPECT_EQ(copy->getUntrimmedBegin(), -1.0f);
    EXPECT_EQ(copy->getUntrimmedEnd(), 11.0f);
    EXPECT_FALSE(copy->getReversePlay() || copy->isSelected() || copy->isLocked() || copy->isHidden());
    EXPECT_FALSE(copy->usesPlayRange());
    EXPECT_EQ(copy->getStartPlayRange(), 0.0f);
    EXPECT_EQ(copy->getStartPlay(), 0.0f);
    EXPECT_EQ(copy->getStartTime(), 0.0f);
    EXPECT_TRUE(copy->getTriggers().empty());
    EXPECT_EQ(copy->getBegin(), 0.0f);
    EXPECT_EQ(copy->getEnd(), 10.0f);

    // Its parent is the source's parent, which neither lists it nor learns of its curves.
    EXPECT_EQ(copy->getParentId(), t->getId());
    EXPECT_EQ(t->getChildIds().size(), 1u);
    EXPECT_EQ(t->getCurveIds(), trackCurves);

    // A whole new registered subtree: block, 2 curves, 4 keys.
    const std::set<osg::UInt64> copyIds = subtree(copy);
    EXPECT_EQ(copyIds.size(), 7u);
    EXPECT_EQ(manager->getObjectCount(), before + 7);
    for (osg::UInt64 id : copyIds) {
        EXPECT_EQ(sourceIds.count(id), 0u);
        ASSERT_NE(manager->getObject(id), nullptr);
    }
    for (zeAnimationCurve2D* copied : copy->getCurves()) {
        EXPECT_EQ(copied->getParentId(), copy->getId());
        for (zeAnimationObject* key : copied->getObjects())
            EXPECT_EQ(key->getParentId(), copied->getId());
    }
    EXPECT_EQ(keyXs(copy), keyXs(b));
    EXPECT_EQ(copy->getCurveIds().size(), 2u);
}

TEST_F(ContainerTest, DuplicateTrackClipAndSequenceRebuildTheTree)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationStrip* nested = manager->createStrip(0);
    nested->addObject(block(30, 40));
    zeAnimationStreak* late = track({block(10, 20), sequence(20, 25), nested});
    late->setRepeating(true);
    zeAnimationStreak* dropped = manager->createStreak(0);
    zeAnimationStreak* early = track({block(0, 5)});
    clip->addObject(late);    // number 0
    clip->addObject(dropped); // number 1, removed below
    clip->addObject(early);   // number 2, sorted first
    clip->subObject(dropped, true);
    const std::set<osg::UInt64> clipCurves = clip->getCurveIds();

    // A track copy keeps its number and duplicates its children, except sequences.
    zeAnimationStreak* trackCopy = manager->duplicateStreak(late);
    ASSERT_NE(trackCopy, nullptr);
    EXPECT_EQ(trackCopy->getNumber(), 0u);
    EXPECT_TRUE(trackCopy->isRepeating());
    EXPECT_EQ(trackCopy->getParentId(), clip->getId());
    EXPECT_EQ(trackCopy->getUnits().size(), 1u);
    EXPECT_EQ(trackCopy->getStrips().size(), 1u);
    EXPECT_TRUE(trackCopy->getSequences().empty());
    EXPECT_TRUE(trackCopy->getSequenceIds().empty());
    EXPECT_NE(trackCopy->getStrips().front(), nested);
    EXPECT_EQ(trackCopy->getStrips().front()->getParentId(), trackCopy->getId());
    EXPECT_EQ(clip->getStreakAmount(), 2u);
    EXPECT_EQ(clip->getCurveIds(), clipCurves);

    const std::set<osg::UInt64> sourceIds = subtree(clip);
    const std::size_t before = manager->getObjectCount();
    zeAnimationStrip* copy = static_cast<zeAnimationStrip*>(manager->duplicateObject(clip));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getTypeID(), 5u);
    // Copied tracks are renumbered 0, 1, ... in the source's list order.
    ASSERT_EQ(copy->getStreakAmount(), 2u);
    ASSERT_NE(copy->getStreak(0), nullptr);
    ASSERT_NE(copy->getStreak(1), nullptr);
    EXPECT_EQ(copy->getStreak(0)->getBegin(), 0.0f);
    EXPECT_EQ(copy->getStreak(1)->getBegin(), 10.0f);
    EXPECT_EQ(copy->getStreak(1)->getParentId(), copy->getId());
    const std::set<osg::UInt64> copyIds = subtree(copy);
    // Everything but the sequence: 1 + 2 tracks + 2 blocks + 2 curves + 4 keys + the nested
    // clip with its track, block, curve and 2 keys.
    EXPECT_EQ(copyIds.size(), sourceIds.size() - 1);
    EXPECT_EQ(manager->getObjectCount(), before + copyIds.size());
    for (osg::UInt64 id : copyIds)
        EXPECT_EQ(sourceIds.count(id), 0u);
    EXPECT_EQ(copy->getCurveIds().size(), 3u);
    for (osg::UInt64 id : copy->getCurveIds())
        EXPECT_EQ(copyIds.count(id), 1u);

    // Sequences are duplicated only directly: a fresh, registered copy beside the source.
    zeAnimationSequence* s = sequence(1, 2);
    s->setDirty(false);
    s->setTrimmed(true);
    zeAnimationStreak* holder = track({s});
    EXPECT_EQ(manager->duplicateObject(s), nullptr);
    EXPECT_EQ(manager->duplicateObject(nullptr), nullptr);
    zeAnimationSequence* twin = manager->duplicateSequence(s);
    ASSERT_NE(twin, nullptr);
    EXPECT_EQ(manager->getSequence(twin->getId()), twin);
    EXPECT_EQ(twin->getSequenceIds(), std::set<osg::UInt64>{twin->getId()});
    EXPECT_FALSE(twin->isDirty() || twin->isTrimmed());
    EXPECT_EQ(twin->getBegin(), 1.0f);
    EXPECT_EQ(twin->getEnd(), 2.0f);
    EXPECT_EQ(twin->getName(), "seq");
    EXPECT_EQ(twin->getParentId(), holder->getId());
    EXPECT_EQ(holder->getChildIds().size(), 1u);
}

TEST_F(ContainerTest, MoveObjectToStreakMovesBetweenTracks)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationStreak* main = manager->createStreak("Main", 0);
    zeAnimationUnit* b = block(0, 10);
    main->addObject(b);
    clip->addObject(main);

    EXPECT_TRUE(manager->moveObjectToStreak(b, clip, 3));
    EXPECT_EQ(clip->getStreakAmount(), 4u);
    for (osg::UInt32 n = 1; n <= 3; ++n) {
        ASSERT_NE(clip->getStreak(n), nullptr);
        EXPECT_EQ(clip->getStreak(n)->getName(), "Track");
    }
    EXPECT_EQ(b->getParentId(), clip->getStreak(3)->getId());
    EXPECT_TRUE(main->isEmpty());
    EXPECT_FALSE(manager->moveObjectToStreak(b, clip->getStreak(3))); // already there
    EXPECT_TRUE(manager->moveObjectToStreak(b, main));
    EXPECT_EQ(b->getParentId(), main->getId());
    EXPECT_TRUE(clip->getStreak(3)->isEmpty());

    // Only objects lying on a track can move.
    EXPECT_FALSE(manager->moveObjectToStreak(main, clip->getStreak(1)));
    EXPECT_FALSE(manager->moveObjectToStreak(block(0, 1), main));
    EXPECT_FALSE(manager->moveObjectToStreak(nullptr, main));
    EXPECT_FALSE(manager->moveObjectToStreak(b, static_cast<zeAnimationStreak*>(nullptr)));
    EXPECT_FALSE(manager->moveObjectToStreak(b, static_cast<zeAnimationStrip*>(nullptr), 0));
    EXPECT_EQ(main->getParentId(), clip->getId());
}

TEST_F(ContainerTest, UnreferencedObjectsAndFieldsGoWithoutAScene)
{
    zeAnimationField* used = manager->createField(0);
    manager->createField(0); // used by nothing
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationUnit* inClip = block(0, 10);
    inClip->getCurves().front()->setAnimationField(used);
    clip->addObject(inClip);
    zeAnimationUnit* loose = block(0, 10);
    zeAnimationUnit* hidden = block(0, 10);
    hidden->setHidden(true);
    zeAnimationCurve2D* looseCurve = curve(0, 1);
    const osg::UInt64 looseId = loose->getId();
    const osg::UInt64 looseCurveId = looseCurve->getId();
    const std::set<osg::UInt64> keptIds = subtree(clip);
    const std::set<osg::UInt64> hiddenIds = subtree(hidden);

    manager->destroyUnreferencedObjectsAndFields();
    EXPECT_EQ(manager->getObject(looseId), nullptr);
    EXPECT_EQ(manager->getObject(looseCurveId), nullptr);
    EXPECT_EQ(manager->getObjectCount(), keptIds.size() + hiddenIds.size());
    // Without a scene walk no field counts as referenced, not even one a kept curve uses.
    EXPECT_EQ(manager->getFieldCount(), 0u);
}

TEST_F(ContainerTest, DestroyingASubtreeLeavesTheRegistryConsistent)
{
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationUnit* b1 = block(0, 10);
    zeAnimationUnit* b2 = block(20, 30);
    zeAnimationStreak* t1 = track({b1, b2});
    zeAnimationSequence* s = sequence(40, 50);
    zeAnimationStreak* t2 = track({s});
    clip->addObject(t1);
    clip->addObject(t2);
    const std::set<osg::UInt64> gone = subtree(t1);
    const std::size_t before = manager->getObjectCount();
    ASSERT_EQ(clip->getCurveIds().size(), 2u);

    manager->destroyStreak(t1);
    EXPECT_EQ(manager->getObjectCount(), before - gone.size());
    for (osg::UInt64 id : gone)
        EXPECT_EQ(manager->getObject(id), nullptr);
    EXPECT_EQ(clip->getChildIds().size(), 1u);
    EXPECT_TRUE(clip->getCurveIds().empty());
    EXPECT_EQ(clip->getSequenceIds(), std::set<osg::UInt64>{s->getId()});
    EXPECT_EQ(clip->getBegin(), 40.0f);
    EXPECT_EQ(t2->getNumber(), 1u);

    // Destroying a curve inside a block updates the block and the chain above it.
    zeAnimationUnit* b3 = block(0, 5);
    t2->addObject(b3);
    zeAnimationCurve2D* c = b3->getCurves().front();
    manager->destroyCurve2D(c);
    EXPECT_TRUE(b3->isEmpty());
    EXPECT_TRUE(clip->getCurveIds().empty());

    manager->destroyObject(nullptr);
    manager->destroyField(nullptr);
    manager->destroyObject(clip);
    EXPECT_EQ(manager->getObjectCount(), 0u);
}

TEST_F(ContainerTest, RenumberedChildrenStayAndNewcomersUnderAnOldIdentifierDoNotJoin)
{
    zeAnimationSequence* near = sequence(0, 10);
    zeAnimationSequence* far = sequence(20, 30);
    zeAnimationStreak* t = track({near, far});
    zeAnimationStrip* clip = manager->createStrip(0);
    clip->addObject(t);
    const osg::UInt64 farId = far->getId();

    manager->setID(farId + 1, far);
    ASSERT_EQ(manager->getObject(farId), nullptr);
    EXPECT_EQ(t->getChildIds().back(), farId + 1);
    EXPECT_EQ(clip->getSequenceIds(), (std::set<osg::UInt64>{near->getId(), farId + 1}));
    t->updateBy(t, zeAnimationObject::Change, false);
    EXPECT_EQ(t->getEnd(), 30.0f);

    manager->setID(manager->createUID(), t);
    EXPECT_EQ(clip->getStreak(0), t);
    EXPECT_EQ(far->getParent(), t);

    sequence(-5.0f, 50.0f, "again", farId);
    t->updateBy(t, zeAnimationObject::Change, false);
    EXPECT_EQ(t->getBegin(), 0.0f);
    EXPECT_EQ(t->getEnd(), 30.0f);
    EXPECT_EQ(t->getObjects().size(), 2u);
}

} // namespace
