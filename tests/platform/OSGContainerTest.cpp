#include "LiveContainers.h"

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

using namespace osg;

namespace {

FieldContainerFactory* factory()
{
    return FieldContainerFactory::the();
}

} // namespace

TEST(FieldContainerRefCount, SetRefdAndClearRefMoveReferences)
{
    unsigned before = liveContainers();
    NodePtr a = Node::create();
    NodePtr b = Node::create();
    addRefCP(a);
    addRefCP(b);

    NodePtr slot = a;
    addRefCP(slot); // a: 2
    setRefdCP(slot, b);
    EXPECT_EQ(slot, b);
    EXPECT_EQ(a.getRefCount(), 1);
    EXPECT_EQ(b.getRefCount(), 2);

    setRefdCP(slot, b); // same value: nothing changes
    EXPECT_EQ(b.getRefCount(), 2);

    clearRefCP(slot);
    EXPECT_EQ(slot, NullFC);
    EXPECT_EQ(b.getRefCount(), 1);

    subRefCP(a);
    subRefCP(b);
    EXPECT_EQ(liveContainers(), before);
}

TEST(FieldContainerPtr, DcastChecksTypesAndHandlesNull)
{
    ComponentTransformPtr ct = ComponentTransform::create();
    NodeCorePtr asCore = ct; // up-casts are implicit
    FieldContainerPtr asFc = ct;

    EXPECT_EQ(TransformPtr::dcast(asCore), ct);
    EXPECT_EQ(ComponentTransformPtr::dcast(asFc), ct);
    EXPECT_EQ(MaterialGroupPtr::dcast(asFc), NullFC);
    EXPECT_EQ(NodePtr::dcast(asFc), NullFC);
    EXPECT_EQ(GroupPtr::dcast(NodeCorePtr()), NullFC);
    EXPECT_TRUE(ct);
    EXPECT_FALSE(!ct);
    EXPECT_FALSE(GroupPtr());

    const ComponentTransformPtr& constRef = ct;
    constRef->setTranslation(Vec3f(1, 2, 3)); // const handle still edits
    EXPECT_EQ(ct->getTranslation(), Vec3f(1, 2, 3));
    EXPECT_EQ(getCPtr(ct), ct.getCPtr());
    subRefCP(ct);
}

TEST(FieldContainerType, KnowsNameParentDerivationAndKind)
{
    const FieldContainerType& ct = ComponentTransform::getClassType();
    EXPECT_STREQ(ct.getCName(), "ComponentTransform");
    EXPECT_EQ(ct.getParent(), &Transform::getClassType());
    EXPECT_TRUE(ct.isDerivedFrom(Transform::getClassType()));
    EXPECT_TRUE(ct.isDerivedFrom(NodeCore::getClassType()));
    EXPECT_TRUE(ct.isDerivedFrom(ct));
    EXPECT_FALSE(Transform::getClassType().isDerivedFrom(ct));
    EXPECT_FALSE(ct.isDerivedFrom(static_cast<const TypeBase&>(Transform::getClassType())));
    EXPECT_TRUE(ct.isNodeCore());
    EXPECT_FALSE(ct.isNode());
    EXPECT_TRUE(Node::getClassType().isNode());
    EXPECT_TRUE(Name::getClassType().isAttachment());
    EXPECT_TRUE(NodeCore::getClassType().isAbstract());
    EXPECT_FALSE(Group::getClassType().isAbstract());

    EXPECT_NE(ct.getId(), 0u);
    EXPECT_NE(ct.getId(), Transform::getClassType().getId());
    EXPECT_NE(SFVec3f::getClassType().getId(), ct.getId());
    EXPECT_NE(SFVec3f::getClassType().getContentType().getId(), SFVec3f::getClassType().getId());

    ComponentTransformPtr obj = ComponentTransform::create();
    EXPECT_EQ(obj->getType(), ct);
    EXPECT_EQ(obj->getTypeId(), ComponentTransform::getClassTypeId());
    EXPECT_STREQ(obj->getTypeName(), "ComponentTransform");
    EXPECT_EQ(factory()->findType("ComponentTransform"), &ct);
    EXPECT_EQ(factory()->findType(ct.getId()), &ct);
    EXPECT_EQ(factory()->findType("NoSuchType"), nullptr);
    subRefCP(obj);

    // A concrete type makes a container of its own kind; an abstract one makes none.
    for (const FieldContainerType* type :
         {&Group::getClassType(), &SimpleMaterial::getClassType(), &Name::getClassType()}) {
        FieldContainerPtr made = type->createFieldContainer();
        ASSERT_NE(made, NullFC) << type->getCName();
        EXPECT_EQ(made->getType(), *type);
        subRefCP(made);
    }
    EXPECT_EQ(NodeCore::getClassType().createFieldContainer(), NullFC);
}

