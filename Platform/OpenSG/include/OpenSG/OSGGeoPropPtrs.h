#ifndef _OSGGEOPROPPTRS_H_
#define _OSGGEOPROPPTRS_H_

#include "OSGAttachmentFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

// Handles of the abstract geometry properties a Geometry points to. Unlike OpenSG, the property
// classes are only declared here: nothing renders, so no property container exists and a
// Geometry's property fields stay null.
class GeoPTypes;
class GeoPLengths;
class GeoPositions;
class GeoNormals;
class GeoColors;
class GeoTexCoords;
class GeoIndices;

typedef FCPtr<AttachmentPtr, GeoPTypes> GeoPTypesPtr;
typedef FCPtr<AttachmentPtr, GeoPLengths> GeoPLengthsPtr;
typedef FCPtr<AttachmentPtr, GeoPositions> GeoPositionsPtr;
typedef FCPtr<AttachmentPtr, GeoNormals> GeoNormalsPtr;
typedef FCPtr<AttachmentPtr, GeoColors> GeoColorsPtr;
typedef FCPtr<AttachmentPtr, GeoTexCoords> GeoTexCoordsPtr;
typedef FCPtr<AttachmentPtr, GeoIndices> GeoIndicesPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(GeoPTypesPtr)
OSG_DECL_FC_PTR_FIELD_TRAITS(GeoPLengthsPtr)
OSG_DECL_FC_PTR_FIELD_TRAITS(GeoPositionsPtr)
OSG_DECL_FC_PTR_FIELD_TRAITS(GeoNormalsPtr)
OSG_DECL_FC_PTR_FIELD_TRAITS(GeoColorsPtr)
OSG_DECL_FC_PTR_FIELD_TRAITS(GeoTexCoordsPtr)
OSG_DECL_FC_PTR_FIELD_TRAITS(GeoIndicesPtr)

typedef SField<GeoPTypesPtr> SFGeoPTypesPtr;
typedef SField<GeoPLengthsPtr> SFGeoPLengthsPtr;
typedef SField<GeoPositionsPtr> SFGeoPositionsPtr;
typedef SField<GeoNormalsPtr> SFGeoNormalsPtr;
typedef SField<GeoColorsPtr> SFGeoColorsPtr;
typedef SField<GeoTexCoordsPtr> SFGeoTexCoordsPtr;
typedef SField<GeoIndicesPtr> SFGeoIndicesPtr;

} // namespace osg

#endif
