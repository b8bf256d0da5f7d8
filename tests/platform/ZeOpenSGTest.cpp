#include "LiveContainers.h"

#include <OpenSG/OSGChangeRecord.h>
#include <OpenSG/OSGGroup.h>
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
#include <zeOpenSGExt/OSGTransformAttachment.h>
#include <zeOpenSGUtils/zeNodeUtils.h>
#include <zeOpenSGUtils/zeOpenSGUtils.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace osg;

TEST(zeOpenSGUtils, DeliversMessagesToTheRegisteredReceiverWhichMayLeaveWhileRunning)
{
    zeMessage msg;
    msg.setValue("frame", 4.f, true);
    zeOpenSGUtils::call("nobodyListens", msg, 0); // harmless

    int calls = 0;
    float seen = 0;
    zeOpenSGUtils::registerReceiver("currentFrameChanged", [&](zeMessage& m) {
        ++calls;
        seen = boost::any_cast<float>(m.getValue("frame"));
        m.setValue("handled", true, true);
    });
    zeOpenSGUtils::call("currentFrameChanged", msg, 0);
    EXPECT_EQ(calls, 1);
    EXPECT_FLOAT_EQ(seen, 4.f);
    EXPECT_FALSE(msg.getValue("handled").empty()); // the receiver works on the caller's message
    zeOpenSGUtils::call("otherName", msg, 0);
    EXPECT_EQ(calls, 1);

    zeOpenSGUtils::unregisterReceiver("currentFrameChanged");
    zeOpenSGUtils::call("currentFrameChanged", msg, 0);
    EXPECT_EQ(calls, 1);

    // A receiver may unregister itself while running.
    calls = 0;
    zeOpenSGUtils::registerReceiver("once", [&calls](zeMessage&) {
        ++calls;
        zeOpenSGUtils::unregisterReceiver("once");
    });
    zeOpenSGUtils::call("once", msg, 0);
    zeOpenSGUtils::call("once", msg, 0);
    EXPECT_EQ(calls, 1);

    zeOpenSGUtils::registerReceiver("x", [&calls](zeMessage&) { ++calls; });
    zeOpenSGUtils::registerReceiver("x", zeOpenSGUtils::Receiver()); // empty function unregisters
    zeOpenSGUtils::call("x", msg, 0);
    EXPECT_EQ(calls, 1);
}

TEST(zeNodeUtils, SetRotationCreatesTheAttachmentAndRotatesATransform3D)
{
    unsigned before = liveContainers();
    Transform3DPtr core = Transform3D::create();
    core->setTranslation(Vec3f(10, 0, 0));
    NodePtr node = Node::create();
    node->setCore(core);
    EXPECT_EQ(zeNodeUtils::getTransformAttachment(node), NullFC);
    EXPECT_EQ(zeNodeUtils::getTransformAttachment(NodePtr()), NullFC);

    ChangeRecord::setEnabled(true);
    ChangeRecord::clear();
    zeNodeUtils::setTransformNodeRotation(node, 0, 0, 90, 0);
    TransformAttachmentPtr att = zeNodeUtils::getTransformAttachment(node);
    ASSERT_NE(att, NullFC);
    EXPECT_EQ(att->getRotationAngles(), Vec3f(0, 0, 90));
    EXPECT_EQ(ChangeRecord::count(getContainerId(att), TransformAttachment::RotationAnglesFieldMask), 1u);
    EXPECT_EQ(ChangeRecord::count(getContainerId(core), Transform::MatrixFieldMask), 1u);
    ChangeRecord::setEnabled(false);

    Pnt3f p(1, 0, 0);
    core->getMatrix().multMatrixPnt(p);
    EXPECT_TRUE(p.equals(Pnt3f(10, 1, 0), 1e-5f)) << p;

    zeNodeUtils::setTransformNodeRotation(node, 90, 0, 0, 0); // reuses the attachment
    EXPECT_EQ(zeNodeUtils::getTransformAttachment(node), att);
    Pnt3f q(0, 1, 0);
    core->getMatrix().multMatrixPnt(q);
    EXPECT_TRUE(q.equals(Pnt3f(10, 0, 1), 1e-5f)) << q;

    zeNodeUtils::setTransformNodeRotation(NodePtr(), 1, 2, 3, 0);
    subRefCP(node);
    EXPECT_EQ(liveContainers(), before);
}

