#ifndef _OSGGEOMETRY_H_
#define _OSGGEOMETRY_H_

#include "OSGGeometryBase.h"

namespace osg {

// Geometry core. It carries no render data: the property fields of OpenSG's Geometry (types,
// lengths, positions, normals, colours, texture coordinates, indices and the GL caches) are absent,
// so only the inherited "material" field exists.
class OSG_SYSTEMLIB_DLLMAPPING Geometry : public GeometryBase
{
public:
    typedef GeometryBase Inherited;

protected:
    friend class GeometryBase;

    Geometry();
    Geometry(const Geometry& source);
    ~Geometry() override;
};

} // namespace osg

#endif
