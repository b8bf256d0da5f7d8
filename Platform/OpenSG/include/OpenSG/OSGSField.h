#ifndef _OSGSFIELD_H_
#define _OSGSFIELD_H_

#include "OSGField.h"

#include <iostream>

namespace osg {

// Single-value field.
// Exported even from libraries built with hidden visibility: the type object behind
// getClassType() must be one per process, not one per library that instantiates the template.
template <class FieldTypeT, Int32 fieldNameSpace = 0>
class OSG_SYSTEMLIB_DLLMAPPING SField : public Field
{
public:
    typedef FieldTypeT StoredType;
    typedef FieldDataTraits<FieldTypeT, fieldNameSpace> SFieldTraits;
    typedef const FieldTypeT& ArgumentType;
    typedef FieldTypeT& reference;
    typedef const FieldTypeT& const_reference;

    static const FieldType& getClassType()
    {
        static const FieldType type(SFieldTraits::getSName(), "Field", SFieldTraits::getType(),
                                    FieldType::SINGLE_FIELD);
        return type;
    }

    SField() : _value() {}
    explicit SField(ArgumentType value) : _value(value) {}
    SField(const SField&) = default;
    SField& operator=(const SField&) = default;

    const FieldType& getType() const override { return getClassType(); }

    FieldTypeT& getValue() { return _value; }
    const FieldTypeT& getValue() const { return _value; }
    void setValue(ArgumentType value) { _value = value; }
    void setValue(const SField& other) { _value = other._value; }

    bool isEmpty() const override { return false; }
    UInt32 getSize() const override { return 1; }

    void pushValueByStr(const Char8* str) override
    {
        if (str != nullptr)
            SFieldTraits::getFromString(_value, str);
    }
    std::string& getValueByStr(std::string& str) const override
    {
        SFieldTraits::putToString(_value, str);
        return str;
    }
    std::string& getValueByStr(std::string& str, StringConversionStateBase&) const override
    {
        return getValueByStr(str);
    }
    std::string& getValueByStr(std::string& str, UInt32 index) const override
    {
        if (index == 0)
            getValueByStr(str);
        return str;
    }

    void setAbstrValue(const Field& other) override
    {
        if (other.getType() == getClassType())
            _value = static_cast<const SField&>(other)._value;
    }

    void dump() const override
    {
        std::string s;
        std::cout << getClassType().getCName() << " : " << getValueByStr(s) << std::endl;
    }

protected:
    FieldTypeT _value;
};

} // namespace osg

#endif
