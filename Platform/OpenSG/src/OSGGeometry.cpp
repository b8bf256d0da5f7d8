#include <OpenSG/OSGGeometry.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(GeometryBase, Geometry, GeometryPtr)

FieldContainerType& GeometryBase::getClassType()
{
    static FieldContainerType type(
        "Geometry", &MaterialDrawable::getClassType(), nullptr, &osgCreateGeometry,
        {OSG_SFIELD_DESC(GeometryBase, SFGeoPTypesPtr, "types", Types, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoPLengthsPtr, "lengths", Lengths, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoPositionsPtr, "positions", Positions, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoNormalsPtr, "normals", Normals, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoColorsPtr, "colors", Colors, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoColorsPtr, "secondaryColors", SecondaryColors, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords", TexCoords, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords1", TexCoords1, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords2", TexCoords2, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords3", TexCoords3, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords4", TexCoords4, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords5", TexCoords5, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords6", TexCoords6, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoTexCoordsPtr, "texCoords7", TexCoords7, false),
         OSG_SFIELD_DESC(GeometryBase, SFGeoIndicesPtr, "indices", Indices, false),
         OSG_MFIELD_DESC(GeometryBase, MFUInt16, "indexMapping", IndexMapping, false),
         OSG_SFIELD_DESC(GeometryBase, SFBool, "dlistCache", DlistCache, false),
         OSG_SFIELD_DESC(GeometryBase, SFInt32, "GLId", GLId, true),
         OSG_SFIELD_DESC(GeometryBase, SFInt32, "IgnoreGLForAspect", IgnoreGLForAspect, true),
         OSG_SFIELD_DESC(GeometryBase, SFInt32, "minindex", Minindex, true),
         OSG_SFIELD_DESC(GeometryBase, SFInt32, "maxindex", Maxindex, true),
         OSG_MFIELD_DESC(GeometryBase, MFUInt32, "lowindices", Lowindices, true),
         OSG_MFIELD_DESC(GeometryBase, MFUInt32, "highindices", Highindices, true),
         OSG_SFIELD_DESC(GeometryBase, SFBool, "vbo", Vbo, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(GeometryBase)

GeometryBase::GeometryBase()
    : _sfDlistCache(true), _sfGLId(0), _sfIgnoreGLForAspect(-1), _sfMinindex(0), _sfMaxindex(0), _sfVbo(false)
{}

GeometryBase::GeometryBase(const GeometryBase& source)
    : Inherited(source), _sfTypes(source._sfTypes), _sfLengths(source._sfLengths),
      _sfPositions(source._sfPositions), _sfNormals(source._sfNormals), _sfColors(source._sfColors),
      _sfSecondaryColors(source._sfSecondaryColors), _sfTexCoords(source._sfTexCoords),
      _sfTexCoords1(source._sfTexCoords1), _sfTexCoords2(source._sfTexCoords2),
      _sfTexCoords3(source._sfTexCoords3), _sfTexCoords4(source._sfTexCoords4),
      _sfTexCoords5(source._sfTexCoords5), _sfTexCoords6(source._sfTexCoords6),
      _sfTexCoords7(source._sfTexCoords7), _sfIndices(source._sfIndices),
      _mfIndexMapping(source._mfIndexMapping), _sfDlistCache(source._sfDlistCache), _sfGLId(source._sfGLId),
      _sfIgnoreGLForAspect(source._sfIgnoreGLForAspect), _sfMinindex(source._sfMinindex),
      _sfMaxindex(source._sfMaxindex), _mfLowindices(source._mfLowindices),
      _mfHighindices(source._mfHighindices), _sfVbo(source._sfVbo)
{
    // The copy shares the referenced properties, so it takes its own references.
    addRefCP(_sfTypes.getValue());
    addRefCP(_sfLengths.getValue());
    addRefCP(_sfPositions.getValue());
    addRefCP(_sfNormals.getValue());
    addRefCP(_sfColors.getValue());
    addRefCP(_sfSecondaryColors.getValue());
    addRefCP(_sfTexCoords.getValue());
    addRefCP(_sfTexCoords1.getValue());
    addRefCP(_sfTexCoords2.getValue());
    addRefCP(_sfTexCoords3.getValue());
    addRefCP(_sfTexCoords4.getValue());
    addRefCP(_sfTexCoords5.getValue());
    addRefCP(_sfTexCoords6.getValue());
    addRefCP(_sfTexCoords7.getValue());
    addRefCP(_sfIndices.getValue());
}

GeometryBase::~GeometryBase()
{
    clearRefCP(_sfTypes.getValue());
    clearRefCP(_sfLengths.getValue());
    clearRefCP(_sfPositions.getValue());
    clearRefCP(_sfNormals.getValue());
    clearRefCP(_sfColors.getValue());
    clearRefCP(_sfSecondaryColors.getValue());
    clearRefCP(_sfTexCoords.getValue());
    clearRefCP(_sfTexCoords1.getValue());
    clearRefCP(_sfTexCoords2.getValue());
    clearRefCP(_sfTexCoords3.getValue());
    clearRefCP(_sfTexCoords4.getValue());
    clearRefCP(_sfTexCoords5.getValue());
    clearRefCP(_sfTexCoords6.getValue());
    clearRefCP(_sfTexCoords7.getValue());
    clearRefCP(_sfIndices.getValue());
}

Geometry::Geometry() = default;

Geometry::Geometry(const Geometry& source) : Inherited(source) {}

Geometry::~Geometry() = default;

namespace {
[[maybe_unused]] const bool registered = (Geometry::getClassType(), true);
} // namespace

} // namespace osg
