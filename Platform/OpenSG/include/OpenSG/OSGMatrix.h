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
    // Column by column.
    void setValueTransposed(ValueTypeT c0r0, ValueTypeT c0r1, ValueTypeT c0r2, ValueTypeT c0r3,
                            ValueTypeT c1r0, ValueTypeT c1r1, ValueTypeT c1r2, ValueTypeT c1r3,
                            ValueTypeT c2r0, ValueTypeT c2r1, ValueTypeT c2r2, ValueTypeT c2r3,
                            ValueTypeT c3r0, ValueTypeT c3r1, ValueTypeT c3r2, ValueTypeT c3r3)
    {
        const ValueTypeT v[16] = {c0r0, c0r1, c0r2, c0r3, c1r0, c1r1, c1r2, c1r3,
                                  c2r0, c2r1, c2r2, c2r3, c3r0, c3r1, c3r2, c3r3};
        setValue(v, true);
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

    // Splits an affine matrix into translation, rotation and per-axis scale. Shear cannot be
    // represented and is lost, and the scale orientation always comes back as the identity
    // (the scale is taken along the rotated axes). A negative determinant flips all scales.
    void getTransform(VectorType3f& t, QuaternionType& r, VectorType3f& s, QuaternionType& so) const
    {
        t.setValues(_matrix[3][0], _matrix[3][1], _matrix[3][2]);
        VectorType3f cols[3];
        for (UInt32 c = 0; c < 3; ++c) {
            cols[c].setValues(_matrix[c][0], _matrix[c][1], _matrix[c][2]);
            s[c] = cols[c].length();
        }
        if (det3() < ValueTypeT(0))
            s *= ValueTypeT(-1);
        TransformationMatrix rot;
        for (UInt32 c = 0; c < 3; ++c)
            for (UInt32 row = 0; row < 3; ++row)
                rot[c][row] = osgabs(s[c]) > ValueTypeT(Eps) ? cols[c][row] / s[c] : (c == row ? 1 : 0);
        r.setValue(rot);
        so.setIdentity();
    }
    void getTransform(VectorType3f& t, QuaternionType& r, VectorType3f& s, QuaternionType& so,
                      const VectorType3f& c) const
    {
        getTransform(t, r, s, so);
        // Undo the centre: M = T' * R*S with T' = T + C - R*S*C.
        VectorType3f rsC;
        multMatrixVec(c, rsC);
        t = t - c + rsC;
    }
    bool factor(TransformationMatrix& r, VectorType3f& s, TransformationMatrix& u, VectorType3f& t,
                TransformationMatrix& proj) const
    {
        QuaternionType q, so;
        getTransform(t, q, s, so);
        r.setRotate(so);
        u.setRotate(q);
        proj.setIdentity();
        return true;
    }

    // this = this * m
    void mult(const TransformationMatrix& m) { *this = product(*this, m); }
    // this = m * this
    void multLeft(const TransformationMatrix& m) { *this = product(m, *this); }

    void multMatrixPnt(const PointType3f& src, PointType3f& dst) const
    {
        PointType3f r;
        for (UInt32 row = 0; row < 3; ++row)
            r[row] = _matrix[0][row] * src[0] + _matrix[1][row] * src[1] + _matrix[2][row] * src[2] +
                     _matrix[3][row];
        dst = r;
    }
    void multMatrixPnt(PointType3f& pnt) const { multMatrixPnt(pnt, pnt); }
    void multFullMatrixPnt(const PointType3f& src, PointType3f& dst) const
    {
        ValueTypeT w =
            _matrix[0][3] * src[0] + _matrix[1][3] * src[1] + _matrix[2][3] * src[2] + _matrix[3][3];
        multMatrixPnt(src, dst);
        if (osgabs(w) > ValueTypeT(Eps))
            dst /= w;
    }
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

    ValueTypeT det3() const
    {
        const TransformationMatrix& m = *this;
        return m[0][0] * (m[1][1] * m[2][2] - m[2][1] * m[1][2]) -
               m[1][0] * (m[0][1] * m[2][2] - m[2][1] * m[0][2]) +
               m[2][0] * (m[0][1] * m[1][2] - m[1][1] * m[0][2]);
    }
    ValueTypeT det() const
    {
        ValueTypeT inv[16];
        return cofactors(inv);
    }
    // Returns false (and leaves result untouched) for a singular matrix.
    bool inverse(TransformationMatrix& result) const
    {
        ValueTypeT inv[16];
        ValueTypeT d = cofactors(inv);
        if (osgabs(d) < ValueTypeT(1e-20))
            return false;
        for (UInt32 i = 0; i < 16; ++i)
            result.getValues()[i] = inv[i] / d;
        return true;
    }
    bool invert() { return inverse(*this); }
    bool invertFrom(const TransformationMatrix& m) { return m.inverse(*this); }
    // Inverts the upper 3x3 part and clears the translation.
    bool inverse3(TransformationMatrix& result) const
    {
        ValueTypeT d = det3();
        if (osgabs(d) < ValueTypeT(1e-20))
            return false;
        const TransformationMatrix& m = *this;
        TransformationMatrix r;
        r[0][0] = (m[1][1] * m[2][2] - m[2][1] * m[1][2]) / d;
        r[0][1] = (m[2][1] * m[0][2] - m[0][1] * m[2][2]) / d;
        r[0][2] = (m[0][1] * m[1][2] - m[1][1] * m[0][2]) / d;
        r[1][0] = (m[2][0] * m[1][2] - m[1][0] * m[2][2]) / d;
        r[1][1] = (m[0][0] * m[2][2] - m[2][0] * m[0][2]) / d;
        r[1][2] = (m[1][0] * m[0][2] - m[0][0] * m[1][2]) / d;
        r[2][0] = (m[1][0] * m[2][1] - m[2][0] * m[1][1]) / d;
        r[2][1] = (m[2][0] * m[0][1] - m[0][0] * m[2][1]) / d;
        r[2][2] = (m[0][0] * m[1][1] - m[1][0] * m[0][1]) / d;
        result = r;
        return true;
    }
    bool invert3() { return inverse3(*this); }
    bool transposed(TransformationMatrix& result) const
    {
        TransformationMatrix r;
        for (UInt32 c = 0; c < 4; ++c)
            for (UInt32 row = 0; row < 4; ++row)
                r[row][c] = _matrix[c][row];
        result = r;
        return true;
    }
    bool transpose() { return transposed(*this); }

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
    // Adjugate (column-major, as getValues) and determinant of the full 4x4 matrix.
    ValueTypeT cofactors(ValueTypeT* inv) const
    {
        const ValueTypeT* m = getValues();
        inv[0] = m[5] * m[10] * m[15] - m[5] * m[11] * m[14] - m[9] * m[6] * m[15] + m[9] * m[7] * m[14] +
                 m[13] * m[6] * m[11] - m[13] * m[7] * m[10];
        inv[4] = -m[4] * m[10] * m[15] + m[4] * m[11] * m[14] + m[8] * m[6] * m[15] - m[8] * m[7] * m[14] -
                 m[12] * m[6] * m[11] + m[12] * m[7] * m[10];
        inv[8] = m[4] * m[9] * m[15] - m[4] * m[11] * m[13] - m[8] * m[5] * m[15] + m[8] * m[7] * m[13] +
                 m[12] * m[5] * m[11] - m[12] * m[7] * m[9];
        inv[12] = -m[4] * m[9] * m[14] + m[4] * m[10] * m[13] + m[8] * m[5] * m[14] - m[8] * m[6] * m[13] -
                  m[12] * m[5] * m[10] + m[12] * m[6] * m[9];
        inv[1] = -m[1] * m[10] * m[15] + m[1] * m[11] * m[14] + m[9] * m[2] * m[15] - m[9] * m[3] * m[14] -
                 m[13] * m[2] * m[11] + m[13] * m[3] * m[10];
        inv[5] = m[0] * m[10] * m[15] - m[0] * m[11] * m[14] - m[8] * m[2] * m[15] + m[8] * m[3] * m[14] +
                 m[12] * m[2] * m[11] - m[12] * m[3] * m[10];
        inv[9] = -m[0] * m[9] * m[15] + m[0] * m[11] * m[13] + m[8] * m[1] * m[15] - m[8] * m[3] * m[13] -
                 m[12] * m[1] * m[11] + m[12] * m[3] * m[9];
        inv[13] = m[0] * m[9] * m[14] - m[0] * m[10] * m[13] - m[8] * m[1] * m[14] + m[8] * m[2] * m[13] +
                  m[12] * m[1] * m[10] - m[12] * m[2] * m[9];
        inv[2] = m[1] * m[6] * m[15] - m[1] * m[7] * m[14] - m[5] * m[2] * m[15] + m[5] * m[3] * m[14] +
                 m[13] * m[2] * m[7] - m[13] * m[3] * m[6];
        inv[6] = -m[0] * m[6] * m[15] + m[0] * m[7] * m[14] + m[4] * m[2] * m[15] - m[4] * m[3] * m[14] -
                 m[12] * m[2] * m[7] + m[12] * m[3] * m[6];
        inv[10] = m[0] * m[5] * m[15] - m[0] * m[7] * m[13] - m[4] * m[1] * m[15] + m[4] * m[3] * m[13] +
                  m[12] * m[1] * m[7] - m[12] * m[3] * m[5];
        inv[14] = -m[0] * m[5] * m[14] + m[0] * m[6] * m[13] + m[4] * m[1] * m[14] - m[4] * m[2] * m[13] -
                  m[12] * m[1] * m[6] + m[12] * m[2] * m[5];
        inv[3] = -m[1] * m[6] * m[11] + m[1] * m[7] * m[10] + m[5] * m[2] * m[11] - m[5] * m[3] * m[10] -
                 m[9] * m[2] * m[7] + m[9] * m[3] * m[6];
        inv[7] = m[0] * m[6] * m[11] - m[0] * m[7] * m[10] - m[4] * m[2] * m[11] + m[4] * m[3] * m[10] +
                 m[8] * m[2] * m[7] - m[8] * m[3] * m[6];
        inv[11] = -m[0] * m[5] * m[11] + m[0] * m[7] * m[9] + m[4] * m[1] * m[11] - m[4] * m[3] * m[9] -
                  m[8] * m[1] * m[7] + m[8] * m[3] * m[5];
        inv[15] = m[0] * m[5] * m[10] - m[0] * m[6] * m[9] - m[4] * m[1] * m[10] + m[4] * m[2] * m[9] +
                  m[8] * m[1] * m[6] - m[8] * m[2] * m[5];
        return m[0] * inv[0] + m[1] * inv[4] + m[2] * inv[8] + m[3] * inv[12];
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

// Quaternion members that need the matrix.
template <class ValueTypeT>
QuaternionBase<ValueTypeT>::QuaternionBase(const TransformationMatrix<ValueTypeT>& matrix)
{
    setValue(matrix);
}

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

template <class ValueTypeT>
void QuaternionBase<ValueTypeT>::setValue(const TransformationMatrix<ValueTypeT>& m)
{
    // R[row][col] = m[col][row]
    ValueTypeT trace = m[0][0] + m[1][1] + m[2][2];
    if (trace > 0) {
        ValueTypeT s = osgsqrt(trace + ValueTypeT(1)) * 2;
        _quat[3] = s / 4;
        _quat[0] = (m[1][2] - m[2][1]) / s;
        _quat[1] = (m[2][0] - m[0][2]) / s;
        _quat[2] = (m[0][1] - m[1][0]) / s;
    } else if (m[0][0] > m[1][1] && m[0][0] > m[2][2]) {
        ValueTypeT s = osgsqrt(ValueTypeT(1) + m[0][0] - m[1][1] - m[2][2]) * 2;
        _quat[3] = (m[1][2] - m[2][1]) / s;
        _quat[0] = s / 4;
        _quat[1] = (m[1][0] + m[0][1]) / s;
        _quat[2] = (m[2][0] + m[0][2]) / s;
    } else if (m[1][1] > m[2][2]) {
        ValueTypeT s = osgsqrt(ValueTypeT(1) + m[1][1] - m[0][0] - m[2][2]) * 2;
        _quat[3] = (m[2][0] - m[0][2]) / s;
        _quat[0] = (m[1][0] + m[0][1]) / s;
        _quat[1] = s / 4;
        _quat[2] = (m[2][1] + m[1][2]) / s;
    } else {
        ValueTypeT s = osgsqrt(ValueTypeT(1) + m[2][2] - m[0][0] - m[1][1]) * 2;
        _quat[3] = (m[0][1] - m[1][0]) / s;
        _quat[0] = (m[2][0] + m[0][2]) / s;
        _quat[1] = (m[2][1] + m[1][2]) / s;
        _quat[2] = s / 4;
    }
    normalize();
}

} // namespace osg

#endif
