#ifndef _OSGANIMATIONCLIPBASE_H_
#define _OSGANIMATIONCLIPBASE_H_

#include "OSGAnimationBlockFields.h"
#include "OSGAnimationClipFields.h"
#include "OSGAnimationTrackFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFSysTypes.h>

namespace osg {

class AnimationClip;

// Clip of the older animation format: blocks, nested clips and tracks (all referenced) and flags.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationClipBase : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AnimationClipPtr Ptr;

    enum
    {
        NameFieldId = Inherited::NextFieldId,
        FlippedFieldId = NameFieldId + 1,
        RepeatingFieldId = FlippedFieldId + 1,
        MotionBlurFieldId = RepeatingFieldId + 1,
        BlocksFieldId = MotionBlurFieldId + 1,
        ClipsFieldId = BlocksFieldId + 1,
        TracksFieldId = ClipsFieldId + 1,
        NextFieldId = TracksFieldId + 1
    };
    static constexpr BitVector NameFieldMask = TypeTraits<BitVector>::One << NameFieldId;
    static constexpr BitVector FlippedFieldMask = TypeTraits<BitVector>::One << FlippedFieldId;
    static constexpr BitVector RepeatingFieldMask = TypeTraits<BitVector>::One << RepeatingFieldId;
    static constexpr BitVector MotionBlurFieldMask = TypeTraits<BitVector>::One << MotionBlurFieldId;
    static constexpr BitVector BlocksFieldMask = TypeTraits<BitVector>::One << BlocksFieldId;
    static constexpr BitVector ClipsFieldMask = TypeTraits<BitVector>::One << ClipsFieldId;
    static constexpr BitVector TracksFieldMask = TypeTraits<BitVector>::One << TracksFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimationClipPtr)

    OSG_SFIELD_ACCESSORS(SFString, std::string, Name)
    OSG_SFIELD_ACCESSORS(SFBool, bool, Flipped)
    OSG_SFIELD_ACCESSORS(SFBool, bool, Repeating)
    OSG_SFIELD_ACCESSORS(SFBool, bool, MotionBlur)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationBlockPtr, AnimationBlockPtr, Blocks)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationClipPtr, AnimationClipPtr, Clips)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationTrackPtr, AnimationTrackPtr, Tracks)

protected:
    AnimationClipBase();
    AnimationClipBase(const AnimationClipBase& source);
    ~AnimationClipBase() override; // releases the referenced containers
};

} // namespace osg

#endif
