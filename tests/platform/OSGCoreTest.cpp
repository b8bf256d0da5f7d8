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
    // A node's copy keeps its travMask but takes neither its core nor its children.
    NodePtr node = Node::create();
    node->setActive(false);
    node->setCore(Group::create());
    node->addChild(Node::create());
    NodePtr nodeCopy = NodePtr::dcast(node->shallowCopy());
    EXPECT_FALSE(nodeCopy->getActive());
    EXPECT_EQ(nodeCopy->getCore(), NullFC);
    EXPECT_EQ(nodeCopy->getNChildren(), 0u);
    subRefCP(nodeCopy);
    subRefCP(node);

    subRefCP(group);
    EXPECT_EQ(mat.getRefCount(), 1);
    subRefCP(copy);
    EXPECT_EQ(liveContainers(), before);
}
