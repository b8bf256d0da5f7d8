// Scene binding: animation fields of every core type read and written against the scene (checked
// through the scene's own API), container resolution, animation attachments and the manager's
// scene synchronisation.
#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>

#include <OpenSG/OSGChangeRecord.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>
#include <zeOpenSGExt/OSGAnimationAttachment.h>
#include <zeOpenSGExt/OSGAnimationCurve.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGExt/OSGTransformAttachment.h>
#include <zeOpenSGUtils/zeNodeUtils.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace osg {

class ZeTestImpostorCore;
typedef FCPtr<NodeCorePtr, ZeTestImpostorCore> ZeTestImpostorCorePtr;

// A core that claims the Transform group without being a transform, with the field kinds that no
// platform core has: an angle named "rotate...", a double and a two-component vector.
class ZeTestImpostorCore : public NodeCore
{
public:
    typedef NodeCore Inherited;
    enum
    {
        RotateAngleFieldId = Inherited::NextFieldId,
        WeightFieldId = RotateAngleFieldId + 1,
        OffsetFieldId = WeightFieldId + 1,
        NextFieldId = OffsetFieldId + 1
    };
    static constexpr BitVector RotateAngleFieldMask = TypeTraits<BitVector>::One << RotateAngleFieldId;
    static constexpr BitVector WeightFieldMask = TypeTraits<BitVector>::One << WeightFieldId;
    static constexpr BitVector OffsetFieldMask = TypeTraits<BitVector>::One << OffsetFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(ZeTestImpostorCorePtr)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, RotateAngle)
    OSG_SFIELD_ACCESSORS(SFReal64, Real64, Weight)
    OSG_SFIELD_ACCESSORS(SFVec2f, Vec2f, Offset)

protected:
    ZeTestImpostorCore() = default;
    ZeTestImpostorCore(const ZeTestImpostorCore& source) = default;
    ~ZeTestImpostorCore() override = default;
};

OSG_FC_CREATE_FUNCTIONS_IMPL(ZeTestImpostorCore, ZeTestImpostorCore, ZeTestImpostorCorePtr)

