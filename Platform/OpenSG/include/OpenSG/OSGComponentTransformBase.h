#ifndef _OSGCOMPONENTTRANSFORMBASE_H_
#define _OSGCOMPONENTTRANSFORMBASE_H_

#include "OSGComponentTransformFields.h"
#include "OSGSFMathTypes.h"
#include "OSGSFVecTypes.h"
#include "OSGTransform.h"

namespace osg {

class ComponentTransform;

// Transform built from components: translation * center * rotation * scaleOrientation * scale
// * scaleOrientation^-1 * center^-1.
class OSG_SYSTEMLIB_DLLMAPPING ComponentTransformBase : public Transform
{
public:
    typedef Transform Inherited;
    typedef ComponentTransformPtr Ptr;

    enum
    {
        CenterFieldId = Inherited::NextFieldId,
        RotationFieldId = CenterFieldId + 1,
        ScaleFieldId = RotationFieldId + 1,
        ScaleOrientationFieldId = ScaleFieldId + 1,
        TranslationFieldId = ScaleOrientationFieldId + 1,
        NextFieldId = TranslationFieldId + 1
    };
    static constexpr BitVector CenterFieldMask = TypeTraits<BitVector>::One << CenterFieldId;
    static constexpr BitVector RotationFieldMask = TypeTraits<BitVector>::One << RotationFieldId;
    static constexpr BitVector ScaleFieldMask = TypeTraits<BitVector>::One << ScaleFieldId;
    static constexpr BitVector ScaleOrientationFieldMask = TypeTraits<BitVector>::One
                                                           << ScaleOrientationFieldId;
    static constexpr BitVector TranslationFieldMask = TypeTraits<BitVector>::One << TranslationFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(ComponentTransformPtr)

    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Center)
    OSG_SFIELD_ACCESSORS(SFQuaternion, Quaternion, Rotation)
    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Scale)
    OSG_SFIELD_ACCESSORS(SFQuaternion, Quaternion, ScaleOrientation)
    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, Translation)

protected:
    ComponentTransformBase();
    ComponentTransformBase(const ComponentTransformBase& source);
    ~ComponentTransformBase() override;
};

} // namespace osg

#endif
