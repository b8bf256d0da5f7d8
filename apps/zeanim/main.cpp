// zeanim: looks into animation files from the command line (info, check, plot, bake).

#include "zeTool.h"

#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <cstdio>

namespace {

// Leaves the pool empty, as a host does before it exits.
void clearPool()
{
    zeAnimationManager* manager = zeAnimationManager::the();
    for (const auto& entry : manager->getObjects()) {
        if (zeAnimationObject* object = manager->getObject(entry.first))
            manager->destroyObject(object);
    }
    manager->destroyAllFields();
}

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
    const int result = zeToolLoad(arguments.file) ? run(arguments) : zeToolFailed;
    clearPool();
    osg::osgExit();
    return result;
}