TEST(Transform3D, MatrixIsTranslationTimesXYZRotationTimesScale)
{
    NodePtr node = Node::create();
    Transform3DPtr core = Transform3D::create();
    node->setCore(core);
    zeNodeUtils::setTransformNodeRotation(node, 90, 90, 0, 0);

    beginEditCP(core, Transform3D::TranslationFieldMask | Transform3D::ScaleFieldMask);
    core->setTranslation(Vec3f(1, 2, 3));
    core->setScale(Vec3f(2, 2, 2));
    endEditCP(core, Transform3D::TranslationFieldMask | Transform3D::ScaleFieldMask);

    // (0,1,0) scaled to (0,2,0), about x by 90 to (0,0,2), about y by 90 to (2,0,0), translated.
    Pnt3f p(0, 1, 0);
    core->getMatrix().multMatrixPnt(p);
    EXPECT_TRUE(p.equals(Pnt3f(3, 2, 3), 1e-5f)) << p;

    // Without a node (or attachment) there is no rotation.
    Transform3DPtr lone = Transform3D::create();
    lone->setTranslation(Vec3f(0, 0, 5));
    endEditCP(lone);
    EXPECT_FLOAT_EQ(lone->getMatrix()[3][2], 5.f);
    EXPECT_FLOAT_EQ(lone->getMatrix()[0][0], 1.f);
    subRefCP(lone);
    subRefCP(node);
}

TEST(CameraSetting, FieldsAreReflectiveAndDispatchByContentType)
{
    CameraSettingPtr cam = CameraSetting::create();
    cam->setDistance(12.f);
    cam->setFStop(2.8f);
    EXPECT_FLOAT_EQ(cam->getDistance(), 12.f);
    EXPECT_FALSE(cam->getIsViewpoint());
    EXPECT_EQ(cam->getUp(), Vec3f(0, 1, 0));

    const char* names[] = {"from",   "at",       "up",          "roll",           "fStop",
                           "height", "distance", "focalLength", "turnTableAngle", "isViewpoint"};
    for (const char* name : names)
        EXPECT_NE(cam->getField(name), nullptr) << name;

    // The library reads a component by comparing content type ids, then casting.
    Field* from = cam->getField("from");
    ASSERT_EQ(from->getContentType().getId(), SFPnt3f::getClassType().getContentType().getId());
    static_cast<SFPnt3f*>(from)->getValue()[2] = 3.f;
    EXPECT_FLOAT_EQ(cam->getFrom()[2], 3.f);
    Field* fstop = cam->getField("fStop");
    EXPECT_EQ(fstop->getContentType().getId(), SFReal32::getClassType().getContentType().getId());
    EXPECT_NE(fstop->getContentType().getId(), SFReal64::getClassType().getContentType().getId());
    EXPECT_FLOAT_EQ(static_cast<SFReal32*>(fstop)->getValue(), 2.8f);

    EXPECT_TRUE(CameraSetting::getClassType().isNodeCore());
    EXPECT_NE(CameraSetting::getClassGroupId(), Group::getClassGroupId());
    subRefCP(cam);
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

TEST(OlderAnimationContainers, ReferenceTheirChildrenAndReleaseThemWithTheScene)
{
    static_assert(std::is_same<AnimationCurvePtr, FCPtr<FieldContainerPtr, AnimationCurve>>::value,
                  "curves are plain field containers");
    unsigned before = liveContainers();
    NodePtr node = Node::create();
    node->setCore(Group::create());

    AnimationControlPointPtr point = AnimationControlPoint::create();
    point->setPosition(Pnt2f(10, 0.5f));
    point->setHasTangents(true);
    AnimationCurvePtr curve = AnimationCurve::create();
    curve->setAFAppNode(node);
    curve->setAFFieldName("translation");
    curve->setAFValuePosition(2);
    curve->pushToControlPoints(point);
    AnimationBlockPtr block = AnimationBlock::create();
    block->setName("walk");
    block->setNode(node);
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
    EXPECT_EQ(curve->getAFAppNode(), node);
    EXPECT_EQ(curve->getAFAppropriateNode(), NullFC);
    EXPECT_EQ(curve->getControlPoints(0)->getPosition(), Pnt2f(10, 0.5f));
    EXPECT_EQ(node.getRefCount(), 0); // back links to the node do not count
    EXPECT_EQ(clip->getTracks(0)->getSequences(0)->getCurves(0), curve);
    EXPECT_EQ(curve->getField("AFValuePosition")->getType(), SFUInt16::getClassType());

    // Removing the old attachment releases the whole structure.
    node->subAttachment(old);
    EXPECT_EQ(liveContainers(), before + 2); // node and its core
    subRefCP(node);
    EXPECT_EQ(liveContainers(), before);
}

TEST(OlderAnimationContainers, RemoveFromListsReleasesOneReference)
{
    unsigned before = liveContainers();
    AnimationClipPtr clip = AnimationClip::create();
    AnimationClipPtr nested = AnimationClip::create();
    clip->pushToClips(nested);
    clip->pushToClips(nested);
    clip->pushToClips(AnimationClipPtr()); // null is ignored
    EXPECT_EQ(clip->getClips().size(), 2u);
    EXPECT_EQ(nested.getRefCount(), 2);
    clip->removeFromClips(nested);
    EXPECT_EQ(nested.getRefCount(), 1);
    clip->removeFromClips(UInt32(5));
    clip->clearClips();
    EXPECT_EQ(liveContainers(), before + 1);
    subRefCP(clip);
    EXPECT_EQ(liveContainers(), before);
}
