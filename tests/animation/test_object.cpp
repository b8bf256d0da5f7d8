// Objects, fields and the registry: identifiers, hierarchy summaries, bounds, destruction.
#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <set>
#include <vector>

namespace {

class ObjectTest : public AnimationTest
{
protected:
    // A curve with keys at the given (x, y).
    zeAnimationCurve2D* curveWith(std::initializer_list<std::pair<float, float>> keys)
    {
        zeAnimationCurve2D* curve = manager->createCurve2D(0);
        for (const auto& key : keys)
            curve->addObject(manager->createPoint2D(key.first, key.second, 0));
        return curve;
    }

    std::vector<osg::UInt64> childIds(const zeAnimationObject* object)
    {
        return std::vector<osg::UInt64>(object->getChildIds().begin(), object->getChildIds().end());
    }
};

TEST_F(ObjectTest, NewObjectHasTheEmptyIntervalAndDefaults)
{
    zeAnimationObject* object = manager->createObject(0);
    EXPECT_EQ(bits(object->getBegin()), 0x65A96816u);
    EXPECT_EQ(bits(object->getEnd()), 0xE5A96816u);
    EXPECT_EQ(bits(object->getMinimum()), 0x65A96816u);
    EXPECT_EQ(bits(object->getMaximum()), 0xE5A96816u);
    EXPECT_EQ(object->getDuration(), -2.0e23f);
    EXPECT_EQ(object->getName(), "Unnamed");
    EXPECT_TRUE(object->isActive());
    EXPECT_FALSE(object->isPlaying() || object->isRepeating() || object->isHidden() || object->isFlipped());
}

TEST_F(ObjectTest, IdentifierGeneratorFollowsItsRecurrence)
{
    const osg::UInt64 a = 1664525ULL;
    const osg::UInt64 c = 1013904223ULL;
    EXPECT_EQ(manager->random(7), 7 * a + c);
    // A zero seed continues the sequence.
    EXPECT_EQ(manager->random(0), (7 * a + c) * a + c);
    // The state wraps; at 0, with nothing registered, the next identifier is the increment.
    manager->random(0xFFFFFFFFFFFFFFFFULL);
    const osg::UInt64 wrapped = 0xFFFFFFFFFFFFFFFFULL * a + c; // the state after that call
    EXPECT_EQ(manager->random(0), wrapped * a + c);
    osg::UInt64 inverse = 1; // a^-1 mod 2^64 by Newton iteration: the seed one step before 0
    for (int i = 0; i < 6; ++i)
        inverse *= 2 - a * inverse;
    EXPECT_EQ(manager->random((0 - c) * inverse), 0u);
    EXPECT_EQ(manager->createUID(), c);

    // Identifiers in use, by objects or fields, are skipped.
    manager->random(100);
    const osg::UInt64 first = (100 * a + c) * a + c;
    zeAnimationField* field = manager->createField(first);
    manager->random(100);
    zeAnimationObject* object = manager->createObject(0);
    EXPECT_EQ(object->getId(), first * a + c);
    EXPECT_FALSE(manager->isIDUnique(first));
    EXPECT_TRUE(manager->isIDUnique(42));
    manager->destroyField(field);
    EXPECT_TRUE(manager->isIDUnique(first));
}

TEST_F(ObjectTest, SetIdKeepsFreeIdentifiersAndRenumbersCollisions)
{
    zeAnimationObject* a = manager->createObject(0);
    zeAnimationObject* b = manager->createObject(0);
    const osg::UInt64 oldA = a->getId();

    manager->setID(5000, a);
    EXPECT_EQ(a->getId(), 5000u);
    EXPECT_EQ(manager->getObject(5000), a);
    EXPECT_EQ(manager->getObject(oldA), nullptr);

    // Taken by another object: a fresh identifier is drawn instead.
    manager->setID(b->getId(), a);
    EXPECT_NE(a->getId(), 5000u);
    EXPECT_EQ(manager->getObject(a->getId()), a);
    EXPECT_EQ(manager->getObject(b->getId()), b);

    // Fields share the identifier space.
    zeAnimationField* field = manager->createField(0);
    manager->setID(field->getId(), b);
    EXPECT_NE(b->getId(), field->getId());
    manager->setID(7000, field);
    EXPECT_EQ(manager->getField(7000), field);
    manager->setID(a->getId(), field);
    EXPECT_NE(field->getId(), a->getId());
    EXPECT_EQ(manager->getField(field->getId()), field);
}

TEST_F(ObjectTest, FieldCopiesTakeFreshIdentifiersAndAssignmentTwins)
{
    zeAnimationField* field = manager->createField(0);
    field->fcID = 3;
    field->nodeID = 4;
    field->name = "diffuse";
    field->attribute = "diffuseR";
    field->value = 0.5f;
    field->valuePos = 2;
    field->dirty = false;
    zeAnimationField* copy = manager->duplicateField(field);
    EXPECT_EQ(manager->getField(copy->getId()), copy);
    EXPECT_EQ(copy->attribute, "diffuseR");
    *copy = *field;
    EXPECT_EQ(copy->getId(), field->getId());
    // The twin must not stay registered under the other's identifier: give it back its own.
    manager->destroyField(copy);
    EXPECT_EQ(manager->getField(field->getId()), field);
    EXPECT_NE(manager->createField(0)->getId(), 0u);
}

TEST_F(ObjectTest, BoundsSkipEmptyContainersButCountSequencesAndKeys)
{
    zeAnimationStreak* track = manager->createStreak(0);
    zeAnimationUnit* emptyBlock = manager->createUnit(0);
    track->addObject(emptyBlock);
    EXPECT_EQ(bits(track->getBegin()), 0x65A96816u);
    EXPECT_EQ(bits(track->getEnd()), 0xE5A96816u);

    track->addObject(sequence(10.0f, 20.0f));
    EXPECT_EQ(track->getBegin(), 10.0f);
    EXPECT_EQ(track->getEnd(), 20.0f);

    // A sequence that was never given an interval counts without changing anything.
    track->addObject(manager->createSequence("unset", 0));
    EXPECT_EQ(track->getBegin(), 10.0f);
    EXPECT_EQ(track->getEnd(), 20.0f);

    // A curve's bounds are the bounding box of its keys.
    zeAnimationCurve2D* curve = curveWith({{2.0f, -1.0f}, {8.0f, 4.0f}, {5.0f, 9.0f}});
    EXPECT_EQ(curve->getMinimum(), -1.0f);
    EXPECT_EQ(curve->getMaximum(), 9.0f);
    emptyBlock->addObject(curve);
    EXPECT_EQ(track->getBegin(), 2.0f);
    EXPECT_EQ(track->getEnd(), 20.0f);
    EXPECT_EQ(track->getMaximum(), 9.0f);

    // An emptied container keeps its last interval.
    zeAnimationStreak* emptied = manager->createStreak(0);
    zeAnimationSequence* s = sequence(3.0f, 6.0f);
    emptied->addObject(s);
    emptied->subObject(s, true);
    EXPECT_EQ(emptied->getBegin(), 3.0f);
    EXPECT_EQ(emptied->getEnd(), 6.0f);
}

TEST_F(ObjectTest, UpdateIgnoresNullSourcesAndEmptyLists)
{
    zeAnimationStreak* track = manager->createStreak(0);
    zeAnimationSequence* late = sequence(20.0f, 30.0f);
    zeAnimationSequence* early = sequence(0.0f, 5.0f);
    track->addObject(late);
    track->addObject(early);
    EXPECT_EQ(childIds(track), (std::vector<osg::UInt64>{early->getId(), late->getId()}));

    // Moving a child without telling the parent leaves the parent stale until an update.
    late->move(-30.0f, false);
    track->updateBy(nullptr, zeAnimationObject::Change, true);
    track->updateAll(std::list<osg::UInt64>(), zeAnimationObject::Change, true);
    EXPECT_EQ(childIds(track).front(), early->getId());
    EXPECT_EQ(track->getBegin(), 0.0f);

    // Any unknown operation value behaves like Change: order and bounds, sets untouched.
    const std::size_t sequences = track->getSequenceIds().size();
    track->updateBy(track, static_cast<zeAnimationObject::Operation>(7), true);
    EXPECT_EQ(childIds(track).front(), late->getId());
    EXPECT_EQ(track->getBegin(), -10.0f);
    EXPECT_EQ(track->getSequenceIds().size(), sequences);

    // updateAll with an identifier that does not resolve still sorts and bounds.
    late->move(40.0f, false);
    track->updateAll(std::list<osg::UInt64>{999}, zeAnimationObject::Add, false);
    EXPECT_EQ(childIds(track).front(), early->getId());
    EXPECT_EQ(track->getEnd(), 40.0f);
}

TEST_F(ObjectTest, ChildrenSortStablyByBeginAndAreFoundExactly)
{
    zeAnimationStreak* track = manager->createStreak(0);
    std::vector<zeAnimationSequence*> same;
    for (int i = 0; i < 4; ++i) {
        same.push_back(sequence(5.0f, 6.0f));
        track->addObject(same.back());
    }
    std::vector<osg::UInt64> expected;
    for (zeAnimationSequence* s : same)
        expected.push_back(s->getId());
    EXPECT_EQ(childIds(track), expected);

    zeAnimationSequence* first = sequence(1.0f, 2.0f);
    track->addObject(first);
    expected.insert(expected.begin(), first->getId());
    EXPECT_EQ(childIds(track), expected);

    // A destroyed child takes its entry with it.
    manager->destroyObject(same[1]);
    expected.erase(expected.begin() + 2);
    EXPECT_EQ(childIds(track), expected);

    // By frame, exactly; by identifier.
    track->addObject(sequence(0.1f, 1.0f));
    EXPECT_TRUE(track->findObject(0.1f).first);
    EXPECT_FALSE(track->findObject(0.1f + 1e-7f).first);
    EXPECT_TRUE(track->findObject(first->getId()).first);
    EXPECT_FALSE(track->findObject(static_cast<osg::UInt64>(12)).first);
    EXPECT_EQ(track->findObject(static_cast<osg::UInt64>(12)).second, track->getChildIds().end());
}

TEST_F(ObjectTest, TriggerTableRemovesTheFirstEntryByKind)
{
    zeAnimationObject* object = manager->createObject(0);
    object->addTrigger(77, zeAnimationManager::TriggerEnd);
    object->addTrigger(77, zeAnimationManager::TriggerStart);
    object->addTrigger(78, zeAnimationManager::TriggerStart);
    EXPECT_TRUE(object->subTrigger(77));
    ASSERT_EQ(object->getTriggers().size(), 2u);
    // The entry under the lower kind (start) went; the end entry stays.
    EXPECT_EQ(object->getTriggers().begin()->second, 78u);
    EXPECT_EQ(std::prev(object->getTriggers().end())->first, zeAnimationManager::TriggerEnd);
    EXPECT_TRUE(object->subTrigger(77));
    EXPECT_FALSE(object->subTrigger(77));
}

TEST_F(ObjectTest, DestroyAllObjectsLeavesTheLastDestroyableAndHiddenOnes)
{
    manager->createObject(0);
    manager->destroyAllObjects(true);
    EXPECT_EQ(manager->getObjects().size(), 1u);

    clearPool();

    manager->createObject(100);
    manager->createObject(200);
    manager->createObject(300)->setHidden(true);
    manager->createObject(50)->setHidden(true);
    manager->destroyAllObjects(false);
    EXPECT_EQ(manager->getObjects().size(), 2u);
    EXPECT_NE(manager->getObject(300), nullptr);
    EXPECT_NE(manager->getObject(50), nullptr);
    clearPool();

    // A hidden track survives; its visible children are destroyed and leave its lists.
    clearPool();
    zeAnimationStreak* track = manager->createStreak(10);
    track->setHidden(true);
    zeAnimationSequence* visible = sequence(0.0f, 1.0f, "v", 5);
    zeAnimationSequence* hidden = sequence(2.0f, 3.0f, "h", 20);
    hidden->setHidden(true);
    track->addObject(visible);
    track->addObject(hidden);
    manager->destroyAllObjects(false);
    EXPECT_EQ(manager->getObjects().size(), 2u);
    EXPECT_EQ(childIds(track), std::vector<osg::UInt64>{20});
    EXPECT_EQ(track->getSequenceIds().count(5), 0u);
    EXPECT_EQ(track->getBegin(), 2.0f);

    // A destroyed object's subtree counts as gone at once: here the object left is not destroyed.
    clearPool();
    manager->createStreak(1)->addObject(sequence(0.0f, 1.0f, "child", 3));
    manager->createObject(2);
    manager->destroyAllObjects(true);
    EXPECT_EQ(manager->getObjects().size(), 1u);
    EXPECT_NE(manager->getObject(2), nullptr);

    // A large pool: the survivor rule holds and nothing is left half-destroyed. The smallest
    // identifier goes first, with its subtree, while two or more objects are alive: the clip has
    // the largest, so it outlives its tracks and sees each one go.
    clearPool();
    zeAnimationStrip* clip = manager->createStrip(0xFFFFFFFFFFFFFF00ULL);
    for (int t = 0; t < 20; ++t) {
        zeAnimationStreak* row = manager->createStreak(0);
        clip->addObject(row);
        for (int s = 0; s < 20; ++s) {
            row->addObject(sequence(static_cast<float>(s), static_cast<float>(s) + 0.5f));
        }
    }
    manager->destroyAllObjects(true);
    std::set<osg::UInt64> left;
    for (const auto& entry : manager->getObjects())
        left.insert(entry.first);
    EXPECT_EQ(left, std::set<osg::UInt64>{clip->getId()});
    EXPECT_TRUE(clip->getSequenceIds().empty());
    // Children destroyed one by one left the survivor's list.
    for (const auto& entry : manager->getObjects())
        EXPECT_TRUE(entry.second->getChildIds().empty());
}

TEST_F(ObjectTest, LookupsByNameSceneAndBinding)
{
    EXPECT_EQ(manager->getObject(std::string()), nullptr);
    EXPECT_FALSE(manager->isObjectNameUnique(""));
    EXPECT_TRUE(manager->isObjectNameUnique("Block"));
    zeAnimationUnit* block = manager->createUnit("Walk", 0);
    EXPECT_EQ(manager->getObject(std::string("Walk")), block);
    EXPECT_EQ(manager->getObject(std::string("walk")), nullptr);
    EXPECT_FALSE(manager->isObjectNameUnique("Walk"));
    EXPECT_TRUE(manager->isObjectNameUnique("Run"));
    manager->destroyObject(block);

    // The scene's objects are the parentless visible ones.
    zeAnimationUnit* free = manager->createUnit(0);
    zeAnimationUnit* inactive = manager->createUnit(0);
    inactive->setActive(false);
    zeAnimationUnit* hidden = manager->createUnit(0);
    hidden->setHidden(true);
    zeAnimationStreak* track = manager->createStreak(0);
    zeAnimationUnit* placed = manager->createUnit(0);
    track->addObject(placed);
    zeAnimationStrip* clip = manager->createStrip(0);

    const std::vector<zeAnimationUnit*> units = manager->getSceneUnits();
    EXPECT_EQ(units.size(), 2u);
    EXPECT_NE(std::find(units.begin(), units.end(), free), units.end());
    EXPECT_NE(std::find(units.begin(), units.end(), inactive), units.end());
    EXPECT_EQ(manager->getActiveSceneUnits(), std::vector<zeAnimationUnit*>{free});
    EXPECT_EQ(manager->getSceneStrips(), std::vector<zeAnimationStrip*>{clip});

    // Destroying the track takes the block on it along.
    const osg::UInt64 placedId = placed->getId();
    manager->destroyObject(track);
    EXPECT_EQ(manager->getObject(placedId), nullptr);

    // Referenced fields and curves follow the curves' bindings.
    zeAnimationField* field = manager->createField(0);
    field->fcID = 9;
    zeAnimationField* other = manager->createField(0);
    other->fcID = 10;
    manager->createCurve2D(field, "a", 0, false);
    manager->createCurve2D(field, "b", 0, false);
    manager->createCurve2D(other, "c", 0, false);
    EXPECT_EQ(manager->getReferencedFields(9), (std::vector<zeAnimationField*>{field, field}));
    EXPECT_EQ(manager->getReferencedCurves(field->getId()).size(), 2u);
    EXPECT_EQ(manager->getReferencedCurves(other->getId()).size(), 1u);
    EXPECT_TRUE(manager->getReferencedCurves(12345).empty());
}

TEST_F(ObjectTest, DiagnosticsPrintTheirExactTexts)
{
    testing::internal::CaptureStdout();
    manager->objectInfo();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "ANIMATION_MANAGER Object Info\n=============================\n");

