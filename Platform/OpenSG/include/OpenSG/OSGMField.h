#ifndef _OSGMFIELD_H_
#define _OSGMFIELD_H_

#include "OSGField.h"

#include <algorithm>
#include <iostream>
#include <vector>

namespace osg {

template <class T>
class MFieldVector : public std::vector<T>
{
    typedef std::vector<T> Inherited;

public:
    using Inherited::Inherited;
};

// Multi-value field with an STL-like interface over its vector.
// Exported even from libraries built with hidden visibility: the type object behind
// getClassType() must be one per process, not one per library that instantiates the template.
template <class FieldTypeT, Int32 fieldNameSpace = 0>
class OSG_SYSTEMLIB_DLLMAPPING MField : public Field
{
public:
    typedef FieldTypeT StoredType;
    typedef MFieldVector<FieldTypeT> StorageType;
    typedef FieldDataTraits<FieldTypeT, fieldNameSpace> MFieldTraits;
    typedef const FieldTypeT& ArgumentType;
    typedef typename StorageType::iterator iterator;
    typedef typename StorageType::const_iterator const_iterator;
    typedef typename StorageType::reverse_iterator reverse_iterator;
    typedef typename StorageType::const_reverse_iterator const_reverse_iterator;
    typedef typename StorageType::reference reference;
    typedef typename StorageType::const_reference const_reference;
    typedef typename StorageType::size_type size_type;
    typedef typename StorageType::value_type value_type;

    static const FieldType& getClassType()
    {
        static const FieldType type(MFieldTraits::getMName(), "Field", MFieldTraits::getType(),
                                    FieldType::MULTI_FIELD);
        return type;
    }

    MField() = default;
    explicit MField(UInt32 size) : _values(size) {}
    MField(const MField&) = default;
    MField& operator=(const MField&) = default;

    const FieldType& getType() const override { return getClassType(); }

    StorageType& getValues() { return _values; }
    const StorageType& getValues() const { return _values; }
    void setValues(const StorageType& values) { _values = values; }
    void setValues(const MField& other) { _values = other._values; }

    iterator begin() { return _values.begin(); }
    iterator end() { return _values.end(); }
    const_iterator begin() const { return _values.begin(); }
    const_iterator end() const { return _values.end(); }
    reverse_iterator rbegin() { return _values.rbegin(); }
    reverse_iterator rend() { return _values.rend(); }
    const_reverse_iterator rbegin() const { return _values.rbegin(); }
    const_reverse_iterator rend() const { return _values.rend(); }

    reference front() { return _values.front(); }
    const_reference front() const { return _values.front(); }
    reference back() { return _values.back(); }
    const_reference back() const { return _values.back(); }

    UInt32 size() const { return UInt32(_values.size()); }
    bool empty() const { return _values.empty(); }
    UInt32 capacity() const { return UInt32(_values.capacity()); }
    void reserve(UInt32 n) { _values.reserve(n); }
    void resize(UInt32 n, const FieldTypeT& v = FieldTypeT()) { _values.resize(n, v); }
    void clear() { _values.clear(); }
    void swap(MField& other) { _values.swap(other._values); }

    void push_back(ArgumentType v) { _values.push_back(v); }
    iterator insert(iterator pos, ArgumentType v) { return _values.insert(pos, v); }
    iterator erase(iterator pos) { return _values.erase(pos); }
    iterator erase(iterator first, iterator last) { return _values.erase(first, last); }
    iterator find(ArgumentType v) { return std::find(_values.begin(), _values.end(), v); }
    const_iterator find(ArgumentType v) const { return std::find(_values.begin(), _values.end(), v); }

    reference operator[](UInt32 i) { return _values[i]; }
    const_reference operator[](UInt32 i) const { return _values[i]; }

    // Older element access, kept for old code.
    reference getValue(UInt32 i) { return _values[i]; }
    const_reference getValue(UInt32 i) const { return _values[i]; }
    void setValue(ArgumentType v, UInt32 i) { _values[i] = v; }
    void addValue(ArgumentType v) { _values.push_back(v); }

    bool isEmpty() const override { return _values.empty(); }
    UInt32 getSize() const override { return size(); }

    void pushValueByStr(const Char8* str) override
    {
        if (str == nullptr)
            return;
        FieldTypeT v = FieldTypeT();
        if (MFieldTraits::getFromString(v, str))
            _values.push_back(v);
    }
    std::string& getValueByStr(std::string& str) const override
    {
        std::string element;
        for (size_type i = 0; i < _values.size(); ++i) {
            if (i > 0)
                str.append(", ");
            MFieldTraits::putToString(_values[i], element);
            str.append(element);
        }
        return str;
    }
    std::string& getValueByStr(std::string& str, StringConversionStateBase&) const override
    {
        return getValueByStr(str);
    }
    std::string& getValueByStr(std::string& str, UInt32 index) const override
    {
        if (index < _values.size())
            MFieldTraits::putToString(_values[index], str);
        return str;
    }

    void setAbstrValue(const Field& other) override
    {
        if (other.getType() == getClassType())
            _values = static_cast<const MField&>(other)._values;
    }

    void dump() const override
    {
        std::string s;
        std::cout << getClassType().getCName() << " : " << getValueByStr(s) << std::endl;
    }

protected:
    StorageType _values;
};

} // namespace osg

#endif
