#ifndef _OSGMATERIALGROUP_H_
#define _OSGMATERIALGROUP_H_

#include "OSGMaterialGroupBase.h"

namespace osg {

// Core that applies "material" to its node's subtree. setMaterial is reference counted.
class OSG_SYSTEMLIB_DLLMAPPING MaterialGroup : public MaterialGroupBase
{
public:
    typedef MaterialGroupBase Inherited;

protected:
    friend class MaterialGroupBase;

    MaterialGroup();
    MaterialGroup(const MaterialGroup& source);
    ~MaterialGroup() override;
};

} // namespace osg

#endif
