#ifndef _OSGVECTOR_H_
#define _OSGVECTOR_H_

#include "OSGBaseFunctions.h"
#include "OSGBaseTypes.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <istream>
#include <ostream>

namespace osg {

template <class ValueTypeT, UInt32 SizeI>
class Vector;

// Reads up to n numbers separated by blanks, tabs, newlines or commas; missing values become 0.
// Returns how many numbers were read.
template <class T>
inline UInt32 osgReadNumbers(const Char8* str, T* values, UInt32 n)
{
    for (UInt32 i = 0; i < n; ++i)
        values[i] = T(0);
    if (str == nullptr)
        return 0;
    const Char8* p = str;
    UInt32 count = 0;
    while (count < n) {
        while (*p == ' ' || *p == '\t' || *p == '\n' || *p == '\r' || *p == ',')
            ++p;
        if (*p == '\0')
            break;
        Char8* end = nullptr;
        double v = std::strtod(p, &end);
        if (end == p)
            break;
        values[count++] = T(v);
        p = end;
    }
    return count;
}

// A point in N-space. Vector derives from it and adds the vector operations. Components are
// zero-filled on default construction.
template <class ValueTypeT, UInt32 SizeI>
class OSG_SYSTEMLIB_DLLMAPPING Point
{
public:
    typedef ValueTypeT ValueType;
    typedef Vector<ValueTypeT, SizeI> VectorType;
    typedef Point<ValueTypeT, SizeI> PointType;
    static const UInt32 _iSize = SizeI;

    Point() { setNull(); }
    explicit Point(const ValueTypeT* values) { setValue(values); }
    Point(ValueTypeT a, ValueTypeT b) { setValues(a, b); }
    Point(ValueTypeT a, ValueTypeT b, ValueTypeT c) { setValues(a, b, c); }
    Point(ValueTypeT a, ValueTypeT b, ValueTypeT c, ValueTypeT d) { setValues(a, b, c, d); }
    template <class T2, UInt32 S2>
    explicit Point(const Point<T2, S2>& other)
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] = i < S2 ? ValueTypeT(other[i]) : ValueTypeT(0);
    }

    static UInt32 size() { return SizeI; }

    void setNull()
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] = ValueTypeT(0);
    }
    void setValue(const Point& other) { *this = other; }
    void setValue(const ValueTypeT* values)
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] = values[i];
    }
    void setValueFromCString(const Char8* str) { osgReadNumbers(str, _values, SizeI); }
    void setValue(const Char8* str) { setValueFromCString(str); }

    // Sets the first components; the others become 0.
    void setValues(ValueTypeT a, ValueTypeT b) { assign({a, b}); }
    void setValues(ValueTypeT a, ValueTypeT b, ValueTypeT c) { assign({a, b, c}); }
    void setValues(ValueTypeT a, ValueTypeT b, ValueTypeT c, ValueTypeT d) { assign({a, b, c, d}); }

    void getSeparateValues(ValueTypeT& a, ValueTypeT& b) const
    {
        a = _values[0];
        b = _values[1];
    }
    void getSeparateValues(ValueTypeT& a, ValueTypeT& b, ValueTypeT& c) const
    {
        static_assert(SizeI >= 3, "needs three components");
        a = _values[0];
        b = _values[1];
        c = _values[2];
    }
    void getSeparateValues(ValueTypeT& a, ValueTypeT& b, ValueTypeT& c, ValueTypeT& d) const
    {
        static_assert(SizeI >= 4, "needs four components");
        a = _values[0];
        b = _values[1];
        c = _values[2];
        d = _values[3];
    }

    ValueTypeT x() const { return _values[0]; }
    ValueTypeT y() const { return _values[1]; }
    ValueTypeT z() const
    {
        static_assert(SizeI >= 3, "z() needs three components");
        return _values[2];
    }
    ValueTypeT w() const
    {
        static_assert(SizeI >= 4, "w() needs four components");
        return _values[3];
    }

    ValueTypeT* getValues() { return _values; }
    const ValueTypeT* getValues() const { return _values; }

    void negate()
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] = -_values[i];
    }
    bool equals(const Point& other, ValueTypeT tolerance) const
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            if (osgabs(_values[i] - other._values[i]) > tolerance)
                return false;
        return true;
    }
    VectorType& subZero() { return *static_cast<VectorType*>(this); }
    const VectorType& subZero() const { return *static_cast<const VectorType*>(this); }
    ValueTypeT& operator[](UInt32 i) { return _values[i]; }
    const ValueTypeT& operator[](UInt32 i) const { return _values[i]; }

    Point& operator*=(ValueTypeT s)
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] *= s;
        return *this;
    }
    Point& operator/=(ValueTypeT s)
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] /= s;
        return *this;
    }
    Point& operator+=(const VectorType& v)
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] += v[i];
        return *this;
    }
    Point& operator-=(const VectorType& v)
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            _values[i] -= v[i];
        return *this;
    }

    VectorType operator-(const Point& other) const
    {
        VectorType r;
        for (UInt32 i = 0; i < SizeI; ++i)
            r[i] = _values[i] - other._values[i];
        return r;
    }
    Point operator+(const VectorType& v) const
    {
        Point r(*this);
        r += v;
        return r;
    }
    Point operator-(const VectorType& v) const
    {
        Point r(*this);
        r -= v;
        return r;
    }
    Point operator*(ValueTypeT s) const
    {
        Point r(*this);
        r *= s;
        return r;
    }
    Point operator-() const
    {
        Point r(*this);
        r.negate();
        return r;
    }

    bool operator==(const Point& other) const
    {
        for (UInt32 i = 0; i < SizeI; ++i)
            if (_values[i] != other._values[i])
                return false;
        return true;
    }
    bool operator!=(const Point& other) const { return !(*this == other); }
    bool operator<(const Point& other) const
    {
        for (UInt32 i = 0; i < SizeI; ++i) {
            if (_values[i] < other._values[i])
                return true;
            if (other._values[i] < _values[i])
                return false;
        }
        return false;
    }

