#include "LiveContainers.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGPerspectiveCamera.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

using namespace osg;

TEST(Cores, FieldIdsFollowTheInheritanceChain)
{
    // The masks the library edits with, and chains through several levels of inheritance.
    EXPECT_EQ(Node::AttachmentsFieldMask, 0x2u);
    EXPECT_EQ(Node::TravMaskFieldMask, 0x8u);
    EXPECT_EQ(Node::CoreFieldMask, 0x40u);
    EXPECT_EQ(ComponentTransform::MatrixFieldMask, Transform::MatrixFieldMask);
    EXPECT_EQ(ComponentTransform::TranslationFieldId, 8u);
    EXPECT_EQ(SpotLight::SpotCutOffFieldId, 16u);
    EXPECT_EQ(SimpleMaterial::ColorMaterialFieldId, 13u);
    EXPECT_EQ(Name::SimpleFieldId, 3u);
    EXPECT_STREQ(Node::getClassType().getFieldDescription(Node::TravMaskFieldId)->getCName(), "travMask");
    // Geometry: the material, fifteen property pointers, the index mapping, "dlistCache", six
    // internal GL caches and "vbo" last.
    const FieldContainerType& geometry = Geometry::getClassType();
    EXPECT_EQ(geometry.getNumFieldDescs(), 27u);
    EXPECT_EQ(Geometry::TypesFieldId, 4u);
    EXPECT_STREQ(geometry.getFieldDescription(Geometry::TexCoords7FieldId)->getCName(), "texCoords7");
    EXPECT_STREQ(geometry.getFieldDescription(Geometry::DlistCacheFieldId)->getCName(), "dlistCache");
    EXPECT_TRUE(geometry.getFieldDescription(Geometry::GLIdFieldId)->isInternal());
    EXPECT_FALSE(geometry.getFieldDescription(Geometry::VboFieldId)->isInternal());
    EXPECT_EQ(Geometry::VboFieldId, 27u);
}

TEST(Cores, DefaultsOfSwitchMaterialAndCamera)
{
    SwitchPtr sw = Switch::create();
    EXPECT_EQ(sw->getChoice(), Switch::NONE);
    SimpleMaterialPtr mat = SimpleMaterial::create();
    EXPECT_FLOAT_EQ(mat->getShininess(), 1.f);
    EXPECT_TRUE(mat->getLit());
    EXPECT_EQ(mat->getColorMaterial(), 0x1201u);
    EXPECT_FALSE(mat->isTransparent());
    mat->setTransparency(0.5f);
    EXPECT_TRUE(mat->isTransparent());
    mat->setTransparencyMode(Material::TransparencyForceOpaque);
    EXPECT_FALSE(mat->isTransparent());
    PerspectiveCameraPtr cam = PerspectiveCamera::create();
    EXPECT_FLOAT_EQ(cam->getAspect(), 1.f);
    EXPECT_FLOAT_EQ(cam->getFov(), 0.f);
    GeometryPtr geo = Geometry::create();
    EXPECT_TRUE(geo->getDlistCache());
    EXPECT_FALSE(geo->getVbo());
    EXPECT_EQ(geo->getPositions(), NullFC);
    subRefCP(geo);
    subRefCP(sw);
    subRefCP(mat);
    subRefCP(cam);
}

TEST(Cores, CameraViewingAndProjection)
{
    NodePtr beacon = Node::create();
    TransformPtr t = Transform::create();
    t->editMatrix().setTranslate(0, 0, 10);
    beacon->setCore(t);
    PerspectiveCameraPtr cam = PerspectiveCamera::create();
    cam->setBeacon(beacon);
    cam->setFov(Real32(Pi / 2));
    cam->setNear(1.f);
    cam->setFar(100.f);
    EXPECT_EQ(beacon.getRefCount(), 0); // the camera's beacon is not counted

    Matrix view;
    cam->getViewing(view);
    Pnt3f origin;
    view.multMatrixPnt(origin);
    EXPECT_TRUE(origin.equals(Pnt3f(0, 0, -10), 1e-5f));

    Matrix proj;
    cam->getProjection(proj, 200, 100);
    EXPECT_NEAR(proj[1][1], 1.f, 1e-6);  // cot(45 degrees)
    EXPECT_NEAR(proj[0][0], 0.5f, 1e-6); // divided by the aspect 2
    EXPECT_FLOAT_EQ(proj[2][3], -1.f);

    cam->setFov(90.f); // above Pi: taken as degrees
    Matrix degrees;
    cam->getProjection(degrees, 200, 100);
    EXPECT_TRUE(degrees.equals(proj, 1e-5f));
    subRefCP(cam);
    subRefCP(beacon);
}

TEST(Cores, MaterialGroupCountsItsMaterialAndAShallowCopyIsANewContainerWithTheSameValues)
{
    unsigned before = liveContainers();
    MaterialGroupPtr group = MaterialGroup::create();
    SimpleMaterialPtr replaced = SimpleMaterial::create();
    group->setMaterial(replaced);
    EXPECT_EQ(replaced.getRefCount(), 1);
    const UInt32 replacedId = getContainerId(replaced);
    SimpleMaterialPtr mat = SimpleMaterial::create();
    group->setMaterial(mat);
    EXPECT_EQ(FieldContainerFactory::the()->getContainer(replacedId), NullFC);
    setName(group, "shared");

    MaterialGroupPtr copy = MaterialGroupPtr::dcast(group->shallowCopy());
    ASSERT_NE(copy, NullFC);
    EXPECT_NE(getContainerId(copy), getContainerId(group));
    EXPECT_EQ(copy.getRefCount(), 0);
    EXPECT_EQ(copy->getMaterial(), mat);
    EXPECT_EQ(mat.getRefCount(), 2); // both groups reference the material
    EXPECT_STREQ(getName(copy), "shared");

    subRefCP(group);
    EXPECT_EQ(mat.getRefCount(), 1);
    subRefCP(copy);
    EXPECT_EQ(liveContainers(), before);
}

TEST(Node, InsertAndReplaceChildKeepOrderAndReferences)
{
    unsigned before = liveContainers();
    NodePtr root = Node::create();
    NodePtr a = Node::create(), b = Node::create(), c = Node::create();
    root->addChild(a);
    root->addChild(b);
    root->insertChild(1, c);
    EXPECT_EQ(root->getChild(1), c);
    root->insertChild(99, Node::create()); // past the end: appended
    EXPECT_EQ(root->getNChildren(), 4u);

    // Replacing with a sibling moves it into the slot and releases the replaced child.
    UInt32 idA = getContainerId(a);
    root->replaceChild(0, b);
    EXPECT_EQ(FieldContainerFactory::the()->getContainer(idA), NullFC);
    EXPECT_EQ(root->getChild(0), b);
    EXPECT_EQ(root->getNChildren(), 3u);
    EXPECT_EQ(b.getRefCount(), 1);

    root->replaceChild(0, b);    // same node: nothing happens
    root->replaceChild(7, c);    // bad index: nothing happens
    root->replaceChild(0, root); // would close a cycle: refused
    EXPECT_EQ(root->getChild(0), b);
    EXPECT_EQ(root->getNChildren(), 3u);

    subRefCP(root);
    EXPECT_EQ(liveContainers(), before);
}