FieldContainerType& ZeTestImpostorCore::getClassType()
{
    static FieldContainerType type(
        "ZeTestImpostorCore", &NodeCore::getClassType(), "Transform", &osgCreateZeTestImpostorCore,
        {OSG_SFIELD_DESC(ZeTestImpostorCore, SFReal32, "rotateAngle", RotateAngle, false),
         OSG_SFIELD_DESC(ZeTestImpostorCore, SFReal64, "weight", Weight, false),
         OSG_SFIELD_DESC(ZeTestImpostorCore, SFVec2f, "offset", Offset, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(ZeTestImpostorCore)

} // namespace osg

namespace {

using osg::NodePtr;
using osg::NullFC;

// Stand-in for the host's active camera, reached only through the manager's callbacks.
struct HostCamera
{
    static inline osg::Pnt3f from;
    static inline osg::Pnt3f at;
    static inline osg::Vec3f up;
    static inline float roll = 0.0f;
    static inline int viewCalls = 0;
    static inline int rollCalls = 0;
    static inline int camera = 0;

    static void setView(int cam, const osg::Pnt3f& f, const osg::Pnt3f& a, const osg::Vec3f& u)
    {
        camera = cam;
        from = f;
        at = a;
        up = u;
        ++viewCalls;
    }
    static void getView(int cam, osg::Pnt3f& f, osg::Pnt3f& a, osg::Vec3f& u)
    {
        camera = cam;
        f = from;
        a = at;
        u = up;
    }
    static void setRoll(int cam, const float& r)
    {
        camera = cam;
        roll = r;
        ++rollCalls;
    }
    static float getRoll(int) { return roll; }
};

// The components of a vector or point.
template <class V>
std::vector<float> components(const V& v)
{
    return std::vector<float>(&v[0], &v[0] + V::_iSize);
}

osg::UInt32 idOf(const osg::FieldContainerPtr& container)
{
    return osg::getContainerId(container);
}

class SceneBindingTest : public AnimationTest
{
protected:
    NodePtr root, group, geometryInGroup, transform, geometryInTransform, componentTransform, transform3D,
        transform3DB, materialGroup, bareMaterialGroup, switchNode, pointLight, spotLight, directionalLight,
        camera, plainCamera, impostor;
    osg::SimpleMaterialPtr material;
    std::vector<NodePtr> allNodes; // every node made under the root, the root included

    NodePtr add(const osg::NodeCorePtr& core, const NodePtr& parent)
    {
        NodePtr node = osg::Node::create();
        node->setCore(core);
        if (parent == NullFC)
            return node;
        parent->addChild(node);
        allNodes.push_back(node);
        return node;
    }

    void SetUp() override
    {
        AnimationTest::SetUp();
        root = add(osg::Group::create(), NullFC);
        osg::addRefCP(root);
        allNodes.push_back(root);
        group = add(osg::Group::create(), root);
        geometryInGroup = add(osg::Geometry::create(), group);
        transform = add(osg::Transform::create(), root);
        geometryInTransform = add(osg::Geometry::create(), transform);
        componentTransform = add(osg::ComponentTransform::create(), root);
        transform3D = add(osg::Transform3D::create(), root);
        zeNodeUtils::setTransformNodeRotation(transform3D, 10.0f, 20.0f, 30.0f, 0);
        transform3DB = add(osg::Transform3D::create(), root);
        material = osg::SimpleMaterial::create();
        material->setDiffuse(osg::Color3f(0.1f, 0.2f, 0.3f));
        osg::MaterialGroupPtr materialCore = osg::MaterialGroup::create();
        materialCore->setMaterial(material);
        materialGroup = add(materialCore, root);
        bareMaterialGroup = add(osg::MaterialGroup::create(), root);
        switchNode = add(osg::Switch::create(), root);
        pointLight = add(osg::PointLight::create(), root);
        spotLight = add(osg::SpotLight::create(), root);
        directionalLight = add(osg::DirectionalLight::create(), root);
        osg::CameraSettingPtr viewpoint = osg::CameraSetting::create();
        viewpoint->setIsViewpoint(true);
        camera = add(viewpoint, root);
        plainCamera = add(osg::CameraSetting::create(), root);
        impostor = add(osg::ZeTestImpostorCore::create(), root);
        zeAnimationManager::setSceneRootNode(root);

        HostCamera::from = osg::Pnt3f(1.0f, 2.0f, 3.0f);
        HostCamera::at = osg::Pnt3f(0.0f, 0.0f, 0.0f);
        HostCamera::up = osg::Vec3f(0.0f, 1.0f, 0.0f);
        HostCamera::roll = 5.0f;
        HostCamera::viewCalls = HostCamera::rollCalls = HostCamera::camera = 0;
        zeAnimationManager::setFromAtUpCB(&HostCamera::setView);
        zeAnimationManager::setGetFromAtUpCB(&HostCamera::getView);
        zeAnimationManager::setRollCB(&HostCamera::setRoll);
        zeAnimationManager::setGetRollCB(&HostCamera::getRoll);
        osg::ChangeRecord::setEnabled(true);
        osg::ChangeRecord::clear();
    }

    void TearDown() override
    {
        osg::ChangeRecord::setEnabled(false);
        AnimationTest::TearDown();
        zeAnimationManager::setFromAtUpCB(nullptr);
        zeAnimationManager::setGetFromAtUpCB(nullptr);
        zeAnimationManager::setRollCB(nullptr);
        zeAnimationManager::setGetRollCB(nullptr);
        osg::subRefCP(root);
    }

    std::set<std::string> attributesOf(const NodePtr& node)
    {
        std::set<std::string> attributes;
        for (zeAnimationField* field : manager->createAnimationFields(node))
            attributes.insert(field->attribute);
        return attributes;
    }

    // A field made by hand, as the loader or an older scene would.
    zeAnimationField* looseField(osg::UInt64 fcID, osg::UInt64 nodeID, const std::string& name,
                                 const std::string& attribute, osg::UInt32 valuePos = 0)
    {
        zeAnimationField* field = manager->createField(0);
        field->fcID = fcID;
        field->nodeID = nodeID;
        field->name = name;
        field->attribute = attribute;
        field->valuePos = valuePos;
        return field;
    }

    zeAnimationField* viewpointField(const NodePtr& node, const std::string& attribute, osg::UInt32 valuePos)
    {
        for (zeAnimationField* field : manager->createAnimationFields(node)) {
            if (field->name == "viewpoint" && field->attribute == attribute && field->valuePos == valuePos)
                return field;
        }
        return nullptr;
    }

    static bool write(zeAnimationField* field, float value)
    {
        field->value = value;
        return zeAnimationUtils::setOSGFieldValue(field);
    }

    // The components of a scene field, read through the field's own text form.
    static std::vector<float> sceneValues(const osg::FieldContainerPtr& container, const std::string& name)
    {
        std::string text;
        container->getField(name.c_str())->getValueByStr(text);
        if (text == "TRUE" || text == "FALSE")
            return std::vector<float>(1, text == "TRUE" ? 1.0f : 0.0f);
        std::istringstream in(text);
        std::vector<float> values;
        float value = 0.0f;
        while (in >> value)
            values.push_back(value);
        return values;
    }

    // The identifiers a node's animation attachment lists: objects, or fields.
    static std::vector<osg::UInt64> listed(const NodePtr& node, bool fields)
    {
        osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(node);
        if (attachment == NullFC)
            return {};
        const auto& ids = fields ? attachment->getFieldIds() : attachment->getObjectIds();
        return std::vector<osg::UInt64>(ids.begin(), ids.end());
    }
    static std::vector<osg::UInt64> objectIds(const NodePtr& node) { return listed(node, false); }
    static std::vector<osg::UInt64> fieldIds(const NodePtr& node) { return listed(node, true); }
};

// ---- Animation fields of every core type --------------------------------------------------------

TEST_F(SceneBindingTest, EachCoreTypeGetsItsAnimatableAttributes)
{
    const auto has = [this](const NodePtr& node, std::initializer_list<const char*> wanted) {
        const std::set<std::string> attributes = attributesOf(node);
        for (const char* a : wanted)
            EXPECT_EQ(attributes.count(a), 1u) << a << " on " << node->getCore()->getType().getCName();
        return attributes;
    };
    const std::set<std::string> visibleOnly{"visible"};
    EXPECT_EQ(attributesOf(group), visibleOnly);
    EXPECT_EQ(attributesOf(geometryInGroup), (std::set<std::string>{"dlistCache", "vbo", "visible"}));
    EXPECT_EQ(attributesOf(transform), visibleOnly); // a matrix is not animated component-wise
    EXPECT_EQ(attributesOf(bareMaterialGroup), visibleOnly);
    EXPECT_EQ(attributesOf(switchNode), (std::set<std::string>{"choice", "visible"}));

    has(transform3D, {"translationX", "translationZ", "scaleY", "rotationX", "rotationZ", "visible"});
    EXPECT_EQ(has(componentTransform, {"centerZ", "translationX", "scaleY"}).count("rotationX"), 0u);
    EXPECT_EQ(has(materialGroup,
                  {"diffuseR", "ambientR", "specularB", "emissionG", "shininess", "transparency", "lit"})
                  .count("diffuseA"),
              0u);
    has(spotLight, {"ambientA", "diffuseR", "positionZ", "directionY", "spotCutOff", "on", "shadowMode"});
    has(directionalLight, {"directionX"});
    has(pointLight, {"positionX"});
    has(camera, {"fromX", "atY", "upZ", "fStop", "distance", "fieldOfView", "from", "at", "up", "roll"});
    zeAnimationField* fov = manager->getField(camera, "fieldOfView");
    ASSERT_NE(fov, nullptr);
    EXPECT_EQ(fov->name, "fieldOfView");

    // Each (attribute, component) names one field per node, so lookups and rebinding agree.
    for (const NodePtr& node : allNodes) {
        std::set<std::pair<std::string, osg::UInt32>> keys;
        for (zeAnimationField* field : manager->createAnimationFields(node)) {
            EXPECT_TRUE(keys.insert(std::make_pair(field->attribute, field->valuePos)).second)
                << field->attribute << " twice on " << node->getCore()->getType().getCName();
            EXPECT_EQ(field->nodeID, idOf(node));
        }
    }
}

TEST_F(SceneBindingTest, FieldsAreMadeOnceRecordedOnTheNodeAndFoundByAttribute)
{
    const std::vector<zeAnimationField*> fields = manager->createAnimationFields(transform3D);
    ASSERT_FALSE(fields.empty());
    std::vector<osg::UInt64> ids;
    for (zeAnimationField* field : fields)
        ids.push_back(field->getId());
    EXPECT_EQ(fieldIds(transform3D), ids);
    EXPECT_EQ(zeAnimationUtils::getAnimationFields(transform3D), fields);

    const std::size_t count = manager->getFieldCount();
    EXPECT_EQ(manager->createAnimationFields(transform3D), fields);
    EXPECT_EQ(manager->getFieldCount(), count);
    // The initial value is the scene's.
    EXPECT_FLOAT_EQ(manager->getField(transform3D, "rotationZ")->value, 30.0f);

    const std::vector<std::string>& known = manager->getAnimationAttributes();
    for (const char* a : {"translationX", "rotationZ", "visible"})
        EXPECT_NE(std::find(known.begin(), known.end(), a), known.end()) << a;
    EXPECT_TRUE(manager->createAnimationFields(NodePtr()).empty());

    // Found by attribute (or the older names of some), made on the first lookup.
    EXPECT_EQ(manager->getField(NodePtr(), "visible"), nullptr);
    EXPECT_TRUE(fieldIds(componentTransform).empty());
    zeAnimationField* translateX = manager->getField(componentTransform, "translateX");
    ASSERT_NE(translateX, nullptr);
    EXPECT_FALSE(fieldIds(componentTransform).empty());
    EXPECT_EQ(translateX->attribute, "translationX");
    EXPECT_EQ(translateX, manager->getField(componentTransform, "translationX"));
    EXPECT_EQ(manager->getField(transform3D, "rotateZ"), manager->getField(transform3D, "rotationZ"));
    EXPECT_EQ(manager->getField(transform3D, "rotateZ")->valuePos, 2u);
    EXPECT_EQ(manager->getField(transform3D, "shear"), nullptr);

    const std::size_t objects = manager->getObjectCount();
    zeAnimationCurve2D* curve = manager->createCurve2D(transform3D, "scaleY");
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->getAnimationField(), manager->getField(transform3D, "scaleY"));
    EXPECT_EQ(curve->getName(), "scaleY");
    EXPECT_TRUE(objectIds(transform3D).empty());
    EXPECT_EQ(manager->createCurve2D(transform3D, "bogus"), nullptr);
    EXPECT_EQ(manager->createCurve2D(NodePtr(), "scaleY"), nullptr);
    EXPECT_EQ(manager->getObjectCount(), objects + 1);
}

TEST_F(SceneBindingTest, EveryComponentOfEveryFieldIsWrittenIntoTheScene)
{
    int written = 0;
    for (const NodePtr& node : allNodes) {
        for (zeAnimationField* field : manager->createAnimationFields(node)) {
            osg::FieldContainerPtr container =
                osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(field->fcID));
            ASSERT_NE(container, NullFC) << field->attribute;
            osg::Field* sceneField = container->getField(field->name.c_str());
            if (!sceneField)
                continue; // node, rotation and viewpoint properties are tested on their own
            const std::vector<float> before = sceneValues(container, field->name);
            ASSERT_LT(field->valuePos, before.size()) << field->attribute;
            const float current = before[field->valuePos];
            const osg::UInt32 content = sceneField->getContentType().getId();
            const bool isBool = content == osg::SFBool::getClassType().getContentType().getId();
            const bool isIntegral = content == osg::SFInt32::getClassType().getContentType().getId() ||
                                    content == osg::SFUInt32::getClassType().getContentType().getId();
            float value = current + 1.25f + 0.5f * static_cast<float>(written % 7);
            float stored = value;
            if (isBool) {
                value = stored = current > 0.5f ? 0.0f : 1.0f;
            } else if (isIntegral) {
                value = stored = current + 2.0f;
            } else if (field->name == "fieldOfView" || field->name.find("rotate") != std::string::npos) {
                value = 30.0f + static_cast<float>(written % 7);
                stored = value * 2.0f * 3.1415927f / 360.0f;
            }
            ASSERT_TRUE(write(field, value)) << field->attribute;
            ++written;

            std::vector<float> expected = before;
            expected[field->valuePos] = stored;
            const std::vector<float> after = sceneValues(container, field->name);
            ASSERT_EQ(after.size(), expected.size()) << field->attribute;
            for (std::size_t i = 0; i < after.size(); ++i)
                EXPECT_NEAR(after[i], expected[i], 1e-5f * std::max(1.0f, std::fabs(expected[i])))
                    << field->attribute << " component " << i;
            EXPECT_NEAR(zeAnimationUtils::getOSGFieldValue(field), value, 1e-4f) << field->attribute;
        }
    }
    EXPECT_GT(written, 60);
}

// Every way a field reaches the scene, read and written, and the writes that must fail: one row
// (one call of `row`) each, giving the field, what reading it gives first, the value written,
// whether the write is taken, the scene seen through its own API afterwards and what reading gives
// then. Rows run in order on one scene and may build on the row before. A refused write, and
// writing a value the scene already holds, must leave no change record and make no call to the host.
TEST_F(SceneBindingTest, EachWayOfReachingTheSceneReadsAndWrites)
{
    typedef std::vector<float> Values;
    typedef std::function<Values()> Scene;
    const auto row = [](const char* name, zeAnimationField* field, float before, float value, bool taken,
                        const Scene& scene, const Values& sceneAfter, float after, bool quietRewrite = true) {
        SCOPED_TRACE(name);
        const auto near = [](float want, float got) {
            return std::fabs(want - got) <= 1e-5f * std::max(1.0f, std::fabs(want));
        };
        ASSERT_NE(field, nullptr);
        EXPECT_PRED2(near, before, zeAnimationUtils::getOSGFieldValue(field));
        const int calls = HostCamera::viewCalls + HostCamera::rollCalls;
        osg::ChangeRecord::clear();
        EXPECT_EQ(write(field, value), taken);
        if (!taken) {
            EXPECT_EQ(osg::ChangeRecord::size(), 0u);
        }
        const Values seen = scene();
        ASSERT_EQ(seen.size(), sceneAfter.size());
        for (std::size_t i = 0; i < seen.size(); ++i)
            EXPECT_PRED2(near, sceneAfter[i], seen[i]) << "component " << i;
        EXPECT_PRED2(near, after, zeAnimationUtils::getOSGFieldValue(field));

        const int callsAfterWrite = HostCamera::viewCalls + HostCamera::rollCalls;
        EXPECT_LE(callsAfterWrite - calls, 1);
        osg::ChangeRecord::clear();
        EXPECT_EQ(write(field, value), taken);
        if (quietRewrite) {
            EXPECT_EQ(osg::ChangeRecord::size(), 0u);
        }
        EXPECT_EQ(HostCamera::viewCalls + HostCamera::rollCalls, callsAfterWrite);
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Scene nothing = [] { return Values(); };

    // A field whose name contains "rotate" holds radians and is animated in degrees; a scalar
    // ignores the component index.
    osg::ZeTestImpostorCorePtr odd = osg::ZeTestImpostorCorePtr::dcast(impostor->getCore());
    odd->setRotateAngle(1.5707964f);
    odd->setOffset(osg::Vec2f(3.0f, 4.0f));
    const Scene offset = [odd] { return components(odd->getOffset()); };
    row(
        "angle", looseField(idOf(odd), idOf(impostor), "rotateAngle", "rotateAngle"), 90.0f, 180.0f, true,
        [odd] { return Values{odd->getRotateAngle()}; }, {3.1415927f}, 180.0f);
    row(
        "double", looseField(idOf(odd), idOf(impostor), "weight", "weight", 3), 0.0f, 2.5f, true,
        [odd] { return Values{static_cast<float>(odd->getWeight())}; }, {2.5f}, 2.5f);
    row("vector component", looseField(idOf(odd), idOf(impostor), "offset", "offsetY", 1), 4.0f, 5.0f, true,
        offset, {3.0f, 5.0f}, 5.0f);
    row("vector component beyond its size", looseField(idOf(odd), idOf(impostor), "offset", "offsetZ", 2),
        0.0f, 9.0f, false, offset, {3.0f, 5.0f}, 0.0f);

    // The viewpoint's view is the host's, not the core's fields; any other camera keeps its view
    // in its own fields. Settings without a scene field of their name go through the camera's
    // accessors, which record an edit on every write.
    osg::CameraSettingPtr view = osg::CameraSettingPtr::dcast(camera->getCore());
    osg::CameraSettingPtr plain = osg::CameraSettingPtr::dcast(plainCamera->getCore());
    const osg::Pnt3f viewAt = view->getAt();
    const Scene host = [] {
        Values v = components(HostCamera::from);
        for (const Values& part : {components(HostCamera::at), components(HostCamera::up)})
            v.insert(v.end(), part.begin(), part.end());
        return v;
    };
    row(
        "camera field", looseField(idOf(view), idOf(camera), "fStop", "fStop", 2), view->getFStop(), 4.0f,
        true, [view] { return Values{view->getFStop()}; }, {4.0f}, 4.0f);
    row("viewpoint at", viewpointField(camera, "at", 1), 0.0f, 7.0f, true, host, {1, 2, 3, 0, 7, 0, 0, 1, 0},
        7.0f);
    row("viewpoint from", viewpointField(camera, "from", 2), 3.0f, -4.0f, true, host,
        {1, 2, -4, 0, 7, 0, 0, 1, 0}, -4.0f);
    row("viewpoint up", viewpointField(camera, "up", 0), 0.0f, 0.5f, true, host,
        {1, 2, -4, 0, 7, 0, 0.5f, 1, 0}, 0.5f);
    row(
        "viewpoint roll", viewpointField(camera, "roll", 0), 5.0f, 15.0f, true,
        [] { return Values{HostCamera::roll}; }, {15.0f}, 15.0f);
    EXPECT_EQ(HostCamera::camera, -1);
    EXPECT_EQ(view->getAt(), viewAt);
    row(
        "other camera at", viewpointField(plainCamera, "at", 2), 0.0f, 6.0f, true,
        [plain] { return components(plain->getAt()); }, {0.0f, 0.0f, 6.0f}, 6.0f);
    row(
        "other camera roll", viewpointField(plainCamera, "roll", 0), plain->getRoll(), 20.0f, true,
        [plain] { return Values{plain->getRoll()}; }, {20.0f}, 20.0f);
    EXPECT_EQ(HostCamera::viewCalls, 3);
    EXPECT_EQ(HostCamera::rollCalls, 1);
    typedef osg::Real32& (osg::CameraSetting::*Getter)();
    const std::pair<const char*, Getter> settings[] = {
        {"fStop", &osg::CameraSetting::getFStop},
        {"height", &osg::CameraSetting::getHeight},
        {"distance", &osg::CameraSetting::getDistance},
        {"focalLength", &osg::CameraSetting::getFocalLength},
        {"turnTableAngle", &osg::CameraSetting::getTurnTableAngle}};
    float value = 3.0f;
    for (const auto& s : settings) {
        const Getter get = s.second;
        row(
            s.first, looseField(idOf(plain), idOf(plainCamera), "lens", s.first), (plain.getCPtr()->*get)(),
            value, true, [plain, get] { return Values{(plain.getCPtr()->*get)()}; }, {value}, value, false);
        value += 1.5f;
    }
    row("camera setting that is none", looseField(idOf(plain), idOf(plainCamera), "lens", "aperture"), 0.0f,
        1.0f, false, nothing, {}, 0.0f);

    // A node's own properties: its transform attachment's angles and whether it is shown.
    const auto rotation = [](const NodePtr& node) -> Scene {
        return [node] {
            osg::TransformAttachmentPtr t = zeNodeUtils::getTransformAttachment(node);
            return t == NullFC ? Values() : components(t->getRotationAngles());
        };
    };
    const auto shown = [](const NodePtr& node) -> Scene {
        return [node] { return Values{node->getActive() ? 1.0f : 0.0f}; };
    };
    row("rotation", manager->getField(transform3D, "rotationY"), 20.0f, 45.0f, true, rotation(transform3D),
        {10.0f, 45.0f, 30.0f}, 45.0f);
    row("rotation, no attachment yet", looseField(idOf(group), idOf(group), "rotationZ", "rotationZ"), 0.0f,
        12.0f, true, rotation(group), {0.0f, 0.0f, 12.0f}, 12.0f);
    zeAnimationField* visible = manager->getField(geometryInGroup, "visible");
    row("hidden below one half", visible, 1.0f, 0.49f, true, shown(geometryInGroup), {0.0f}, 0.0f);
    row("shown from one half", visible, 0.0f, 0.5f, true, shown(geometryInGroup), {1.0f}, 1.0f);
    row("shown for NaN", manager->getField(switchNode, "visible"), 1.0f, nan, false, shown(switchNode),
        {1.0f}, 1.0f);
    row("node property of no node", looseField(idOf(group->getCore()), idOf(material), "visible", "visible"),
        0.0f, 0.0f, false, shown(group), {1.0f}, 0.0f);
    row("unknown node property", looseField(idOf(group), idOf(group), "visible", "glow"), 0.0f, 1.0f, false,
        shown(group), {1.0f}, 0.0f);

    // Integer and boolean fields go through their text form. Integers round half away from zero
    // and are written as whole decimal numbers, never in an exponent form that integer parsing
    // would cut short. A negative value wraps in an unsigned field, as the scene's strtoul reading
    // makes it; a value beyond the field's range, or no number, is skipped.
    osg::SwitchPtr switchCore = osg::SwitchPtr::dcast(switchNode->getCore());
    osg::LightPtr light = osg::LightPtr::dcast(pointLight->getCore());
    const auto text = [](const osg::FieldContainerPtr& c, const char* name) -> Scene {
        return [c, name] { return sceneValues(c, name); };
    };
    const Scene choiceText = text(switchCore, "choice");
    const Scene shadowText = [light] { return Values{static_cast<float>(light->getShadowMode())}; };
    zeAnimationField* choice = manager->getField(switchNode, "choice");
    zeAnimationField* on = manager->getField(pointLight, "on");
    zeAnimationField* shadow = manager->getField(pointLight, "shadowMode");
    row("integer", choice, -1.0f, 2.5f, true, choiceText, {3.0f}, 3.0f);
    row("negative integer", choice, 3.0f, -1.5f, true, choiceText, {-2.0f}, -2.0f);
    row("large integer", choice, -2.0f, 1.0e9f, true, choiceText, {1.0e9f}, 1.0e9f);
    row("integer of NaN", choice, 1.0e9f, nan, false, choiceText, {1.0e9f}, 1.0e9f);
    row("integer of infinity", choice, 1.0e9f, std::numeric_limits<float>::infinity(), false, choiceText,
        {1.0e9f}, 1.0e9f);
    row("second value of a scalar", looseField(idOf(switchCore), idOf(switchNode), "choice", "choice", 1),
        0.0f, 1.0f, false, choiceText, {1.0e9f}, 0.0f);
    row("boolean", on, 1.0f, 0.0f, true, text(light, "on"), {0.0f}, 0.0f);
    row("boolean from one half", on, 0.0f, 0.7f, true, text(light, "on"), {1.0f}, 1.0f);
    row("unsigned wraps", shadow, 0.0f, -3.0f, true, shadowText, {4294967293.0f}, 4294967293.0f);
    row("unsigned", shadow, 4294967293.0f, 3.0f, true, shadowText, {3.0f}, 3.0f);
    row("beyond an unsigned range", shadow, 3.0f, 5.0e9f, false, shadowText, {3.0f}, 3.0f);
    row("below an unsigned range", shadow, 3.0f, -5.0e9f, false, shadowText, {3.0f}, 3.0f);

    // Neither read nor written: no container, and a multi-valued field, which holds no single value
    // (nor is grown).
    row("no container", looseField(987654321u, idOf(group), "translation", "translationX"), 0.0f, 1.0f, false,
        nothing, {}, 0.0f);
    material->getSlots().push_back(7);
    row(
        "multi-valued field", looseField(idOf(material), idOf(materialGroup), "slots", "slots"), 0.0f, 3.0f,
        false,
        [this] {
            osg::MFInt32& held = material->getSlots();
            return held.size() == 1 ? Values{static_cast<float>(held[0])} : Values();
        },
        {7.0f}, 0.0f);
    EXPECT_EQ(zeAnimationUtils::getOSGFieldValue(nullptr), 0.0f);
    EXPECT_FALSE(zeAnimationUtils::setOSGFieldValue(nullptr));
    EXPECT_TRUE(zeAnimationUtils::floatToBool(0.5f));
    EXPECT_FALSE(zeAnimationUtils::floatToBool(0.49f));
    EXPECT_EQ(zeAnimationUtils::floatToInt(-1.5f), static_cast<osg::UInt32>(-2));
    EXPECT_EQ(zeAnimationUtils::floatToInt(2.5f), 3u);
}

// A write records an edit of the field's own mask only; NaN never equals itself, so it is always
// written.
TEST_F(SceneBindingTest, AWriteRecordsTheFieldsOwnMaskAndNaNAlwaysWrites)
{
    zeAnimationField* diffuseG = manager->getField(materialGroup, "diffuseG");
    EXPECT_TRUE(write(diffuseG, 0.5f));
    EXPECT_EQ(osg::ChangeRecord::count(idOf(material), osg::SimpleMaterial::DiffuseFieldMask), 1u);
    EXPECT_EQ(osg::ChangeRecord::count(idOf(material)), 1u);
    EXPECT_TRUE(write(diffuseG, std::numeric_limits<float>::quiet_NaN()));
    EXPECT_TRUE(write(diffuseG, std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(osg::ChangeRecord::count(idOf(material)), 3u);
}

// ---- Field container resolution -----------------------------------------------------------------

TEST_F(SceneBindingTest, CoreTypeIdResolvesTheContainerThatHoldsTheValue)
{
    const osg::UInt64 untouched = 4242;
    auto resolve = [&](const NodePtr& node, const std::string& attribute) {
        zeAnimationField* field =
            looseField(untouched, node != NullFC ? idOf(node) : 0, attribute, attribute);
        zeAnimationUtils::computeCoreTypeID(field);
        return field->fcID;
    };
    EXPECT_EQ(resolve(transform3D, "visible"), idOf(transform3D));
    EXPECT_EQ(resolve(transform3D, "rotationY"), idOf(transform3D));
    EXPECT_EQ(resolve(transform3D, "translationX"), idOf(transform3D->getCore()));
    EXPECT_EQ(resolve(transform, "anything"), idOf(transform->getCore()));
    EXPECT_EQ(resolve(materialGroup, "diffuseR"), idOf(material));
    EXPECT_EQ(resolve(bareMaterialGroup, "diffuseR"), 0u);
    for (const NodePtr& node : {spotLight, pointLight, directionalLight, camera, switchNode})
        EXPECT_EQ(resolve(node, "x"), idOf(node->getCore())) << node->getCore()->getType().getCName();
    // Group membership decides first: a transform of another group is not resolved, and a core
    // of the Transform group that is no transform resolves to nothing.
    EXPECT_EQ(resolve(componentTransform, "translationX"), untouched);
    EXPECT_EQ(resolve(impostor, "rotateAngle"), 0u);
    EXPECT_EQ(resolve(group, "x"), untouched);

    zeAnimationField* notNode = looseField(untouched, idOf(material), "visible", "visible");
    zeAnimationUtils::computeCoreTypeID(notNode);
    EXPECT_EQ(notNode->fcID, untouched);
    NodePtr coreless = osg::Node::create();
    root->addChild(coreless);
    EXPECT_EQ(resolve(coreless, "visible"), untouched);
    EXPECT_EQ(resolve(NodePtr(), "visible"), untouched);
    zeAnimationUtils::computeCoreTypeID(nullptr);
}

// ---- Animation attachments ----------------------------------------------------------------------

TEST_F(SceneBindingTest, AttachmentsAreFoundByGroupCreatedAndRemovedAndGeometryUsesItsTransform)
{
    EXPECT_EQ(zeAnimationUtils::getAnimationAttachment(group), NullFC);
    EXPECT_EQ(zeAnimationUtils::createAnimationAttachment(NodePtr(), true), NullFC);
    osg::AnimAttachmentPtr attachment = zeAnimationUtils::createAnimationAttachment(group, true);
    ASSERT_NE(attachment, NullFC);
    EXPECT_EQ(group->findAttachment(osg::AnimAttachment::getClassType().getGroupId()), attachment);
    EXPECT_EQ(zeAnimationUtils::createAnimationAttachment(group, true), attachment);

    osg::AnimationAttachmentPtr old = osg::AnimationAttachment::create();
    group->addAttachment(old);
    EXPECT_EQ(zeAnimationUtils::getOldAnimationAttachment(group), old);
    EXPECT_EQ(zeAnimationUtils::getAnimationAttachment(group), attachment);
    EXPECT_EQ(zeAnimationUtils::getOldAnimationAttachment(transform), NullFC);

    EXPECT_TRUE(zeAnimationUtils::removeAnimationAttachment(group));
    EXPECT_EQ(group->findAttachment(osg::AnimAttachment::getClassType().getGroupId()), NullFC);
    EXPECT_EQ(zeAnimationUtils::getOldAnimationAttachment(group), old);
    EXPECT_FALSE(zeAnimationUtils::removeAnimationAttachment(group));
    EXPECT_FALSE(zeAnimationUtils::removeAnimationAttachment(NodePtr()));

    // A geometry is animated through the transform above it.
    EXPECT_EQ(zeAnimationUtils::getAnimationNode(geometryInTransform), transform);
    EXPECT_EQ(zeAnimationUtils::getAnimationNode(geometryInGroup), geometryInGroup);
    EXPECT_EQ(zeAnimationUtils::getAnimationNode(NodePtr()), NullFC);
    NodePtr orphan = add(osg::Geometry::create(), NullFC);
    osg::addRefCP(orphan);
    EXPECT_EQ(zeAnimationUtils::getAnimationNode(orphan), orphan);
    osg::subRefCP(orphan);
}

TEST_F(SceneBindingTest, ObjectsAreListedOnceAndABlockReplacesItsCurves)
{
    zeAnimationCurve2D* x = manager->createCurve2D(transform3D, "translationX");
    zeAnimationCurve2D* y = manager->createCurve2D(transform3D, "translationY");
    zeAnimationCurve2D* loose = manager->createCurve2D(transform3D, "scaleZ");
    EXPECT_TRUE(zeAnimationUtils::addAnimationObject(transform3D, x));
    EXPECT_TRUE(zeAnimationUtils::addAnimationObject(transform3D, y));
    EXPECT_TRUE(zeAnimationUtils::addAnimationObject(transform3D, x));
    EXPECT_EQ(objectIds(transform3D), (std::vector<osg::UInt64>{x->getId(), y->getId()}));

    zeAnimationUnit* block = manager->createUnit({x, y}, "block", 0, false);
    EXPECT_TRUE(zeAnimationUtils::addAnimationObject(transform3D, block));
    EXPECT_EQ(objectIds(transform3D), std::vector<osg::UInt64>{block->getId()});

    EXPECT_FALSE(zeAnimationUtils::subAnimationObject(transform3D, loose));
    EXPECT_FALSE(zeAnimationUtils::subAnimationObject(group, block)); // no attachment
    EXPECT_FALSE(zeAnimationUtils::addAnimationObject(NodePtr(), block));
    EXPECT_FALSE(zeAnimationUtils::addAnimationObject(transform3D, nullptr));

    // Listed identifiers that no longer resolve are skipped.
    osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(transform3D);
    attachment->getObjectIds().push_back(123456789u);
    EXPECT_TRUE(zeAnimationUtils::addAnimationObject(transform3D, loose));
    EXPECT_EQ(zeAnimationUtils::getAnimationObjects(transform3D),
              (std::vector<zeAnimationObject*>{block, loose}));
    attachment->getFieldIds().push_back(123456789u);
    EXPECT_EQ(zeAnimationUtils::getAnimationFields(transform3D).size(), fieldIds(transform3D).size() - 1);

    EXPECT_TRUE(zeAnimationUtils::subAnimationObject(transform3D, block));
    EXPECT_EQ(zeAnimationUtils::getAnimationObjects(transform3D), std::vector<zeAnimationObject*>{loose});
    EXPECT_TRUE(zeAnimationUtils::getAnimationObjects(group).empty());
    EXPECT_TRUE(zeAnimationUtils::getAnimationFields(NodePtr()).empty());
}

TEST_F(SceneBindingTest, PasteIsCheckedAgainstTheAnimatedContainersAndRebindsTheCurves)
{
    zeAnimationCurve2D* translation = manager->createCurve2D(transform3D, "translationX");
    zeAnimationCurve2D* rotation = manager->createCurve2D(transform3D, "rotationY");
    zeAnimationUnit* block = manager->createUnit({translation, rotation}, "block", 0, false);
    EXPECT_TRUE(zeAnimationUtils::checkPasteTo(transform3DB, block));
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(componentTransform, block));
    // A node's own properties can be pasted onto any node.
    EXPECT_TRUE(zeAnimationUtils::checkPasteTo(group, rotation));
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(group, translation));

    EXPECT_TRUE(zeAnimationUtils::checkPasteTo(group, std::vector<zeAnimationObject*>()));
    EXPECT_TRUE(
        zeAnimationUtils::checkPasteTo(transform3DB, std::vector<zeAnimationObject*>{rotation, block}));
    EXPECT_FALSE(
        zeAnimationUtils::checkPasteTo(group, std::vector<zeAnimationObject*>{rotation, translation}));

    EXPECT_TRUE(zeAnimationUtils::checkPasteTo(group, manager->createUnit("empty", 0)));
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(NodePtr(), block));
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(group, nullptr));
    NodePtr coreless = osg::Node::create();
    root->addChild(coreless);
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(coreless, rotation));
    zeAnimationCurve2D* unbound = manager->createCurve2D(0);
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(transform3DB, unbound));
    zeAnimationField* gone = looseField(987654321u, idOf(transform3D), "translation", "translationX");
    unbound->setAnimationField(gone);
    EXPECT_FALSE(zeAnimationUtils::checkPasteTo(transform3DB, unbound));

    // Pasting rebinds the curves to the target's fields.
    zeAnimationCurve2D* translationY = manager->createCurve2D(transform3D, "translationY");
    zeAnimationCurve2D* rotationZ = manager->createCurve2D(transform3D, "rotationZ");
    zeAnimationUnit* pasted = manager->createUnit({translationY, rotationZ}, "block", 0, false);
    manager->createAnimationFields(transform3DB);
    // A later field of the same attribute and component wins; its name is not compared.
    zeAnimationField* twin =
        looseField(idOf(transform3DB->getCore()), idOf(transform3DB), "somethingElse", "translationY", 1);
    osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(transform3DB);
    attachment->getFieldIds().push_back(twin->getId());
    translationY->setColor(0.0f, 0.0f, 1.0f);

    EXPECT_TRUE(zeAnimationUtils::changeObjectReferenceFields(pasted, transform3DB));
    EXPECT_EQ(translationY->getAnimationField(), twin);
    EXPECT_EQ(translationY->getColor(), zeAnimationUtils::getDefaultCurveColor(twin));
    EXPECT_EQ(rotationZ->getAnimationField(), manager->getField(transform3DB, "rotationZ"));
    EXPECT_EQ(pasted->getParentOSGNode(), transform3DB);

    EXPECT_FALSE(zeAnimationUtils::changeObjectReferenceFields(nullptr, transform3DB));
    EXPECT_FALSE(zeAnimationUtils::changeObjectReferenceFields(pasted, NodePtr()));
    // A node without a matching field leaves the curves bound as they were.
    EXPECT_TRUE(zeAnimationUtils::changeObjectReferenceFields(rotationZ, materialGroup));
    EXPECT_EQ(rotationZ->getAnimationField(), manager->getField(transform3DB, "rotationZ"));
}

