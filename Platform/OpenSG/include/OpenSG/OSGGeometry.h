#ifndef _OSGGEOMETRY_H_
#define _OSGGEOMETRY_H_

#include "OSGGeometryBase.h"

namespace osg {

// Geometry core with OpenSG's fields. It carries no render data: the property classes are only
// declared (OSGGeoPropPtrs.h), so the property fields stay null.
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
