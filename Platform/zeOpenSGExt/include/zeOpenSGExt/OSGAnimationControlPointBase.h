#ifndef _OSGANIMATIONCONTROLPOINTBASE_H_
#define _OSGANIMATIONCONTROLPOINTBASE_H_

#include "OSGAnimationControlPointFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

namespace osg {

class AnimationControlPoint;

// Key of an older animation curve: position (frame, value), tangent handles (only meaningful when
// hasTangents is set) and the tangent type code of the older format.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationControlPointBase : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AnimationControlPointPtr Ptr;

    enum
    {
        PositionFieldId = Inherited::NextFieldId,
        InTangentFieldId = PositionFieldId + 1,
        OutTangentFieldId = InTangentFieldId + 1,
        HasTangentsFieldId = OutTangentFieldId + 1,
        TangentTypeFieldId = HasTangentsFieldId + 1,
        NextFieldId = TangentTypeFieldId + 1
    };
    static constexpr BitVector PositionFieldMask = TypeTraits<BitVector>::One << PositionFieldId;
    static constexpr BitVector InTangentFieldMask = TypeTraits<BitVector>::One << InTangentFieldId;
    static constexpr BitVector OutTangentFieldMask = TypeTraits<BitVector>::One << OutTangentFieldId;
    static constexpr BitVector HasTangentsFieldMask = TypeTraits<BitVector>::One << HasTangentsFieldId;
    static constexpr BitVector TangentTypeFieldMask = TypeTraits<BitVector>::One << TangentTypeFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimationControlPointPtr)

    OSG_SFIELD_ACCESSORS(SFPnt2f, Pnt2f, Position)
    OSG_SFIELD_ACCESSORS(SFPnt2f, Pnt2f, InTangent)
    OSG_SFIELD_ACCESSORS(SFPnt2f, Pnt2f, OutTangent)
    OSG_SFIELD_ACCESSORS(SFBool, bool, HasTangents)
    OSG_SFIELD_ACCESSORS(SFUInt32, UInt32, TangentType)

protected:
    AnimationControlPointBase();
    AnimationControlPointBase(const AnimationControlPointBase& source);
    ~AnimationControlPointBase() override;
};

} // namespace osg

#endif
