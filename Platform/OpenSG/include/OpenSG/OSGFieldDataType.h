#ifndef _OSGFIELDDATATYPE_H_
#define _OSGFIELDDATATYPE_H_

#include "OSGBaseTypes.h"
#include "OSGColor.h"
#include "OSGDataType.h"
#include "OSGDynamicVolume.h"
#include "OSGMatrix.h"
#include "OSGQuaternion.h"
#include "OSGVector.h"

#include <cstdio>
#include <string>

namespace osg {

// Carries state between the string conversions of one write (indentation and the like).
class OSG_SYSTEMLIB_DLLMAPPING StringConversionStateBase
{
public:
    virtual ~StringConversionStateBase() = default;
};

// Per value type: its data type, the SF/MF field type names and the text form.
// putToString overwrites `out`; getFromString returns false (leaving the value untouched) when
// the text cannot be read or the type has no text input (container pointers). The second
// parameter tells apart types sharing one C++ type: (Real64, 1) is Time, (UInt32, 1) is GLenum,
// (bool, 2) is the bool of SFBool.
template <class T, Int32 ns = 0>
struct FieldDataTraits;

#define OSG_DECL_FIELD_DATA_TRAITS(TYPE, NS, NAME)                                                           \
    template <>                                                                                              \
    struct OSG_SYSTEMLIB_DLLMAPPING FieldDataTraits<TYPE, NS>                                                \
    {                                                                                                        \
        typedef TYPE ValueType;                                                                              \
        static DataType& getType();                                                                          \
        static const Char8* getSName() { return "SF" NAME; }                                                 \
        static const Char8* getMName() { return "MF" NAME; }                                                 \
        static bool getFromString(TYPE& out, const Char8* str);                                              \
        static void putToString(const TYPE& in, std::string& out);                                           \
    };

OSG_DECL_FIELD_DATA_TRAITS(bool, 2, "Bool")
OSG_DECL_FIELD_DATA_TRAITS(Int8, 0, "Int8")
OSG_DECL_FIELD_DATA_TRAITS(UInt8, 0, "UInt8")
OSG_DECL_FIELD_DATA_TRAITS(Int16, 0, "Int16")
OSG_DECL_FIELD_DATA_TRAITS(UInt16, 0, "UInt16")
OSG_DECL_FIELD_DATA_TRAITS(Int32, 0, "Int32")
OSG_DECL_FIELD_DATA_TRAITS(UInt32, 0, "UInt32")
OSG_DECL_FIELD_DATA_TRAITS(Int64, 0, "Int64")
OSG_DECL_FIELD_DATA_TRAITS(UInt64, 0, "UInt64")
OSG_DECL_FIELD_DATA_TRAITS(Real32, 0, "Real32")
OSG_DECL_FIELD_DATA_TRAITS(Real64, 0, "Real64")
OSG_DECL_FIELD_DATA_TRAITS(Real64, 1, "Time")
OSG_DECL_FIELD_DATA_TRAITS(UInt32, 1, "GLenum")
OSG_DECL_FIELD_DATA_TRAITS(std::string, 0, "String")
OSG_DECL_FIELD_DATA_TRAITS(Vec2f, 0, "Vec2f")
OSG_DECL_FIELD_DATA_TRAITS(Vec3f, 0, "Vec3f")
OSG_DECL_FIELD_DATA_TRAITS(Vec4f, 0, "Vec4f")
OSG_DECL_FIELD_DATA_TRAITS(Pnt2f, 0, "Pnt2f")
OSG_DECL_FIELD_DATA_TRAITS(Pnt3f, 0, "Pnt3f")
OSG_DECL_FIELD_DATA_TRAITS(Pnt4f, 0, "Pnt4f")
OSG_DECL_FIELD_DATA_TRAITS(Color3f, 0, "Color3f")
OSG_DECL_FIELD_DATA_TRAITS(Color4f, 0, "Color4f")
OSG_DECL_FIELD_DATA_TRAITS(Matrix, 0, "Matrix")
OSG_DECL_FIELD_DATA_TRAITS(Quaternion, 0, "Quaternion")
OSG_DECL_FIELD_DATA_TRAITS(DynamicVolume, 0, "DynamicVolume")

#undef OSG_DECL_FIELD_DATA_TRAITS

// Container pointers print their address ("%p") and cannot be read from text.
template <class PtrT>
struct FieldDataTraitsFCPtr
{
    typedef PtrT ValueType;
    static bool getFromString(PtrT&, const Char8*) { return false; }
    static void putToString(const PtrT& in, std::string& out)
    {
        Char8 buffer[32];
        std::snprintf(buffer, sizeof(buffer), "%p", static_cast<const void*>(in.getBaseCPtr()));
        out.assign(buffer);
    }
};

// Declares the field traits of a container pointer type; the data type is named after it
// ("NodePtr", "MaterialPtr", ...). Exported like the field templates: one data type per process.
#define OSG_DECL_FC_PTR_FIELD_TRAITS(PTR)                                                                    \
    template <>                                                                                              \
    struct OSG_SYSTEMLIB_DLLMAPPING FieldDataTraits<PTR, 0> : public FieldDataTraitsFCPtr<PTR>               \
    {                                                                                                        \
        static DataType& getType()                                                                           \
        {                                                                                                    \
            static DataType type(#PTR, "FieldContainerPtr");                                                 \
            return type;                                                                                     \
        }                                                                                                    \
        static const Char8* getSName() { return "SF" #PTR; }                                                 \
        static const Char8* getMName() { return "MF" #PTR; }                                                 \
    };

} // namespace osg

#endif
