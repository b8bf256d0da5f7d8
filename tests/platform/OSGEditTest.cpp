#include "LiveContainers.h"

#include <OpenSG/OSGChangeRecord.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>

#include <gtest/gtest.h>

using namespace osg;

namespace {
class Edits : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ChangeRecord::setEnabled(true);
        ChangeRecord::clear();
    }
    void TearDown() override
    {
        ChangeRecord::clear();
        ChangeRecord::setEnabled(false);
    }
};
} // namespace

TEST_F(Edits, EndEditRecordsContainerMaskAndOrigin)
{
    SimpleMaterialPtr mat = SimpleMaterial::create();
    UInt32 id = getContainerId(mat);

    beginEditCP(mat, SimpleMaterial::DiffuseFieldMask);
    mat->setDiffuse(Color3f(1, 0, 0));
    EXPECT_EQ(ChangeRecord::size(), 0u); // begin records nothing
    endEditCP(mat, SimpleMaterial::DiffuseFieldMask, ChangedOrigin::External);

    ASSERT_EQ(ChangeRecord::size(), 1u);
    const ChangeRecordEntry& entry = ChangeRecord::getEntries().front();
    EXPECT_EQ(entry.containerId, id);
    EXPECT_EQ(entry.whichField, SimpleMaterial::DiffuseFieldMask);
    EXPECT_EQ(entry.origin, ChangedOrigin::External);
    EXPECT_EQ(ChangeRecord::count(id), 1u);
    EXPECT_EQ(ChangeRecord::count(id, SimpleMaterial::DiffuseFieldMask), 1u);
    EXPECT_EQ(ChangeRecord::count(id, SimpleMaterial::AmbientFieldMask), 0u);
    EXPECT_EQ(ChangeRecord::count(id + 1), 0u);

    endEditCP(mat); // default: all fields
    EXPECT_EQ(ChangeRecord::count(id, SimpleMaterial::AmbientFieldMask), 1u);

    mat->setShininess(3.f); // a write without edit records nothing
    endEditCP(NullFC);
    endEditNotChangedCP(mat, SimpleMaterial::ShininessFieldMask);
    EXPECT_EQ(ChangeRecord::count(id), 3u);

    ChangeRecord::clear();
    EXPECT_EQ(ChangeRecord::size(), 0u);
    subRefCP(mat);
}

TEST_F(Edits, RecordCanBeSwitchedOffAndIsBounded)
{
    NodePtr node = Node::create();
    UInt32 id = getContainerId(node);
    ChangeRecord::setEnabled(false);
    endEditCP(node);
    EXPECT_EQ(ChangeRecord::size(), 0u);
    ChangeRecord::setEnabled(true);

    UInt32 capacity = ChangeRecord::getCapacity();
    ChangeRecord::setCapacity(3);
    for (int i = 0; i < 5; ++i)
        endEditCP(node, Node::TravMaskFieldMask);
    EXPECT_EQ(ChangeRecord::size(), 3u);
    EXPECT_EQ(ChangeRecord::count(id), 3u);
    ChangeRecord::setCapacity(capacity);
    subRefCP(node);
}

TEST_F(Edits, ComponentTransformRebuildsItsMatrixOnEndEdit)
{
    ComponentTransformPtr ct = ComponentTransform::create();
    EXPECT_EQ(ct->getScale(), Vec3f(1, 1, 1));

    beginEditCP(ct, ComponentTransform::TranslationFieldMask | ComponentTransform::RotationFieldMask);
    ct->setTranslation(Vec3f(1, 2, 3));
    ct->setRotation(Quaternion(Vec3f(0, 0, 1), Real32(Pi / 2)));
    EXPECT_EQ(ct->getMatrix(), Matrix()); // nothing happens before the edit ends
    endEditCP(ct, ComponentTransform::TranslationFieldMask | ComponentTransform::RotationFieldMask);

    Pnt3f p(1, 0, 0);
    ct->getMatrix().multMatrixPnt(p);
    EXPECT_TRUE(p.equals(Pnt3f(1, 3, 3), 1e-5f)) << p;

    // changedCP calls the hook without recording.
    ChangeRecord::clear();
    ct->setScale(Vec3f(2, 2, 2));
    changedCP(ct, ComponentTransform::ScaleFieldMask);
    EXPECT_EQ(ChangeRecord::size(), 0u);
    EXPECT_FLOAT_EQ(ct->getMatrix()[0][1], 2.f); // x scaled by 2, then turned onto y
    subRefCP(ct);
}

TEST_F(Edits, SetNameAndTheScopedEditorRecordTheirEdits)
{
    NodePtr node = Node::create();
    setName(node, "x");
    EXPECT_EQ(ChangeRecord::count(getContainerId(node), AttachmentContainer::AttachmentsFieldMask), 1u);
    setName(node, "y"); // attachment exists: only the name changes
    EXPECT_EQ(ChangeRecord::count(getContainerId(node), AttachmentContainer::AttachmentsFieldMask), 1u);
    ChangeRecord::clear();
    {
        CPEdit(node, Node::TravMaskFieldMask);
        node->setActive(false);
        EXPECT_EQ(ChangeRecord::size(), 0u);
    }
    EXPECT_EQ(ChangeRecord::count(getContainerId(node), Node::TravMaskFieldMask), 1u);
    subRefCP(node);
}
