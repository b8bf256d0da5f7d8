#ifndef _OSGMATERIALGROUPBASE_H_
#define _OSGMATERIALGROUPBASE_H_

#include "OSGGroup.h"
#include "OSGMaterial.h"
#include "OSGMaterialFields.h"
#include "OSGMaterialGroupFields.h"

namespace osg {

class MaterialGroup;

// Core that applies "material" to its node's subtree. setMaterial is reference counted.
class OSG_SYSTEMLIB_DLLMAPPING MaterialGroupBase : public Group
{
public:
    typedef Group Inherited;
    typedef MaterialGroupPtr Ptr;

    enum
    {
        MaterialFieldId = Inherited::NextFieldId,
        NextFieldId = MaterialFieldId + 1
    };
    static constexpr BitVector MaterialFieldMask = TypeTraits<BitVector>::One << MaterialFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(MaterialGroupPtr)

    OSG_SFIELD_REF_ACCESSORS(SFMaterialPtr, MaterialPtr, Material)

protected:
    MaterialGroupBase();
    MaterialGroupBase(const MaterialGroupBase& source);
    ~MaterialGroupBase() override; // releases the referenced containers
};

} // namespace osg

#endif