TEST(FieldContainerType, GroupIdsAreOwnPerTypeUnlessShared)
{
    UInt16 transform = Transform::getClassGroupId();
    UInt16 component = ComponentTransform::getClassGroupId();
    UInt16 name = Name::getClassGroupId();

    EXPECT_NE(transform, 0u);
    EXPECT_NE(transform, component); // a derived type does not share its parent's group
    EXPECT_NE(PointLight::getClassGroupId(), SpotLight::getClassGroupId());
    EXPECT_EQ(factory()->findGroupId("Transform"), transform);
    EXPECT_EQ(factory()->findGroupId("name"), name);
    EXPECT_EQ(factory()->findGroupId("Name"), 0u); // Name registers under its group name only
}

TEST(FieldContainerType, DescriptionsAreSortedByIdIncludingInheritedOnes)
{
    const FieldContainerType& type = ComponentTransform::getClassType();
    ASSERT_EQ(type.getNumFieldDescs(), 8u);
    for (UInt32 id = 1; id <= type.getNumFieldDescs(); ++id)
        EXPECT_EQ(type.getFieldDescription(id)->getFieldId(), id);
    EXPECT_EQ(type.getFieldDescription(0), nullptr);
    EXPECT_EQ(type.getFieldDescription(9), nullptr);

    const FieldDescription* matrix = type.findFieldDescription("matrix");
    ASSERT_NE(matrix, nullptr);
    EXPECT_EQ(matrix->getFieldId(), 3u);
    EXPECT_EQ(matrix->getFieldMask(), Transform::MatrixFieldMask);
    EXPECT_EQ(matrix->getTypeId(), SFMatrix::getClassType().getId());
    EXPECT_TRUE(type.findFieldDescription("parents")->isInternal());
    EXPECT_EQ(type.findFieldDescription("nope"), nullptr);
    EXPECT_EQ(type.findFieldDescription("translation")->getFieldMask(),
              ComponentTransform::TranslationFieldMask);
}

TEST(FieldContainer, GetFieldReturnsTheLiveMemberByNameOrId)
{
    SimpleMaterialPtr mat = SimpleMaterial::create();
    Field* diffuse = mat->getField("diffuse");
    ASSERT_NE(diffuse, nullptr);
    EXPECT_EQ(diffuse, mat->getSFDiffuse());
    EXPECT_EQ(mat->getField(SimpleMaterial::DiffuseFieldId), diffuse);
    EXPECT_EQ(diffuse->getType(), SFColor3f::getClassType());
    EXPECT_EQ(diffuse->getContentType().getId(), SFColor3f::getClassType().getContentType().getId());

    static_cast<SFColor3f*>(diffuse)->getValue()[1] = 0.5f;
    EXPECT_FLOAT_EQ(mat->getDiffuse().green(), 0.5f);

    EXPECT_EQ(mat->getField("noSuchField"), nullptr);
    EXPECT_EQ(mat->getField(UInt32(0)), nullptr);
    EXPECT_EQ(mat->getField(UInt32(99)), nullptr);
    EXPECT_STREQ(mat->getType().getFieldDescription(SimpleMaterial::ShininessFieldId)->getCName(),
                 "shininess");
    subRefCP(mat);
}
