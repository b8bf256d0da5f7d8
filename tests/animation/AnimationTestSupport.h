#ifndef ANIMATIONTESTSUPPORT_H
#define ANIMATIONTESTSUPPORT_H

#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationSequence.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

// Every test starts from an empty pool and a known identifier sequence, and leaves an empty pool.
class AnimationTest : public ::testing::Test
{
protected:
    zeAnimationManager* manager = zeAnimationManager::the();

    void SetUp() override
    {
        clearPool();
        // A seed of its own for every test: the manager deliberately keeps field identifiers that
        // earlier scene walks found referenced, so a test reusing another test's identifiers
        // would inherit them.
        static osg::UInt64 testNumber = 0;
        manager->random(12345 + 7919 * ++testNumber);
    }

    void TearDown() override { clearPool(); }

    void clearPool()
    {
        zeAnimationManager::setSceneRootNode(osg::NullFC);
        manager->clearCopyBuffer(false);
        for (const auto& entry : manager->getObjects()) {
            if (zeAnimationObject* object = manager->getObject(entry.first))
                manager->destroyObject(object);
        }
        manager->destroyAllFields();
    }

    // A sequence over [begin, end].
    zeAnimationSequence* sequence(float begin, float end, const std::string& name = "seq", osg::UInt64 id = 0)
    {
        zeAnimationSequence* s = manager->createSequence(name, id);
        s->setBegin(begin);
        s->setEnd(end);
        return s;
    }

    static osg::UInt32 bits(float value)
    {
        osg::UInt32 result = 0;
        std::memcpy(&result, &value, sizeof(result));
        return result;
    }
};

#endif // ANIMATIONTESTSUPPORT_H
