#ifndef ZEANIMATIONUTILS_H
#define ZEANIMATIONUTILS_H

#include <zeAnimation/zeAnimationConfig.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVector.h>
#include <zeOpenSGExt/OSGAnimAttachment.h>
#include <zeOpenSGExt/OSGAnimationAttachment.h>

#include <string>
#include <vector>

class zeAnimationField;
class zeAnimationObject;

// Scene binding helpers: reading and writing one float of the scene through an animation field,
// the animation attachments of nodes, and small numeric helpers shared by the library.
class ZEANIMATION_EXPORT zeAnimationUtils
{
public:
    // One animatable component of a scene field.
    struct FieldAttribute
    {
        osg::UInt32 coreTypeId; // type id of the container holding the field
        std::string attribute;  // the name the component is animated under
        std::string name;       // the field's name in its container
        osg::UInt32 valuePos;   // the component's index in the field value
    };

    // ---- Field values ---------------------------------------------------------------------
    // The float an animation field stands for: one component of a scene field (angles of
    // "fieldOfView" and "rotate..." fields in degrees), a camera setting, or a node's rotation
    // and visibility. 0 on any failure.
    static float getOSGFieldValue(zeAnimationField* field);
    // Writes the field's value into the scene. A value that is already there is not written, so
    // it causes no change notification. False when the target cannot be found.
    static bool setOSGFieldValue(zeAnimationField* field);
    // Points the field's fcID at the container that really holds its value: the node, its core
    // or the material of a material group.
    static void computeCoreTypeID(zeAnimationField* field);
    // The components of a container's field that can be animated, with their attribute names;
    // empty for fields that cannot be animated (pointers, matrices, internal fields...).
    static std::vector<FieldAttribute> computeAnimationFieldAttributes(osg::UInt32 containerId,
                                                                       const std::string& fieldName);
    // Maps "translateX"/"rotateX" style names onto "translationX"/"rotationX"; others unchanged.
    static std::string canonicalAttribute(const std::string& attribute);

    // ---- Animation attachments ------------------------------------------------------------
    static osg::AnimAttachmentPtr getAnimationAttachment(const osg::NodePtr& node);
    static osg::AnimationAttachmentPtr getOldAnimationAttachment(const osg::NodePtr& node);
    static osg::AnimAttachmentPtr createAnimationAttachment(const osg::NodePtr& node, bool notify = true);
    static bool removeAnimationAttachment(const osg::NodePtr& node);
    // Lists the object on the node (a block replaces its own curves in the list).
    static bool addAnimationObject(const osg::NodePtr& node, zeAnimationObject* object);
    static bool subAnimationObject(const osg::NodePtr& node, zeAnimationObject* object);
    static std::vector<zeAnimationObject*> getAnimationObjects(const osg::NodePtr& node);
    static std::vector<zeAnimationField*> getAnimationFields(const osg::NodePtr& node);
    // The node animations of `node` belong to: for a geometry under a transform, the transform.
    static osg::NodePtr getAnimationNode(const osg::NodePtr& node);
    // True when every curve of the object animates a container of the node's core type (or a
    // node). An object without curves can be pasted anywhere.
    static bool checkPasteTo(const osg::NodePtr& node, zeAnimationObject* object);
    static bool checkPasteTo(const osg::NodePtr& node, const std::vector<zeAnimationObject*>& objects);
    // Rebinds the object's curves to the node's fields of the same attribute and component.
    static bool changeObjectReferenceFields(zeAnimationObject* object, const osg::NodePtr& node);
    static bool sortBeginBased(const zeAnimationObject* a, const zeAnimationObject* b);
    static bool sortEndBased(const zeAnimationObject* a, const zeAnimationObject* b);

    // Rounds to the nearest whole number, halves away from zero.
    static float snap(float value);
    // Rounds only the coordinates whose flag is set.
    static osg::Pnt2f snap(const osg::Pnt2f& point, bool snapX, bool snapY);
    // Maps the tangent type of an older scene's control point onto TangentMode (1 none, 2 linear,
    // 3 smooth, 4 flat, 5 forward, 6 free); anything else is flat.
    static zeControlPoint2D::TangentMode convertTangentType(unsigned int legacyType);
    // A curve's display colour, chosen by the last character of its field's attribute.
    static osg::Color3f getDefaultCurveColor(const zeAnimationField* field);
    // Nearest integer, halves away from zero, returned as unsigned (a negative result wraps).
    static osg::UInt32 floatToInt(float value);
    // Rounds as floatToInt and tells whether the result is positive.
    static bool floatToBool(float value);

private:
    static std::vector<float> stringValues(const std::string& text);
};

#endif // ZEANIMATIONUTILS_H
