#include <zeUtils/zeString.h>

#include <cstdio>
#include <cstdlib>
#include <strings.h>

std::vector<float> zeString::getValuesFromString(const std::string& text)
{
    std::vector<float> values;
    const char* p = text.c_str();
    for (;;) {
        while (*p == ' ' || *p == '\t' || *p == '\n' || *p == '\r' || *p == ',' || *p == '"')
            ++p;
        if (*p == '\0')
            break;
        if (strncasecmp(p, "true", 4) == 0) {
            values.push_back(1.f);
            p += 4;
            continue;
        }
        if (strncasecmp(p, "false", 5) == 0) {
            values.push_back(0.f);
            p += 5;
            continue;
        }
        char* end = nullptr;
        double v = std::strtod(p, &end);
        if (end == p)
            break;
        values.push_back(float(v));
        p = end;
    }
    return values;
}

std::string zeString::createStringFromValues(const std::vector<float>& values)
{
    std::string text;
    char buffer[32];
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            text += ' ';
        std::snprintf(buffer, sizeof(buffer), "%.9g", double(values[i]));
        text += buffer;
    }
    return text;
}
