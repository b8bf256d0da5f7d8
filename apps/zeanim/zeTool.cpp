#include "zeTool.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationStreak.h>

#include <QString>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

const char* const generalHelp =
    "usage: zeanim COMMAND [OPTIONS] FILE\n"
    "\n"
    "Looks into an animation file without starting the application.\n"
    "\n"
    "commands:\n"
    "  info    the pool as a tree of clips, tracks, blocks and curves, with counts\n"
    "  check   lints the file; exits with 1 when it finds an error\n"
    "  plot    draws curves as an SVG picture\n"
    "  bake    samples curves frame by frame into CSV\n"
    "\n"
    "  zeanim COMMAND --help   the options of a command\n"
    "  zeanim --version        the version\n"
    "\n"
    "Exit status: 0 done, 1 check found an error, 2 the command could not do its work.\n";

const char* const infoHelp =
    "usage: zeanim info [--json] FILE\n"
    "\n"
    "Prints the pool as a tree: clips, their tracks, the blocks, clips and sequences on them, and\n"
    "each block's curves with their field (id, container, field name and attribute), key count\n"
    "and frame range; then the objects that belong to nothing, the fields no curve uses, and the\n"
    "counts per kind.\n"
    "\n"
    "  --json   the same as one JSON document (ids as strings, empty ranges as null)\n";

const char* const checkHelp =
    "usage: zeanim check FILE\n"
    "\n"
    "Lints the file as written and as loaded. One line per finding on standard output:\n"
    "  SEVERITY ID \"NAME\": WHAT (FILE:LINE:COLUMN)\n"
    "with SEVERITY error, warning or note; a summary goes to standard error. Errors: handles\n"
    "that run backwards in time or beyond the neighbouring key, frames where the curve yields no\n"
    "value, keys sharing a frame, NaN, infinite or unreadable numbers, ids used twice, children\n"
    "that name nothing or an object of the wrong kind, objects listed by two parents or looping\n"
    "back to themselves, blocks whose curves drive one field component twice, sequences ending\n"
    "before they begin. Warnings: curves with fewer than two keys or without field, keys of no\n"
    "curve, elements without a usable typeID. Notes: fields no curve uses.\n"
    "Exits with 1 when it finds an error, 0 otherwise.\n";

const char* const plotHelp =
    "usage: zeanim plot FILE [-o OUT.svg] [--curve ID | --block ID | --clip ID] [--from F --to F]\n"
    "\n"
    "Draws curves as an SVG picture (to standard output without -o): every curve of the file, or\n"
    "those of one curve, block or clip, as the library evaluates them, over a time axis in frames\n"
    "with a grid; keys as dots, handles as lines with end markers, the ranges of the blocks and\n"
    "clips as bands, and a legend naming each curve's field and attribute. Colours are the\n"
    "library's default curve colours (X red, Y green, Z blue...).\n"
    "\n"
    "  -o FILE       where to write the picture\n"
    "  --curve ID    one curve; --block ID, --clip ID: the curves below that object\n"
    "  --from F      first frame shown (default: where the curves begin)\n"
    "  --to F        last frame shown (default: where they end)\n";

const char* const bakeHelp =
    "usage: zeanim bake FILE [--step S] [--from F --to F] [-o OUT.csv] [--curve ID | --block ID | --clip "
    "ID]\n"
    "\n"
    "Samples curves with the library's own evaluation, as global playback of the selected object\n"
    "(or of every object that belongs to nothing) does: repeat and clamping rules and active\n"
    "flags included. Writes CSV: a column \"frame\" and one column per curve, named after its\n"
    "block, field and attribute (\"box slides/translationX\"). A cell stays empty where the\n"
    "evaluation yields no value (an inactive curve, too few keys, no root in the segment).\n"
    "\n"
    "  --step S      frames between samples (default 1)\n"
    "  --from F      first frame (default: where the selection begins)\n"
    "  --to F        last frame (default: where it ends)\n"
    "  -o FILE       where to write the table (default: standard output)\n"
    "  --curve ID    one curve; --block ID, --clip ID: the curves below that object\n";

int keptStandardOutput = -1;
std::FILE* keptStream = nullptr;

