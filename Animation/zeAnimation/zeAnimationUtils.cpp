#include <zeAnimation/zeAnimationUtils.h>

#include "zeAnimationHelpers.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>
#include <OpenSG/OSGSpotLight.h>
#include <OpenSG/OSGSwitch.h>
#include <OpenSG/OSGTransform.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGExt/OSGTransformAttachment.h>
#include <zeOpenSGUtils/zeNodeUtils.h>
#include <zeUtils/zeString.h>

#include "zeSceneAccess.h"

#include <algorithm>

#include <cmath>
#include <cstdio>
#include <limits>
#include <unordered_map>

namespace {

// The whole number nearest to a value, halves away from zero, in double precision. Beyond 2^52
// every double is whole already and is kept as it is (NaN stays NaN); a value that rounds to zero
// gives +0, never -0.
double wholeNumber(double value)
{
    if (!(std::fabs(value) < 4503599627370496.0))
        return value;
    return roundHalfAway(value) + 0.0;
}

// Rounds half away from zero in single precision into a 32-bit integer; values beyond the integer
// range saturate and NaN gives 0 instead of an undefined conversion.
osg::Int32 roundToInt32(float value)
{
    if (std::isnan(value))
        return 0;
    const float whole = roundHalfAway(value);
    if (whole >= 2147483648.0f)
        return std::numeric_limits<osg::Int32>::max();
    if (whole <= -2147483648.0f)
        return std::numeric_limits<osg::Int32>::min();
    return static_cast<osg::Int32>(whole);
}

} // namespace

float zeAnimationUtils::snap(float value)
{
    return static_cast<float>(wholeNumber(value));
}

osg::Pnt2f zeAnimationUtils::snap(const osg::Pnt2f& point, bool snapX, bool snapY)
{
    return osg::Pnt2f(snapX ? snap(point[0]) : point[0], snapY ? snap(point[1]) : point[1]);
}

zeControlPoint2D::TangentMode zeAnimationUtils::convertTangentType(unsigned int legacyType)
{
    switch (legacyType) {
    case 1:
        return zeControlPoint2D::TangentNone;
    case 2:
        return zeControlPoint2D::TangentLinear;
    case 3:
        return zeControlPoint2D::TangentSmooth;
    case 4:
        return zeControlPoint2D::TangentFlat;
    case 5:
        return zeControlPoint2D::TangentForward;
    case 6:
        return zeControlPoint2D::TangentFree;
    default:
        return zeControlPoint2D::TangentFlat;
    }
}

osg::Color3f zeAnimationUtils::getDefaultCurveColor(const zeAnimationField* field)
{
    if (!field || field->attribute.empty())
        return osg::Color3f(0.0f, 0.0f, 0.0f);
    switch (field->attribute.back()) {
    case 'X':
    case 'R':
        return osg::Color3f(0.898f, 0.298f, 0.298f);
    case 'Y':
    case 'G':
        return osg::Color3f(0.298f, 0.898f, 0.298f);
    case 'Z':
    case 'B':
        return osg::Color3f(0.4f, 0.624f, 0.816f);
    case 'W':
    case 'A':
    case 'I':
        return osg::Color3f(0.898f, 0.827f, 0.298f);
    default:
        return osg::Color3f(0.953f, 0.557f, 0.271f);
    }
}

osg::UInt32 zeAnimationUtils::floatToInt(float value)
{
    return static_cast<osg::UInt32>(roundToInt32(value));
}

bool zeAnimationUtils::floatToBool(float value)
{
    return roundToInt32(value) > 0;
}

// ---- Field value access -----------------------------------------------------------------------