    zeAnimationUnit* block = manager->createUnit("Walk", 77);
    zeAnimationField* field = manager->createField(88);
    field->nodeID = 4;
    field->fcID = 5;
    field->name = "diffuse";
    field->attribute = "diffuseG";
    field->value = 0.25f;
    field->valuePos = 1;
    field->dirty = false;
    testing::internal::CaptureStdout();
    manager->objectInfo();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "ANIMATION_MANAGER Object Info\n=============================\n"
              "Object 77 name Walk type 3\nField 88 node id 4 fcid 5\n");

    testing::internal::CaptureStdout();
    manager->printFieldInfo(field);
    manager->printFieldInfo(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Field Info:\n\tid 88\n\tname diffuse\n\tattribute diffuseG\n"
              "\tfcID 5\n\tnodeID 4\n\tvalue 0.25\n\tvaluePos 1\n"
              "\tdirty 0\n\n");
    (void)block;
}

TEST_F(ObjectTest, CameraCallbacksForwardOrDefault)
{
    float roll = 5.0f;
    manager->getRoll(roll);
    EXPECT_EQ(roll, 0.0f);
    osg::Pnt3f from(1, 2, 3), at(4, 5, 6);
    osg::Vec3f up(7, 8, 9);
    manager->getFromAtUp(from, at, up);
    EXPECT_EQ(from, osg::Pnt3f(0, 0, 0));
    EXPECT_EQ(at, osg::Pnt3f(0, 0, 0));
    EXPECT_EQ(up, osg::Vec3f(0, 0, 0));

    zeAnimationManager::setGetRollCB([](int camera) { return camera == -1 ? 12.5f : 0.0f; });
    manager->getRoll(roll);
    EXPECT_EQ(roll, 12.5f);
    zeAnimationManager::setGetRollCB(nullptr);
}

} // namespace

