#include "zeFileText.h"

#include <QFile>
#include <QXmlStreamReader>

#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace {

enum Kind
{
    WholeNumber, // an id: 0 to 2^64 - 1
    ContainerId, // 0 to 2^32 - 1
    Float,       // finite, within the range of a float
    FloatPair,   // two of them
    Flag,        // 0 or 1
    TangentMode  // one of the modes
};

struct AttributeRule
{
    const char* name;
    Kind kind;
};

// The attributes the loader reads, per typeID (a field is -1).
std::vector<AttributeRule> rulesFor(int typeID)
{
    static const AttributeRule flags[] = {
        {"active", Flag}, {"repeating", Flag}, {"flipped", Flag}, {"motionBlur", Flag}};
    std::vector<AttributeRule> rules{{"id", WholeNumber}};
    switch (typeID) {
    case zeFileText::FieldType:
        rules.insert(rules.end(),
                     {{"fcID", ContainerId}, {"value", Float}, {"valuePos", ContainerId}, {"dirty", Flag}});
        break;
    case zeAnimationObject::TypePoint2D:
        rules.insert(rules.end(), {{"tangentType", TangentMode},
                                   {"tangentLengthMode", TangentMode},
                                   {"position", FloatPair},
                                   {"inTangent", FloatPair},
                                   {"outTangent", FloatPair}});
        break;
    case zeAnimationObject::TypeCurve2D:
        rules.push_back({"field", WholeNumber});
        rules.insert(rules.end(), std::begin(flags), std::end(flags));
        break;
    case zeAnimationObject::TypeUnit:
    case zeAnimationObject::TypeStreak:
    case zeAnimationObject::TypeStrip:
        rules.insert(rules.end(), std::begin(flags), std::end(flags));
        break;
    case zeAnimationObject::TypeSequence:
        rules.insert(rules.end(), {{"active", Flag}, {"begin", Float}, {"end", Float}});
        break;
    default:
        break;
    }
    return rules;
}

bool parseWhole(const std::string& text, double limit, osg::UInt64& value)
{
    std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string::npos || text[start] < '0' || text[start] > '9')
        return false;
    errno = 0;
    char* end = nullptr;
    const unsigned long long parsed = std::strtoull(text.c_str() + start, &end, 10);
    while (*end == ' ' || *end == '\t' || *end == '\r' || *end == '\n')
        ++end;
    if (*end != '\0' || errno == ERANGE || static_cast<double>(parsed) > limit)
        return false;
    value = parsed;
    return true;
}

// Reads one float from the stream; the reason when it is not one the loader takes.
const char* parseFloat(std::istringstream& in, float& value)
{
    std::string word;
    if (!(in >> word))
        return "a number is missing";
    errno = 0;
    char* end = nullptr;
    const double parsed = std::strtod(word.c_str(), &end);
    if (end == word.c_str() || *end != '\0')
        return "not a number";
    if (!std::isfinite(parsed))
        return "NaN or infinite number";
    if (std::fabs(parsed) > FLT_MAX)
        return "beyond the range of a float";
    value = static_cast<float>(parsed);
    return nullptr;
}

struct Parsed
{
    osg::UInt64 whole = 0;
    float values[2] = {0.0f, 0.0f};
};

// Checks one attribute's text against its kind; the reason when the loader would ignore it.
const char* validate(const std::string& text, Kind kind, Parsed& parsed)
{
    switch (kind) {
    case WholeNumber:
        return parseWhole(text, 18446744073709551615.0, parsed.whole) ? nullptr
                                                                      : "not an id (a whole number)";
    case ContainerId:
        return parseWhole(text, 4294967295.0, parsed.whole) ? nullptr
                                                            : "not a whole number from 0 to 4294967295";
    case Flag: {
        std::istringstream in(text);
        std::string word;
        std::string rest;
        return in >> word && !(in >> rest) && (word == "0" || word == "1") ? nullptr : "a flag is 0 or 1";
    }
    case TangentMode:
        if (!parseWhole(text, 64.0, parsed.whole) || (parsed.whole & (parsed.whole - 1)) != 0)
            return "no such tangent mode (0, 1, 2, 4, 8, 16, 32 or 64)";
        return nullptr;
    case Float:
    case FloatPair: {
        std::istringstream in(text);
        const int count = kind == Float ? 1 : 2;
        for (int i = 0; i < count; ++i) {
            if (const char* why = parseFloat(in, parsed.values[i]))
                return why;
        }
        std::string rest;
        if (in >> rest)
            return kind == Float ? "more than one number" : "more than two numbers";
        return nullptr;
    }
    }
    return nullptr;
}

