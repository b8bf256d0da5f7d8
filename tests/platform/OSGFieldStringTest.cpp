#include <OpenSG/OSGAttachmentMapFields.h>
#include <OpenSG/OSGBaseFields.h>
#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

using namespace osg;

namespace {

template <class FieldT>
std::string text(const FieldT& field)
{
    std::string s = "stale";
    return field.getValueByStr(s);
}

// The text form of a value (unless no text is given) and that reading it back gives the value.
template <class FieldT, class ValueT>
void expectText(const ValueT& value, const char* expected)
{
    const std::string s = text(FieldT(value));
    if (expected) {
        EXPECT_EQ(s, expected) << FieldT::getClassType().getCName();
    }
    FieldT in;
    in.pushValueByStr(s.c_str());
    EXPECT_EQ(in.getValue(), value) << FieldT::getClassType().getCName() << ": " << s;
}

} // namespace

// Numbers use the C formats of their type, compound values their separators; every single field
// type reads its own text back.
TEST(FieldText, EverySingleFieldTypeWritesItsFormAndReadsItBack)
{
    expectText<SFReal32>(1.5f, "1.500000e+00");
    expectText<SFReal32>(0.125f, "1.250000e-01");
    expectText<SFReal64>(-0.25, "-2.500000e-01");
    expectText<SFReal64>(-1024.5, nullptr);
    expectText<SFTime>(Time(2.0), "2.000000e+00");
    expectText<SFInt32>(Int32(-2147483647 - 1), "-2147483648");
    expectText<SFUInt32>(UInt32(4294967295u), "4294967295");
    expectText<SFInt8>(Int8(-100), "-100");
    expectText<SFUInt8>(UInt8(200), "200");
    expectText<SFInt16>(Int16(-32768), "-32768");
    expectText<SFUInt16>(UInt16(65535), "65535");
    expectText<SFInt64>(Int64(-9000000000LL), "-9000000000");
    expectText<SFUInt64>(UInt64(18446744073709551615ULL), "18446744073709551615");
    expectText<SFGLenum>(UInt32(0x1201), "4609");
    expectText<SFBool>(true, "TRUE");
    expectText<SFBool>(false, "FALSE");
    expectText<SFVec2f>(Vec2f(1.5f, -2), nullptr);
    expectText<SFVec3f>(Vec3f(1, 2, 3), "1.000000e+00  2.000000e+00  3.000000e+00");
    expectText<SFVec4f>(Vec4f(1, 2, 3, 4), nullptr);
    expectText<SFPnt2f>(Pnt2f(0.5f, -1), "5.000000e-01  -1.000000e+00");
    expectText<SFPnt3f>(Pnt3f(3, 2, 1), nullptr);
    expectText<SFPnt4f>(Pnt4f(0, 0.5f, 0, 1), nullptr);
    expectText<SFColor3f>(Color3f(1, 0, 0.5f), "1.000000e+00 0.000000e+00 5.000000e-01");
    expectText<SFColor4f>(Color4f(0, 0, 0, 1), "0.000000e+00 0.000000e+00 0.000000e+00 1.000000e+00");
    expectText<SFColor4f>(Color4f(0.25f, 0.5f, 0.75f, 0.125f), nullptr);
    EXPECT_EQ(text(SFString("abc")), "\"abc\"");

    // Matrix: row by row, so the translation is the 4th, 8th and 12th value.
    Matrix m;
    m.setTranslate(7, 8, 9);
    expectText<SFMatrix>(m, "1.000000e+00 0.000000e+00 0.000000e+00 7.000000e+00 "
                            "0.000000e+00 1.000000e+00 0.000000e+00 8.000000e+00 "
                            "0.000000e+00 0.000000e+00 1.000000e+00 9.000000e+00 "
                            "0.000000e+00 0.000000e+00 0.000000e+00 1.000000e+00");
    m.setTransform(Vec3f(1, 2, 3), Quaternion(Vec3f(1, 1, 0), 0.75f), Vec3f(2, 2, 2));
    expectText<SFMatrix>(m, nullptr);

    // Quaternion: axis and angle in radians.
    expectText<SFQuaternion>(Quaternion(Vec3f(0, 1, 0), 0.5f),
                             "0.000000e+00 1.000000e+00 0.000000e+00 5.000000e-01");
    expectText<SFQuaternion>(Quaternion(), "0.000000e+00 0.000000e+00 1.000000e+00 0.000000e+00");
    expectText<SFQuaternion>(Quaternion(Vec3f(0, 0, 1), 1.25f), nullptr);

    DynamicVolume v;
    v.setBounds(Pnt3f(-1, -2, -3), Pnt3f(1, 2, 3));
    expectText<SFDynamicVolume>(v, "-1.000000e+00 -2.000000e+00 -3.000000e+00 1.000000e+00 2.000000e+00 "
                                   "3.000000e+00");
}

