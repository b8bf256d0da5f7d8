// Arbitrary bytes as an animation file. A file that does not load must leave the pool empty; one
// that loads must leave a sound pool (every object listed by its parent and by nothing else, no
// loops), must save to a text that loads back to the same text, and, when Qt's DOM parser reads
// it too, the DOM path must make the same pool.
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <QDomDocument>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <unordered_map>

namespace {

zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

// On tmpfs when there is one: saving syncs the file, which would otherwise dominate each run.
std::string scratch(const char* name)
{
    const char* folder = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    return std::string(folder) + "/zeFileFuzzer-" + std::to_string(getpid()) + "-" + name;
}

std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// Qt's DOM parser turns a character reference beyond U+FFFF into another character; such input
// is left out of the comparison with it.
bool hasWideReference(const std::string& text)
{
    for (std::size_t at = text.find("&#"); at != std::string::npos; at = text.find("&#", at + 2)) {
        const bool hex = at + 2 < text.size() && text[at + 2] == 'x';
        const char* digits = text.c_str() + at + (hex ? 3 : 2);
        if (std::strtoul(digits, nullptr, hex ? 16 : 10) > 0xFFFF)
            return true;
    }
    return false;
}

void clearPool()
{
    for (const auto& entry : manager()->getObjects()) {
        if (zeAnimationObject* object = manager()->getObject(entry.first))
            manager()->destroyObject(object);
    }
    manager()->destroyAllFields();
}

void fail(const char* what)
{
    std::fprintf(stderr, "zeFileFuzzer: %s\n", what);
    std::abort();
}

void checkPool()
{
    std::unordered_map<osg::UInt64, int> listed;
    for (const auto& entry : manager()->getObjects()) {
        const zeAnimationObject* object = entry.second;
        for (osg::UInt64 child : object->getChildIds()) {
            if (++listed[child] > 1)
                fail("an object is listed twice");
            const zeAnimationObject* resolved = manager()->getObject(child);
            if (resolved && resolved->getParent() != object)
                fail("a child names another parent");
        }
        std::size_t hops = 0;
        for (const zeAnimationObject* up = object->getParent(); up; up = up->getParent()) {
            if (up == object || ++hops > manager()->getObjectCount())
                fail("a loop of parents");
        }
        const zeAnimationObject* parent = object->getParent();
        if (parent && !const_cast<zeAnimationObject*>(parent)->findObject(object->getId()).first)
            fail("a parent does not list its child");
    }
}

std::string save()
{
    const std::string path = scratch("saved.xml");
    if (!manager()->saveAnimations(path.c_str()))
        fail("a loaded pool could not be saved");
    return readFile(path);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    osg::osgInit(0, nullptr);
    // The library prints a line per save and load.
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    close(null);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input = scratch("input.xml");
    {
        std::ofstream out(input, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    manager()->random(1);
    if (!manager()->loadAnimations(QString::fromStdString(input), true)) {
        if (manager()->getObjectCount() != 0 || manager()->getFieldCount() != 0)
            fail("a refused file added to the pool");
        return 0;
    }
    checkPool();
    const std::string first = save();
    clearPool();
    if (!manager()->loadAnimations(QString::fromStdString(first), false))
        fail("a saved text does not load");
    if (save() != first)
        fail("a saved text loads back to another text");
    clearPool();

    // Qt's DOM frees nested elements recursively: very deep documents would overflow its stack,
    // not ours, so only small inputs are compared.
    QDomDocument dom;
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (size <= 8192 && !hasWideReference(text) &&
        dom.setContent(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)))) {
        manager()->random(1);
        if (manager()->loadAnimations(dom) && save() != first)
            fail("the DOM path made another pool");
        clearPool();
    }
    return 0;
}