TEST_F(SceneBindingTest, ObjectsSortByBeginAndByEnd)
{
    zeAnimationSequence* a = sequence(5.0f, 6.0f);
    zeAnimationSequence* b = sequence(1.0f, 30.0f);
    zeAnimationSequence* c = sequence(3.0f, 4.0f);
    std::vector<zeAnimationObject*> objects{a, b, c};
    std::sort(objects.begin(), objects.end(), zeAnimationUtils::sortBeginBased);
    EXPECT_EQ(objects, (std::vector<zeAnimationObject*>{b, c, a}));
    std::sort(objects.begin(), objects.end(), zeAnimationUtils::sortEndBased);
    EXPECT_EQ(objects, (std::vector<zeAnimationObject*>{c, a, b}));
    EXPECT_FALSE(zeAnimationUtils::sortBeginBased(a, a));
}

// ---- The manager's scene pieces -----------------------------------------------------------------

TEST_F(SceneBindingTest, AttachFormsListAndDestroyingDetaches)
{
    zeAnimationCurve2D* x =
        manager->createCurve2D(manager->getField(transform3D, "translationX"), "x", 0, true);
    zeAnimationCurve2D* y =
        manager->createCurve2D(manager->getField(transform3D, "translationY"), "y", 0, true);
    EXPECT_EQ(objectIds(transform3D), (std::vector<osg::UInt64>{x->getId(), y->getId()}));
    zeAnimationUnit* block = manager->createUnit({x, y}, "block", 0, true);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(objectIds(transform3D), std::vector<osg::UInt64>{block->getId()});
    zeAnimationUnit* copy = manager->duplicateUnit(block, true);
    zeAnimationUnit* unlisted = manager->duplicateUnit(block, false);
    EXPECT_EQ(objectIds(transform3D), (std::vector<osg::UInt64>{block->getId(), copy->getId()}));

    manager->destroyUnit(copy);
    EXPECT_EQ(objectIds(transform3D), std::vector<osg::UInt64>{block->getId()});
    manager->destroyObject(unlisted);
    manager->destroyObject(block);
    EXPECT_TRUE(objectIds(transform3D).empty());

    zeAnimationCurve2D* z =
        manager->createCurve2D(manager->getField(transform3D, "translationZ"), "z", 0, true);
    zeAnimationCurve2D* w = manager->createCurve2D(manager->getField(transform3D, "scaleX"), "w", 0, true);
    manager->destroyCurve2D(z);
    EXPECT_EQ(objectIds(transform3D), std::vector<osg::UInt64>{w->getId()});
    manager->destroyObject(w);
    EXPECT_TRUE(objectIds(transform3D).empty());

    // A field whose node word names no node: the curve is made but listed nowhere.
    zeAnimationField* stray = looseField(idOf(material), idOf(material), "diffuse", "diffuseR");
    EXPECT_NE(manager->createCurve2D(stray, "stray", 0, true), nullptr);
    EXPECT_EQ(manager->createCurve2D(nullptr, "none", 0, true)->getAnimationField(), nullptr);
}