namespace {

enum ContentKind
{
    KindOther,
    KindColor4f,
    KindColor3f,
    KindVec4f,
    KindVec3f,
    KindVec2f,
    KindPnt4f,
    KindPnt3f,
    KindPnt2f,
    KindReal64,
    KindReal32
};

// The content type ids of the ten directly handled field types, looked up once.
struct ContentTypeIds
{
    osg::UInt32 ids[11];
    ContentTypeIds()
    {
        ids[KindOther] = 0;
        ids[KindColor4f] = osg::SFColor4f::getClassType().getContentType().getId();
        ids[KindColor3f] = osg::SFColor3f::getClassType().getContentType().getId();
        ids[KindVec4f] = osg::SFVec4f::getClassType().getContentType().getId();
        ids[KindVec3f] = osg::SFVec3f::getClassType().getContentType().getId();
        ids[KindVec2f] = osg::SFVec2f::getClassType().getContentType().getId();
        ids[KindPnt4f] = osg::SFPnt4f::getClassType().getContentType().getId();
        ids[KindPnt3f] = osg::SFPnt3f::getClassType().getContentType().getId();
        ids[KindPnt2f] = osg::SFPnt2f::getClassType().getContentType().getId();
        ids[KindReal64] = osg::SFReal64::getClassType().getContentType().getId();
        ids[KindReal32] = osg::SFReal32::getClassType().getContentType().getId();
    }
};

ContentKind contentKind(const osg::Field* field)
{
    static const ContentTypeIds table;
    const osg::UInt32 id = field->getContentType().getId();
    for (int kind = KindColor4f; kind <= KindReal32; ++kind) {
        if (table.ids[kind] == id)
            return static_cast<ContentKind>(kind);
    }
    return KindOther;
}

osg::UInt32 componentCount(ContentKind kind)
{
    switch (kind) {
    case KindColor4f:
    case KindVec4f:
    case KindPnt4f:
        return 4;
    case KindColor3f:
    case KindVec3f:
    case KindPnt3f:
        return 3;
    case KindVec2f:
    case KindPnt2f:
        return 2;
    default:
        return 1;
    }
}

// The component a valuePos selects. A scalar has only one, whatever the field asks for, so a
// valuePos left over from another binding still reaches it (as for doubles).
osg::UInt32 componentIndex(ContentKind kind, osg::UInt32 valuePos)
{
    return kind == KindReal32 ? 0 : valuePos;
}

// A pointer to the float component of a directly handled field, or null.
float* floatComponent(osg::Field* field, ContentKind kind, osg::UInt32 index)
{
    switch (kind) {
    case KindColor4f:
        return &static_cast<osg::SFColor4f*>(field)->getValue()[index];
    case KindColor3f:
        return &static_cast<osg::SFColor3f*>(field)->getValue()[index];
    case KindVec4f:
        return &static_cast<osg::SFVec4f*>(field)->getValue()[index];
    case KindVec3f:
        return &static_cast<osg::SFVec3f*>(field)->getValue()[index];
    case KindVec2f:
        return &static_cast<osg::SFVec2f*>(field)->getValue()[index];
    case KindPnt4f:
        return &static_cast<osg::SFPnt4f*>(field)->getValue()[index];
    case KindPnt3f:
        return &static_cast<osg::SFPnt3f*>(field)->getValue()[index];
    case KindPnt2f:
        return &static_cast<osg::SFPnt2f*>(field)->getValue()[index];
    case KindReal32:
        return &static_cast<osg::SFReal32*>(field)->getValue();
    default:
        return nullptr;
    }
}

// Integer fields are animated through their text form, written as a whole decimal number. True
// for an integer field, with the range of values it can hold.
bool integralRange(const osg::Field* field, double& lowest, double& highest)
{
    struct Range
    {
        osg::UInt32 id;
        double lowest;
        double highest;
    };
    static const Range ranges[] = {
        {osg::SFInt8::getClassType().getContentType().getId(), -128.0, 127.0},
        {osg::SFUInt8::getClassType().getContentType().getId(), 0.0, 255.0},
        {osg::SFInt16::getClassType().getContentType().getId(), -32768.0, 32767.0},
        {osg::SFUInt16::getClassType().getContentType().getId(), 0.0, 65535.0},
        {osg::SFInt32::getClassType().getContentType().getId(), -2147483648.0, 2147483647.0},
        {osg::SFUInt32::getClassType().getContentType().getId(), 0.0, 4294967295.0},
        {osg::SFInt64::getClassType().getContentType().getId(), -9223372036854775808.0,
         9223372036854774784.0},
        {osg::SFUInt64::getClassType().getContentType().getId(), 0.0, 18446744073709549568.0}};
    const osg::UInt32 id = field->getContentType().getId();
    for (const Range& range : ranges) {
        if (range.id == id) {
            lowest = range.lowest;
            highest = range.highest;
            return true;
        }
    }
    return false;
}

// Angles are stored in radians and animated in degrees for these fields.
bool isAngleField(const std::string& name)
{
    return name == "fieldOfView" || name.find("rotate") != std::string::npos;
}

float toAnimation(const std::string& name, double stored)
{
    return isAngleField(name) ? static_cast<float>(stored / 6.283185307179586 * 360.0)
                              : static_cast<float>(stored);
}

float angleToScene(float degrees)
{
    return degrees * 2.0f * 3.1415927f / 360.0f;
}

float toScene(const std::string& name, float value)
{
    return isAngleField(name) ? angleToScene(value) : value;
}

bool sameValue(float a, float b)
{
    // NaN on either side counts as different, so a NaN is always written through.
    return a == b;
}

osg::BitVector fieldMask(const osg::FieldContainerPtr& container, const std::string& name)
{
    const osg::FieldDescription* description = container->getType().findFieldDescription(name.c_str());
    return description ? description->getFieldMask() : osg::FieldBits::AllFields;
}

osg::NodePtr nodeOf(osg::UInt64 containerWord)
{
    return osg::NodePtr::dcast(
        osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(containerWord)));
}

// The parts of a camera's view that the host applies as a whole when the camera is its viewpoint.
bool isViewAttribute(const std::string& attribute)
{
    return attribute == "from" || attribute == "at" || attribute == "up" || attribute == "roll";
}

