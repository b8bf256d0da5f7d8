// Builds a small scene the way the host does (a camera with its settings, a light, a material
// group over a transformed geometry), then lists every field container with its id, type, name
// and the fields an animation curve could drive: those whose value is made of float components.

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGPerspectiveCamera2.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGUtils/zeNodeUtils.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace osg;

namespace {

NodePtr makeNode(const NodeCorePtr& core, const char* name)
{
    NodePtr node = Node::create();
    beginEditCP(node, Node::CoreFieldMask);
    node->setCore(core);
    endEditCP(node, Node::CoreFieldMask);
    setName(node, name);
    return node;
}

// Number of float components of a field's content type, 0 when it has none.
UInt32 floatComponents(const Field& field)
{
    struct Kind
    {
        UInt32 typeId;
        UInt32 components;
    };
    static const std::vector<Kind> kinds = {
        {SFColor4f::getClassType().getContentType().getId(), 4},
        {SFColor3f::getClassType().getContentType().getId(), 3},
        {SFVec4f::getClassType().getContentType().getId(), 4},
        {SFVec3f::getClassType().getContentType().getId(), 3},
        {SFVec2f::getClassType().getContentType().getId(), 2},
        {SFPnt4f::getClassType().getContentType().getId(), 4},
        {SFPnt3f::getClassType().getContentType().getId(), 3},
        {SFPnt2f::getClassType().getContentType().getId(), 2},
        {SFReal64::getClassType().getContentType().getId(), 1},
        {SFReal32::getClassType().getContentType().getId(), 1},
    };
    if (field.getCardinality() != FieldType::SINGLE_FIELD)
        return 0;
    for (const Kind& kind : kinds)
        if (field.getContentType().getId() == kind.typeId)
            return kind.components;
    return 0;
}

void listContainer(FieldContainerPtr fc)
{
    const FieldContainerType& type = fc->getType();
    AttachmentContainerPtr ac = AttachmentContainerPtr::dcast(fc);
    const Char8* name = ac != NullFC ? getName(ac) : nullptr;
    std::printf("%4u  %-22s %s\n", getContainerId(fc), type.getCName(), name != nullptr ? name : "");
    for (UInt32 id = 1; id <= type.getNumFieldDescs(); ++id) {
        const FieldDescription* desc = type.getFieldDescription(id);
        Field* field = fc->getField(id);
        if (desc == nullptr || field == nullptr || desc->isInternal())
            continue;
        UInt32 n = floatComponents(*field);
        if (n == 0)
            continue;
        std::string value;
        field->getValueByStr(value);
        std::printf("        %-20s %-8s %u  %s\n", desc->getCName(), field->getContentType().getCName(), n,
                    value.c_str());
    }
}

} // namespace

int main(int argc, char** argv)
{
    osgInit(argc, argv);

    // Material group with a red material, over a transformed geometry.
    SimpleMaterialPtr material = SimpleMaterial::create();
    beginEditCP(material);
    material->setDiffuse(Color3f(0.8f, 0.1f, 0.1f));
    material->setSpecular(Color3f(1.f, 1.f, 1.f));
    material->setShininess(20.f);
    endEditCP(material);
    MaterialGroupPtr materialGroup = MaterialGroup::create();
    materialGroup->setMaterial(material);

    Transform3DPtr transform = Transform3D::create();
    beginEditCP(transform, Transform3D::TranslationFieldMask);
    transform->setTranslation(Vec3f(0.f, 1.f, 0.f));
    endEditCP(transform, Transform3D::TranslationFieldMask);

    NodePtr root = makeNode(Group::create(), "root");
    NodePtr cameraNode = makeNode(CameraSetting::create(), "camera");
    NodePtr lightNode = makeNode(DirectionalLight::create(), "sun");
    NodePtr materialNode = makeNode(materialGroup, "red");
    NodePtr transformNode = makeNode(transform, "box transform");
    NodePtr geometryNode = makeNode(Geometry::create(), "box");

    beginEditCP(root, Node::ChildrenFieldMask);
    root->addChild(cameraNode);
    root->addChild(lightNode);
    endEditCP(root, Node::ChildrenFieldMask);
    lightNode->addChild(materialNode);
    materialNode->addChild(transformNode);
    transformNode->addChild(geometryNode);
    zeNodeUtils::setTransformNodeRotation(transformNode, 0.f, 45.f, 0.f, 0);

    DirectionalLightPtr light = DirectionalLightPtr::dcast(lightNode->getCore());
    light->setBeacon(cameraNode);

    // The render camera is not part of the graph; its beacon is the camera node.
    PerspectiveCamera2Ptr camera = PerspectiveCamera2::create();
    beginEditCP(camera);
    camera->setBeacon(cameraNode);
    camera->setFov(osgdegree2rad(45.f));
    camera->setNear(0.1f);
    camera->setFar(100.f);
    endEditCP(camera);
    addRefCP(camera);

    std::printf("zeDemo: scene graph\n");
    struct Printer
    {
        int depth = 0;
        Action::ResultE enter(NodePtr& node)
        {
            std::printf("  %*s%s (%s)\n", 2 * depth++, "", getName(node), node->getCore()->getTypeName());
            return Action::Continue;
        }
        Action::ResultE leave(NodePtr&, Action::ResultE result)
        {
            --depth;
            return result;
        }
    } printer;
    traverse(
        root,
        osgTypedMethodFunctor1ObjPtrCPtrRef<Action::ResultE, Printer, NodePtr>(&printer, &Printer::enter),
        osgTypedMethodFunctor2ObjPtrCPtrRef<Action::ResultE, Printer, NodePtr, Action::ResultE>(
            &printer, &Printer::leave));

    std::printf(
        "\nzeDemo: containers (id, type, name) and animatable fields (name, type, components, value)\n");
    const std::vector<FieldContainerPtr>& store = *FieldContainerFactory::the()->getFieldContainerStore();
    for (const FieldContainerPtr& fc : store)
        if (fc != NullFC)
            listContainer(fc);

    subRefCP(camera);
    subRefCP(root);
    osgExit();
    return 0;
}