bool parseFloat(const char* text, float& value)
{
    errno = 0;
    char* end = nullptr;
    const float parsed = std::strtof(text, &end);
    if (end == text || *end != '\0' || errno == ERANGE || !std::isfinite(parsed))
        return false;
    value = parsed;
    return true;
}

bool parseId(const char* text, osg::UInt64& value)
{
    if (*text < '0' || *text > '9')
        return false;
    errno = 0;
    char* end = nullptr;
    const unsigned long long parsed = std::strtoull(text, &end, 10);
    if (*end != '\0' || errno == ERANGE)
        return false;
    value = parsed;
    return true;
}

bool takes(const std::string& command, const std::string& option)
{
    if (option == "--json")
        return command == "info";
    if (option == "-o" || option == "--curve" || option == "--block" || option == "--clip" ||
        option == "--from" || option == "--to")
        return command == "plot" || command == "bake";
    if (option == "--step")
        return command == "bake";
    return false;
}

bool usage(const std::string& command, const std::string& message)
{
    zeToolError(message + " (see zeanim " + (command.empty() ? "" : command + " ") + "--help)");
    return false;
}

// Draws "loading FILE [=====     ]  45%" on a terminal. The loader reports each of its two passes
// from 0 to 100; the bar shows them as the two halves of one run.
struct Progress
{
    std::string file;
    std::chrono::steady_clock::time_point start;
    unsigned lastReported = 0;
    int pass = 0;
    int drawn = -1;

    static Progress* current;

    static void report(unsigned int percent)
    {
        Progress* p = current;
        if (!p)
            return;
        if (percent < p->lastReported)
            p->pass = 1;
        p->lastReported = percent;
        const int value = static_cast<int>(std::min(percent, 100u)) / 2 + 50 * p->pass;
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - p->start).count();
        // A load that is over in a moment draws nothing.
        if (value == p->drawn || (p->drawn < 0 && seconds < 0.3))
            return;
        p->drawn = value;
        const int width = 30;
        const int filled = value * width / 100;
        std::fprintf(stderr, "\rzeanim: loading %s [%s%s] %3d%%", p->file.c_str(),
                     std::string(filled, '=').c_str(), std::string(width - filled, ' ').c_str(), value);
        std::fflush(stderr);
    }

    void finish()
    {
        if (drawn >= 0)
            std::fprintf(stderr, "\r\033[K");
    }
};

Progress* Progress::current = nullptr;

void collectCurves(const zeAnimationObject* object, std::vector<zeAnimationCurve2D*>& curves, int depth)
{
    if (!object || depth > zeAnimationObject::MaxDepth)
        return;
    if (object->getTypeID() == zeAnimationObject::TypeCurve2D) {
        curves.push_back(zeAnimationManager::the()->getCurve2D(object->getId()));
        return;
    }
    for (zeAnimationObject* child : zeToolChildren(object))
        collectCurves(child, curves, depth + 1);
}

} // namespace

void zeToolError(const std::string& message)
{
    std::fprintf(stderr, "zeanim: %s\n", message.c_str());
}