// One component of the host's current view. Taken by value: the host's camera callback may
// destroy the field they come from.
float hostViewComponent(const std::string attribute, osg::UInt32 valuePos)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    if (attribute == "roll") {
        float roll = 0.0f;
        manager->getRoll(roll);
        return roll;
    }
    if (valuePos > 2)
        return 0.0f;
    osg::Pnt3f from;
    osg::Pnt3f at;
    osg::Vec3f up;
    manager->getFromAtUp(from, at, up);
    return attribute == "at" ? at[valuePos] : attribute == "up" ? up[valuePos] : from[valuePos];
}

bool rotationIndex(const std::string& attribute, osg::UInt32& index)
{
    if (attribute == "rotationX")
        index = 0;
    else if (attribute == "rotationY")
        index = 1;
    else if (attribute == "rotationZ")
        index = 2;
    else
        return false;
    return true;
}

// The float (or the double) of a directly handled scene field that a component selects; null
// when the field has no such component.
void* componentAddress(osg::Field* sceneField, ContentKind kind, osg::UInt32 valuePos)
{
    if (kind == KindReal64)
        return &static_cast<osg::SFReal64*>(sceneField)->getValue();
    const osg::UInt32 index = componentIndex(kind, valuePos);
    return index < componentCount(kind) ? floatComponent(sceneField, kind, index) : nullptr;
}

// Writes a value into one float (or the double) of a directly handled scene field; a value
// already there is not written, so it causes no change notification.
bool writeComponent(const osg::FieldContainerPtr& container, void* component, ContentKind kind,
                    osg::BitVector mask, bool angle, float value)
{
    const float sceneValue = angle ? angleToScene(value) : value;
    if (kind == KindReal64) {
        double* real = static_cast<double*>(component);
        const double wanted = static_cast<double>(sceneValue);
        if (*real == wanted)
            return true;
        osg::beginEditCP(container, mask, 1);
        *real = wanted;
        osg::endEditCP(container, mask, 1);
        return true;
    }
    float* real = static_cast<float*>(component);
    if (sameValue(*real, sceneValue))
        return true;
    osg::beginEditCP(container, mask, 1);
    *real = sceneValue;
    osg::endEditCP(container, mask, 1);
    return true;
}

} // namespace

namespace {

std::vector<float> textValues(const std::string& text)
{
    // Booleans print as TRUE/FALSE; everything else as numbers.
    if (text == "TRUE")
        return std::vector<float>(1, 1.0f);
    if (text == "FALSE")
        return std::vector<float>(1, 0.0f);
    return zeString::getValuesFromString(text);
}

// The container's single-valued field of that name. A multi-valued field holds no one value to
// animate (and its text form appends rather than replaces), so it counts as absent.
osg::Field* singleField(const osg::FieldContainerPtr& container, const std::string& name)
{
    osg::Field* field = container->getField(name.c_str());
    return field && field->getCardinality() == osg::FieldType::SINGLE_FIELD ? field : nullptr;
}

} // namespace

namespace {

// Where one read or write of a field goes in the scene. The way is worked out afresh for every
// access (a camera's viewpoint flag, the node's transform and the container itself may change at
// any time); only a component written straight into the field's own scene field is remembered,
// in a zeSceneTarget.
struct SceneRoute
{
    enum Way
    {
        Nowhere,       // nothing to read or write: reads give 0, writes fail
        HostView,      // the viewpoint's view, which the host applies as a whole
        CameraSetting, // one of a camera's settings, through its accessors
        NodeRotation,  // one angle of the node's transform attachment
        NodeVisible,   // whether the node is shown
        Component,     // one float (or the double) of a directly handled scene field
        Text           // one value of a scene field's text form
    };
    Way way = Nowhere;
    osg::FieldContainerPtr container;
    osg::CameraSettingPtr camera;
    osg::NodePtr node;
    osg::Field* sceneField = nullptr;
    // The scene field's name: the field's own, or for a camera that is not the viewpoint the
    // attribute naming its view field.
    const std::string* name = nullptr;
    ContentKind kind = KindOther;
    osg::UInt32 index = 0; // the rotation axis, or the camera setting
};

// A camera's settings reached through its accessors, by attribute.
const char* const kCameraSettings[] = {"fStop", "height", "distance", "focalLength", "turnTableAngle"};

bool cameraSetting(const std::string& attribute, osg::UInt32& index)
{
    for (osg::UInt32 i = 0; i < sizeof(kCameraSettings) / sizeof(kCameraSettings[0]); ++i) {
        if (attribute == kCameraSettings[i]) {
            index = i;
            return true;
        }
    }
    return false;
}

// The one resolution of a field (its container, name and component) to the way it reaches the
// scene, shared by reading and writing.
SceneRoute resolveRoute(const zeAnimationField& field)
{
    SceneRoute route;
    route.container = osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(field.fcID));
    if (route.container == osg::NullFC)
        return route;
    const std::string& attribute = field.attribute;
    route.name = &field.name;
    route.sceneField = singleField(route.container, field.name);
    route.camera = osg::CameraSettingPtr::dcast(route.container);
    if (!route.sceneField && route.camera != osg::NullFC && isViewAttribute(attribute)) {
        // The viewpoint's view is the host's; any other camera keeps its view in its own fields.
        if (route.camera->getIsViewpoint()) {
            route.way = SceneRoute::HostView;
            return route;
        }
        route.name = &attribute;
        route.sceneField = singleField(route.container, attribute);
    }
    if (route.sceneField) {
        route.kind = contentKind(route.sceneField);
        route.way = route.kind != KindOther ? SceneRoute::Component : SceneRoute::Text;
        return route;
    }
    if (route.camera != osg::NullFC) {
        if (cameraSetting(attribute, route.index))
            route.way = SceneRoute::CameraSetting;
        return route;
    }
    route.node = nodeOf(field.nodeID);
    if (route.node == osg::NullFC)
        return route;
    if (rotationIndex(attribute, route.index))
        route.way = SceneRoute::NodeRotation;
    else if (attribute == "visible")
        route.way = SceneRoute::NodeVisible;
    return route;
}

