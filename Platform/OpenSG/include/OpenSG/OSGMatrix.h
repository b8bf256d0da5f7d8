#ifndef _OSGMATRIX_H_
#define _OSGMATRIX_H_

#include "OSGBaseFunctions.h"
#include "OSGBaseTypes.h"
#include "OSGQuaternion.h"
#include "OSGVector.h"

#include <iomanip>
#include <ostream>

namespace osg {

// 4x4 transformation matrix stored as four column vectors, so m[col][row]; the translation is
// m[3][0..2] and getValues() yields the column-major array OpenGL expects. The 16-value
// constructor and setValue take their arguments row by row.
template <class ValueTypeT>
class OSG_SYSTEMLIB_DLLMAPPING TransformationMatrix
{
public:
    typedef ValueTypeT ValueType;
    typedef Vector<ValueTypeT, 4> VectorType;
    typedef Vector<ValueTypeT, 3> VectorType3f;
    typedef Point<ValueTypeT, 3> PointType3f;
    typedef QuaternionBase<ValueTypeT> QuaternionType;

    TransformationMatrix() { setIdentity(); }
    TransformationMatrix(const VectorType3f& c0, const VectorType3f& c1, const VectorType3f& c2,
                         const VectorType3f& c3)
    {
        for (UInt32 r = 0; r < 3; ++r) {
            _matrix[0][r] = c0[r];
            _matrix[1][r] = c1[r];
            _matrix[2][r] = c2[r];
            _matrix[3][r] = c3[r];
        }
        _matrix[0][3] = _matrix[1][3] = _matrix[2][3] = ValueTypeT(0);
        _matrix[3][3] = ValueTypeT(1);
    }
    TransformationMatrix(ValueTypeT r0c0, ValueTypeT r0c1, ValueTypeT r0c2, ValueTypeT r0c3, ValueTypeT r1c0,
                         ValueTypeT r1c1, ValueTypeT r1c2, ValueTypeT r1c3, ValueTypeT r2c0, ValueTypeT r2c1,
                         ValueTypeT r2c2, ValueTypeT r2c3, ValueTypeT r3c0, ValueTypeT r3c1, ValueTypeT r3c2,
                         ValueTypeT r3c3)
    {
        setValue(r0c0, r0c1, r0c2, r0c3, r1c0, r1c1, r1c2, r1c3, r2c0, r2c1, r2c2, r2c3, r3c0, r3c1, r3c2,
                 r3c3);
    }

    static const TransformationMatrix& identity()
    {
        static const TransformationMatrix id;
        return id;
    }

    void setIdentity()
    {
        for (UInt32 c = 0; c < 4; ++c)
            for (UInt32 r = 0; r < 4; ++r)
                _matrix[c][r] = c == r ? ValueTypeT(1) : ValueTypeT(0);
    }

    // Row by row: the first four values are row 0, i.e. m[0][0], m[1][0], m[2][0], m[3][0].
    void setValue(ValueTypeT r0c0, ValueTypeT r0c1, ValueTypeT r0c2, ValueTypeT r0c3, ValueTypeT r1c0,
                  ValueTypeT r1c1, ValueTypeT r1c2, ValueTypeT r1c3, ValueTypeT r2c0, ValueTypeT r2c1,
                  ValueTypeT r2c2, ValueTypeT r2c3, ValueTypeT r3c0, ValueTypeT r3c1, ValueTypeT r3c2,
                  ValueTypeT r3c3)
    {
        const ValueTypeT v[16] = {r0c0, r0c1, r0c2, r0c3, r1c0, r1c1, r1c2, r1c3,
                                  r2c0, r2c1, r2c2, r2c3, r3c0, r3c1, r3c2, r3c3};
        setValue(v, false);
    }
    void setValue(const TransformationMatrix& other) { *this = other; }
    // transposed = true reads the array column by column (OpenGL order), false row by row.
    void setValue(const ValueTypeT* values, bool transposed = true)
    {
        for (UInt32 i = 0; i < 16; ++i) {
            if (transposed)
                _matrix[i / 4][i % 4] = values[i];
            else
                _matrix[i % 4][i / 4] = values[i];
        }
    }
    // Missing trailing values become 0; a string without any number gives the identity.
    void setValue(const Char8* str, bool transposed = true)
    {
        ValueTypeT v[16];
        if (osgReadNumbers(str, v, 16) == 0) {
            setIdentity();
            return;
        }
        setValue(v, transposed);
    }

    ValueTypeT* getValues() { return _matrix[0].getValues(); }
    const ValueTypeT* getValues() const { return _matrix[0].getValues(); }

    VectorType& operator[](UInt32 col) { return _matrix[col]; }
    const VectorType& operator[](UInt32 col) const { return _matrix[col]; }

    void setScale(ValueTypeT s) { setScale(s, s, s); }
    void setScale(ValueTypeT sx, ValueTypeT sy, ValueTypeT sz)
    {
        setIdentity();
        _matrix[0][0] = sx;
        _matrix[1][1] = sy;
        _matrix[2][2] = sz;
    }
    void setScale(const VectorType3f& s) { setScale(s[0], s[1], s[2]); }
    void setTranslate(ValueTypeT x, ValueTypeT y, ValueTypeT z)
    {
        setIdentity();
        _matrix[3][0] = x;
        _matrix[3][1] = y;
        _matrix[3][2] = z;
    }
    void setTranslate(const VectorType3f& t) { setTranslate(t[0], t[1], t[2]); }
    void setTranslate(const PointType3f& t) { setTranslate(t[0], t[1], t[2]); }
    void setRotate(const QuaternionType& q) { q.getValue(*this); }

