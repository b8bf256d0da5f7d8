#include <OpenSG/OSGGeometry.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(GeometryBase, Geometry, GeometryPtr)

FieldContainerType& GeometryBase::getClassType()
{
    static FieldContainerType type("Geometry", &MaterialDrawable::getClassType(), nullptr, &osgCreateGeometry,
                                   {});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(GeometryBase)

GeometryBase::GeometryBase() {}

GeometryBase::GeometryBase(const GeometryBase& source) : Inherited(source) {}

GeometryBase::~GeometryBase() = default;

Geometry::Geometry() = default;

Geometry::Geometry(const Geometry& source) : Inherited(source) {}

Geometry::~Geometry() = default;

namespace {
[[maybe_unused]] const bool registered = (Geometry::getClassType(), true);
} // namespace

} // namespace osg