float readCameraSetting(const osg::CameraSettingPtr& camera, osg::UInt32 index)
{
    switch (index) {
    case 0:
        return camera->getFStop();
    case 1:
        return camera->getHeight();
    case 2:
        return camera->getDistance();
    case 3:
        return camera->getFocalLength();
    default:
        return camera->getTurnTableAngle();
    }
}

void writeCameraSetting(const osg::CameraSettingPtr& camera, osg::UInt32 index, float value)
{
    osg::beginEditCP(camera, osg::FieldBits::AllFields, 1);
    switch (index) {
    case 0:
        camera->setFStop(value);
        break;
    case 1:
        camera->setHeight(value);
        break;
    case 2:
        camera->setDistance(value);
        break;
    case 3:
        camera->setFocalLength(value);
        break;
    default:
        camera->setTurnTableAngle(value);
        break;
    }
    osg::endEditCP(camera, osg::FieldBits::AllFields, 1);
}

// The viewpoint's view written through the host's camera, not field by field. The host may
// destroy the field inside its camera callbacks: what is needed of it is taken first.
bool writeHostView(const zeAnimationField& field)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    const std::string attribute = field.attribute;
    const float value = field.value;
    const osg::UInt32 component = field.valuePos;
    if (attribute == "roll") {
        float roll = 0.0f;
        manager->getRoll(roll);
        if (!sameValue(roll, value))
            manager->setRoll(value);
        return true;
    }
    if (component > 2)
        return false;
    const char part = attribute[0];
    osg::Pnt3f from;
    osg::Pnt3f at;
    osg::Vec3f up;
    manager->getFromAtUp(from, at, up);
    float* target = part == 'a' ? &at[component] : part == 'u' ? &up[component] : &from[component];
    if (sameValue(*target, value))
        return true;
    *target = value;
    manager->setFromAtUp(from, at, up);
    return true;
}

bool writeNodeRotation(const osg::NodePtr& node, osg::UInt32 index, float value)
{
    osg::Vec3f angles(0.0f, 0.0f, 0.0f);
    osg::TransformAttachmentPtr transform = zeNodeUtils::getTransformAttachment(node);
    if (transform != osg::NullFC)
        angles = transform->getRotationAngles();
    if (sameValue(angles[index], value))
        return true;
    angles[index] = value;
    zeNodeUtils::setTransformNodeRotation(node, angles[0], angles[1], angles[2], 0);
    return true;
}

bool writeNodeVisible(const osg::NodePtr& node, float value)
{
    if (std::isnan(value))
        return false; // NaN is neither shown nor hidden: the node stays as it is
    const bool visible = zeAnimationUtils::floatToBool(value);
    if (node->getActive() == visible)
        return true;
    osg::beginEditCP(node, osg::Node::TravMaskFieldMask, 1);
    node->setActive(visible);
    osg::endEditCP(node, osg::Node::TravMaskFieldMask, 1);
    return true;
}

