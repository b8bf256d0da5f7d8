#ifndef _OSGMATERIALBASE_H_
#define _OSGMATERIALBASE_H_

#include "OSGAttachmentContainer.h"
#include "OSGMaterialFields.h"
#include "OSGSFSysTypes.h"

namespace osg {

class Material;

// Base of materials (abstract).
class OSG_SYSTEMLIB_DLLMAPPING MaterialBase : public AttachmentContainer
{
public:
    typedef AttachmentContainer Inherited;
    typedef MaterialPtr Ptr;

    enum
    {
        SortKeyFieldId = Inherited::NextFieldId,
        TransparencyModeFieldId = SortKeyFieldId + 1,
        NextFieldId = TransparencyModeFieldId + 1
    };
    static constexpr BitVector SortKeyFieldMask = TypeTraits<BitVector>::One << SortKeyFieldId;
    static constexpr BitVector TransparencyModeFieldMask = TypeTraits<BitVector>::One
                                                           << TransparencyModeFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL

    OSG_SFIELD_ACCESSORS(SFInt32, Int32, SortKey)
    OSG_SFIELD_ACCESSORS(SFInt32, Int32, TransparencyMode)

protected:
    MaterialBase();
    MaterialBase(const MaterialBase& source);
    ~MaterialBase() override;
};

} // namespace osg

#endif
