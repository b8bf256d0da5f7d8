#ifndef _OSGSWITCHBASE_H_
#define _OSGSWITCHBASE_H_

#include "OSGGroup.h"
#include "OSGSFSysTypes.h"
#include "OSGSwitchFields.h"

namespace osg {

class Switch;

// Core that shows one of its node's children: "choice" is the child index, or ALL / NONE.
class OSG_SYSTEMLIB_DLLMAPPING SwitchBase : public Group
{
public:
    typedef Group Inherited;
    typedef SwitchPtr Ptr;

    enum
    {
        ChoiceFieldId = Inherited::NextFieldId,
        NextFieldId = ChoiceFieldId + 1
    };
    static constexpr BitVector ChoiceFieldMask = TypeTraits<BitVector>::One << ChoiceFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(SwitchPtr)

    OSG_SFIELD_ACCESSORS(SFInt32, Int32, Choice)

protected:
    SwitchBase();
    SwitchBase(const SwitchBase& source);
    ~SwitchBase() override;
};

} // namespace osg

#endif