// Writes one value of a scene field's text form (integer, boolean and any other field the
// library does not handle directly).
bool writeText(const SceneRoute& route, const zeAnimationField& field)
{
    osg::Field* sceneField = route.sceneField;
    const float sceneValue = toScene(field.name, field.value);
    std::string text;
    sceneField->getValueByStr(text);
    const bool isBool = text == "TRUE" || text == "FALSE";
    std::vector<float> values = textValues(text);
    if (field.valuePos >= values.size())
        return false;
    double lowest = 0.0;
    double highest = 0.0;
    const bool integral = integralRange(sceneField, lowest, highest);
    // An integer field takes a whole decimal number ("1000000000", never "1e+09", which the scene
    // graph would read as 1). A boolean or integer field has no value for NaN, and an integer
    // field none beyond its range: such a write is skipped and the scene keeps what it holds. A
    // negative number within the range's size is written to an unsigned field all the same, and
    // wraps there as the scene graph's strtoul reading of the text makes it (-3 in a UInt32 field
    // is 4294967293).
    const double whole = wholeNumber(sceneValue);
    if ((isBool || integral) && std::isnan(sceneValue))
        return false;
    const bool wraps = integral && lowest == 0.0 && whole < 0.0 && -highest <= whole;
    if (integral && !(lowest <= whole && whole <= highest) && !wraps)
        return false;
    // Compare with what the field will really hold: a boolean or integer field keeps only the
    // rounded value, and a float that rounds to the current value must not notify a change.
    const float held = isBool     ? (zeAnimationUtils::floatToBool(sceneValue) ? 1.0f : 0.0f)
                       : integral ? static_cast<float>(wraps ? whole + highest + 1.0 : whole)
                                  : sceneValue;
    if (sameValue(values[field.valuePos], held))
        return true;
    values[field.valuePos] = held;
    std::string written;
    if (isBool) {
        written = zeAnimationUtils::floatToBool(sceneValue) ? "TRUE" : "FALSE";
    } else if (integral) {
        char buffer[64];
        std::snprintf(buffer, sizeof(buffer), "%.0f", whole);
        written = buffer;
    } else {
        written = zeString::createStringFromValues(values);
    }
    const osg::BitVector mask = fieldMask(route.container, *route.name);
    osg::beginEditCP(route.container, mask, 1);
    sceneField->pushValueByStr(written.c_str());
    osg::endEditCP(route.container, mask, 1);
    return true;
}

} // namespace

float zeAnimationUtils::getOSGFieldValue(zeAnimationField* field)
{
    if (!field)
        return 0.0f;
    const SceneRoute route = resolveRoute(*field);
    switch (route.way) {
    case SceneRoute::Nowhere:
        return 0.0f;
    case SceneRoute::HostView:
        return hostViewComponent(field->attribute, field->valuePos);
    case SceneRoute::CameraSetting:
        return readCameraSetting(route.camera, route.index);
    case SceneRoute::NodeRotation: {
        osg::TransformAttachmentPtr transform = zeNodeUtils::getTransformAttachment(route.node);
        return transform != osg::NullFC ? transform->getRotationAngles()[route.index] : 0.0f;
    }
    case SceneRoute::NodeVisible:
        return route.node->getActive() ? 1.0f : 0.0f;
    case SceneRoute::Component: {
        if (route.kind == KindReal64)
            return toAnimation(*route.name, static_cast<osg::SFReal64*>(route.sceneField)->getValue());
        const osg::UInt32 index = componentIndex(route.kind, field->valuePos);
        if (index >= componentCount(route.kind))
            return 0.0f;
        return toAnimation(*route.name, *floatComponent(route.sceneField, route.kind, index));
    }
    case SceneRoute::Text: {
        std::string text;
        route.sceneField->getValueByStr(text);
        const std::vector<float> values = textValues(text);
        if (field->valuePos >= values.size())
            return 0.0f;
        return toAnimation(*route.name, values[field->valuePos]);
    }
    }
    return 0.0f;
}

std::vector<float> zeAnimationUtils::stringValues(const std::string& text)
{
    return textValues(text);
}

bool zeAnimationUtils::setOSGFieldValue(zeAnimationField* field)
{
    zeSceneTarget target;
    return zeSceneAccess::writeFieldValue(field, target);
}

namespace {

// Names of scene fields written through a target, each kept once for the life of the library: a
// target refers to its name by number instead of holding a copy, and the names are those of
// container types' fields, a small set.
struct KeptNames
{
    std::vector<std::string> names;
    std::unordered_map<std::string, osg::UInt32> numbers;
};

KeptNames& keptNames()
{
    static KeptNames kept;
    return kept;
}

osg::UInt32 keptName(const std::string& name)
{
    // Looked up before anything is made: a name already kept costs no allocation.
    KeptNames& kept = keptNames();
    const auto found = kept.numbers.find(name);
    if (found != kept.numbers.end())
        return found->second;
    const osg::UInt32 number = static_cast<osg::UInt32>(kept.names.size());
    kept.names.push_back(name);
    kept.numbers.emplace(name, number);
    return number;
}

inline bool sameName(const std::string& a, const std::string& b)
{
    // Field names are short: comparing in place is cheaper than calling out to compare memory.
    const std::size_t size = a.size();
    if (size != b.size())
        return false;
    const char* x = a.data();
    const char* y = b.data();
    for (std::size_t i = 0; i < size; ++i) {
        if (x[i] != y[i])
            return false;
    }
    return true;
}

} // namespace

