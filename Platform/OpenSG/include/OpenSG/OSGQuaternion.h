#ifndef _OSGQUATERNION_H_
#define _OSGQUATERNION_H_

#include "OSGBaseFunctions.h"
#include "OSGBaseTypes.h"
#include "OSGVector.h"

#include <ostream>

namespace osg {

template <class ValueTypeT>
class TransformationMatrix;

// Rotation quaternion stored as x, y, z, w; the default is the identity (0, 0, 0, 1).
// The members that take or return a matrix are defined in OSGMatrix.h, which this header
// includes at its end.
template <class ValueTypeT>
class OSG_SYSTEMLIB_DLLMAPPING QuaternionBase
{
public:
    typedef ValueTypeT ValueType;
    typedef Vector<ValueTypeT, 3> VectorType;
    typedef TransformationMatrix<ValueTypeT> MatrixType;

    QuaternionBase() { setIdentity(); }
    QuaternionBase(const VectorType& axis, ValueTypeT angleRad) { setValueAsAxisRad(axis, angleRad); }

    static const QuaternionBase& identity()
    {
        static const QuaternionBase id;
        return id;
    }

    void setIdentity()
    {
        _quat[0] = _quat[1] = _quat[2] = ValueTypeT(0);
        _quat[3] = ValueTypeT(1);
    }

    void setValueAsAxisRad(ValueTypeT x, ValueTypeT y, ValueTypeT z, ValueTypeT angle)
    {
        ValueTypeT len = osgsqrt(x * x + y * y + z * z);
        if (len < ValueTypeT(Eps)) {
            setIdentity();
            return;
        }
        ValueTypeT s = osgsin(angle / ValueTypeT(2)) / len;
        _quat[0] = x * s;
        _quat[1] = y * s;
        _quat[2] = z * s;
        _quat[3] = osgcos(angle / ValueTypeT(2));
    }
    void setValueAsAxisRad(const VectorType& axis, ValueTypeT angle)
    {
        setValueAsAxisRad(axis[0], axis[1], axis[2], angle);
    }
    void setValueAsAxisRad(const ValueTypeT* v) { setValueAsAxisRad(v[0], v[1], v[2], v[3]); }
    void setValueAsAxisRad(const Char8* str)
    {
        ValueTypeT v[4];
        osgReadNumbers(str, v, 4);
        setValueAsAxisRad(v);
    }
    void setValueAsQuat(ValueTypeT x, ValueTypeT y, ValueTypeT z, ValueTypeT w)
    {
        _quat[0] = x;
        _quat[1] = y;
        _quat[2] = z;
        _quat[3] = w;
    }
    void setValueAsQuat(const ValueTypeT* v) { setValueAsQuat(v[0], v[1], v[2], v[3]); }
    // Euler angles in radians: alpha about x, beta about y, gamma about z, applied in that order
    // (the rotation is Rz(gamma) * Ry(beta) * Rx(alpha)).
    void setValue(ValueTypeT alpha, ValueTypeT beta, ValueTypeT gamma)
    {
        ValueTypeT sx = osgsin(alpha / 2), cx = osgcos(alpha / 2);
        ValueTypeT sy = osgsin(beta / 2), cy = osgcos(beta / 2);
        ValueTypeT sz = osgsin(gamma / 2), cz = osgcos(gamma / 2);
        _quat[3] = cx * cy * cz + sx * sy * sz;
        _quat[0] = sx * cy * cz - cx * sy * sz;
        _quat[1] = cx * sy * cz + sx * cy * sz;
        _quat[2] = cx * cy * sz - sx * sy * cz;
    }

    // An identity rotation reports the axis (0, 0, 1) and angle 0.
    void getValueAsAxisRad(ValueTypeT& x, ValueTypeT& y, ValueTypeT& z, ValueTypeT& angle) const
    {
        ValueTypeT len = osgsqrt(_quat[0] * _quat[0] + _quat[1] * _quat[1] + _quat[2] * _quat[2]);
        if (len > ValueTypeT(Eps)) {
            x = _quat[0] / len;
            y = _quat[1] / len;
            z = _quat[2] / len;
            angle = ValueTypeT(2) * osgacos(_quat[3]);
        } else {
            x = y = ValueTypeT(0);
            z = ValueTypeT(1);
            angle = ValueTypeT(0);
        }
    }
    void getValueAsAxisRad(VectorType& axis, ValueTypeT& angle) const
    {
        getValueAsAxisRad(axis[0], axis[1], axis[2], angle);
    }
    void getValueAsQuat(ValueTypeT& x, ValueTypeT& y, ValueTypeT& z, ValueTypeT& w) const
    {
        x = _quat[0];
        y = _quat[1];
        z = _quat[2];
        w = _quat[3];
    }
    void getValue(MatrixType& matrix) const;
    const ValueTypeT* getValues() const { return _quat; }

    ValueTypeT x() const { return _quat[0]; }
    ValueTypeT y() const { return _quat[1]; }
    ValueTypeT z() const { return _quat[2]; }
    ValueTypeT w() const { return _quat[3]; }

    void invert()
    {
        _quat[0] = -_quat[0];
        _quat[1] = -_quat[1];
        _quat[2] = -_quat[2];
    }
    QuaternionBase inverse() const
    {
        QuaternionBase q(*this);
        q.invert();
        return q;
    }
    bool equals(const QuaternionBase& other, ValueTypeT tol) const
    {
        for (UInt32 i = 0; i < 4; ++i)
            if (osgabs(_quat[i] - other._quat[i]) > tol)
                return false;
        return true;
    }
    ValueTypeT& operator[](UInt32 i) { return _quat[i]; }
    const ValueTypeT& operator[](UInt32 i) const { return _quat[i]; }
    bool operator==(const QuaternionBase& o) const { return equals(o, ValueTypeT(Eps)); }
    bool operator!=(const QuaternionBase& o) const { return !(*this == o); }

private:
    ValueTypeT _quat[4];
};

template <class T>
inline std::ostream& operator<<(std::ostream& os, const QuaternionBase<T>& q)
{
    return os << q[0] << ", " << q[1] << ", " << q[2] << ", " << q[3];
}

typedef QuaternionBase<Real32> Quaternion;
typedef QuaternionBase<Real64> Quaterniond;

} // namespace osg

#include "OSGMatrix.h"

#endif
