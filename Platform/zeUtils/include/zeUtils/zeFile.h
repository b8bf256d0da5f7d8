#ifndef ZEUTILS_ZEFILE_H
#define ZEUTILS_ZEFILE_H

#include <string>

class zeFile
{
public:
    // True when `path` can be written: an existing file must be a writable regular file, a new
    // file needs an existing, writable directory.
    // askOverwrite: in the host, asks the user before an existing file is overwritten. There is no
    //   user interface here, so the question counts as answered yes.
    // showMessages: prints the reason for a refusal to stderr (one line starting "zeFile::checkWrite").
    static bool checkWrite(const std::string& path, bool askOverwrite, bool showMessages);
};

#endif