bool zeSceneAccess::writeFieldValue(zeAnimationField* field, zeSceneTarget& binding)
{
    if (!field)
        return false;
    osg::FieldContainerPtr container =
        osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(field->fcID));
    if (container == osg::NullFC)
        return false;
    // Finding the field by name is the expensive part of a write; a field written before goes
    // straight to the component it found then, as long as its container still lives under the
    // same id and the field still names the same component of the same scene field.
    if (binding.component && binding.containerId == field->fcID && binding.valuePos == field->valuePos &&
        sameName(field->name, keptNames().names[binding.name]))
        return writeComponent(container, binding.component, static_cast<ContentKind>(binding.kind),
                              binding.mask, binding.angle, field->value);
    binding.component = nullptr;
    const SceneRoute route = resolveRoute(*field);
    switch (route.way) {
    case SceneRoute::Nowhere:
        return false;
    case SceneRoute::HostView:
        return writeHostView(*field);
    case SceneRoute::CameraSetting:
        writeCameraSetting(route.camera, route.index, field->value);
        return true;
    case SceneRoute::NodeRotation:
        return writeNodeRotation(route.node, route.index, field->value);
    case SceneRoute::NodeVisible:
        return writeNodeVisible(route.node, field->value);
    case SceneRoute::Component: {
        void* component = componentAddress(route.sceneField, route.kind, field->valuePos);
        if (!component)
            return false;
        const osg::BitVector mask = fieldMask(route.container, *route.name);
        // Only a field written straight into its own scene field is remembered; a camera view
        // field is redirected by the camera's viewpoint flag, which may change at any time.
        if (route.name == &field->name) {
            binding.container = route.container.getCPtr();
            binding.component = component;
            binding.name = keptName(field->name);
            binding.mask = mask;
            binding.containerId = static_cast<osg::UInt32>(field->fcID);
            binding.valuePos = field->valuePos;
            binding.kind = static_cast<std::uint8_t>(route.kind);
            binding.angle = isAngleField(field->name);
        }
        return writeComponent(route.container, component, route.kind, mask, isAngleField(*route.name),
                              field->value);
    }
    case SceneRoute::Text:
        return writeText(route, *field);
    }
    return false;
}

// ---- Field container resolution ---------------------------------------------------------------

void zeAnimationUtils::computeCoreTypeID(zeAnimationField* field)
{
    if (!field)
        return;
    osg::NodePtr node = nodeOf(field->nodeID);
    if (node == osg::NullFC)
        return;
    osg::NodeCorePtr core = node->getCore();
    if (core == osg::NullFC)
        return;
    const std::string& attribute = field->attribute;
    if (attribute == "visible") {
        field->fcID = osg::getContainerId(node);
        return;
    }
    if (core->getType().isDerivedFrom(osg::Transform3D::getClassType())) {
        osg::UInt32 index = 0;
        field->fcID = rotationIndex(attribute, index) ? osg::getContainerId(node) : osg::getContainerId(core);
        return;
    }
    const osg::UInt16 group = core->getType().getGroupId();
    const osg::FieldContainerType* groups[] = {&osg::Transform::getClassType(),
                                               &osg::MaterialGroup::getClassType(),
                                               &osg::SpotLight::getClassType(),
                                               &osg::PointLight::getClassType(),
                                               &osg::DirectionalLight::getClassType(),
                                               &osg::CameraSetting::getClassType(),
                                               &osg::Switch::getClassType()};
    for (const osg::FieldContainerType* type : groups) {
        if (group != type->getGroupId())
            continue;
        if (!core->getType().isDerivedFrom(*type)) {
            field->fcID = 0;
            return;
        }
        if (type == &osg::MaterialGroup::getClassType()) {
            osg::MaterialGroupPtr materialGroup = osg::MaterialGroupPtr::dcast(core);
            osg::MaterialPtr material = materialGroup->getMaterial();
            field->fcID = material != osg::NullFC ? osg::getContainerId(material) : 0;
        } else {
            field->fcID = osg::getContainerId(core);
        }
        return;
    }
}

// ---- Animation attachments --------------------------------------------------------------------

namespace {

// The node's attachment of a type: looked up by the type's group and accepted only when it really
// is of that type (another type may share the group).
template <class Ptr, class Type>
Ptr findTypedAttachment(const osg::NodePtr& node)
{
    if (node == osg::NullFC)
        return Ptr(osg::NullFC);
    osg::AttachmentPtr attachment = node->findAttachment(Type::getClassType().getGroupId());
    if (attachment == osg::NullFC || !attachment->getType().isDerivedFrom(Type::getClassType()))
        return Ptr(osg::NullFC);
    return Ptr::dcast(attachment);
}

} // namespace

osg::AnimAttachmentPtr zeAnimationUtils::getAnimationAttachment(const osg::NodePtr& node)
{
    return findTypedAttachment<osg::AnimAttachmentPtr, osg::AnimAttachment>(node);
}

osg::AnimationAttachmentPtr zeAnimationUtils::getOldAnimationAttachment(const osg::NodePtr& node)
{
    return findTypedAttachment<osg::AnimationAttachmentPtr, osg::AnimationAttachment>(node);
}

