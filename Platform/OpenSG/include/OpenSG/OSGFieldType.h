#ifndef _OSGFIELDTYPE_H_
#define _OSGFIELDTYPE_H_

#include "OSGDataType.h"

namespace osg {

// The type of a field ("SFVec3f", "MFNodePtr", ...): a cardinality and a content type.
class OSG_SYSTEMLIB_DLLMAPPING FieldType : public DataType
{
public:
    enum Cardinality
    {
        SINGLE_FIELD,
        MULTI_FIELD
    };

    FieldType(const Char8* name, const Char8* parentName, const DataType& contentType,
              Cardinality cardinality)
        : DataType(name, parentName), _contentType(contentType), _cardinality(cardinality)
    {}

    const DataType& getContentType() const { return _contentType; }
    Cardinality getCardinality() const { return _cardinality; }
    // Only one scanner exists here; the scan type is the field type itself.
    UInt32 getScanTypeId() const { return getId(); }

private:
    const DataType& _contentType;
    Cardinality _cardinality;
};

} // namespace osg

#endif