TEST_F(SceneBindingTest, SetIdCollisionRenumbersAndRewritesSceneAttachments)
{
    zeAnimationUnit* listed = manager->createUnit("listed", 0);
    zeAnimationUnit* loaded = manager->createUnit("loaded", 0);
    zeAnimationUtils::addAnimationObject(group, listed);
    zeAnimationUtils::addAnimationObject(transform, listed);
    const osg::UInt64 taken = listed->getId();

    manager->setID(taken, loaded);
    const osg::UInt64 fresh = loaded->getId();
    EXPECT_EQ(manager->getObject(fresh), loaded);
    EXPECT_EQ(manager->getObject(taken), listed);
    EXPECT_EQ(objectIds(group), std::vector<osg::UInt64>{fresh});
    EXPECT_EQ(objectIds(transform), std::vector<osg::UInt64>{fresh});

    // A free identifier touches no attachment.
    manager->setID(777u, loaded);
    EXPECT_EQ(objectIds(group), std::vector<osg::UInt64>{fresh});

    const std::vector<zeAnimationField*> fields = manager->createAnimationFields(group);
    zeAnimationField* other = manager->createField(0);
    const osg::UInt64 fieldId = fields.front()->getId();
    manager->setID(fieldId, other);
    EXPECT_EQ(manager->getField(other->getId()), other);
    EXPECT_EQ(fieldIds(group), std::vector<osg::UInt64>{other->getId()});

    // Without a scene root the scene is left alone.
    zeAnimationManager::setSceneRootNode(NullFC);
    zeAnimationUnit* third = manager->createUnit("third", 0);
    manager->setID(fresh, third);
    EXPECT_EQ(objectIds(group), std::vector<osg::UInt64>{fresh});
}