osg::AnimAttachmentPtr zeAnimationUtils::createAnimationAttachment(const osg::NodePtr& node, bool)
{
    if (node == osg::NullFC)
        return osg::AnimAttachmentPtr(osg::NullFC);
    osg::AnimAttachmentPtr attachment = getAnimationAttachment(node);
    if (attachment != osg::NullFC)
        return attachment;
    attachment = osg::AnimAttachmentBase::create();
    osg::beginEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    node->addAttachment(attachment);
    osg::endEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    return attachment;
}

bool zeAnimationUtils::removeAnimationAttachment(const osg::NodePtr& node)
{
    osg::AnimAttachmentPtr attachment = getAnimationAttachment(node);
    if (attachment == osg::NullFC)
        return false;
    osg::beginEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    node->subAttachment(attachment);
    osg::endEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    return true;
}

namespace {

bool eraseId(osg::MFUInt64& ids, osg::UInt64 id)
{
    bool erased = false;
    for (osg::MFUInt64::iterator it = ids.begin(); it != ids.end();) {
        if (*it == id) {
            it = ids.erase(it);
            erased = true;
        } else {
            ++it;
        }
    }
    return erased;
}

} // namespace

bool zeAnimationUtils::addAnimationObject(const osg::NodePtr& node, zeAnimationObject* object)
{
    if (!object || node == osg::NullFC)
        return false;
    osg::AnimAttachmentPtr attachment = createAnimationAttachment(node, true);
    osg::MFUInt64& ids = attachment->getObjectIds();
    osg::beginEditCP(attachment, osg::AnimAttachment::ObjectIdsFieldMask, 1);
    // A block and its own curves are never listed together.
    if (object->getTypeID() == zeAnimationObject::TypeUnit) {
        for (osg::UInt64 curveId : object->getChildIds())
            eraseId(ids, curveId);
    }
    if (std::find(ids.begin(), ids.end(), object->getId()) == ids.end())
        ids.push_back(object->getId());
    osg::endEditCP(attachment, osg::AnimAttachment::ObjectIdsFieldMask, 1);
    return true;
}

bool zeAnimationUtils::subAnimationObject(const osg::NodePtr& node, zeAnimationObject* object)
{
    if (!object || node == osg::NullFC)
        return false;
    osg::AnimAttachmentPtr attachment = getAnimationAttachment(node);
    if (attachment == osg::NullFC)
        return false;
    osg::MFUInt64& ids = attachment->getObjectIds();
    if (std::find(ids.begin(), ids.end(), object->getId()) == ids.end())
        return false;
    osg::beginEditCP(attachment, osg::AnimAttachment::ObjectIdsFieldMask, 1);
    eraseId(ids, object->getId());
    osg::endEditCP(attachment, osg::AnimAttachment::ObjectIdsFieldMask, 1);
    return true;
}

std::vector<zeAnimationObject*> zeAnimationUtils::getAnimationObjects(const osg::NodePtr& node)
{
    std::vector<zeAnimationObject*> objects;
    osg::AnimAttachmentPtr attachment = getAnimationAttachment(node);
    if (attachment == osg::NullFC)
        return objects;
    zeAnimationManager* manager = zeAnimationManager::the();
    for (osg::UInt64 id : attachment->getObjectIds()) {
        if (zeAnimationObject* object = manager->getObject(id))
            objects.push_back(object);
    }
    return objects;
}

std::vector<zeAnimationField*> zeAnimationUtils::getAnimationFields(const osg::NodePtr& node)
{
    std::vector<zeAnimationField*> fields;
    osg::AnimAttachmentPtr attachment = getAnimationAttachment(node);
    if (attachment == osg::NullFC)
        return fields;
    zeAnimationManager* manager = zeAnimationManager::the();
    for (osg::UInt64 id : attachment->getFieldIds()) {
        if (zeAnimationField* field = manager->getField(id))
            fields.push_back(field);
    }
    return fields;
}

osg::NodePtr zeAnimationUtils::getAnimationNode(const osg::NodePtr& node)
{
    if (node == osg::NullFC || node->getCore() == osg::NullFC)
        return node;
    if (!node->getCore()->getType().isDerivedFrom(osg::Geometry::getClassType()))
        return node;
    // Animating a geometry animates the transform above it.
    osg::NodePtr parent = node->getParent();
    if (parent != osg::NullFC && parent->getCore() != osg::NullFC &&
        parent->getCore()->getType().isDerivedFrom(osg::Transform::getClassType()))
        return parent;
    return node;
}

bool zeAnimationUtils::checkPasteTo(const osg::NodePtr& node, zeAnimationObject* object)
{
    if (node == osg::NullFC || node->getCore() == osg::NullFC || !object)
        return false;
    const osg::UInt16 coreGroup = node->getCore()->getType().getGroupId();
    zeAnimationManager* manager = zeAnimationManager::the();
    for (zeAnimationCurve2D* curve : object->getCurves()) {
        const zeAnimationField* field = manager->getField(curve->getAnimationFieldId());
        if (!field)
            return false;
        osg::FieldContainerPtr container =
            osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(field->fcID));
        if (container == osg::NullFC)
            return false;
        if (container->getType().getGroupId() != coreGroup &&
            !container->getType().isDerivedFrom(osg::Node::getClassType()))
            return false;
    }
    return true;
}

