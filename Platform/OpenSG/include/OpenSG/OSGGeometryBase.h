#ifndef _OSGGEOMETRYBASE_H_
#define _OSGGEOMETRYBASE_H_

#include "OSGGeoPropPtrs.h"
#include "OSGGeometryFields.h"
#include "OSGMFSysTypes.h"
#include "OSGMaterialDrawable.h"
#include "OSGSFSysTypes.h"

namespace osg {

class Geometry;

// Geometry core with OpenSG's field list: the property pointers (always null here, see
// OSGGeoPropPtrs.h, and referenced when set), the index mapping, the display-list and VBO
// switches, and the internal GL caches.
class OSG_SYSTEMLIB_DLLMAPPING GeometryBase : public MaterialDrawable
{
public:
    typedef MaterialDrawable Inherited;
    typedef GeometryPtr Ptr;

    enum
    {
        TypesFieldId = Inherited::NextFieldId,
        LengthsFieldId = TypesFieldId + 1,
        PositionsFieldId = LengthsFieldId + 1,
        NormalsFieldId = PositionsFieldId + 1,
        ColorsFieldId = NormalsFieldId + 1,
        SecondaryColorsFieldId = ColorsFieldId + 1,
        TexCoordsFieldId = SecondaryColorsFieldId + 1,
        TexCoords1FieldId = TexCoordsFieldId + 1,
        TexCoords2FieldId = TexCoords1FieldId + 1,
        TexCoords3FieldId = TexCoords2FieldId + 1,
        TexCoords4FieldId = TexCoords3FieldId + 1,
        TexCoords5FieldId = TexCoords4FieldId + 1,
        TexCoords6FieldId = TexCoords5FieldId + 1,
        TexCoords7FieldId = TexCoords6FieldId + 1,
        IndicesFieldId = TexCoords7FieldId + 1,
        IndexMappingFieldId = IndicesFieldId + 1,
        DlistCacheFieldId = IndexMappingFieldId + 1,
        GLIdFieldId = DlistCacheFieldId + 1,
        IgnoreGLForAspectFieldId = GLIdFieldId + 1,
        MinindexFieldId = IgnoreGLForAspectFieldId + 1,
        MaxindexFieldId = MinindexFieldId + 1,
        LowindicesFieldId = MaxindexFieldId + 1,
        HighindicesFieldId = LowindicesFieldId + 1,
        VboFieldId = HighindicesFieldId + 1,
        NextFieldId = VboFieldId + 1
    };
    static constexpr BitVector TypesFieldMask = TypeTraits<BitVector>::One << TypesFieldId;
    static constexpr BitVector LengthsFieldMask = TypeTraits<BitVector>::One << LengthsFieldId;
    static constexpr BitVector PositionsFieldMask = TypeTraits<BitVector>::One << PositionsFieldId;
    static constexpr BitVector NormalsFieldMask = TypeTraits<BitVector>::One << NormalsFieldId;
    static constexpr BitVector ColorsFieldMask = TypeTraits<BitVector>::One << ColorsFieldId;
    static constexpr BitVector SecondaryColorsFieldMask = TypeTraits<BitVector>::One
                                                          << SecondaryColorsFieldId;
    static constexpr BitVector TexCoordsFieldMask = TypeTraits<BitVector>::One << TexCoordsFieldId;
    static constexpr BitVector TexCoords1FieldMask = TypeTraits<BitVector>::One << TexCoords1FieldId;
    static constexpr BitVector TexCoords2FieldMask = TypeTraits<BitVector>::One << TexCoords2FieldId;
    static constexpr BitVector TexCoords3FieldMask = TypeTraits<BitVector>::One << TexCoords3FieldId;
    static constexpr BitVector TexCoords4FieldMask = TypeTraits<BitVector>::One << TexCoords4FieldId;
    static constexpr BitVector TexCoords5FieldMask = TypeTraits<BitVector>::One << TexCoords5FieldId;
    static constexpr BitVector TexCoords6FieldMask = TypeTraits<BitVector>::One << TexCoords6FieldId;
    static constexpr BitVector TexCoords7FieldMask = TypeTraits<BitVector>::One << TexCoords7FieldId;
    static constexpr BitVector IndicesFieldMask = TypeTraits<BitVector>::One << IndicesFieldId;
    static constexpr BitVector IndexMappingFieldMask = TypeTraits<BitVector>::One << IndexMappingFieldId;
    static constexpr BitVector DlistCacheFieldMask = TypeTraits<BitVector>::One << DlistCacheFieldId;
    static constexpr BitVector GLIdFieldMask = TypeTraits<BitVector>::One << GLIdFieldId;
    static constexpr BitVector IgnoreGLForAspectFieldMask = TypeTraits<BitVector>::One
                                                            << IgnoreGLForAspectFieldId;
    static constexpr BitVector MinindexFieldMask = TypeTraits<BitVector>::One << MinindexFieldId;
    static constexpr BitVector MaxindexFieldMask = TypeTraits<BitVector>::One << MaxindexFieldId;
    static constexpr BitVector LowindicesFieldMask = TypeTraits<BitVector>::One << LowindicesFieldId;
    static constexpr BitVector HighindicesFieldMask = TypeTraits<BitVector>::One << HighindicesFieldId;
    static constexpr BitVector VboFieldMask = TypeTraits<BitVector>::One << VboFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(GeometryPtr)

    OSG_SFIELD_REF_ACCESSORS(SFGeoPTypesPtr, GeoPTypesPtr, Types)
    OSG_SFIELD_REF_ACCESSORS(SFGeoPLengthsPtr, GeoPLengthsPtr, Lengths)
    OSG_SFIELD_REF_ACCESSORS(SFGeoPositionsPtr, GeoPositionsPtr, Positions)
    OSG_SFIELD_REF_ACCESSORS(SFGeoNormalsPtr, GeoNormalsPtr, Normals)
    OSG_SFIELD_REF_ACCESSORS(SFGeoColorsPtr, GeoColorsPtr, Colors)
    OSG_SFIELD_REF_ACCESSORS(SFGeoColorsPtr, GeoColorsPtr, SecondaryColors)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords1)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords2)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords3)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords4)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords5)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords6)
    OSG_SFIELD_REF_ACCESSORS(SFGeoTexCoordsPtr, GeoTexCoordsPtr, TexCoords7)
    OSG_SFIELD_REF_ACCESSORS(SFGeoIndicesPtr, GeoIndicesPtr, Indices)
    OSG_MFIELD_ACCESSORS(MFUInt16, UInt16, IndexMapping)
    OSG_SFIELD_ACCESSORS(SFBool, bool, DlistCache)
    OSG_SFIELD_ACCESSORS(SFInt32, Int32, GLId)
    OSG_SFIELD_ACCESSORS(SFInt32, Int32, IgnoreGLForAspect)
    OSG_SFIELD_ACCESSORS(SFInt32, Int32, Minindex)
    OSG_SFIELD_ACCESSORS(SFInt32, Int32, Maxindex)
    OSG_MFIELD_ACCESSORS(MFUInt32, UInt32, Lowindices)
    OSG_MFIELD_ACCESSORS(MFUInt32, UInt32, Highindices)
    OSG_SFIELD_ACCESSORS(SFBool, bool, Vbo)

protected:
    GeometryBase();
    GeometryBase(const GeometryBase& source);
    ~GeometryBase() override; // releases the referenced properties
};

} // namespace osg

#endif
