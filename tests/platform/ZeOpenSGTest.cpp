#include "LiveContainers.h"

#include <OpenSG/OSGNode.h>
#include <zeOpenSGExt/OSGAnimAttachment.h>
#include <zeOpenSGExt/OSGAnimationAttachment.h>
#include <zeOpenSGExt/OSGAnimationBlock.h>
#include <zeOpenSGExt/OSGAnimationClip.h>
#include <zeOpenSGExt/OSGAnimationControlPoint.h>
#include <zeOpenSGExt/OSGAnimationCurve.h>
#include <zeOpenSGExt/OSGAnimationTrack.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGPerspectiveCamera2.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGUtils/zeNodeUtils.h>

#include <gtest/gtest.h>

using namespace osg;

TEST(Transform3D, MatrixIsTranslationTimesXYZRotationTimesScale)
{
    NodePtr node = Node::create();
    Transform3DPtr core = Transform3D::create();
    node->setCore(core);
    zeNodeUtils::setTransformNodeRotation(node, 90, 180, 0, 0);

    beginEditCP(core, Transform3D::TranslationFieldMask | Transform3D::ScaleFieldMask);
    core->setTranslation(Vec3f(1, 2, 3));
    core->setScale(Vec3f(2, 2, 2));
    endEditCP(core, Transform3D::TranslationFieldMask | Transform3D::ScaleFieldMask);

    // (0,1,0) scaled to (0,2,0), about x by 90 to (0,0,2), about y by 180 to (0,0,-2), translated.
    // Unequal angles: the angles swapped, or applied y first, give another point.
    Pnt3f p(0, 1, 0);
    core->getMatrix().multMatrixPnt(p);
    EXPECT_TRUE(p.equals(Pnt3f(1, 2, 1), 1e-5f)) << p;

    // Without a node (or attachment) there is no rotation.
    Transform3DPtr lone = Transform3D::create();
    lone->setTranslation(Vec3f(0, 0, 5));
    endEditCP(lone);
    EXPECT_FLOAT_EQ(lone->getMatrix()[3][2], 5.f);
    EXPECT_FLOAT_EQ(lone->getMatrix()[0][0], 1.f);
    subRefCP(lone);
    subRefCP(node);
}

TEST(PerspectiveCamera2, AddsAShutterSpeedToThePerspectiveCamera)
{
    PerspectiveCamera2Ptr cam = PerspectiveCamera2::create();
    EXPECT_FLOAT_EQ(cam->getShutterSpeed(), 50.f);
    EXPECT_TRUE(PerspectiveCamera2::getClassType().isDerivedFrom(PerspectiveCamera::getClassType()));
    EXPECT_NE(PerspectiveCameraPtr::dcast(cam), NullFC);
    EXPECT_EQ(cam->getType().findFieldDescription("fov")->getFieldId(), 5u);
    EXPECT_EQ(cam->getType().findFieldDescription("shutterSpeed")->getFieldId(), 8u);
    subRefCP(cam);
}

TEST(AnimAttachment, HoldsObjectIdsThenFieldIdsAndIsFoundByItsGroup)
{
    unsigned before = liveContainers();
    NodePtr node = Node::create();
    AnimAttachmentPtr att = AnimAttachmentBase::create();
    att->getObjectIds().push_back(0xFFFFFFFFFFFFFFFFull);
    att->getMFFieldIds()->push_back(42);
    node->addAttachment(att);

    EXPECT_EQ(AnimAttachment::ObjectIdsFieldId, Attachment::NextFieldId);
    EXPECT_EQ(AnimAttachment::FieldIdsFieldId, AnimAttachment::ObjectIdsFieldId + 1);
    EXPECT_EQ(att->getField("objectIds"), att->getMFObjectIds());
    EXPECT_EQ(att->getField("fieldIds")->getType(), MFUInt64::getClassType());
    std::string text;
    EXPECT_EQ(att->getField("objectIds")->getValueByStr(text), "18446744073709551615");

    AttachmentPtr found = node->findAttachment(AnimAttachment::getClassType().getGroupId());
    EXPECT_EQ(AnimAttachmentPtr::dcast(found), att);
    EXPECT_EQ(node->findAttachment(AnimationAttachment::getClassType().getGroupId()), NullFC);
    EXPECT_TRUE(found->getType().isDerivedFrom(AnimAttachment::getClassType()));
    subRefCP(node);
    EXPECT_EQ(liveContainers(), before);
}

TEST(CameraSetting, DefaultsToAnUprightCameraThatIsNotTheViewpoint)
{
    CameraSettingPtr cam = CameraSetting::create();
    EXPECT_FALSE(cam->getIsViewpoint());
    EXPECT_EQ(cam->getUp(), Vec3f(0, 1, 0));
    subRefCP(cam);
}

// Importing reads the older containers and then drops the attachment that holds them: that alone
// must release the whole structure.
TEST(OlderAnimationContainers, ReleaseTheirChildrenWithTheAttachment)
{
    unsigned before = liveContainers();
    NodePtr node = Node::create();
    AnimationCurvePtr curve = AnimationCurve::create();
    curve->setAFAppNode(node); // a back link, which holds no reference
    curve->pushToControlPoints(AnimationControlPoint::create());
    AnimationBlockPtr block = AnimationBlock::create();
    block->pushToCurves(curve);
    AnimationTrackPtr track = AnimationTrack::create();
    track->pushToBlocks(block);
    track->pushToSequences(block);
    AnimationClipPtr clip = AnimationClip::create();
    clip->pushToTracks(track);
    clip->pushToBlocks(block);
    AnimationAttachmentPtr old = AnimationAttachment::create();
    old->pushToClips(clip);
    old->pushToBlocks(block);
    node->addAttachment(old);
    EXPECT_EQ(block.getRefCount(), 4);
    EXPECT_EQ(node.getRefCount(), 0);

    node->subAttachment(old);
    EXPECT_EQ(liveContainers(), before + 1);
    subRefCP(node);
    EXPECT_EQ(liveContainers(), before);
}