TEST(FieldText, ParsingIsLenientAboutSeparatorsAndMissingValues)
{
    SFVec3f vec;
    vec.pushValueByStr("1,2\t3");
    EXPECT_EQ(vec.getValue(), Vec3f(1, 2, 3));
    vec.pushValueByStr("4");
    EXPECT_EQ(vec.getValue(), Vec3f(4, 0, 0)); // replaces, missing values are 0

    SFMatrix m(Matrix(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2));
    m.pushValueByStr("");
    EXPECT_EQ(m.getValue(), Matrix()); // no numbers: identity

    SFBool b(false);
    b.pushValueByStr("true");
    EXPECT_TRUE(b.getValue());
    b.pushValueByStr("maybe"); // unreadable: unchanged
    EXPECT_TRUE(b.getValue());

    // Integers as strtol/strtoul read them (base prefixes count, the first character that does
    // not fit ends the number) and then cast to the field's type.
    SFInt32 i(5);
    const std::pair<const char*, Int32> signedTexts[] = {
        {"abc", 0}, {"0x10", 16}, {"010", 8}, {"1e+09", 1}, {"2.7", 2}, {" -12x", -12}, {"4294967297", 1}};
    for (const auto& entry : signedTexts) {
        i.pushValueByStr(entry.first);
        EXPECT_EQ(i.getValue(), entry.second) << entry.first;
    }
    SFUInt8 small(1);
    small.pushValueByStr("300");
    EXPECT_EQ(small.getValue(), 44);
    SFUInt32 u(1);
    u.pushValueByStr("-3");
    EXPECT_EQ(u.getValue(), 4294967293u);

    // Strings are read verbatim: the quotes of the text form stay.
    SFString s;
    s.pushValueByStr("\"quoted\"");
    EXPECT_EQ(s.getValue(), "\"quoted\"");
}

TEST(FieldText, MultiFieldsAppendElements)
{
    MFReal32 reals;
    reals.pushValueByStr("1");
    reals.pushValueByStr("2.5");
    reals.pushValueByStr("x"); // unreadable: not added
    ASSERT_EQ(reals.size(), 2u);
    std::string s = "prefix: ";
    reals.getValueByStr(s);
    EXPECT_EQ(s, "prefix: 1.000000e+00, 2.500000e+00");

    std::string one;
    reals.getValueByStr(one, 1);
    EXPECT_EQ(one, "2.500000e+00");
    std::string none = "kept";
    reals.getValueByStr(none, 7);
    EXPECT_EQ(none, "kept");

    MFVec2f vecs;
    vecs.push_back(Vec2f(1, 2));
    vecs.push_back(Vec2f(3, 4));
    std::string v;
    EXPECT_EQ(vecs.getValueByStr(v), "1.000000e+00  2.000000e+00, 3.000000e+00  4.000000e+00");

    MFBool flags;
    flags.pushValueByStr("FALSE");
    flags.pushValueByStr("TRUE");
    std::string f;
    EXPECT_EQ(flags.getValueByStr(f), "FALSE, TRUE");

    SFReal32 single(1.f);
    std::string idx = "kept";
    single.getValueByStr(idx, 1);
    EXPECT_EQ(idx, "kept");
}

TEST(FieldText, PointerFieldsPrintAddressesAndCannotBeRead)
{
    NodePtr node = Node::create();
    SFNodePtr field(node);
    char expected[32];
    std::snprintf(expected, sizeof(expected), "%p", static_cast<void*>(node.getCPtr()));
    EXPECT_EQ(text(field), expected);

    field.pushValueByStr(expected);
    EXPECT_EQ(field.getValue(), node); // no text input for pointers

    MFNodePtr list;
    list.pushValueByStr(expected);
    EXPECT_TRUE(list.empty());

    SFAttachmentMap map;
    EXPECT_EQ(text(map), "");
    subRefCP(node);
}

TEST(FieldTypes, NamesCardinalityAndContentTypes)
{
    EXPECT_STREQ(SFVec3f::getClassType().getCName(), "SFVec3f");
    EXPECT_STREQ(MFNodePtr::getClassType().getCName(), "MFNodePtr");
    EXPECT_STREQ(SFBool::getClassType().getContentType().getCName(), "bool");
    EXPECT_STREQ(SFString::getClassType().getContentType().getCName(), "string");
    EXPECT_STREQ(SFNodePtr::getClassType().getContentType().getCName(), "NodePtr");
    EXPECT_EQ(SFVec3f::getClassType().getCardinality(), FieldType::SINGLE_FIELD);

    // One content type per value type, shared by the SF and MF field types.
    EXPECT_EQ(SFVec3f::getClassType().getContentType().getId(),
              MFVec3f::getClassType().getContentType().getId());
    EXPECT_NE(SFVec3f::getClassType().getContentType().getId(),
              SFPnt3f::getClassType().getContentType().getId());
    EXPECT_NE(SFReal64::getClassType().getId(), SFTime::getClassType().getId());
    EXPECT_NE(SFUInt32::getClassType().getContentType().getId(),
              SFGLenum::getClassType().getContentType().getId());

    SFVec3f field(Vec3f(1, 2, 3));
    const Field& asField = field;
    EXPECT_EQ(asField.getContentType().getId(), SFVec3f::getClassType().getContentType().getId());
    EXPECT_EQ(asField.getSize(), 1u);

    SFVec3f other;
    other.setAbstrValue(field);
    EXPECT_EQ(other.getValue(), Vec3f(1, 2, 3));
    SFReal32 wrong(2.f);
    wrong.setAbstrValue(field); // another type: ignored
    EXPECT_EQ(wrong.getValue(), 2.f);
}