    void setTransform(const VectorType3f& t) { setTranslate(t); }
    void setTransform(const QuaternionType& r) { setRotate(r); }
    void setTransform(const VectorType3f& t, const QuaternionType& r)
    {
        setRotate(r);
        _matrix[3][0] = t[0];
        _matrix[3][1] = t[1];
        _matrix[3][2] = t[2];
    }
    void setTransform(const VectorType3f& t, const QuaternionType& r, const VectorType3f& s)
    {
        setTransform(t, r, s, QuaternionType::identity(), VectorType3f());
    }
    void setTransform(const VectorType3f& t, const QuaternionType& r, const VectorType3f& s,
                      const QuaternionType& so)
    {
        setTransform(t, r, s, so, VectorType3f());
    }
    // T * C * R * SO * S * SO^-1 * C^-1: scale along the scale orientation, rotate about the
    // centre, then translate.
    void setTransform(const VectorType3f& t, const QuaternionType& r, const VectorType3f& s,
                      const QuaternionType& so, const VectorType3f& c)
    {
        TransformationMatrix tmp;
        setTranslate(t[0] + c[0], t[1] + c[1], t[2] + c[2]);
        tmp.setRotate(r);
        mult(tmp);
        tmp.setRotate(so);
        mult(tmp);
        tmp.setScale(s);
        mult(tmp);
        tmp.setRotate(so.inverse());
        mult(tmp);
        tmp.setTranslate(-c[0], -c[1], -c[2]);
        mult(tmp);
    }

    // this = this * m
    void mult(const TransformationMatrix& m) { *this = product(*this, m); }

    void multMatrixPnt(const PointType3f& src, PointType3f& dst) const
    {
        PointType3f r;
        for (UInt32 row = 0; row < 3; ++row)
            r[row] = _matrix[0][row] * src[0] + _matrix[1][row] * src[1] + _matrix[2][row] * src[2] +
                     _matrix[3][row];
        dst = r;
    }
    void multMatrixPnt(PointType3f& pnt) const { multMatrixPnt(pnt, pnt); }
    void multMatrixVec(const VectorType3f& src, VectorType3f& dst) const
    {
        VectorType3f r;
        for (UInt32 row = 0; row < 3; ++row)
            r[row] = _matrix[0][row] * src[0] + _matrix[1][row] * src[1] + _matrix[2][row] * src[2];
        dst = r;
    }
    void multMatrixVec(VectorType3f& vec) const { multMatrixVec(vec, vec); }
    void mult(const PointType3f& src, PointType3f& dst) const { multMatrixPnt(src, dst); }
    void mult(const VectorType3f& src, VectorType3f& dst) const { multMatrixVec(src, dst); }

    bool equals(const TransformationMatrix& m, ValueTypeT tol) const
    {
        for (UInt32 c = 0; c < 4; ++c)
            if (!_matrix[c].equals(m._matrix[c], tol))
                return false;
        return true;
    }
    bool operator==(const TransformationMatrix& m) const { return equals(m, ValueTypeT(Eps)); }
    bool operator!=(const TransformationMatrix& m) const { return !(*this == m); }

private:
    static TransformationMatrix product(const TransformationMatrix& a, const TransformationMatrix& b)
    {
        TransformationMatrix r;
        for (UInt32 c = 0; c < 4; ++c)
            for (UInt32 row = 0; row < 4; ++row) {
                ValueTypeT sum = 0;
                for (UInt32 k = 0; k < 4; ++k)
                    sum += a._matrix[k][row] * b._matrix[c][k];
                r._matrix[c][row] = sum;
            }
        return r;
    }
    VectorType _matrix[4];
};

template <class T>
inline std::ostream& operator<<(std::ostream& os, const TransformationMatrix<T>& m)
{
    std::ios::fmtflags flags = os.flags();
    std::streamsize prec = os.precision();
    os << std::fixed << std::setprecision(3);
    for (UInt32 row = 0; row < 4; ++row) {
        for (UInt32 c = 0; c < 4; ++c)
            os << std::setw(8) << m[c][row] << (c < 3 ? " " : "");
        os << "\n";
    }
    os.flags(flags);
    os.precision(prec);
    return os;
}

typedef TransformationMatrix<Real32> Matrix4f;
typedef TransformationMatrix<Real64> Matrix4d;
typedef Matrix4f Matrix;

// The quaternion member that needs the matrix.
template <class ValueTypeT>
void QuaternionBase<ValueTypeT>::getValue(TransformationMatrix<ValueTypeT>& m) const
{
    const ValueTypeT x = _quat[0], y = _quat[1], z = _quat[2], w = _quat[3];
    m.setIdentity();
    m[0][0] = 1 - 2 * (y * y + z * z);
    m[1][0] = 2 * (x * y - z * w);
    m[2][0] = 2 * (x * z + y * w);
    m[0][1] = 2 * (x * y + z * w);
    m[1][1] = 1 - 2 * (x * x + z * z);
    m[2][1] = 2 * (y * z - x * w);
    m[0][2] = 2 * (x * z - y * w);
    m[1][2] = 2 * (y * z + x * w);
    m[2][2] = 1 - 2 * (x * x + y * y);
}

} // namespace osg

#endif
