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

    // Colour as 0xRRGGBB, components scaled to 0..255 for floating-point colours.
    void setRGB(UInt32 rgb)
    {
        _rgb[0] = fromByte((rgb >> 16) & 0xff);
        _rgb[1] = fromByte((rgb >> 8) & 0xff);
        _rgb[2] = fromByte(rgb & 0xff);
    }
    UInt32 getRGB() const { return (toByte(_rgb[0]) << 16) | (toByte(_rgb[1]) << 8) | toByte(_rgb[2]); }

    // h in degrees (0..360), s and v in 0..1.
    void setValuesHSV(Real32 h, Real32 s, Real32 v)
    {
        if (s <= 0.f) {
            setValuesRGB(ValueTypeT(v), ValueTypeT(v), ValueTypeT(v));
            return;
        }
        Real32 hh = h;
        while (hh >= 360.f)
            hh -= 360.f;
        while (hh < 0.f)
            hh += 360.f;
        hh /= 60.f;
        Int32 i = Int32(hh);
        Real32 f = hh - Real32(i);
        Real32 p = v * (1.f - s), q = v * (1.f - s * f), t = v * (1.f - s * (1.f - f));
        Real32 r = v, g = t, b = p;
        switch (i) {
        case 1:
            r = q, g = v, b = p;
            break;
        case 2:
            r = p, g = v, b = t;
            break;
        case 3:
            r = p, g = q, b = v;
            break;
        case 4:
            r = t, g = p, b = v;
            break;
        case 5:
            r = v, g = p, b = q;
            break;
        default:
            break;
        }
        setValuesRGB(ValueTypeT(r), ValueTypeT(g), ValueTypeT(b));
    }
    void getValuesHSV(Real32& h, Real32& s, Real32& v) const
    {
        Real32 r = Real32(_rgb[0]), g = Real32(_rgb[1]), b = Real32(_rgb[2]);
        Real32 mx = osgMax(r, osgMax(g, b)), mn = osgMin(r, osgMin(g, b));
        v = mx;
        s = mx > 0.f ? (mx - mn) / mx : 0.f;
        if (s <= 0.f) {
            h = 0.f;
            return;
        }
        Real32 d = mx - mn;
        if (r == mx)
            h = (g - b) / d;
        else if (g == mx)
            h = 2.f + (b - r) / d;
        else
            h = 4.f + (r - g) / d;
        h *= 60.f;
        if (h < 0.f)
            h += 360.f;
    }

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

    static ValueTypeT fromByte(UInt32 b)
    {
        if (std::numeric_limits<ValueTypeT>::is_integer)
            return ValueTypeT(b);
        return ValueTypeT(Real32(b) / 255.f);
    }
    static UInt32 toByte(ValueTypeT v)
    {
        if (std::numeric_limits<ValueTypeT>::is_integer)
            return UInt32(v) & 0xff;
        Real32 f = Real32(v) * 255.f + 0.5f;
        return f <= 0.f ? 0u : (f >= 255.f ? 255u : UInt32(f));
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

    // Colour as 0xRRGGBBAA.
    void setRGBA(UInt32 rgba)
    {
        _rgba[0] = Color3<ValueTypeT>::fromByte((rgba >> 24) & 0xff);
        _rgba[1] = Color3<ValueTypeT>::fromByte((rgba >> 16) & 0xff);
        _rgba[2] = Color3<ValueTypeT>::fromByte((rgba >> 8) & 0xff);
        _rgba[3] = Color3<ValueTypeT>::fromByte(rgba & 0xff);
    }
    UInt32 getRGBA() const
    {
        return (Color3<ValueTypeT>::toByte(_rgba[0]) << 24) | (Color3<ValueTypeT>::toByte(_rgba[1]) << 16) |
               (Color3<ValueTypeT>::toByte(_rgba[2]) << 8) | Color3<ValueTypeT>::toByte(_rgba[3]);
    }

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