bool zeAnimationUtils::checkPasteTo(const osg::NodePtr& node, const std::vector<zeAnimationObject*>& objects)
{
    for (zeAnimationObject* object : objects) {
        if (!checkPasteTo(node, object))
            return false;
    }
    return true;
}

bool zeAnimationUtils::changeObjectReferenceFields(zeAnimationObject* object, const osg::NodePtr& node)
{
    if (!object || node == osg::NullFC || node->getCore() == osg::NullFC)
        return false;
    const std::vector<zeAnimationField*> nodeFields = getAnimationFields(node);
    zeAnimationManager* manager = zeAnimationManager::the();
    for (zeAnimationCurve2D* curve : object->getCurves()) {
        const zeAnimationField* current = manager->getField(curve->getAnimationFieldId());
        if (!current)
            continue;
        zeAnimationField* match = nullptr;
        // The field name is deliberately not compared; the last match wins.
        for (zeAnimationField* candidate : nodeFields) {
            if (candidate->attribute == current->attribute && candidate->valuePos == current->valuePos)
                match = candidate;
        }
        if (match)
            curve->setAnimationField(match);
    }
    if (zeAnimationUnit* unit = zeAnimationCast<zeAnimationUnit>(object))
        unit->setParentOSGNode(node);
    return true;
}

bool zeAnimationUtils::sortBeginBased(const zeAnimationObject* a, const zeAnimationObject* b)
{
    return a->getBegin() < b->getBegin();
}

bool zeAnimationUtils::sortEndBased(const zeAnimationObject* a, const zeAnimationObject* b)
{
    return a->getEnd() < b->getEnd();
}
// ---- Scene synchronisation --------------------------------------------------------------------

namespace {

// The attribute under which one component of a scene field is animated: the field name with a
// component suffix (X/Y/Z/W for vectors and points, R/G/B/A for colours), the plain name for a
// scalar. "rotateX" and "translateX" style names become "rotationX" and "translationX".
std::string componentAttribute(const std::string& fieldName, const char* suffixes, osg::UInt32 index)
{
    std::string base = fieldName;
    if (suffixes)
        base += suffixes[index];
    return zeAnimationUtils::canonicalAttribute(base);
}

} // namespace

std::vector<zeAnimationUtils::FieldAttribute>
zeAnimationUtils::computeAnimationFieldAttributes(osg::UInt32 containerId, const std::string& fieldName)
{
    std::vector<FieldAttribute> attributes;
    osg::FieldContainerPtr container = osg::FieldContainerFactory::the()->getContainer(containerId);
    if (container == osg::NullFC)
        return attributes;
    const osg::FieldDescription* description = container->getType().findFieldDescription(fieldName.c_str());
    osg::Field* field = container->getField(fieldName.c_str());
    if (!description || description->isInternal() || !field ||
        field->getCardinality() != osg::FieldType::SINGLE_FIELD)
        return attributes;
    const osg::UInt32 contentId = field->getContentType().getId();
    const char* suffixes = nullptr;
    osg::UInt32 count = 0;
    const ContentKind kind = contentKind(field);
    switch (kind) {
    case KindColor4f:
        suffixes = "RGBA";
        count = 4;
        break;
    case KindColor3f:
        suffixes = "RGB";
        count = 3;
        break;
    case KindVec4f:
    case KindPnt4f:
        suffixes = "XYZW";
        count = 4;
        break;
    case KindVec3f:
    case KindPnt3f:
        suffixes = "XYZ";
        count = 3;
        break;
    case KindVec2f:
    case KindPnt2f:
        suffixes = "XY";
        count = 2;
        break;
    case KindReal32:
    case KindReal64:
        count = 1;
        break;
    default:
        // Integral and boolean scalars are animated through their text form.
        if (contentId == osg::SFInt32::getClassType().getContentType().getId() ||
            contentId == osg::SFUInt32::getClassType().getContentType().getId() ||
            contentId == osg::SFBool::getClassType().getContentType().getId())
            count = 1;
        break;
    }
    for (osg::UInt32 i = 0; i < count; ++i) {
        FieldAttribute attribute;
        attribute.coreTypeId = container->getType().getId();
        attribute.attribute = componentAttribute(fieldName, suffixes, i);
        attribute.name = fieldName;
        attribute.valuePos = i;
        attributes.push_back(attribute);
    }
    return attributes;
}

std::string zeAnimationUtils::canonicalAttribute(const std::string& attribute)
{
    static const char* const names[][2] = {{"translateX", "translationX"}, {"translateY", "translationY"},
                                           {"translateZ", "translationZ"}, {"rotateX", "rotationX"},
                                           {"rotateY", "rotationY"},       {"rotateZ", "rotationZ"}};
    for (const auto& entry : names) {
        if (attribute == entry[0])
            return entry[1];
    }
    return attribute;
}