bool zeToolParse(int argc, char** argv, zeToolArguments& arguments)
{
    if (argc < 2)
        return usage("", "no command given");
    arguments.command = argv[1];
    const std::string& command = arguments.command;
    if (command == "--help" || command == "-h" || command == "--version") {
        arguments.help = command != "--version";
        return true;
    }
    if (command != "info" && command != "check" && command != "plot" && command != "bake")
        return usage("", "unknown command \"" + command + "\"");
    bool optionsEnded = false;
    for (int i = 2; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--help" || argument == "-h") {
            arguments.help = true;
            return true;
        }
    }
    for (int i = 2; i < argc; ++i) {
        std::string option = argv[i];
        if (optionsEnded || option.empty() || option[0] != '-' || option == "-") {
            if (!arguments.file.empty())
                return usage(command,
                             "more than one file given: \"" + arguments.file + "\" and \"" + option + "\"");
            arguments.file = option;
            continue;
        }
        if (option == "--") {
            optionsEnded = true;
            continue;
        }
        // --option=value is the same as --option value.
        std::string value;
        bool hasValue = false;
        const std::string::size_type equals = option.find('=');
        if (option.compare(0, 2, "--") == 0 && equals != std::string::npos) {
            value = option.substr(equals + 1);
            option.resize(equals);
            hasValue = true;
        }
        if (!takes(command, option))
            return usage(command, "\"" + option + "\" is not an option of " + command);
        if (option == "--json") {
            if (hasValue)
                return usage(command, "--json takes no value");
            arguments.json = true;
            continue;
        }
        if (!hasValue) {
            if (i + 1 >= argc)
                return usage(command, option + " needs a value");
            value = argv[++i];
        }
        if (option == "-o") {
            if (value.empty())
                return usage(command, "-o needs a file name");
            arguments.output = value;
        } else if (option == "--curve" || option == "--block" || option == "--clip") {
            if (arguments.selectionKind)
                return usage(command, "give only one of --curve, --block and --clip");
            arguments.selectionKind = option == "--curve" ? "curve" : option == "--block" ? "block" : "clip";
            arguments.selectionType = option == "--curve"   ? zeAnimationObject::TypeCurve2D
                                      : option == "--block" ? zeAnimationObject::TypeUnit
                                                            : zeAnimationObject::TypeStrip;
            if (!parseId(value.c_str(), arguments.selectionId))
                return usage(command, option + " needs an object id (a whole number), not \"" + value + "\"");
        } else {
            float number = 0.0f;
            if (!parseFloat(value.c_str(), number))
                return usage(command, option + " needs a finite number, not \"" + value + "\"");
            if (option == "--from") {
                arguments.from = number;
                arguments.hasFrom = true;
            } else if (option == "--to") {
                arguments.to = number;
                arguments.hasTo = true;
            } else {
                if (!(number > 0.0f))
                    return usage(command, "--step needs a number above 0, not \"" + value + "\"");
                arguments.step = number;
            }
        }
    }
    if (arguments.file.empty())
        return usage(command, "no file given");
    if (arguments.hasFrom && arguments.hasTo && arguments.from > arguments.to)
        return usage(command, "--from " + zeToolNumber(arguments.from) + " lies after --to " +
                                  zeToolNumber(arguments.to));
    if (arguments.hasFrom && arguments.hasTo &&
        (static_cast<double>(arguments.to) - arguments.from) / arguments.step > zeToolMaxRows)
        return usage(command, "more than 10,000,000 frames between --from and --to; use a larger --step");
    return true;
}

void zeToolOutput::keepStandardOutput()
{
    keptStandardOutput = dup(STDOUT_FILENO);
    const int null = ::open("/dev/null", O_WRONLY);
    if (null >= 0) {
        dup2(null, STDOUT_FILENO);
        ::close(null);
    }
    if (keptStandardOutput >= 0)
        keptStream = fdopen(keptStandardOutput, "w");
}

std::FILE* zeToolOutput::standardOutput()
{
    return keptStream;
}

bool zeToolOutput::open(const std::string& name)
{
    path = name;
    if (path.empty())
        return true;
    file.reset(new QSaveFile(QString::fromLocal8Bit(path.c_str())));
    if (!file->open(QIODevice::WriteOnly)) {
        zeToolError("cannot write " + path + ": " + file->errorString().toStdString());
        return false;
    }
    return true;
}

void zeToolOutput::write(const std::string& text)
{
    if (failed || text.empty())
        return;
    if (file) {
        failed =
            file->write(text.data(), static_cast<qint64>(text.size())) != static_cast<qint64>(text.size());
    } else {
        failed = !keptStream || std::fwrite(text.data(), 1, text.size(), keptStream) != text.size();
    }
}

bool zeToolOutput::close()
{
    if (file) {
        if (failed || !file->commit()) {
            zeToolError("cannot write " + path + ": " + file->errorString().toStdString());
            return false;
        }
        return true;
    }
    if (failed || !keptStream || std::fflush(keptStream) != 0) {
        zeToolError("cannot write to standard output");
        return false;
    }
    return true;
}

