#include <zeUtils/zeFile.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool refuse(bool showMessages, const std::string& path, const char* reason)
{
    if (showMessages)
        std::cerr << "zeFile::checkWrite: cannot write \"" << path << "\": " << reason << std::endl;
    return false;
}

} // namespace

bool zeFile::checkWrite(const std::string& path, bool /*askOverwrite*/, bool showMessages)
{
    if (path.empty())
        return refuse(showMessages, path, "empty path");

    struct stat info;
    if (::stat(path.c_str(), &info) == 0) {
        if (!S_ISREG(info.st_mode))
            return refuse(showMessages, path, "not a regular file");
        if (::access(path.c_str(), W_OK) != 0)
            return refuse(showMessages, path, std::strerror(errno));
        return true; // overwriting is accepted: there is nobody to ask
    }

    std::string::size_type slash = path.find_last_of('/');
    std::string dir = slash == std::string::npos ? "." : (slash == 0 ? "/" : path.substr(0, slash));
    if (::stat(dir.c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        return refuse(showMessages, path, "directory does not exist");
    if (::access(dir.c_str(), W_OK) != 0)
        return refuse(showMessages, path, std::strerror(errno));
    return true;
}