TEST_F(SceneBindingTest, UnreferencedObjectsAndFieldsAreDestroyed)
{
    manager->createAnimationFields(transform3D);
    const std::vector<osg::UInt64> nodeFields = fieldIds(transform3D);
    zeAnimationCurve2D* curve = manager->createCurve2D(transform3D, "translationX");
    zeAnimationUnit* listed = manager->createUnit({curve}, "listed", 0, true);
    zeAnimationUnit* free = manager->createUnit("free", 0);
    zeAnimationUnit* hidden = manager->createUnit("hidden", 0);
    hidden->setHidden(true);
    zeAnimationStrip* clip = manager->createStrip("clip", 0);
    const osg::UInt64 freeId = free->getId();
    const osg::UInt64 listedId = listed->getId();
    const osg::UInt64 curveId = curve->getId();
    const osg::UInt64 freeField = manager->createField(0)->getId();

    manager->destroyUnreferencedObjectsAndFields();
    EXPECT_EQ(manager->getObject(listed->getId()), listed);
    EXPECT_EQ(manager->getObject(curve->getId()), curve); // kept with its parent
    EXPECT_EQ(manager->getObject(clip->getId()), clip);
    EXPECT_EQ(manager->getObject(freeId), nullptr);
    EXPECT_EQ(manager->getField(freeField), nullptr);
    for (osg::UInt64 id : nodeFields)
        EXPECT_NE(manager->getField(id), nullptr);

    // Field identifiers seen by an earlier walk keep counting; object identifiers do not.
    zeAnimationUtils::removeAnimationAttachment(transform3D);
    manager->destroyUnreferencedObjectsAndFields();
    for (osg::UInt64 id : nodeFields)
        EXPECT_NE(manager->getField(id), nullptr);
    EXPECT_EQ(manager->getObject(listedId), nullptr);
    EXPECT_EQ(manager->getObject(curveId), nullptr);
}

