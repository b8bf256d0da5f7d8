#include <OpenSG/OSGBaseFunctions.h>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    osg::osgInit(0, nullptr);
    const int result = RUN_ALL_TESTS();
    osg::osgExit();
    return result;
}
