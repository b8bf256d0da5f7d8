#ifndef _OSGBASETYPES_H_
#define _OSGBASETYPES_H_

#include "OSGConfig.h"

#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace osg {

typedef char Char8;
typedef unsigned char UChar8;
typedef signed char SChar8;

typedef int8_t Int8;
typedef uint8_t UInt8;
typedef int16_t Int16;
typedef uint16_t UInt16;
typedef int32_t Int32;
typedef uint32_t UInt32;
typedef int64_t Int64;
typedef uint64_t UInt64;

typedef float Real32;
typedef double Real64;
typedef long double Real128;

// The type of every field mask.
typedef UInt64 BitVector;

typedef Real64 Time;

const Real32 Eps = 1e-6f;
const Real64 Pi = 3.14159265358979323846;
const Real64 Sqrt2 = 1.41421356237309504880;
const Real32 Inf = 1e30f;
const Real32 NegInf = -1e30f;

// Numeric limits and neutral elements. The string conversions live with the field traits
// (OSGFieldDataType.h), which is where fields read and print their values.
template <class T>
struct TypeTraits
{
    static T getZeroElement() { return T(0); }
    static T getOneElement() { return T(1); }
    static T getMax() { return std::numeric_limits<T>::max(); }
    static T getMin() { return std::numeric_limits<T>::lowest(); }
};

template <>
struct TypeTraits<BitVector>
{
    static constexpr BitVector One = 1;
    static BitVector getZeroElement() { return 0; }
    static BitVector getOneElement() { return 1; }
    static BitVector getMax() { return ~BitVector(0); }
    static BitVector getMin() { return 0; }
};

} // namespace osg

#endif