TEST_F(SceneBindingTest, FieldsAreTakenOverFromAnOlderCurve)
{
    EXPECT_EQ(manager->createField(osg::AnimationCurvePtr(), 0), nullptr);
    osg::AnimationCurvePtr old = osg::AnimationCurve::create();
    osg::addRefCP(old);
    old->setAFAppNode(transform3D);
    old->setAFFieldName("rotationY");
    old->setAFGlobalFieldName("rotY");
    old->setAFValue(3.5f);
    old->setAFValuePosition(1);
    old->setAFDirty(true);
    zeAnimationField* field = manager->createField(old, 0);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->nodeID, idOf(transform3D));
    EXPECT_EQ(field->attribute, "rotationY");
    EXPECT_EQ(field->name, "rotY");
    EXPECT_FLOAT_EQ(field->value, 3.5f);
    EXPECT_EQ(field->valuePos, 1u);
    EXPECT_TRUE(field->dirty);
    EXPECT_EQ(field->fcID, idOf(transform3D));

    old->setAFAppNode(materialGroup);
    old->setAFFieldName("diffuseG");
    EXPECT_EQ(manager->createField(old, 0)->fcID, idOf(material));
    old->setAFAppNode(NodePtr());
    zeAnimationField* nodeless = manager->createField(old, 0);
    EXPECT_EQ(nodeless->nodeID, 0u);
    EXPECT_EQ(nodeless->fcID, 0u);
    osg::subRefCP(old);
}

