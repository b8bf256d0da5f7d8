#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <vector>

class TypeTest : public AnimationTest
{};

// Hosts and files compare type ids with numbers, so the named values must stay the numbers; the
// checked cast and the typed lookups must accept exactly the objects of their own class.
TEST_F(TypeTest, CastAcceptsExactlyItsOwnKind)
{
    EXPECT_EQ(zeAnimationObject::TypeObject, 0);
    EXPECT_EQ(zeAnimationObject::TypePoint2D, 1);
    EXPECT_EQ(zeAnimationObject::TypeCurve2D, 2);
    EXPECT_EQ(zeAnimationObject::TypeUnit, 3);
    EXPECT_EQ(zeAnimationObject::TypeStreak, 4);
    EXPECT_EQ(zeAnimationObject::TypeStrip, 5);
    EXPECT_EQ(zeAnimationObject::TypeSequence, 6);

    const std::vector<zeAnimationObject*> objects{
        manager->createObject(),     manager->createPoint2D(1.0f, 2.0f), manager->createCurve2D(),
        manager->createUnit("u"),    manager->createStreak("t"),         manager->createStrip("c"),
        manager->createSequence("s")};
    for (osg::UInt32 type = 0; type < objects.size(); ++type) {
        zeAnimationObject* object = objects[type];
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->getTypeID(), type);
        const zeAnimationObject* constant = object;
        const osg::UInt64 id = object->getId();
        const bool is[] = {false, type == 1, type == 2, type == 3, type == 4, type == 5, type == 6};
        EXPECT_EQ(zeAnimationCast<zeControlPoint2D>(object) != nullptr, is[1]) << type;
        EXPECT_EQ(zeAnimationCast<zeAnimationCurve2D>(constant) != nullptr, is[2]) << type;
        EXPECT_EQ(zeAnimationCast<zeAnimationUnit>(object) != nullptr, is[3]) << type;
        EXPECT_EQ(zeAnimationCast<zeAnimationStreak>(constant) != nullptr, is[4]) << type;
        EXPECT_EQ(zeAnimationCast<zeAnimationStrip>(object) != nullptr, is[5]) << type;
        EXPECT_EQ(zeAnimationCast<zeAnimationSequence>(object) != nullptr, is[6]) << type;
        EXPECT_EQ(manager->getPoint2D(id) != nullptr, is[1]) << type;
        EXPECT_EQ(manager->getCurve2D(id) != nullptr, is[2]) << type;
        EXPECT_EQ(manager->getUnit(id) != nullptr, is[3]) << type;
        EXPECT_EQ(manager->getStreak(id) != nullptr, is[4]) << type;
        EXPECT_EQ(manager->getStrip(id) != nullptr, is[5]) << type;
        EXPECT_EQ(manager->getSequence(id) != nullptr, is[6]) << type;
    }
    EXPECT_EQ(zeAnimationCast<zeAnimationCurve2D>(static_cast<zeAnimationObject*>(nullptr)), nullptr);
    EXPECT_EQ(zeAnimationCast<zeAnimationUnit>(static_cast<const zeAnimationObject*>(nullptr)), nullptr);
}
