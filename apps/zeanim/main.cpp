// zeanim: looks into animation files from the command line (info, check, plot, bake).

#include "zeTool.h"

#include <zeAnimation/zeAnimationManager.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <cstdio>

namespace {

int run(const zeToolArguments& arguments)
{
    if (arguments.command == "info")
        return zeToolInfo(arguments);
    if (arguments.command == "check")
        return zeToolCheck(arguments);
    if (arguments.command == "plot")
        return zeToolPlot(arguments);
    return zeToolBake(arguments);
}

} // namespace

int main(int argc, char** argv)
{
    zeToolOutput::keepStandardOutput();
    zeToolArguments arguments;
    if (!zeToolParse(argc, argv, arguments))
        return zeToolFailed;
    if (arguments.help) {
        zeToolHelp(arguments.command);
        return zeToolDone;
    }
    if (arguments.command == "--version") {
        if (std::FILE* out = zeToolOutput::standardOutput())
            std::fprintf(out, "zeanim %s\n", ZE_VERSION);
        return zeToolDone;
    }
    osg::osgInit(0, nullptr);
    zeAnimationManager::the()->init(nullptr);
    // The manager releases what the pool still holds when the process ends.
    const int result = zeToolLoad(arguments.file) ? run(arguments) : zeToolFailed;
    osg::osgExit();
    return result;
}