bool zeToolLoad(const std::string& path)
{
    Progress progress;
    progress.file = path;
    progress.start = std::chrono::steady_clock::now();
    const bool terminal = isatty(STDERR_FILENO) == 1;
    if (terminal) {
        Progress::current = &progress;
        zeAnimationManager::setFileIOProgressCB(&Progress::report);
    }
    zeAnimationManager* manager = zeAnimationManager::the();
    const bool loaded = manager->loadAnimations(QString::fromLocal8Bit(path.c_str()), true);
    zeAnimationManager::setFileIOProgressCB(nullptr);
    Progress::current = nullptr;
    progress.finish();
    if (!loaded)
        zeToolError(path + ": " + manager->getLastFileError().toStdString());
    return loaded;
}

std::vector<zeAnimationObject*> zeToolRoots()
{
    std::vector<zeAnimationObject*> roots;
    for (const auto& entry : zeAnimationManager::the()->getObjects()) {
        zeAnimationObject* object = entry.second;
        if (object && object->getTypeID() >= zeAnimationObject::TypeCurve2D && !object->getParent())
            roots.push_back(object);
    }
    return roots;
}

std::vector<zeAnimationObject*> zeToolChildren(const zeAnimationObject* object)
{
    std::vector<zeAnimationObject*> children;
    for (osg::UInt64 id : object->getChildIds()) {
        if (zeAnimationObject* child = object->resolveChild(id))
            children.push_back(child);
    }
    if (object->getTypeID() == zeAnimationObject::TypeStrip) {
        const auto number = [](const zeAnimationObject* o) {
            const zeAnimationStreak* track = zeAnimationCast<zeAnimationStreak>(o);
            return track ? track->getNumber() : 0u;
        };
        std::stable_sort(
            children.begin(), children.end(),
            [&](const zeAnimationObject* a, const zeAnimationObject* b) { return number(a) < number(b); });
    }
    return children;
}

bool zeToolSelection(const zeToolArguments& arguments, std::vector<zeAnimationObject*>& objects,
                     std::vector<zeAnimationCurve2D*>& curves)
{
    objects.clear();
    curves.clear();
    if (!arguments.selectionKind) {
        objects = zeToolRoots();
        for (zeAnimationObject* object : objects)
            collectCurves(object, curves, 0);
        return true;
    }
    zeAnimationObject* object = zeAnimationManager::the()->getObject(arguments.selectionId);
    if (!object || object->getTypeID() != arguments.selectionType) {
        std::string what = "no " + std::string(arguments.selectionKind) + " has the id " +
                           std::to_string(arguments.selectionId) + " in " + arguments.file;
        if (object)
            what += std::string(" (it is a ") + zeToolKindName(object->getTypeID()) + ")";
        zeToolError(what);
        return false;
    }
    objects.push_back(object);
    collectCurves(object, curves, 0);
    return true;
}

std::string zeToolFieldLabel(const zeAnimationCurve2D* curve)
{
    const zeAnimationField* field = curve->getAnimationField();
    if (!field)
        return curve->getName();
    if (field->name.empty() || field->attribute.compare(0, field->name.size(), field->name) == 0)
        return field->attribute;
    return field->name + "." + field->attribute;
}

const char* zeToolKindName(osg::UInt32 typeID)
{
    static const char* const names[] = {"object", "key", "curve", "block", "track", "clip", "sequence"};
    return typeID < 7 ? names[typeID] : "object";
}

std::string zeToolNumber(float value)
{
    char text[32];
    for (int precision = 6; precision <= 9; ++precision) {
        std::snprintf(text, sizeof(text), "%.*g", precision, static_cast<double>(value));
        if (std::strtof(text, nullptr) == value)
            break;
    }
    return text;
}

bool zeToolIsEmptyRange(float begin, float end)
{
    return begin > end;
}

std::string zeToolRange(float begin, float end)
{
    if (zeToolIsEmptyRange(begin, end))
        return "empty";
    return zeToolNumber(begin) + " to " + zeToolNumber(end);
}

void zeToolHelp(const std::string& command)
{
    const char* text = command == "info"    ? infoHelp
                       : command == "check" ? checkHelp
                       : command == "plot"  ? plotHelp
                       : command == "bake"  ? bakeHelp
                                            : generalHelp;
    if (std::FILE* out = zeToolOutput::standardOutput()) {
        std::fputs(text, out);
        std::fflush(out);
    }
}
