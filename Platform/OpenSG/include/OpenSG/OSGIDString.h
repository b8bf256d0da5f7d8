#ifndef _OSGIDSTRING_H_
#define _OSGIDSTRING_H_

#include "OSGBaseTypes.h"

#include <ostream>
#include <string>

namespace osg {

// Immutable name of a type or field. There is deliberately no implicit conversion to
// std::string: use str().
class OSG_SYSTEMLIB_DLLMAPPING IDString
{
public:
    IDString() = default;
    explicit IDString(const Char8* str) : _str(str != nullptr ? str : "") {}

    const Char8* str() const { return _str.c_str(); }
    UInt32 getLength() const { return UInt32(_str.size()); }
    bool isEmpty() const { return _str.empty(); }

    bool operator==(const IDString& other) const { return _str == other._str; }
    bool operator!=(const IDString& other) const { return _str != other._str; }
    bool operator<(const IDString& other) const { return _str < other._str; }

private:
    std::string _str;
};

inline std::ostream& operator<<(std::ostream& os, const IDString& s)
{
    return os << s.str();
}

} // namespace osg

#endif
