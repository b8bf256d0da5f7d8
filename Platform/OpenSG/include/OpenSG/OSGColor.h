#ifndef _OSGCOLOR_H_
#define _OSGCOLOR_H_

#include "OSGBaseFunctions.h"
#include "OSGBaseTypes.h"
#include "OSGVector.h"

#include <ostream>

namespace osg {

template <class ValueTypeT>
class OSG_SYSTEMLIB_DLLMAPPING Color3
{
public:
    typedef ValueTypeT ValueType;

    Color3() { clear(); }
    Color3(ValueTypeT r, ValueTypeT g, ValueTypeT b) { setValuesRGB(r, g, b); }

    void clear() { _rgb[0] = _rgb[1] = _rgb[2] = ValueTypeT(0); }
    void setValuesRGB(ValueTypeT r, ValueTypeT g, ValueTypeT b)
    {
        _rgb[0] = r;
        _rgb[1] = g;
        _rgb[2] = b;
    }
    void getValuesRGB(ValueTypeT& r, ValueTypeT& g, ValueTypeT& b) const
    {
        r = _rgb[0];
        g = _rgb[1];
        b = _rgb[2];
    }
    ValueTypeT* getValuesRGB() { return _rgb; }
    const ValueTypeT* getValuesRGB() const { return _rgb; }
    void setValue(const Char8* str) { osgReadNumbers(str, _rgb, 3); }

    ValueTypeT red() const { return _rgb[0]; }
    ValueTypeT green() const { return _rgb[1]; }
    ValueTypeT blue() const { return _rgb[2]; }

    ValueTypeT& operator[](UInt32 i) { return _rgb[i]; }
    const ValueTypeT& operator[](UInt32 i) const { return _rgb[i]; }

    bool equals(const Color3& c, ValueTypeT tol) const
    {
        for (UInt32 i = 0; i < 3; ++i)
            if (osgabs(_rgb[i] - c._rgb[i]) > tol)
                return false;
        return true;
    }
    Color3 operator*(ValueTypeT s) const { return Color3(_rgb[0] * s, _rgb[1] * s, _rgb[2] * s); }
    Color3 operator/(ValueTypeT s) const { return Color3(_rgb[0] / s, _rgb[1] / s, _rgb[2] / s); }
    Color3 operator+(const Color3& c) const { return Color3(_rgb[0] + c[0], _rgb[1] + c[1], _rgb[2] + c[2]); }
    Color3 operator-(const Color3& c) const { return Color3(_rgb[0] - c[0], _rgb[1] - c[1], _rgb[2] - c[2]); }
    Color3 operator*(const Color3& c) const { return Color3(_rgb[0] * c[0], _rgb[1] * c[1], _rgb[2] * c[2]); }
    Color3& operator*=(ValueTypeT s) { return *this = *this * s; }
    Color3& operator+=(const Color3& c) { return *this = *this + c; }
    bool operator==(const Color3& c) const { return _rgb[0] == c[0] && _rgb[1] == c[1] && _rgb[2] == c[2]; }
    bool operator!=(const Color3& c) const { return !(*this == c); }
    bool operator<(const Color3& c) const
    {
        for (UInt32 i = 0; i < 3; ++i) {
            if (_rgb[i] != c[i])
                return _rgb[i] < c[i];
        }
        return false;
    }

protected:
    ValueTypeT _rgb[3];
};

template <class ValueTypeT>
class OSG_SYSTEMLIB_DLLMAPPING Color4
{
public:
    typedef ValueTypeT ValueType;

    Color4() { clear(); }
    Color4(ValueTypeT r, ValueTypeT g, ValueTypeT b, ValueTypeT a) { setValuesRGBA(r, g, b, a); }

    void clear() { _rgba[0] = _rgba[1] = _rgba[2] = _rgba[3] = ValueTypeT(0); }
    void setValuesRGBA(ValueTypeT r, ValueTypeT g, ValueTypeT b, ValueTypeT a)
    {
        _rgba[0] = r;
        _rgba[1] = g;
        _rgba[2] = b;
        _rgba[3] = a;
    }
    void getValuesRGBA(ValueTypeT& r, ValueTypeT& g, ValueTypeT& b, ValueTypeT& a) const
    {
        r = _rgba[0];
        g = _rgba[1];
        b = _rgba[2];
        a = _rgba[3];
    }
    ValueTypeT* getValuesRGBA() { return _rgba; }
    const ValueTypeT* getValuesRGBA() const { return _rgba; }
    void setValue(const Char8* str) { osgReadNumbers(str, _rgba, 4); }

    ValueTypeT red() const { return _rgba[0]; }
    ValueTypeT green() const { return _rgba[1]; }
    ValueTypeT blue() const { return _rgba[2]; }
    ValueTypeT alpha() const { return _rgba[3]; }

    ValueTypeT& operator[](UInt32 i) { return _rgba[i]; }
    const ValueTypeT& operator[](UInt32 i) const { return _rgba[i]; }

    bool equals(const Color4& c, ValueTypeT tol) const
    {
        for (UInt32 i = 0; i < 4; ++i)
            if (osgabs(_rgba[i] - c._rgba[i]) > tol)
                return false;
        return true;
    }
    Color4 operator*(ValueTypeT s) const
    {
        return Color4(_rgba[0] * s, _rgba[1] * s, _rgba[2] * s, _rgba[3] * s);
    }
    Color4 operator+(const Color4& c) const
    {
        return Color4(_rgba[0] + c[0], _rgba[1] + c[1], _rgba[2] + c[2], _rgba[3] + c[3]);
    }
    Color4 operator-(const Color4& c) const
    {
        return Color4(_rgba[0] - c[0], _rgba[1] - c[1], _rgba[2] - c[2], _rgba[3] - c[3]);
    }
    bool operator==(const Color4& c) const
    {
        return _rgba[0] == c[0] && _rgba[1] == c[1] && _rgba[2] == c[2] && _rgba[3] == c[3];
    }
    bool operator!=(const Color4& c) const { return !(*this == c); }
    bool operator<(const Color4& c) const
    {
        for (UInt32 i = 0; i < 4; ++i) {
            if (_rgba[i] != c[i])
                return _rgba[i] < c[i];
        }
        return false;
    }

protected:
    ValueTypeT _rgba[4];
};

template <class T>
inline std::ostream& operator<<(std::ostream& os, const Color3<T>& c)
{
    return os << c[0] << ", " << c[1] << ", " << c[2];
}

template <class T>
inline std::ostream& operator<<(std::ostream& os, const Color4<T>& c)
{
    return os << c[0] << ", " << c[1] << ", " << c[2] << ", " << c[3];
}

typedef Color3<Real32> Color3f;
typedef Color4<Real32> Color4f;
typedef Color3<UInt8> Color3ub;
typedef Color4<UInt8> Color4ub;

} // namespace osg

#endif
