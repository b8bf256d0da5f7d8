#ifndef ZEUTILS_ZESTRING_H
#define ZEUTILS_ZESTRING_H

#include <string>
#include <vector>

class zeString
{
public:
    // The numbers of a field's text form, in order. Numbers may be separated by blanks, tabs,
    // newlines or commas; TRUE and FALSE (any case) read as 1 and 0; double quotes are skipped.
    // Reading stops at the first other word.
    static std::vector<float> getValuesFromString(const std::string& text);

    // The values separated by single spaces, each printed with "%.9g" (exact for every float, and
    // integral values print as integers), so that the scene's field parsers read them back
    // unchanged.
    static std::string createStringFromValues(const std::vector<float>& values);
};

#endif
