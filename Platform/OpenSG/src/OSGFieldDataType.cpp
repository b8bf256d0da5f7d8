#include <OpenSG/OSGFieldDataType.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <strings.h>

namespace osg {

namespace {

std::string formatReals(const Real32* values, UInt32 n, const Char8* separator)
{
    std::string out;
    Char8 buffer[64];
    for (UInt32 i = 0; i < n; ++i) {
        if (i > 0)
            out.append(separator);
        std::snprintf(buffer, sizeof(buffer), "%e", double(values[i]));
        out.append(buffer);
    }
    return out;
}

// Integers are read as OpenSG reads them: strtol/strtoul with base 0 (so "0x10" is 16 and "010"
// is 8), stopping at the first character that does not fit ("1e+09" is 1, "2.7" is 2), and the
// result cast to the field's type, so "-3" wraps in an unsigned field and text without a number
// gives 0. Nothing is refused.
template <class T>
bool readSigned(T& out, const Char8* str)
{
    out = static_cast<T>(std::strtoll(str, nullptr, 0));
    return true;
}

template <class T>
bool readUnsigned(T& out, const Char8* str)
{
    out = static_cast<T>(std::strtoull(str, nullptr, 0));
    return true;
}

template <class T>
bool readReal(T& out, const Char8* str)
{
    Char8* end = nullptr;
    double v = std::strtod(str, &end);
    if (end == str)
        return false;
    out = T(v);
    return true;
}

void putReal(double v, std::string& out)
{
    Char8 buffer[64];
    std::snprintf(buffer, sizeof(buffer), "%e", v);
    out.assign(buffer);
}

} // namespace

#define OSG_DATA_TYPE_IMPL(TYPE, NS, NAME)                                                                   \
    DataType& FieldDataTraits<TYPE, NS>::getType()                                                           \
    {                                                                                                        \
        static DataType type(NAME, nullptr);                                                                 \
        return type;                                                                                         \
    }

OSG_DATA_TYPE_IMPL(bool, 2, "bool")
OSG_DATA_TYPE_IMPL(Int8, 0, "Int8")
OSG_DATA_TYPE_IMPL(UInt8, 0, "UInt8")
OSG_DATA_TYPE_IMPL(Int16, 0, "Int16")
OSG_DATA_TYPE_IMPL(UInt16, 0, "UInt16")
OSG_DATA_TYPE_IMPL(Int32, 0, "Int32")
OSG_DATA_TYPE_IMPL(UInt32, 0, "UInt32")
OSG_DATA_TYPE_IMPL(Int64, 0, "Int64")
OSG_DATA_TYPE_IMPL(UInt64, 0, "UInt64")
OSG_DATA_TYPE_IMPL(Real32, 0, "Real32")
OSG_DATA_TYPE_IMPL(Real64, 0, "Real64")
OSG_DATA_TYPE_IMPL(Real64, 1, "Time")
OSG_DATA_TYPE_IMPL(UInt32, 1, "GLenum")
OSG_DATA_TYPE_IMPL(std::string, 0, "string")
OSG_DATA_TYPE_IMPL(Vec2f, 0, "Vec2f")
OSG_DATA_TYPE_IMPL(Vec3f, 0, "Vec3f")
OSG_DATA_TYPE_IMPL(Vec4f, 0, "Vec4f")
OSG_DATA_TYPE_IMPL(Pnt2f, 0, "Pnt2f")
OSG_DATA_TYPE_IMPL(Pnt3f, 0, "Pnt3f")
OSG_DATA_TYPE_IMPL(Pnt4f, 0, "Pnt4f")
OSG_DATA_TYPE_IMPL(Color3f, 0, "Color3f")
OSG_DATA_TYPE_IMPL(Color4f, 0, "Color4f")
OSG_DATA_TYPE_IMPL(Matrix, 0, "Matrix")
OSG_DATA_TYPE_IMPL(Quaternion, 0, "Quaternion")
OSG_DATA_TYPE_IMPL(DynamicVolume, 0, "DynamicVolume")

// bool: TRUE / FALSE; reading accepts either word in any case, and also a number (non-zero is
// true) so that values edited as numbers can be written back.
bool FieldDataTraits<bool, 2>::getFromString(bool& out, const Char8* str)
{
    while (*str == ' ' || *str == '\t' || *str == '\n' || *str == '\r')
        ++str;
    if (strncasecmp(str, "true", 4) == 0) {
        out = true;
        return true;
    }
    if (strncasecmp(str, "false", 5) == 0) {
        out = false;
        return true;
    }
    Char8* end = nullptr;
    double v = std::strtod(str, &end);
    if (end == str)
        return false;
    out = v != 0.0;
    return true;
}
void FieldDataTraits<bool, 2>::putToString(const bool& in, std::string& out)
{
    out.assign(in ? "TRUE" : "FALSE");
}

#define OSG_INT_TRAITS_IMPL(TYPE, NS, READ, FMT, CAST)                                                       \
    bool FieldDataTraits<TYPE, NS>::getFromString(TYPE& out, const Char8* str)                               \
    {                                                                                                        \
        return READ(out, str);                                                                               \
    }                                                                                                        \
    void FieldDataTraits<TYPE, NS>::putToString(const TYPE& in, std::string& out)                            \
    {                                                                                                        \
        Char8 buffer[32];                                                                                    \
        std::snprintf(buffer, sizeof(buffer), FMT, CAST(in));                                                \
        out.assign(buffer);                                                                                  \
    }

OSG_INT_TRAITS_IMPL(Int8, 0, readSigned, "%i", int)
OSG_INT_TRAITS_IMPL(UInt8, 0, readUnsigned, "%u", unsigned)
OSG_INT_TRAITS_IMPL(Int16, 0, readSigned, "%i", int)
OSG_INT_TRAITS_IMPL(UInt16, 0, readUnsigned, "%u", unsigned)
OSG_INT_TRAITS_IMPL(Int32, 0, readSigned, "%i", int)
OSG_INT_TRAITS_IMPL(UInt32, 0, readUnsigned, "%u", unsigned)
OSG_INT_TRAITS_IMPL(Int64, 0, readSigned, "%" PRId64, Int64)
OSG_INT_TRAITS_IMPL(UInt64, 0, readUnsigned, "%" PRIu64, UInt64)
OSG_INT_TRAITS_IMPL(UInt32, 1, readUnsigned, "%u", unsigned)

#define OSG_REAL_TRAITS_IMPL(TYPE, NS)                                                                       \
    bool FieldDataTraits<TYPE, NS>::getFromString(TYPE& out, const Char8* str)                               \
    {                                                                                                        \
        return readReal(out, str);                                                                           \
    }                                                                                                        \
    void FieldDataTraits<TYPE, NS>::putToString(const TYPE& in, std::string& out)                            \
    {                                                                                                        \
        putReal(double(in), out);                                                                            \
    }

OSG_REAL_TRAITS_IMPL(Real32, 0)
OSG_REAL_TRAITS_IMPL(Real64, 0)
OSG_REAL_TRAITS_IMPL(Real64, 1)

// Strings print quoted but are read verbatim, so the two directions are not symmetric.
bool FieldDataTraits<std::string, 0>::getFromString(std::string& out, const Char8* str)
{
    out.assign(str);
    return true;
}
void FieldDataTraits<std::string, 0>::putToString(const std::string& in, std::string& out)
{
    out.assign("\"");
    out.append(in);
    out.append("\"");
}

// Vectors and points: components separated by two spaces.
#define OSG_VEC_TRAITS_IMPL(TYPE, N)                                                                         \
    bool FieldDataTraits<TYPE, 0>::getFromString(TYPE& out, const Char8* str)                                \
    {                                                                                                        \
        out.setValueFromCString(str);                                                                        \
        return true;                                                                                         \
    }                                                                                                        \
    void FieldDataTraits<TYPE, 0>::putToString(const TYPE& in, std::string& out)                             \
    {                                                                                                        \
        out = formatReals(in.getValues(), N, "  ");                                                          \
    }

OSG_VEC_TRAITS_IMPL(Vec2f, 2)
OSG_VEC_TRAITS_IMPL(Vec3f, 3)
OSG_VEC_TRAITS_IMPL(Vec4f, 4)
OSG_VEC_TRAITS_IMPL(Pnt2f, 2)
OSG_VEC_TRAITS_IMPL(Pnt3f, 3)
OSG_VEC_TRAITS_IMPL(Pnt4f, 4)

// Colours: components separated by one space.
bool FieldDataTraits<Color3f, 0>::getFromString(Color3f& out, const Char8* str)
{
    out.setValue(str);
    return true;
}
void FieldDataTraits<Color3f, 0>::putToString(const Color3f& in, std::string& out)
{
    out = formatReals(in.getValuesRGB(), 3, " ");
}
bool FieldDataTraits<Color4f, 0>::getFromString(Color4f& out, const Char8* str)
{
    out.setValue(str);
    return true;
}
void FieldDataTraits<Color4f, 0>::putToString(const Color4f& in, std::string& out)
{
    out = formatReals(in.getValuesRGBA(), 4, " ");
}

// Matrix: 16 values row by row, read back in the same order.
bool FieldDataTraits<Matrix, 0>::getFromString(Matrix& out, const Char8* str)
{
    out.setValue(str, false);
    return true;
}
void FieldDataTraits<Matrix, 0>::putToString(const Matrix& in, std::string& out)
{
    Real32 rows[16];
    for (UInt32 i = 0; i < 16; ++i)
        rows[i] = in[i % 4][i / 4];
    out = formatReals(rows, 16, " ");
}

// Quaternion: axis and angle in radians, not the raw components.
bool FieldDataTraits<Quaternion, 0>::getFromString(Quaternion& out, const Char8* str)
{
    out.setValueAsAxisRad(str);
    return true;
}
void FieldDataTraits<Quaternion, 0>::putToString(const Quaternion& in, std::string& out)
{
    Real32 v[4];
    in.getValueAsAxisRad(v[0], v[1], v[2], v[3]);
    out = formatReals(v, 4, " ");
}

// Box volume: min x y z, max x y z.
bool FieldDataTraits<DynamicVolume, 0>::getFromString(DynamicVolume& out, const Char8* str)
{
    Real32 v[6];
    osgReadNumbers(str, v, 6);
    out.setBounds(Pnt3f(v[0], v[1], v[2]), Pnt3f(v[3], v[4], v[5]));
    return true;
}
void FieldDataTraits<DynamicVolume, 0>::putToString(const DynamicVolume& in, std::string& out)
{
    Real32 v[6] = {in.getMin()[0], in.getMin()[1], in.getMin()[2],
                   in.getMax()[0], in.getMax()[1], in.getMax()[2]};
    out = formatReals(v, 6, " ");
}

} // namespace osg
