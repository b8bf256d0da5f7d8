#ifndef _OSGFIELD_H_
#define _OSGFIELD_H_

#include "OSGBaseTypes.h"
#include "OSGFieldDataType.h"
#include "OSGFieldType.h"

#include <string>

namespace osg {

// Abstract base of every field. Fields are members of their container; FieldContainer::getField
// hands out pointers to them.
class OSG_SYSTEMLIB_DLLMAPPING Field
{
public:
    virtual ~Field() = default;

    virtual const FieldType& getType() const = 0;
    const DataType& getContentType() const { return getType().getContentType(); }
    FieldType::Cardinality getCardinality() const { return getType().getCardinality(); }

    virtual bool isEmpty() const = 0;
    virtual UInt32 getSize() const = 0;

    // SF: replaces the value; MF: appends one element. Unreadable text changes nothing.
    virtual void pushValueByStr(const Char8* str) = 0;
    // SF: overwrites str with the value's text; MF: appends every element, separated by ", ".
    virtual std::string& getValueByStr(std::string& str) const = 0;
    virtual std::string& getValueByStr(std::string& str, StringConversionStateBase& state) const = 0;
    // The text of one element (SF: index 0 only), overwriting str; other indices leave it alone.
    virtual std::string& getValueByStr(std::string& str, UInt32 index) const = 0;

    // Copies the value of a field of the same type; a field of another type is ignored.
    virtual void setAbstrValue(const Field& other) = 0;

    virtual void dump() const = 0;

protected:
    Field() = default;
    Field(const Field&) = default;
    Field& operator=(const Field&) = default;
};

} // namespace osg

#endif