protected:
    void assign(std::initializer_list<ValueTypeT> list)
    {
        UInt32 i = 0;
        for (ValueTypeT v : list) {
            if (i < SizeI)
                _values[i] = v;
            ++i;
        }
        for (; i < SizeI; ++i)
            _values[i] = ValueTypeT(0);
    }

    ValueTypeT _values[SizeI];
};

template <class ValueTypeT, UInt32 SizeI>
class OSG_SYSTEMLIB_DLLMAPPING Vector : public Point<ValueTypeT, SizeI>
{
    typedef Point<ValueTypeT, SizeI> Inherited;

public:
    typedef typename Inherited::PointType PointType;

    Vector() : Inherited() {}
    explicit Vector(const ValueTypeT* values) : Inherited(values) {}
    Vector(ValueTypeT a, ValueTypeT b) : Inherited(a, b) {}
    Vector(ValueTypeT a, ValueTypeT b, ValueTypeT c) : Inherited(a, b, c) {}
    Vector(ValueTypeT a, ValueTypeT b, ValueTypeT c, ValueTypeT d) : Inherited(a, b, c, d) {}
    template <class T2, UInt32 S2>
    explicit Vector(const Point<T2, S2>& other) : Inherited(other)
    {}
    Vector(const Inherited& other) : Inherited(other) {}

    ValueTypeT squareLength() const
    {
        ValueTypeT sum = 0;
        for (UInt32 i = 0; i < SizeI; ++i)
            sum += this->_values[i] * this->_values[i];
        return sum;
    }
    ValueTypeT length() const { return osgsqrt(squareLength()); }
    void normalize()
    {
        ValueTypeT len = length();
        if (len > ValueTypeT(Eps))
            *this /= len;
    }
    ValueTypeT dot(const Vector& v) const
    {
        ValueTypeT sum = 0;
        for (UInt32 i = 0; i < SizeI; ++i)
            sum += this->_values[i] * v[i];
        return sum;
    }
    ValueTypeT operator*(const Vector& v) const { return dot(v); }
    PointType& addToZero() { return *this; }
    const PointType& addToZero() const { return *this; }

    Vector operator+(const Vector& v) const
    {
        Vector r(*this);
        r += v;
        return r;
    }
    Vector operator-(const Vector& v) const
    {
        Vector r(*this);
        r -= v;
        return r;
    }
    Vector operator*(ValueTypeT s) const
    {
        Vector r(*this);
        r *= s;
        return r;
    }
    Vector operator/(ValueTypeT s) const
    {
        Vector r(*this);
        r /= s;
        return r;
    }
    Vector operator-() const
    {
        Vector r(*this);
        r.negate();
        return r;
    }
};

template <class T, UInt32 S>
inline Vector<T, S> operator*(T s, const Vector<T, S>& v)
{
    return v * s;
}

template <class T, UInt32 S>
inline std::ostream& operator<<(std::ostream& os, const Point<T, S>& p)
{
    for (UInt32 i = 0; i < S; ++i) {
        if (i > 0)
            os << ", ";
        os << p[i];
    }
    return os;
}

template <class T, UInt32 S>
inline std::istream& operator>>(std::istream& is, Point<T, S>& p)
{
    for (UInt32 i = 0; i < S; ++i) {
        if (i > 0) {
            is >> std::ws;
            if (is.peek() == ',')
                is.get();
        }
        is >> p[i];
    }
    return is;
}

typedef Vector<Real32, 2> Vec2f;
typedef Vector<Real32, 3> Vec3f;
typedef Vector<Real32, 4> Vec4f;
typedef Vector<Real64, 2> Vec2d;
typedef Vector<Real64, 3> Vec3d;
typedef Vector<Real64, 4> Vec4d;
typedef Vector<Int16, 3> Vec3s;
typedef Vector<UInt8, 4> Vec4ub;
typedef Point<Real32, 2> Pnt2f;
typedef Point<Real32, 3> Pnt3f;
typedef Point<Real32, 4> Pnt4f;
typedef Point<Real64, 2> Pnt2d;
typedef Point<Real64, 3> Pnt3d;
typedef Point<Real64, 4> Pnt4d;

} // namespace osg

#endif
