#ifndef _OSGANIMATIONTRACKBASE_H_
#define _OSGANIMATIONTRACKBASE_H_

#include "OSGAnimationBlockFields.h"
#include "OSGAnimationClipFields.h"
#include "OSGAnimationTrackFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainer.h>

namespace osg {

class AnimationTrack;

// Track of the older animation format: blocks, sequence entries (blocks used as sequences) and
// nested clips, all referenced.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationTrackBase : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AnimationTrackPtr Ptr;

    enum
    {
        BlocksFieldId = Inherited::NextFieldId,
        SequencesFieldId = BlocksFieldId + 1,
        ClipsFieldId = SequencesFieldId + 1,
        NextFieldId = ClipsFieldId + 1
    };
    static constexpr BitVector BlocksFieldMask = TypeTraits<BitVector>::One << BlocksFieldId;
    static constexpr BitVector SequencesFieldMask = TypeTraits<BitVector>::One << SequencesFieldId;
    static constexpr BitVector ClipsFieldMask = TypeTraits<BitVector>::One << ClipsFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimationTrackPtr)

    OSG_MFIELD_REF_ACCESSORS(MFAnimationBlockPtr, AnimationBlockPtr, Blocks)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationBlockPtr, AnimationBlockPtr, Sequences)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationClipPtr, AnimationClipPtr, Clips)

protected:
    AnimationTrackBase();
    AnimationTrackBase(const AnimationTrackBase& source);
    ~AnimationTrackBase() override; // releases the referenced containers
};

} // namespace osg

#endif