TEST_F(SceneBindingTest, DestroyingANodesObjectsClearsItAndOptionallyItsChildren)
{
    zeAnimationUnit* parentBlock =
        manager->createUnit({manager->createCurve2D(transform, "visible")}, "parent", 0, true);
    zeAnimationCurve2D* childCurve =
        manager->createCurve2D(manager->getField(geometryInTransform, "visible"), "child", 0, true);
    zeAnimationUnit* elsewhere =
        manager->createUnit({manager->createCurve2D(transform3D, "scaleX")}, "elsewhere", 0, true);
    const osg::UInt64 parentId = parentBlock->getId();
    const osg::UInt64 elsewhereId = elsewhere->getId();
    const osg::UInt64 childId = childCurve->getId();
    const std::vector<osg::UInt64> parentFields = fieldIds(transform);

    manager->destroyNodeObjects(transform, false);
    EXPECT_EQ(manager->getObject(parentId), nullptr);
    for (osg::UInt64 id : parentFields)
        EXPECT_EQ(manager->getField(id), nullptr);
    EXPECT_EQ(zeAnimationUtils::getAnimationAttachment(transform), NullFC);
    EXPECT_EQ(manager->getObject(childId), childCurve);

    manager->destroyNodeObjects(root, true);
    EXPECT_EQ(manager->getObject(childId), nullptr);
    EXPECT_EQ(manager->getObject(elsewhereId), nullptr);
    for (const NodePtr& node : allNodes)
        EXPECT_EQ(zeAnimationUtils::getAnimationAttachment(node), NullFC);
    EXPECT_EQ(manager->getFieldCount(), 0u);
    manager->destroyNodeObjects(NodePtr(), true);
}

} // namespace
