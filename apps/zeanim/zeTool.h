#ifndef ZETOOL_H
#define ZETOOL_H

// What the commands of zeanim share: their arguments, where their output goes, loading the file
// into the pool through the library's loader, finding the objects a command works on, and the
// way numbers are written.

#include <OpenSG/OSGBaseTypes.h>

#include <QSaveFile>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

class zeAnimationObject;
class zeAnimationCurve2D;
class zeAnimationField;

// Exit codes: 0 done (and for `check`, no error found), 1 `check` found an error, 2 the command
// could not do its work (bad arguments, a file that cannot be read or written, an unknown id).
enum zeToolExit
{
    zeToolDone = 0,
    zeToolFindings = 1,
    zeToolFailed = 2
};

// bake writes at most this many rows: more is surely a mistake in --step, --from or --to.
const double zeToolMaxRows = 10000000.0;

struct zeToolArguments
{
    std::string command;
    std::string file;
    std::string output; // -o; empty: standard output
    bool help = false;
    bool json = false;
    // --curve, --block, --clip: at most one.
    const char* selectionKind = nullptr;
    osg::UInt32 selectionType = 0;
    osg::UInt64 selectionId = 0;
    bool hasFrom = false;
    bool hasTo = false;
    float from = 0.0f;
    float to = 0.0f;
    float step = 1.0f;
};

// Prints "zeanim: <message>" as one line on standard error.
void zeToolError(const std::string& message);

// Parses the command line; false (after printing why) when it makes no sense.
bool zeToolParse(int argc, char** argv, zeToolArguments& arguments);

// Where a command's result goes: a file written atomically (QSaveFile: a failed run leaves the
// previous file as it was), or the process's standard output. The library writes its own progress
// lines to standard output, so zeanim points descriptor 1 at /dev/null for its whole run and keeps
// a duplicate of the original for results (zeToolOutput::keepStandardOutput).
class zeToolOutput
{
public:
    static void keepStandardOutput();
    static std::FILE* standardOutput();

    // False (after printing why) when the file cannot be created.
    bool open(const std::string& path);
    void write(const std::string& text);
    // Finishes the output; false (after printing why) when anything could not be written.
    bool close();

private:
    std::string path;
    std::unique_ptr<QSaveFile> file;
    bool failed = false;
};

// Loads the file into the (empty) pool with the library's loader, drawing a progress bar on
// standard error when that is a terminal and the load takes more than a moment. False (after
// printing the loader's reason) when the file could not be loaded.
bool zeToolLoad(const std::string& path);

// The objects that belong to no other object (keys aside), in identifier order.
std::vector<zeAnimationObject*> zeToolRoots();
// An object's children in the order a reader expects: a clip's tracks by number, any other
// container's children in its own (time) order.
std::vector<zeAnimationObject*> zeToolChildren(const zeAnimationObject* object);
// The objects a command works on (the selected one, or every root) and the curves below them.
// False (after printing why) when the selected id names no object of the selected kind.
bool zeToolSelection(const zeToolArguments& arguments, std::vector<zeAnimationObject*>& objects,
                     std::vector<zeAnimationCurve2D*>& curves);

// "diffuseR" for the attribute diffuseR of the field diffuse, "scale.x" otherwise; a curve
// without field is named by its own name.
std::string zeToolFieldLabel(const zeAnimationCurve2D* curve);
// What kind of object a type id names, in the words of the file: "key", "curve", "block"...
const char* zeToolKindName(osg::UInt32 typeID);
// The shortest decimal text that reads back as the same float.
std::string zeToolNumber(float value);
// "0 to 40", or "empty" for the empty interval of a container without content.
std::string zeToolRange(float begin, float end);
bool zeToolIsEmptyRange(float begin, float end);

// The help of the command (or of zeanim for an empty command), printed to standard output.
void zeToolHelp(const std::string& command);

int zeToolInfo(const zeToolArguments& arguments);
int zeToolCheck(const zeToolArguments& arguments);
int zeToolPlot(const zeToolArguments& arguments);
int zeToolBake(const zeToolArguments& arguments);

#endif // ZETOOL_H
