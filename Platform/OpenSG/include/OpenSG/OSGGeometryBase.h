#ifndef _OSGGEOMETRYBASE_H_
#define _OSGGEOMETRYBASE_H_

#include "OSGGeometryFields.h"
#include "OSGMaterialDrawable.h"

namespace osg {

class Geometry;

// Geometry core. It carries no render data: the property fields of OpenSG's Geometry (types,
// lengths, positions, normals, colours, texture coordinates, indices and the GL caches) are absent,
// so only the inherited "material" field exists.
class OSG_SYSTEMLIB_DLLMAPPING GeometryBase : public MaterialDrawable
{
public:
    typedef MaterialDrawable Inherited;
    typedef GeometryPtr Ptr;

    enum
    {
        NextFieldId = Inherited::NextFieldId
    };

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(GeometryPtr)

protected:
    GeometryBase();
    GeometryBase(const GeometryBase& source);
    ~GeometryBase() override;
};

} // namespace osg

#endif