// Keeps what the check needs of an attribute.
void store(zeFileText::Element& element, const std::string& name, zeFileText::State state,
           const Parsed& parsed)
{
    if (name == "id") {
        element.idState = state;
        element.id = parsed.whole;
        return;
    }
    zeFileText::Number* number = name == "field"      ? &element.field
                                 : name == "fcID"     ? &element.containerId
                                 : name == "valuePos" ? &element.valuePos
                                 : name == "begin"    ? &element.begin
                                 : name == "end"      ? &element.end
                                                      : nullptr;
    if (number) {
        number->state = state;
        number->whole = parsed.whole;
        number->value = parsed.values[0];
        return;
    }
    zeFileText::Pair* pair = name == "position"     ? &element.position
                             : name == "inTangent"  ? &element.inTangent
                             : name == "outTangent" ? &element.outTangent
                                                    : nullptr;
    if (pair) {
        pair->state = state;
        pair->x = parsed.values[0];
        pair->y = parsed.values[1];
    }
}

void readAttributes(const QXmlStreamAttributes& attributes, zeFileText::Element& element)
{
    if (attributes.hasAttribute(QLatin1String("typeID"))) {
        bool ok = false;
        element.typeID = attributes.value(QLatin1String("typeID")).trimmed().toInt(&ok);
        element.typeState = ok ? zeFileText::Usable : zeFileText::Unusable;
    }
    element.name = attributes.value(QLatin1String("name")).toString().toStdString();
    element.attribute = attributes.value(QLatin1String("attribute")).toString().toStdString();
    if (!element.isUsable())
        return;
    for (const AttributeRule& rule : rulesFor(element.typeID)) {
        if (!attributes.hasAttribute(QLatin1String(rule.name)))
            continue;
        const std::string text = attributes.value(QLatin1String(rule.name)).toString().toStdString();
        Parsed parsed;
        const char* why = validate(text, rule.kind, parsed);
        if (why)
            element.badValues.push_back({rule.name, text, why});
        store(element, rule.name, why ? zeFileText::Unusable : zeFileText::Usable, parsed);
    }
}

} // namespace

bool zeFileText::read(const QString& path, QString& error)
{
    elements.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return false;
    }
    // Decoded as the loader decodes it: UTF-8, with what is not UTF-8 replaced rather than refused.
    QString text = QString::fromUtf8(file.readAll());
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    QXmlStreamReader reader(text);
    // Where the reader stood before the current token. After text it has taken the "<" of the
    // next tag already, after a tag only up to its ">".
    qint64 line = 1;
    qint64 column = 0;
    bool afterText = false;
    int depth = 0;
    while (!reader.atEnd()) {
        const qint64 tokenLine = line;
        const qint64 tokenColumn = afterText ? column : column + 1;
        const QXmlStreamReader::TokenType token = reader.readNext();
        line = reader.lineNumber();
        column = reader.columnNumber();
        afterText = token == QXmlStreamReader::Characters;
        if (token == QXmlStreamReader::EndElement) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement) {
            ++depth;
            if (depth == 2) {
                Element element;
                element.tag = reader.name().toString().toStdString();
                element.line = static_cast<int>(tokenLine);
                element.column = static_cast<int>(tokenColumn);
                readAttributes(reader.attributes(), element);
                elements.push_back(std::move(element));
            } else if (depth == 3) {
                Reference reference;
                reference.line = static_cast<int>(tokenLine);
                reference.column = static_cast<int>(tokenColumn);
                const QXmlStreamAttributes attributes = reader.attributes();
                if (attributes.hasAttribute(QLatin1String("id"))) {
                    reference.state =
                        parseWhole(attributes.value(QLatin1String("id")).toString().toStdString(),
                                   18446744073709551615.0, reference.id)
                            ? Usable
                            : Unusable;
                }
                elements.back().references.push_back(reference);
            }
        }
    }
    if (reader.hasError()) {
        error = QStringLiteral("line %1, column %2: %3")
                    .arg(reader.lineNumber())
                    .arg(reader.columnNumber())
                    .arg(reader.errorString());
        return false;
    }
    return true;
}
