#ifndef _OSGANIMATIONBLOCKBASE_H_
#define _OSGANIMATIONBLOCKBASE_H_

#include "OSGAnimationBlockFields.h"
#include "OSGAnimationCurveFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFSysTypes.h>

namespace osg {

class AnimationBlock;

// Block of the older animation format: curves over [start, end] for one animated "node" (not
// reference counted: the block hangs below the node); the curves are referenced.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationBlockBase : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AnimationBlockPtr Ptr;

    enum
    {
        NameFieldId = Inherited::NextFieldId,
        RepeatingFieldId = NameFieldId + 1,
        MotionBlurFieldId = RepeatingFieldId + 1,
        FlippedFieldId = MotionBlurFieldId + 1,
        StartFieldId = FlippedFieldId + 1,
        EndFieldId = StartFieldId + 1,
        NodeFieldId = EndFieldId + 1,
        CurvesFieldId = NodeFieldId + 1,
        NextFieldId = CurvesFieldId + 1
    };
    static constexpr BitVector NameFieldMask = TypeTraits<BitVector>::One << NameFieldId;
    static constexpr BitVector RepeatingFieldMask = TypeTraits<BitVector>::One << RepeatingFieldId;
    static constexpr BitVector MotionBlurFieldMask = TypeTraits<BitVector>::One << MotionBlurFieldId;
    static constexpr BitVector FlippedFieldMask = TypeTraits<BitVector>::One << FlippedFieldId;
    static constexpr BitVector StartFieldMask = TypeTraits<BitVector>::One << StartFieldId;
    static constexpr BitVector EndFieldMask = TypeTraits<BitVector>::One << EndFieldId;
    static constexpr BitVector NodeFieldMask = TypeTraits<BitVector>::One << NodeFieldId;
    static constexpr BitVector CurvesFieldMask = TypeTraits<BitVector>::One << CurvesFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimationBlockPtr)

    OSG_SFIELD_ACCESSORS(SFString, std::string, Name)
    OSG_SFIELD_ACCESSORS(SFBool, bool, Repeating)
    OSG_SFIELD_ACCESSORS(SFBool, bool, MotionBlur)
    OSG_SFIELD_ACCESSORS(SFBool, bool, Flipped)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, Start)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, End)
    OSG_SFIELD_ACCESSORS(SFNodePtr, NodePtr, Node)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationCurvePtr, AnimationCurvePtr, Curves)

protected:
    AnimationBlockBase();
    AnimationBlockBase(const AnimationBlockBase& source);
    ~AnimationBlockBase() override; // releases the referenced containers
};

} // namespace osg

#endif
