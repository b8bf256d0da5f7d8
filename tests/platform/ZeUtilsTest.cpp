#include <zeUtils/zeFile.h>
#include <zeUtils/zeMessage.h>
#include <zeUtils/zeString.h>

#include <OpenSG/OSGBaseFields.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

TEST(zeMessage, StoresNamedValuesAndHonoursTheReplaceFlag)
{
    zeMessage msg;
    EXPECT_TRUE(msg.getValue("frame").empty());

    msg.setValue("frame", 12.5f, true);
    EXPECT_FLOAT_EQ(boost::any_cast<float>(msg.getValue("frame")), 12.5f);

    msg.setValue("frame", 99.f, false); // kept
    EXPECT_FLOAT_EQ(boost::any_cast<float>(msg.getValue("frame")), 12.5f);
    msg.setValue("frame", std::string("text"), true); // replaced, even by another type
    EXPECT_EQ(boost::any_cast<std::string>(msg.getValue("frame")), "text");
}

TEST(zeString, ReadsNumbersFromFieldTextFormsAndWritesThemBackExactly)
{
    EXPECT_EQ(zeString::getValuesFromString("1.000000e+00  2.500000e+00  -3.000000e+00"),
              (std::vector<float>{1.f, 2.5f, -3.f}));
    EXPECT_EQ(zeString::getValuesFromString("1, 2,3\n4\t5"), (std::vector<float>{1, 2, 3, 4, 5}));
    EXPECT_EQ(zeString::getValuesFromString("TRUE"), (std::vector<float>{1.f}));
    EXPECT_EQ(zeString::getValuesFromString("false"), (std::vector<float>{0.f}));
    EXPECT_EQ(zeString::getValuesFromString("\"12\""), (std::vector<float>{12.f}));
    EXPECT_EQ(zeString::getValuesFromString("1 2 word 3"), (std::vector<float>{1.f, 2.f}));
    EXPECT_TRUE(zeString::getValuesFromString("").empty());
    EXPECT_TRUE(zeString::getValuesFromString("  ,, ").empty());

    // Written values read back exactly.
    std::vector<float> values{0.1f, -1234.5678f, 3.f, 1e-20f, 16777216.f};
    EXPECT_EQ(zeString::getValuesFromString(zeString::createStringFromValues(values)), values);
    EXPECT_EQ(zeString::createStringFromValues({1.f, 2.f, 3.f}), "1 2 3");
    EXPECT_EQ(zeString::createStringFromValues({}), "");
}

TEST(zeString, EditsOneComponentThroughTheFieldsStringForms)
{
    using namespace osg;
    // The generic path for field types without a direct accessor: print, change one value, parse.
    SFQuaternion quat(Quaternion(Vec3f(0, 0, 1), 0.5f));
    std::string text;
    std::vector<float> values = zeString::getValuesFromString(quat.getValueByStr(text));
    ASSERT_EQ(values.size(), 4u);
    values[3] = 1.25f;
    quat.pushValueByStr(zeString::createStringFromValues(values).c_str());
    EXPECT_TRUE(quat.getValue().equals(Quaternion(Vec3f(0, 0, 1), 1.25f), 1e-6f));

    SFInt32 count(4);
    values = zeString::getValuesFromString(count.getValueByStr(text));
    values[0] = 15.f;
    count.pushValueByStr(zeString::createStringFromValues(values).c_str());
    EXPECT_EQ(count.getValue(), 15);
    count.pushValueByStr("1.500000e+01"); // integer parsing stops at the point
    EXPECT_EQ(count.getValue(), 1);

    SFBool flag(true);
    values = zeString::getValuesFromString(flag.getValueByStr(text));
    EXPECT_EQ(values, std::vector<float>{1.f});
    flag.pushValueByStr(zeString::createStringFromValues({0.f}).c_str());
    EXPECT_FALSE(flag.getValue());

    SFMatrix matrix;
    values = zeString::getValuesFromString(matrix.getValueByStr(text));
    ASSERT_EQ(values.size(), 16u);
    values[3] = 7.f; // row 0, column 3: x translation
    matrix.pushValueByStr(zeString::createStringFromValues(values).c_str());
    EXPECT_FLOAT_EQ(matrix.getValue()[3][0], 7.f);
}

TEST(zeFile, CheckWriteAcceptsWritableTargetsAndRefusesOthers)
{
    char dirTemplate[] = "/tmp/zefileXXXXXX";
    ASSERT_NE(mkdtemp(dirTemplate), nullptr);
    std::string dir = dirTemplate;
    std::string fresh = dir + "/new.xml";
    std::string existing = dir + "/old.xml";
    std::ofstream(existing) << "x";

    EXPECT_TRUE(zeFile::checkWrite(fresh, true, false));
    EXPECT_TRUE(zeFile::checkWrite(existing, true, false));
    EXPECT_FALSE(zeFile::checkWrite(dir + "/missing/dir/file.xml", true, false));
    EXPECT_FALSE(zeFile::checkWrite(dir, true, false)); // a directory is not a file
    EXPECT_FALSE(zeFile::checkWrite("", true, false));

    std::remove(existing.c_str());
    rmdir(dir.c_str());
}