// The registry's index against a standard map under random inserts, lookups and erases, with
// identifiers that collide in its slots and in its filter.
#include "zeAnimationIdIndex.h"

#include <random>
#include <unordered_map>

TEST(RegistryIndex, AgreesWithAStandardMapUnderChurn)
{
    zeAnimationIdIndex<int> index;
    std::unordered_map<osg::UInt64, int*> reference;
    std::vector<int> values(64);
    std::mt19937_64 rng(5);
    for (int step = 0; step < 200000; ++step) {
        // Few distinct identifiers, so that runs of occupied slots form and break up.
        const osg::UInt64 id = rng() % 5000 * (step % 3 == 0 ? 1 : 0x100000000ull);
        int* value = &values[rng() % values.size()];
        switch (rng() % 4) {
        case 0:
            EXPECT_EQ(index.insert(id, value), reference.emplace(id, value).second);
            break;
        case 1:
            EXPECT_EQ(index.erase(id), reference.erase(id) == 1);
            break;
        case 2:
            index.assign(id, value);
            reference[id] = value;
            break;
        default: {
            const auto it = reference.find(id);
            EXPECT_EQ(index.find(id), it == reference.end() ? nullptr : it->second);
        }
        }
        ASSERT_EQ(index.size(), reference.size()) << "step " << step;
    }
    for (const auto& entry : reference)
        EXPECT_EQ(index.find(entry.first), entry.second);
    index.clear();
    EXPECT_EQ(index.find(reference.begin()->first), nullptr);
}
