#include <OpenSG/OSGBaseFunctions.h>

namespace osg {

SystemState GlobalSystemState = Startup;

bool osgInit(Int32, Char8**, UInt16 major, UInt16 minor, UInt16, bool, bool, bool)
{
    if (major != OSG_MAJOR_VERSION || minor != OSG_MINOR_VERSION)
        return false;
    GlobalSystemState = Running;
    return true;
}

bool osgExit(void)
{
    GlobalSystemState = Shutdown;
    return true;
}

} // namespace osg
