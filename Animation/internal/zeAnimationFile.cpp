#include "zeAnimationFile.h"
#include "zeAnimationAccess.h"

#include "zeAnimationIdIndex.h"
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <zeOpenSGExt/OSGAnimAttachment.h>

#include <QDomDocument>
#include <QDomElement>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>
#include <unordered_set>
#include <utility>

bool zeAnimationFile::_loading = false;

// ---- Values -----------------------------------------------------------------------------------
//
// Every attribute is read the same way from text and from a DOM element: surrounding blanks are
// ignored, the rest must be exactly one value of the attribute's kind.

namespace {

// The typeID of a field's element; objects carry their own type id.
const osg::Int32 kFieldType = -1;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

void trim(const char*& begin, const char*& end)
{
    while (begin < end && isBlank(*begin))
        ++begin;
    while (end > begin && isBlank(end[-1]))
        --end;
}

bool parseUInt64(const char* begin, const char* end, osg::UInt64& out)
{
    trim(begin, end);
    if (begin == end)
        return false;
    const std::from_chars_result r = std::from_chars(begin, end, out);
    return r.ec == std::errc() && r.ptr == end;
}

bool parseUInt32(const char* begin, const char* end, osg::UInt32& out)
{
    osg::UInt64 wide = 0;
    if (!parseUInt64(begin, end, wide) || wide > 0xFFFFFFFFull)
        return false;
    out = static_cast<osg::UInt32>(wide);
    return true;
}

bool parseInt32(const char* begin, const char* end, osg::Int32& out)
{
    trim(begin, end);
    if (begin == end)
        return false;
    const std::from_chars_result r = std::from_chars(begin, end, out);
    return r.ec == std::errc() && r.ptr == end;
}

// A finite float in decimal notation (an optional sign, digits, fraction, exponent).
bool parseFloat(const char* begin, const char* end, float& out)
{
    trim(begin, end);
    if (begin < end && *begin == '+')
        ++begin;
    if (begin == end || !(std::isdigit(static_cast<unsigned char>(*begin)) || *begin == '-' || *begin == '.'))
        return false;
    float value = 0.0f;
    const std::from_chars_result r = std::from_chars(begin, end, value, std::chars_format::general);
    if (r.ec != std::errc() || r.ptr != end || !std::isfinite(value))
        return false;
    out = value;
    return true;
}

// Two floats separated by blanks, as "%f %f" writes them.
bool parsePair(const char* begin, const char* end, float out[2])
{
    trim(begin, end);
    const char* split = begin;
    while (split < end && !isBlank(*split))
        ++split;
    float x = 0.0f;
    float y = 0.0f;
    if (split == end || !parseFloat(begin, split, x) || !parseFloat(split, end, y))
        return false;
    out[0] = x;
    out[1] = y;
    return true;
}

bool parseFlag(const char* begin, const char* end, bool& out)
{
    trim(begin, end);
    if (end - begin != 1 || (*begin != '0' && *begin != '1'))
        return false;
    out = *begin == '1';
    return true;
}

bool parseTangentMode(const char* begin, const char* end, osg::UInt8& out)
{
    osg::UInt32 value = 0;
    if (!parseUInt32(begin, end, value))
        return false;
    switch (value) {
    case zeControlPoint2D::TangentNone:
    case zeControlPoint2D::TangentLinear:
    case zeControlPoint2D::TangentFlat:
    case zeControlPoint2D::TangentSmooth:
    case zeControlPoint2D::TangentForward:
    case zeControlPoint2D::TangentFree:
    case zeControlPoint2D::TangentLengthFixed:
    case zeControlPoint2D::TangentLengthHalf:
        out = static_cast<osg::UInt8>(value);
        return true;
    default:
        return false;
    }
}

bool named(const char* name, std::size_t length, const char* literal)
{
    return std::strlen(literal) == length && std::memcmp(name, literal, length) == 0;
}

// Text is stored as the UTF-8 of what Qt reads: an invalid byte sequence becomes U+FFFD, as it
// does when the document is decoded by the DOM.
std::string textValue(const char* begin, const char* end)
{
    return QString::fromUtf8(begin, static_cast<int>(end - begin)).toStdString();
}

osg::UInt32 storeString(zeAnimationFile::Document& document, std::string&& text)
{
    document.strings.push_back(std::move(text));
    return static_cast<osg::UInt32>(document.strings.size() - 1);
}

// Takes one attribute of a child element of the root. Attributes no element type reads are
// ignored, among them a track's "number" and a curve's "parentNodeID", which the writer emits for
// the reader's benefit only.
void assignAttribute(zeAnimationFile::Element& element, zeAnimationFile::Document& document, const char* name,
                     std::size_t nameLength, const char* begin, const char* end)
{
    typedef zeAnimationFile::Element E;
    bool ok = false;
    osg::UInt32 attribute = 0; // none: the name is not one the readers know
    switch (nameLength) {
    case 2:
        if (named(name, nameLength, "id")) {
            attribute = E::Id;
            ok = parseUInt64(begin, end, element.id);
        }
        break;
    case 3:
        if (named(name, nameLength, "end")) {
            attribute = E::End;
            ok = parseFloat(begin, end, element.end);
        }
        break;
    case 4:
        if (named(name, nameLength, "name")) {
            attribute = E::Name;
            element.name = storeString(document, textValue(begin, end));
            ok = true;
        } else if (named(name, nameLength, "fcID")) {
            attribute = E::ContainerId;
            osg::UInt32 containerId = 0;
            ok = parseUInt32(begin, end, containerId);
            element.containerId = containerId;
        }
        break;
    case 5:
        if (named(name, nameLength, "field")) {
            attribute = E::FieldId;
            ok = parseUInt64(begin, end, element.fieldId);
        } else if (named(name, nameLength, "value")) {
            attribute = E::Value;
            ok = parseFloat(begin, end, element.value);
        } else if (named(name, nameLength, "dirty")) {
            attribute = E::Dirty;
            ok = parseFlag(begin, end, element.dirty);
        } else if (named(name, nameLength, "begin")) {
            attribute = E::Begin;
            ok = parseFloat(begin, end, element.begin);
        }
        break;
    case 6:
        if (named(name, nameLength, "typeID")) {
            element.hasTypeID = parseInt32(begin, end, element.typeID);
            return;
        }
        if (named(name, nameLength, "active")) {
            attribute = E::Active;
            ok = parseFlag(begin, end, element.active);
        }
        break;
    case 7:
        if (named(name, nameLength, "flipped")) {
            attribute = E::Flipped;
            ok = parseFlag(begin, end, element.flipped);
        }
        break;
    case 8:
        if (named(name, nameLength, "valuePos")) {
            attribute = E::ValuePos;
            ok = parseUInt32(begin, end, element.valuePos);
        } else if (named(name, nameLength, "position")) {
            attribute = E::Position;
            ok = parsePair(begin, end, element.position);
        }
        break;
    case 9:
        if (named(name, nameLength, "attribute")) {
            attribute = E::FieldAttribute;
            element.attribute = storeString(document, textValue(begin, end));
            ok = true;
        } else if (named(name, nameLength, "repeating")) {
            attribute = E::Repeating;
            ok = parseFlag(begin, end, element.repeating);
        } else if (named(name, nameLength, "inTangent")) {
            attribute = E::InTangent;
            ok = parsePair(begin, end, element.inTangent);
        }
        break;
    case 10:
        if (named(name, nameLength, "motionBlur")) {
            attribute = E::MotionBlur;
            ok = parseFlag(begin, end, element.motionBlur);
        } else if (named(name, nameLength, "outTangent")) {
            attribute = E::OutTangent;
            ok = parsePair(begin, end, element.outTangent);
        }
        break;
    case 11:
        if (named(name, nameLength, "tangentType")) {
            attribute = E::TangentType;
            ok = parseTangentMode(begin, end, element.tangentType);
        }
        break;
    case 17:
        if (named(name, nameLength, "tangentLengthMode")) {
            attribute = E::TangentLengthMode;
            ok = parseTangentMode(begin, end, element.tangentLengthMode);
        }
        break;
    default:
        break;
    }
    if (ok)
        element.present |= attribute;
    else
        element.present &= ~attribute;
}

bool isObjectType(const zeAnimationFile::Element& element)
{
    return element.hasTypeID && element.typeID >= kFieldType &&
           element.typeID <= zeAnimationObject::TypeSequence &&
           element.typeID != zeAnimationObject::TypeObject;
}

} // namespace

// ---- Encodings --------------------------------------------------------------------------------

QString zeAnimationFile::formatFloat(float value)
{
    QString text;
    text.setNum(static_cast<double>(value), 'g', 6);
    return text;
}

QString zeAnimationFile::formatPair(float x, float y)
{
    // C printf itself: Qt's own %f rounds decimal ties away from zero, printf to even. The
    // largest float takes 46 characters.
    char text[128];
    const int length =
        std::snprintf(text, sizeof(text), "%f %f", static_cast<double>(x), static_cast<double>(y));
    return QString::fromLatin1(text, length);
}

std::vector<const zeAnimationObject*>
zeAnimationFile::fileOrder(const std::function<void(const zeControlPoint2D*)>& key)
{
    std::vector<const zeAnimationObject*> groups[7];
    for (const zeAnimationManager::ObjectMap::value_type& entry : objectMap()) {
        const zeAnimationObject* object = entry.second;
        if (!object)
            continue;
        switch (object->getTypeID()) {
        case zeAnimationObject::TypePoint2D:
            key(static_cast<const zeControlPoint2D*>(object));
            break;
        case zeAnimationObject::TypeCurve2D:
            groups[1].push_back(object);
            break;
        case zeAnimationObject::TypeUnit:
            if (!object->isHidden())
                groups[2].push_back(object);
            break;
        case zeAnimationObject::TypeSequence:
            groups[3].push_back(object);
            break;
        case zeAnimationObject::TypeStrip:
            groups[isReferencedClip(object) ? 4 : 6].push_back(object);
            break;
        case zeAnimationObject::TypeStreak:
            groups[5].push_back(object);
            break;
        default:
            break;
        }
    }
    std::vector<const zeAnimationObject*> order;
    for (const std::vector<const zeAnimationObject*>& group : groups)
        order.insert(order.end(), group.begin(), group.end());
    return order;
}

std::vector<osg::UInt64> zeAnimationFile::listedChildren(const zeAnimationObject* object)
{
    std::vector<osg::UInt64> ids;
    if (!object)
        return ids;
    switch (object->getTypeID()) {
    case zeAnimationObject::TypeCurve2D:
    case zeAnimationObject::TypeStreak:
        for (const zeAnimationObject* child : object->getObjects())
            ids.push_back(child->getId());
        break;
    case zeAnimationObject::TypeUnit:
        for (const zeAnimationCurve2D* curve : object->getCurves())
            ids.push_back(curve->getId());
        break;
    case zeAnimationObject::TypeStrip: {
        // By track number; tracks that share a number with an earlier one follow in list order,
        // so that no track of the clip is left out of the file.
        const zeAnimationStrip::StreakMap streaks =
            static_cast<const zeAnimationStrip*>(object)->getStreaks();
        std::unordered_set<osg::UInt64> listed;
        for (const zeAnimationStrip::StreakMap::value_type& entry : streaks) {
            ids.push_back(entry.second->getId());
            listed.insert(entry.second->getId());
        }
        for (const zeAnimationObject* child : object->getObjects()) {
            if (child->getTypeID() == zeAnimationObject::TypeStreak && listed.insert(child->getId()).second)
                ids.push_back(child->getId());
        }
        break;
    }
    default:
        break;
    }
    return ids;
}

bool zeAnimationFile::isReferencedClip(const zeAnimationObject* clip)
{
    return clip && clip->getParentId() != 0 && zeAnimationManager::the()->getObject(clip->getParentId());
}

const char* zeAnimationFile::tagName(osg::UInt32 typeID)
{
    switch (typeID) {
    case zeAnimationObject::TypePoint2D:
        return "point";
    case zeAnimationObject::TypeCurve2D:
        return "curve";
    case zeAnimationObject::TypeUnit:
        return "block";
    case zeAnimationObject::TypeStreak:
        return "track";
    case zeAnimationObject::TypeStrip:
        return "clip";
    default:
        // Sequences share the tag of fields; readers tell them apart by their typeID.
        return "field";
    }
}

const char* zeAnimationFile::childTagName(osg::UInt32 typeID)
{
    switch (typeID) {
    case zeAnimationObject::TypeCurve2D:
        return "point";
    case zeAnimationObject::TypeUnit:
        return "block"; // a block's curves: the tag is part of the format
    case zeAnimationObject::TypeStreak:
        return "obj";
    default:
        return "track";
    }
}

namespace {

QString flag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

QString decimal(osg::UInt64 value)
{
    return QString::number(static_cast<qulonglong>(value));
}

} // namespace

zeAnimationFile::Attributes zeAnimationFile::fieldAttributes(const zeAnimationField* field)
{
    return Attributes{{"id", decimal(field->getId())},
                      {"typeID", QStringLiteral("-1")},
                      {"fcID", decimal(field->fcID)},
                      {"name", QString::fromStdString(field->name)},
                      {"attribute", QString::fromStdString(field->attribute)},
                      {"value", formatFloat(field->value)},
                      {"valuePos", decimal(field->valuePos)},
                      {"dirty", flag(field->dirty)}};
}

zeAnimationFile::Attributes zeAnimationFile::objectAttributes(const zeAnimationObject* object)
{
    const osg::UInt32 type = object->getTypeID();
    Attributes attributes{{"id", decimal(object->getId())}, {"typeID", decimal(type)}};
    if (const zeControlPoint2D* key = zeAnimationCast<zeControlPoint2D>(object)) {
        attributes.emplace_back("tangentType", decimal(key->getTangentType()));
        attributes.emplace_back("tangentLengthMode", decimal(key->getTangentLengthMode()));
        attributes.emplace_back("position", formatPair(key->getX(), key->getY()));
        attributes.emplace_back("inTangent", formatPair(key->getInTangentX(), key->getInTangentY()));
        attributes.emplace_back("outTangent", formatPair(key->getOutTangentX(), key->getOutTangentY()));
        return attributes;
    }
    attributes.emplace_back("name", QString::fromStdString(object->getName()));
    attributes.emplace_back("active", flag(object->isActive()));
    if (type == zeAnimationObject::TypeSequence) {
        attributes.emplace_back("begin", formatFloat(object->getBegin()));
        attributes.emplace_back("end", formatFloat(object->getEnd()));
        return attributes;
    }
    attributes.emplace_back("repeating", flag(object->isRepeating()));
    attributes.emplace_back("flipped", flag(object->isFlipped()));
    attributes.emplace_back("motionBlur", flag(object->getMotionBlur()));
    if (const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object)) {
        attributes.emplace_back("field", decimal(curve->getAnimationFieldId()));
        const osg::NodePtr node = curve->getParentOSGNode();
        attributes.emplace_back("parentNodeID", decimal(node != osg::NullFC ? osg::getContainerId(node) : 0));
    } else if (const zeAnimationStreak* track = zeAnimationCast<zeAnimationStreak>(object)) {
        attributes.emplace_back("number", decimal(track->getNumber()));
    }
    return attributes;
}

// ---- Writing ----------------------------------------------------------------------------------
//
// The text is exactly what the host's document writer makes of the DOM document: a declaration,
// the document type, one element per line indented by four spaces per level, attributes in the
// order of their names, and the same escaping. Keys, the bulk of every file, are written by a
// path of their own that needs no Qt strings.

namespace {

const std::size_t kChunk = 1 << 20;

// Buffered output to a file descriptor; remembers the first failure.
class Output
{
public:
    explicit Output(int descriptor) : fd(descriptor) { buffer.reserve(kChunk + 1024); }

    void append(const char* text, std::size_t length)
    {
        buffer.append(text, length);
        if (buffer.size() >= kChunk)
            flush();
    }
    void append(const char* text) { append(text, std::strlen(text)); }
    void append(const QByteArray& text) { append(text.constData(), static_cast<std::size_t>(text.size())); }
    void appendDecimal(osg::UInt64 value)
    {
        char text[24];
        const std::to_chars_result r = std::to_chars(text, text + sizeof(text), value);
        append(text, static_cast<std::size_t>(r.ptr - text));
    }
    // As printf's "%f": to_chars rounds the exact value to six decimals just as printf does.
    void appendFixed(float value)
    {
        if (std::isnan(value)) {
            append(std::signbit(value) ? "-nan" : "nan");
            return;
        }
        char text[64];
        const std::to_chars_result r =
            std::to_chars(text, text + sizeof(text), static_cast<double>(value), std::chars_format::fixed, 6);
        append(text, static_cast<std::size_t>(r.ptr - text));
    }
    void appendPair(float x, float y)
    {
        appendFixed(x);
        append(" ", 1);
        appendFixed(y);
    }

    bool flush()
    {
        std::size_t done = 0;
        while (!failed && done < buffer.size()) {
            const ssize_t n = ::write(fd, buffer.data() + done, buffer.size() - done);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                failed = true;
            else
                done += static_cast<std::size_t>(n);
        }
        buffer.clear();
        return !failed;
    }

    bool failed = false;

private:
    int fd;
    std::string buffer;
};

// An attribute value escaped as the host's document writer escapes it, in UTF-8.
QByteArray escapedAttribute(const QString& text)
{
    QString out;
    out.reserve(text.size());
    const int n = text.size();
    for (int i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        const ushort u = c.unicode();
        if (c.isHighSurrogate() && i + 1 < n && text.at(i + 1).isLowSurrogate()) {
            out.append(c);
            out.append(text.at(++i));
        } else if (c.isSurrogate() || u == 0xFFFE || u == 0xFFFF ||
                   (u < 0x20 && u != 0x9 && u != 0xA && u != 0xD)) {
            out.append(QChar(0xFFFD));
        } else if (u == '&') {
            out.append(QLatin1String("&amp;"));
        } else if (u == '<') {
            out.append(QLatin1String("&lt;"));
        } else if (u == '>') {
            out.append(QLatin1String("&gt;"));
        } else if (u == '"') {
            out.append(QLatin1String("&quot;"));
        } else if (u == '\t') {
            out.append(QLatin1String("&#x9;"));
        } else if (u == '\n') {
            out.append(QLatin1String("&#xa;"));
        } else if (u == '\r') {
            out.append(QLatin1String("&#xd;"));
        } else {
            out.append(c);
        }
    }
    return out.toUtf8();
}

void writeChildren(Output& out, const char* tag, osg::UInt32 typeID, const std::vector<osg::UInt64>& children)
{
    if (children.empty()) {
        out.append("/>\n");
        return;
    }
    out.append(">\n");
    const char* childTag = zeAnimationFile::childTagName(typeID);
    for (osg::UInt64 id : children) {
        out.append("        <");
        out.append(childTag);
        out.append(" id=\"");
        out.appendDecimal(id);
        out.append("\"/>\n");
    }
    out.append("    </");
    out.append(tag);
    out.append(">\n");
}

void writeElement(Output& out, const char* tag, zeAnimationFile::Attributes attributes, osg::UInt32 typeID,
                  const std::vector<osg::UInt64>& children)
{
    std::sort(
        attributes.begin(), attributes.end(),
        [](const zeAnimationFile::Attributes::value_type& a,
           const zeAnimationFile::Attributes::value_type& b) { return std::strcmp(a.first, b.first) < 0; });
    out.append("    <");
    out.append(tag);
    for (const zeAnimationFile::Attributes::value_type& attribute : attributes) {
        out.append(" ");
        out.append(attribute.first);
        out.append("=\"");
        out.append(escapedAttribute(attribute.second));
        out.append("\"");
    }
    writeChildren(out, tag, typeID, children);
}

// Keys in the attribute order that the names' order gives: id, inTangent, outTangent,
// position, tangentLengthMode, tangentType, typeID.
void writeKey(Output& out, const zeControlPoint2D* key)
{
    out.append("    <point id=\"");
    out.appendDecimal(key->getId());
    out.append("\" inTangent=\"");
    out.appendPair(key->getInTangentX(), key->getInTangentY());
    out.append("\" outTangent=\"");
    out.appendPair(key->getOutTangentX(), key->getOutTangentY());
    out.append("\" position=\"");
    out.appendPair(key->getX(), key->getY());
    out.append("\" tangentLengthMode=\"");
    out.appendDecimal(static_cast<osg::UInt64>(key->getTangentLengthMode()));
    out.append("\" tangentType=\"");
    out.appendDecimal(static_cast<osg::UInt64>(key->getTangentType()));
    out.append("\" typeID=\"1\"/>\n");
}

void writePool(Output& out)
{
    const zeAnimationManager::ObjectMap& objects = zeAnimationFile::objectMap();
    const zeAnimationManager::FieldMap& fields = zeAnimationFile::fieldMap();
    out.append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE KORU>\n<AnimationPool objects=\"");
    out.appendDecimal(objects.size() + fields.size());
    out.append("\"");
    // The root is empty exactly when no field and no object of a written kind exists.
    const bool empty =
        std::none_of(fields.begin(), fields.end(),
                     [](const zeAnimationManager::FieldMap::value_type& e) { return e.second; }) &&
        std::none_of(objects.begin(), objects.end(), [](const zeAnimationManager::ObjectMap::value_type& e) {
            const osg::UInt32 type =
                e.second ? e.second->getTypeID() : osg::UInt32(zeAnimationObject::TypeObject);
            return type >= zeAnimationObject::TypePoint2D && type <= zeAnimationObject::TypeSequence &&
                   !(type == zeAnimationObject::TypeUnit && e.second->isHidden());
        });
    if (empty) {
        out.append("/>\n");
        return;
    }
    out.append(">\n");
    const std::vector<osg::UInt64> none;
    for (const zeAnimationManager::FieldMap::value_type& entry : fields) {
        if (entry.second)
            writeElement(out, "field", zeAnimationFile::fieldAttributes(entry.second), 0, none);
    }
    const std::vector<const zeAnimationObject*> rest =
        zeAnimationFile::fileOrder([&out](const zeControlPoint2D* key) { writeKey(out, key); });
    for (const zeAnimationObject* object : rest) {
        const osg::UInt32 type = object->getTypeID();
        writeElement(out, zeAnimationFile::tagName(type), zeAnimationFile::objectAttributes(object), type,
                     zeAnimationFile::listedChildren(object));
    }
    out.append("</AnimationPool>\n");
}

mode_t newFileMode()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

bool zeAnimationFile::save(const char* path)
{
    if (!path || !*path)
        return false;
    std::printf("creating animation xml...\n");
    std::fflush(stdout);
    // A link is followed, so that the file it names is replaced and the link kept.
    std::string target = path;
    struct stat info;
    if (::lstat(target.c_str(), &info) == 0 && S_ISLNK(info.st_mode)) {
        if (char* resolved = ::realpath(target.c_str(), nullptr)) {
            target = resolved;
            std::free(resolved);
        }
    }
    mode_t mode = newFileMode();
    if (::stat(target.c_str(), &info) == 0) {
        // Only a regular file is ever replaced: never a folder, a device or a pipe.
        if (!S_ISREG(info.st_mode))
            return false;
        mode = info.st_mode & 07777;
    }
    const std::string::size_type slash = target.find_last_of('/');
    const std::string folder = slash == std::string::npos ? std::string(".") : target.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? target : target.substr(slash + 1);
    if (base.empty())
        return false;
    std::string temporary = (slash == std::string::npos ? std::string() : folder) + "." + base + ".XXXXXX";
    const int fd = ::mkostemp(&temporary[0], O_CLOEXEC);
    if (fd < 0)
        return false;
    ::fchmod(fd, mode);
    Output out(fd);
    writePool(out);
    bool ok = out.flush();
    ok = ok && ::fsync(fd) == 0;
    ok = ::close(fd) == 0 && ok;
    ok = ok && ::rename(temporary.c_str(), target.c_str()) == 0;
    if (!ok) {
        ::unlink(temporary.c_str());
        return false;
    }
    // The rename itself becomes durable with the folder.
    const int folderFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderFd >= 0) {
        ::fsync(folderFd);
        ::close(folderFd);
    }
    return true;
}

// ---- Reading text -----------------------------------------------------------------------------
//
// A small, strict reader of well-formed XML 1.0 in UTF-8 that keeps only what the loader needs:
// the root's "objects" and, for each child element of the root, its attributes and the "id"s of
// its own child elements. It reads the file in chunks, never recurses, never fetches anything and
// expands only the five predefined entities and character references: a document type with an
// internal subset (where entities would be declared) is refused.

namespace {

class Input
{
public:
    virtual ~Input() = default;
    // Reads up to `size` bytes: the number read, 0 at the end, -1 on an error.
    virtual long read(char* into, std::size_t size) = 0;
};

class FileInput : public Input
{
public:
    explicit FileInput(int descriptor) : fd(descriptor) {}
    ~FileInput() override { ::close(fd); }
    long read(char* into, std::size_t size) override
    {
        for (;;) {
            const ssize_t n = ::read(fd, into, size);
            if (n < 0 && errno == EINTR)
                continue;
            return static_cast<long>(n);
        }
    }

private:
    int fd;
};

class MemoryInput : public Input
{
public:
    explicit MemoryInput(const QByteArray& bytes) : data(bytes) {}
    long read(char* into, std::size_t size) override
    {
        const std::size_t left = static_cast<std::size_t>(data.size()) - offset;
        const std::size_t n = std::min(left, size);
        std::memcpy(into, data.constData() + offset, n);
        offset += n;
        return static_cast<long>(n);
    }

private:
    const QByteArray& data;
    std::size_t offset = 0;
};

enum CharClass : unsigned char
{
    NameStart = 1,
    NameChar = 2,
    Blank = 4,
    // May be copied into an attribute value as it is. Tabs and line ends are kept as they stand,
    // as Qt's DOM parser keeps them, so that both read a value alike.
    Plain = 8
};

struct CharTable
{
    unsigned char classes[256];
    CharTable()
    {
        for (int c = 0; c < 256; ++c) {
            unsigned char k = 0;
            const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
            if (letter || c == '_' || c == ':' || c >= 0x80)
                k |= NameStart | NameChar;
            if ((c >= '0' && c <= '9') || c == '.' || c == '-')
                k |= NameChar;
            if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
                k |= Blank;
            if ((c >= 0x20 || c == '\t' || c == '\n' || c == '\r') && c != '<' && c != '&' && c != '"' &&
                c != '\'')
                k |= Plain;
            classes[c] = k;
        }
    }
    bool is(char c, CharClass k) const { return (classes[static_cast<unsigned char>(c)] & k) != 0; }
};

const CharTable kChars;

// Characters XML 1.0 allows (bytes of multi-byte UTF-8 sequences pass).
bool validByte(char c)
{
    const unsigned char u = static_cast<unsigned char>(c);
    return u >= 0x20 || u == 0x9 || u == 0xA || u == 0xD;
}

bool validCodePoint(osg::UInt32 c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

void appendUtf8(std::string& out, osg::UInt32 c)
{
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

class TextReader
{
public:
    TextReader(Input& source, zeAnimationFile::Document& target, bool declaredEncodingMatters)
        : input(source), document(target), checkEncoding(declaredEncodingMatters)
    {}

    bool run();
    QString error() const;

private:
    enum Result
    {
        Done,
        More,
        Failed
    };

    struct Attribute
    {
        std::size_t name = 0;
        std::size_t nameLength = 0;
        std::string value;
    };

    bool refill();
    bool start();
    Result token();
    Result more() { return eof ? failAt(end, "unexpected end of the document") : More; }
    Result failAt(std::size_t index, const std::string& text)
    {
        errorIndex = index;
        message = text;
        return Failed;
    }
    Result scanName(std::size_t& i);
    Result skipBlanks(std::size_t& i);
    Result reference(std::size_t& i, std::string& out);
    Result startTag();
    Result endTag();
    Result text();
    Result blank();
    Result comment();
    Result instruction();
    Result cdata();
    Result doctype();
    Result literal(std::size_t& i);
    Result openElement(std::size_t nameBegin, std::size_t nameEnd, bool empty);
    bool checkDeclaration(std::size_t begin, std::size_t end);
    std::string slice(std::size_t begin, std::size_t end) const
    {
        return std::string(buffer.data() + begin, end - begin);
    }

    Input& input;
    zeAnimationFile::Document& document;
    const bool checkEncoding;

    std::vector<char> buffer;
    std::size_t pos = 0;
    std::size_t end = 0;
    bool eof = false;
    osg::UInt64 base = 0; // offset of buffer[0] in the input

    std::size_t declarationAt = 0;
    int depth = 0;
    bool rootSeen = false;
    bool rootClosed = false;
    bool doctypeSeen = false;
    bool keepChildren = false;
    std::string openNames;
    std::vector<std::size_t> openOffsets;
    std::vector<Attribute> attributes;
    std::size_t attributeCount = 0;
    std::string scratch;

    // Where an error is, in lines and columns: line feeds in the bytes already dropped.
    osg::UInt64 droppedLines = 0;
    osg::UInt64 lineStart = 0; // input offset of the first byte after the last line feed dropped
    bool readFailed = false;
    std::size_t errorIndex = 0;
    std::string message;
};

bool TextReader::refill()
{
    if (pos > 0) {
        const char* begin = buffer.data();
        droppedLines += static_cast<osg::UInt64>(std::count(begin, begin + pos, '\n'));
        if (const void* last = ::memrchr(begin, '\n', pos))
            lineStart = base + static_cast<osg::UInt64>(static_cast<const char*>(last) - begin) + 1;
        std::memmove(buffer.data(), buffer.data() + pos, end - pos);
        base += pos;
        end -= pos;
        pos = 0;
    }
    // Read at least as much as is kept, so that a token longer than a chunk costs amortised
    // linear time however often it has to be started again.
    const std::size_t want = std::max(kChunk, end);
    if (buffer.size() < end + want)
        buffer.resize(end + want);
    const long n = input.read(buffer.data() + end, want);
    if (n < 0) {
        readFailed = true;
        message = std::string("cannot read the file: ") + std::strerror(errno);
        return false;
    }
    if (n == 0)
        eof = true;
    end += static_cast<std::size_t>(n);
    return true;
}

bool TextReader::start()
{
    while (end < 4 && !eof) {
        if (!refill())
            return false;
    }
    const unsigned char* b = reinterpret_cast<const unsigned char*>(buffer.data());
    if (end >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) {
        pos = 3;
    } else if (end >= 2 && ((b[0] == 0xFE && b[1] == 0xFF) || (b[0] == 0xFF && b[1] == 0xFE))) {
        failAt(0, "the text is UTF-16; animation files are read as UTF-8");
        return false;
    }
    declarationAt = pos;
    return true;
}

bool TextReader::run()
{
    if (!refill() || !start())
        return false;
    for (;;) {
        if (pos == end) {
            if (eof)
                break;
            if (!refill())
                return false;
            continue;
        }
        const Result result = token();
        if (result == Failed)
            return false;
        if (result == More && !refill())
            return false;
    }
    if (!rootSeen) {
        failAt(end, "no root element");
        return false;
    }
    if (depth > 0) {
        failAt(end, "unexpected end of the document: <" + openNames.substr(openOffsets.back()) +
                        "> is not closed");
        return false;
    }
    return true;
}

QString TextReader::error() const
{
    if (readFailed)
        return QString::fromStdString(message);
    osg::UInt64 line = droppedLines + 1;
    osg::UInt64 start = lineStart;
    for (std::size_t i = 0; i < errorIndex && i < end; ++i) {
        if (buffer[i] == '\n') {
            ++line;
            start = base + i + 1;
        }
    }
    const osg::UInt64 column = base + errorIndex - start + 1;
    return QStringLiteral("line %1, column %2: %3")
        .arg(static_cast<qulonglong>(line))
        .arg(static_cast<qulonglong>(column))
        .arg(QString::fromStdString(message));
}

TextReader::Result TextReader::token()
{
    if (buffer[pos] != '<')
        return depth > 0 ? text() : blank();
    if (pos + 1 >= end)
        return more();
    switch (buffer[pos + 1]) {
    case '/':
        return endTag();
    case '?':
        return instruction();
    case '!':
        if (pos + 3 >= end)
            return more();
        if (buffer[pos + 2] == '-' && buffer[pos + 3] == '-')
            return comment();
        if (pos + 9 > end)
            return more();
        if (std::memcmp(buffer.data() + pos + 2, "[CDATA[", 7) == 0)
            return cdata();
        if (std::memcmp(buffer.data() + pos + 2, "DOCTYPE", 7) == 0)
            return doctype();
        return failAt(pos, "unknown markup");
    default:
        return startTag();
    }
}

TextReader::Result TextReader::scanName(std::size_t& i)
{
    if (i >= end)
        return more();
    if (!kChars.is(buffer[i], NameStart))
        return failAt(i, "a name is expected");
    for (++i;; ++i) {
        if (i >= end)
            return more();
        if (!kChars.is(buffer[i], NameChar))
            return Done;
    }
}

TextReader::Result TextReader::skipBlanks(std::size_t& i)
{
    while (i < end && kChars.is(buffer[i], Blank))
        ++i;
    return i < end ? Done : more();
}

TextReader::Result TextReader::reference(std::size_t& i, std::string& out)
{
    const std::size_t at = i;
    std::size_t j = i + 1;
    if (j >= end)
        return more();
    if (buffer[j] == '#') {
        ++j;
        if (j >= end)
            return more();
        const bool hex = buffer[j] == 'x';
        if (hex)
            ++j;
        osg::UInt32 code = 0;
        std::size_t digits = 0;
        for (;; ++j, ++digits) {
            if (j >= end)
                return more();
            const char c = buffer[j];
            int digit = -1;
            if (c >= '0' && c <= '9')
                digit = c - '0';
            else if (hex && c >= 'a' && c <= 'f')
                digit = c - 'a' + 10;
            else if (hex && c >= 'A' && c <= 'F')
                digit = c - 'A' + 10;
            if (digit < 0)
                break;
            if (digits >= 8)
                return failAt(at, "invalid character reference");
            code = code * (hex ? 16 : 10) + static_cast<osg::UInt32>(digit);
        }
        if (digits == 0 || buffer[j] != ';' || !validCodePoint(code))
            return failAt(at, "invalid character reference");
        appendUtf8(out, code);
        i = j + 1;
        return Done;
    }
    for (;; ++j) {
        if (j >= end)
            return more();
        if (buffer[j] == ';')
            break;
        if (!kChars.is(buffer[j], NameChar) || j - at > 32)
            return failAt(at, "invalid entity reference");
    }
    const std::string name = slice(at + 1, j);
    if (name == "lt")
        out += '<';
    else if (name == "gt")
        out += '>';
    else if (name == "amp")
        out += '&';
    else if (name == "apos")
        out += '\'';
    else if (name == "quot")
        out += '"';
    else
        return failAt(at, "undeclared entity &" + name + ";");
    i = j + 1;
    return Done;
}

TextReader::Result TextReader::startTag()
{
    std::size_t i = pos + 1;
    const std::size_t nameBegin = i;
    Result r = scanName(i);
    if (r != Done)
        return r;
    const std::size_t nameEnd = i;
    attributeCount = 0;
    bool empty = false;
    for (;;) {
        const std::size_t blankAt = i;
        if ((r = skipBlanks(i)) != Done)
            return r;
        const char c = buffer[i];
        if (c == '/') {
            if (i + 1 >= end)
                return more();
            if (buffer[i + 1] != '>')
                return failAt(i, "'>' expected");
            i += 2;
            empty = true;
            break;
        }
        if (c == '>') {
            ++i;
            break;
        }
        if (i == blankAt)
            return failAt(i, "a blank is expected before an attribute");
        const std::size_t attributeName = i;
        if ((r = scanName(i)) != Done)
            return r;
        const std::size_t attributeNameEnd = i;
        if ((r = skipBlanks(i)) != Done)
            return r;
        if (buffer[i] != '=')
            return failAt(i, "'=' expected after the attribute name");
        ++i;
        if ((r = skipBlanks(i)) != Done)
            return r;
        const char quote = buffer[i];
        if (quote != '"' && quote != '\'')
            return failAt(i, "a quoted attribute value is expected");
        ++i;
        if (attributeCount == attributes.size())
            attributes.emplace_back();
        Attribute& attribute = attributes[attributeCount++];
        attribute.name = attributeName;
        attribute.nameLength = attributeNameEnd - attributeName;
        attribute.value.clear();
        for (;;) {
            std::size_t run = i;
            while (run < end && kChars.is(buffer[run], Plain))
                ++run;
            attribute.value.append(buffer.data() + i, run - i);
            i = run;
            if (i >= end)
                return more();
            const char v = buffer[i];
            if (v == quote) {
                ++i;
                break;
            }
            if (v == '<')
                return failAt(i, "'<' in an attribute value");
            if (v == '&') {
                if ((r = reference(i, attribute.value)) != Done)
                    return r;
                continue;
            }
            if (v == '"' || v == '\'') {
                attribute.value += v;
                ++i;
                continue;
            }
            return failAt(i, "invalid character");
        }
    }
    // An attribute given twice makes the document ill-formed.
    std::vector<std::size_t> order(attributeCount);
    for (std::size_t k = 0; k < attributeCount; ++k)
        order[k] = k;
    const char* data = buffer.data();
    const std::vector<Attribute>& list = attributes;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const Attribute& x = list[a];
        const Attribute& y = list[b];
        const int c = std::memcmp(data + x.name, data + y.name, std::min(x.nameLength, y.nameLength));
        return c != 0 ? c < 0 : x.nameLength < y.nameLength;
    });
    for (std::size_t k = 1; k < attributeCount; ++k) {
        const Attribute& x = list[order[k - 1]];
        const Attribute& y = list[order[k]];
        if (x.nameLength == y.nameLength && std::memcmp(data + x.name, data + y.name, x.nameLength) == 0)
            return failAt(y.name, "attribute \"" + slice(y.name, y.name + y.nameLength) + "\" given twice");
    }
    if ((r = openElement(nameBegin, nameEnd, empty)) != Done)
        return r;
    pos = i;
    return Done;
}

TextReader::Result TextReader::openElement(std::size_t nameBegin, std::size_t nameEnd, bool empty)
{
    const char* data = buffer.data();
    if (depth == 0) {
        if (rootSeen)
            return failAt(nameBegin - 1, "a second root element");
        const std::string name = slice(nameBegin, nameEnd);
        if (name != "AnimationPool")
            return failAt(nameBegin - 1, "the root element is <" + name + ">, not <AnimationPool>");
        rootSeen = true;
        rootClosed = empty;
        for (std::size_t k = 0; k < attributeCount; ++k) {
            const Attribute& a = attributes[k];
            if (named(data + a.name, a.nameLength, "objects"))
                document.hasObjects =
                    parseUInt64(a.value.data(), a.value.data() + a.value.size(), document.objects);
        }
    } else if (depth == 1) {
        if (document.elementCount >= zeAnimationFile::MaxElements)
            return failAt(nameBegin - 1,
                          "more than " + std::to_string(zeAnimationFile::MaxElements) + " elements");
        zeAnimationFile::Element element;
        element.index = document.elementCount++;
        for (std::size_t k = 0; k < attributeCount; ++k) {
            const Attribute& a = attributes[k];
            assignAttribute(element, document, data + a.name, a.nameLength, a.value.data(),
                            a.value.data() + a.value.size());
        }
        keepChildren = isObjectType(element);
        if (keepChildren) {
            element.firstChild = document.children.size();
            document.elements.push_back(element);
        }
    } else if (depth == 2 && keepChildren) {
        for (std::size_t k = 0; k < attributeCount; ++k) {
            const Attribute& a = attributes[k];
            osg::UInt64 id = 0;
            if (named(data + a.name, a.nameLength, "id") &&
                parseUInt64(a.value.data(), a.value.data() + a.value.size(), id)) {
                if (document.children.size() >= zeAnimationFile::MaxChildReferences)
                    return failAt(nameBegin - 1, "more than " +
                                                     std::to_string(zeAnimationFile::MaxChildReferences) +
                                                     " child elements");
                document.children.push_back(id);
                ++document.elements.back().childCount;
            }
        }
    }
    if (!empty) {
        openOffsets.push_back(openNames.size());
        openNames.append(data + nameBegin, nameEnd - nameBegin);
        ++depth;
    }
    return Done;
}

TextReader::Result TextReader::endTag()
{
    std::size_t i = pos + 2;
    const std::size_t nameBegin = i;
    Result r = scanName(i);
    if (r != Done)
        return r;
    const std::size_t nameEnd = i;
    if ((r = skipBlanks(i)) != Done)
        return r;
    if (buffer[i] != '>')
        return failAt(i, "'>' expected");
    if (depth == 0)
        return failAt(pos, "an end tag without a start tag");
    const std::size_t open = openOffsets.back();
    const std::size_t length = openNames.size() - open;
    if (length != nameEnd - nameBegin ||
        std::memcmp(openNames.data() + open, buffer.data() + nameBegin, length) != 0)
        return failAt(pos, "</" + slice(nameBegin, nameEnd) + "> closes <" + openNames.substr(open) + ">");
    openNames.resize(open);
    openOffsets.pop_back();
    if (--depth == 0)
        rootClosed = true;
    pos = i + 1;
    return Done;
}

TextReader::Result TextReader::text()
{
    std::size_t i = pos;
    for (;;) {
        if (i >= end)
            break;
        const char c = buffer[i];
        if (c == '<')
            break;
        if (c == '&') {
            scratch.clear();
            const Result r = reference(i, scratch);
            if (r == Failed)
                return r;
            if (r == More)
                break;
            continue;
        }
        if (c == ']') {
            if (i + 2 >= end) {
                if (eof)
                    return more();
                break;
            }
            if (buffer[i + 1] == ']' && buffer[i + 2] == '>')
                return failAt(i, "\"]]>\" in text");
        } else if (!validByte(c)) {
            return failAt(i, "invalid character");
        }
        ++i;
    }
    if (i == pos)
        return more();
    pos = i;
    return Done;
}

TextReader::Result TextReader::blank()
{
    std::size_t i = pos;
    while (i < end && kChars.is(buffer[i], Blank))
        ++i;
    if (i < end && !validByte(buffer[i]))
        return failAt(i, "invalid character");
    if (i < end && buffer[i] != '<')
        return failAt(i, rootClosed ? "content after the root element" : "text before the root element");
    pos = i;
    return Done;
}

TextReader::Result TextReader::comment()
{
    for (std::size_t i = pos + 4;; ++i) {
        if (i + 1 >= end)
            return more();
        if (buffer[i] == '-' && buffer[i + 1] == '-') {
            if (i + 2 >= end)
                return more();
            if (buffer[i + 2] != '>')
                return failAt(i, "\"--\" inside a comment");
            pos = i + 3;
            return Done;
        }
        if (!validByte(buffer[i]))
            return failAt(i, "invalid character");
    }
}

TextReader::Result TextReader::instruction()
{
    std::size_t i = pos + 2;
    Result r = scanName(i);
    if (r != Done)
        return r;
    const std::size_t targetEnd = i;
    const bool declaration = targetEnd - (pos + 2) == 3 && (buffer[pos + 2] | 0x20) == 'x' &&
                             (buffer[pos + 3] | 0x20) == 'm' && (buffer[pos + 4] | 0x20) == 'l';
    if (declaration && (base + pos != declarationAt || rootSeen))
        return failAt(pos, "an XML declaration that is not at the start");
    for (;; ++i) {
        if (i + 1 >= end)
            return more();
        if (buffer[i] == '?' && buffer[i + 1] == '>')
            break;
        if (!validByte(buffer[i]))
            return failAt(i, "invalid character");
    }
    if (declaration && checkEncoding && !checkDeclaration(targetEnd, i))
        return Failed;
    pos = i + 2;
    return Done;
}

// Only UTF-8 (or its subset ASCII) is read; a file that declares another encoding is refused
// rather than misread.
bool TextReader::checkDeclaration(std::size_t begin, std::size_t stop)
{
    const std::string content = slice(begin, stop);
    const std::string::size_type at = content.find("encoding");
    if (at == std::string::npos)
        return true;
    std::string::size_type i = content.find_first_of("\"'", at);
    if (i == std::string::npos)
        return true;
    const std::string::size_type close = content.find(content[i], i + 1);
    std::string name = content.substr(i + 1, close == std::string::npos ? std::string::npos : close - i - 1);
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    if (lower == "utf-8" || lower == "utf8" || lower == "us-ascii" || lower == "ascii")
        return true;
    failAt(begin + at, "the text declares the encoding " + name + "; animation files are read as UTF-8");
    return false;
}

TextReader::Result TextReader::cdata()
{
    if (depth == 0)
        return failAt(pos, "a CDATA section outside the root element");
    for (std::size_t i = pos + 9;; ++i) {
        if (i + 2 >= end)
            return more();
        if (buffer[i] == ']' && buffer[i + 1] == ']' && buffer[i + 2] == '>') {
            pos = i + 3;
            return Done;
        }
        if (!validByte(buffer[i]))
            return failAt(i, "invalid character");
    }
}

TextReader::Result TextReader::literal(std::size_t& i)
{
    if (i >= end)
        return more();
    const char quote = buffer[i];
    if (quote != '"' && quote != '\'')
        return failAt(i, "a quoted literal is expected");
    for (++i;; ++i) {
        if (i >= end)
            return more();
        if (buffer[i] == quote) {
            ++i;
            return Done;
        }
        if (!validByte(buffer[i]))
            return failAt(i, "invalid character");
    }
}

TextReader::Result TextReader::doctype()
{
    if (depth > 0 || rootSeen || doctypeSeen)
        return failAt(pos, "a misplaced document type declaration");
    std::size_t i = pos + 9;
    const std::size_t blankAt = i;
    Result r = skipBlanks(i);
    if (r != Done)
        return r;
    if (i == blankAt)
        return failAt(i, "a blank is expected after DOCTYPE");
    if ((r = scanName(i)) != Done || (r = skipBlanks(i)) != Done)
        return r;
    // An external identifier is accepted and ignored: nothing is ever fetched.
    const bool system = end - i >= 6 && std::memcmp(buffer.data() + i, "SYSTEM", 6) == 0;
    const bool pub = end - i >= 6 && std::memcmp(buffer.data() + i, "PUBLIC", 6) == 0;
    if (system || pub) {
        i += 6;
        if ((r = skipBlanks(i)) != Done || (r = literal(i)) != Done || (r = skipBlanks(i)) != Done)
            return r;
        if (pub && buffer[i] != '>' && buffer[i] != '[') {
            if ((r = literal(i)) != Done || (r = skipBlanks(i)) != Done)
                return r;
        }
    } else if (end - i < 6 && !eof && buffer[i] != '>' && buffer[i] != '[') {
        return More;
    }
    if (buffer[i] == '[')
        return failAt(i, "a document type with an internal subset (entity declarations are not read)");
    if (buffer[i] != '>')
        return failAt(i, "'>' expected");
    doctypeSeen = true;
    pos = i + 1;
    return Done;
}

} // namespace

bool zeAnimationFile::parseFile(const QString& path, Document& document, QString& error)
{
    // Opened without blocking and then checked: reading a pipe or a device could block or never
    // end, and a check before the open could be outrun by a rename.
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info;
    if (fd < 0 || ::fstat(fd, &info) != 0) {
        error = QStringLiteral("cannot open the file: %1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        if (fd >= 0)
            ::close(fd);
        return false;
    }
    if (!S_ISREG(info.st_mode)) {
        error = S_ISDIR(info.st_mode) ? QStringLiteral("cannot open the file: it is a folder")
                                      : QStringLiteral("cannot open the file: it is not a regular file");
        ::close(fd);
        return false;
    }
    FileInput input(fd);
    TextReader reader(input, document, true);
    if (reader.run())
        return true;
    error = reader.error();
    return false;
}

bool zeAnimationFile::parseText(const QString& text, Document& document, QString& error)
{
    // The text is already decoded: an encoding it declares says nothing about it any more.
    const QByteArray bytes = text.toUtf8();
    MemoryInput input(bytes);
    TextReader reader(input, document, false);
    if (reader.run())
        return true;
    error = reader.error();
    return false;
}

// ---- Reading a DOM document -------------------------------------------------------------------

zeAnimationFile::Element zeAnimationFile::readElement(const QDomElement& domElement, Document& document)
{
    Element element;
    const QDomNamedNodeMap attributes = domElement.attributes();
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        const QByteArray name = attribute.name().toUtf8();
        const QByteArray value = attribute.value().toUtf8();
        assignAttribute(element, document, name.constData(), static_cast<std::size_t>(name.size()),
                        value.constData(), value.constData() + value.size());
    }
    element.firstChild = document.children.size();
    for (QDomElement child = domElement.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QByteArray text = child.attribute(QStringLiteral("id")).toUtf8();
        osg::UInt64 id = 0;
        if (child.hasAttribute(QStringLiteral("id")) &&
            parseUInt64(text.constData(), text.constData() + text.size(), id)) {
            document.children.push_back(id);
            ++element.childCount;
        }
    }
    return element;
}

bool zeAnimationFile::parseDom(const QDomDocument& dom, Document& document, QString& error)
{
    const QDomElement root = dom.documentElement();
    if (root.isNull()) {
        error = QStringLiteral("no root element");
        return false;
    }
    if (root.tagName() != QLatin1String("AnimationPool")) {
        error = QStringLiteral("the root element is <%1>, not <AnimationPool>").arg(root.tagName());
        return false;
    }
    if (root.hasAttribute(QStringLiteral("objects"))) {
        const QByteArray text = root.attribute(QStringLiteral("objects")).toUtf8();
        document.hasObjects = parseUInt64(text.constData(), text.constData() + text.size(), document.objects);
    }
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (document.elementCount >= MaxElements) {
            error = QStringLiteral("more than %1 elements").arg(static_cast<qulonglong>(MaxElements));
            return false;
        }
        const std::size_t childrenBefore = document.children.size();
        Element element = readElement(child, document);
        element.index = document.elementCount++;
        if (isObjectType(element))
            document.elements.push_back(element);
        else
            document.children.resize(childrenBefore);
    }
    return true;
}

// ---- Loading ----------------------------------------------------------------------------------
//
// The first pass creates every object and field, keeping the file's identifiers where they are
// free. An identifier already in use (by the pool, or by an earlier element of the same file)
// goes to the new object as a fresh one, and the scene's attachments that named it are pointed at
// the fresh one, as setID does. Child references then resolve to what this load made under that
// identifier (the first element that had it) and otherwise to an object of the pool that has no
// parent. The second pass links: every object gets at most one parent (the first element listing
// it), only children of the right kind are taken, and no link may make an object its own
// ancestor. Links are made in bulk: the children are appended in file order and each container's
// summaries, order and bounds are computed once at the end, children before parents.

class zeAnimationFile::Loader
{
public:
    Loader(const zeAnimationFile::Document& source, bool bulkLinks)
        : m(zeAnimationManager::the()), document(source), bulk(bulkLinks)
    {}

    osg::UInt64 create(const zeAnimationFile::Element& element);
    void link(const zeAnimationFile::Element& element, osg::UInt64 made);
    void fixScene();
    void finish();

private:
    osg::UInt64 idFor(const zeAnimationFile::Element& element, bool field);
    const std::string& text(osg::UInt32 index) const { return document.strings[index]; }
    osg::UInt64 resolveObject(osg::UInt64 id) const { return follow(objectRenames, id); }
    osg::UInt64 resolveField(osg::UInt64 id) const { return follow(fieldRenames, id); }
    static osg::UInt64 follow(const std::unordered_map<osg::UInt64, osg::UInt64>& renames, osg::UInt64 id);
    void applyFlags(zeAnimationObject* object, const zeAnimationFile::Element& element);
    void linkKeys(zeAnimationCurve2D* curve, const zeAnimationFile::Element& element);
    bool accepts(const zeAnimationObject* container, const zeAnimationObject* child);
    void walkScene(bool renames);

    zeAnimationManager* m;
    const zeAnimationFile::Document& document;
    const bool bulk;
    std::unordered_map<osg::UInt64, osg::UInt64> objectRenames;
    std::unordered_map<osg::UInt64, osg::UInt64> fieldRenames;
    std::vector<osg::UInt64> loadedFields;
    std::vector<osg::UInt64> touched; // containers that were given children
};

osg::UInt64 zeAnimationFile::Loader::follow(const std::unordered_map<osg::UInt64, osg::UInt64>& renames,
                                            osg::UInt64 id)
{
    // A fresh identifier can be taken again by a later element, so renames chain; each link
    // leads to an identifier drawn later, so the chain ends.
    for (std::size_t hops = 0; hops <= renames.size(); ++hops) {
        const std::unordered_map<osg::UInt64, osg::UInt64>::const_iterator it = renames.find(id);
        if (it == renames.end())
            break;
        id = it->second;
    }
    return id;
}

osg::UInt64 zeAnimationFile::Loader::idFor(const zeAnimationFile::Element& element, bool field)
{
    if (!element.has(zeAnimationFile::Element::Id) || element.id == 0)
        return 0;
    if (m->isIDUnique(element.id))
        return element.id;
    const osg::UInt64 fresh = m->createUID();
    (field ? fieldRenames : objectRenames).emplace(element.id, fresh);
    // A single element read on its own renumbers the scene's references at once.
    if (!bulk)
        walkScene(true);
    return fresh;
}

void zeAnimationFile::Loader::applyFlags(zeAnimationObject* object, const zeAnimationFile::Element& element)
{
    typedef zeAnimationFile::Element E;
    if (element.has(E::Name))
        object->setName(text(element.name));
    if (element.has(E::Active))
        object->setActive(element.active);
    if (object->getTypeID() == zeAnimationObject::TypeSequence)
        return;
    if (element.has(E::Repeating))
        object->setRepeating(element.repeating);
    if (element.has(E::Flipped))
        object->setFlipped(element.flipped);
    if (element.has(E::MotionBlur))
        object->setMotionBlur(element.motionBlur);
}

osg::UInt64 zeAnimationFile::Loader::create(const zeAnimationFile::Element& element)
{
    typedef zeAnimationFile::Element E;
    const osg::UInt64 id = idFor(element, element.typeID == kFieldType);
    const std::string name = element.has(E::Name) ? text(element.name) : std::string();
    zeAnimationObject* object = nullptr;
    switch (element.typeID) {
    case kFieldType: {
        zeAnimationField* field = m->createField(id);
        if (element.has(E::ContainerId))
            field->fcID = element.containerId;
        if (element.has(E::Name))
            field->name = name;
        if (element.has(E::FieldAttribute))
            field->attribute = text(element.attribute);
        if (element.has(E::Value))
            field->value = element.value;
        if (element.has(E::ValuePos))
            field->valuePos = element.valuePos;
        if (element.has(E::Dirty))
            field->dirty = element.dirty;
        loadedFields.push_back(field->getId());
        return field->getId();
    }
    case zeAnimationObject::TypePoint2D: {
        // Handles start on the key: a missing tangent means no handle on that side.
        zeControlPoint2D* key = element.has(E::Position)
                                    ? m->createPoint2D(element.position[0], element.position[1], id)
                                    : m->createPoint2D(id);
        if (element.has(E::TangentType))
            key->setTangentType(static_cast<zeControlPoint2D::TangentMode>(element.tangentType));
        if (element.has(E::TangentLengthMode))
            key->setTangentLengthMode(static_cast<zeControlPoint2D::TangentMode>(element.tangentLengthMode));
        if (element.has(E::InTangent))
            key->setInTangent(osg::Vec2f(element.inTangent[0], element.inTangent[1]));
        if (element.has(E::OutTangent))
            key->setOutTangent(osg::Vec2f(element.outTangent[0], element.outTangent[1]));
        return key->getId();
    }
    case zeAnimationObject::TypeCurve2D:
        object = m->createCurve2D(id);
        break;
    case zeAnimationObject::TypeUnit:
        object = element.has(E::Name) ? m->createUnit(name, id) : m->createUnit(id);
        break;
    case zeAnimationObject::TypeStreak:
        object = element.has(E::Name) ? m->createStreak(name, id) : m->createStreak(id);
        break;
    case zeAnimationObject::TypeStrip:
        object = element.has(E::Name) ? m->createStrip(name, id) : m->createStrip(id);
        break;
    case zeAnimationObject::TypeSequence:
        object = m->createSequence(element.has(E::Name) ? name : std::string("Sequence"), id);
        if (element.has(E::Begin))
            object->setBegin(element.begin);
        if (element.has(E::End))
            object->setEnd(element.end);
        break;
    default:
        return 0;
    }
    applyFlags(object, element);
    return object->getId();
}

bool zeAnimationFile::Loader::accepts(const zeAnimationObject* container, const zeAnimationObject* child)
{
    if (!child || child == container)
        return false;
    const osg::UInt32 type = child->getTypeID();
    switch (container->getTypeID()) {
    case zeAnimationObject::TypeUnit:
        if (type != zeAnimationObject::TypeCurve2D)
            return false;
        break;
    case zeAnimationObject::TypeStreak:
        if (type != zeAnimationObject::TypeUnit && type != zeAnimationObject::TypeStrip &&
            type != zeAnimationObject::TypeSequence)
            return false;
        break;
    case zeAnimationObject::TypeStrip:
        if (type != zeAnimationObject::TypeStreak)
            return false;
        break;
    default:
        return false;
    }
    // One parent per object (the first element that lists it), no loops, no hierarchy deeper than
    // the library allows: the links made so far are live, so the library's own test applies.
    return !child->getParent() && zeAnimationAccess::canAdopt(container, child);
}

void zeAnimationFile::Loader::linkKeys(zeAnimationCurve2D* curve, const zeAnimationFile::Element& element)
{
    std::vector<zeControlPoint2D*> keys;
    keys.reserve(element.childCount);
    for (std::size_t i = 0; i < element.childCount; ++i) {
        zeControlPoint2D* key = m->getPoint2D(resolveObject(document.children[element.firstChild + i]));
        // A key with a NaN or infinite position has no place in an ordered curve.
        if (key && !key->isTangent() && std::isfinite(key->getX()) &&
            (!key->getParent() || key->getParent() == curve))
            keys.push_back(key);
    }
    if (bulk)
        zeAnimationAccess::assignKeys(curve, keys, false);
    else
        curve->setPoints(keys);
}

void zeAnimationFile::Loader::link(const zeAnimationFile::Element& element, osg::UInt64 made)
{
    zeAnimationObject* object = m->getObject(made);
    if (!object)
        return;
    const osg::UInt32 type = object->getTypeID();
    if (zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object)) {
        if (element.has(zeAnimationFile::Element::FieldId)) {
            // A field the pool does not hold keeps its identifier, so that nothing the file
            // said is lost, and gives the curve the colour of no field.
            const osg::UInt64 fieldId = resolveField(element.fieldId);
            if (zeAnimationField* field = m->getField(fieldId)) {
                curve->setAnimationField(field);
            } else {
                zeAnimationAccess::bindFieldId(curve, fieldId);
                curve->setColor(zeAnimationUtils::getDefaultCurveColor(nullptr));
            }
        }
        linkKeys(curve, element);
        return;
    }
    if (type != zeAnimationObject::TypeUnit && type != zeAnimationObject::TypeStreak &&
        type != zeAnimationObject::TypeStrip)
        return;
    bool linked = false;
    for (std::size_t i = 0; i < element.childCount; ++i) {
        zeAnimationObject* child = m->getObject(resolveObject(document.children[element.firstChild + i]));
        if (!accepts(object, child))
            continue;
        if (!bulk) {
            object->addObject(child);
            continue;
        }
        if (type == zeAnimationObject::TypeStrip)
            static_cast<zeAnimationStreak*>(child)->setNumber(
                static_cast<osg::UInt32>(object->getChildIds().size()));
        zeAnimationAccess::appendQuietly(object, child);
        linked = true;
    }
    if (linked)
        touched.push_back(object->getId());
}

void zeAnimationFile::Loader::finish()
{
    // Children before parents: each linked subtree is walked from its topmost linked container.
    std::unordered_set<osg::UInt64> pending(touched.begin(), touched.end());
    std::vector<std::pair<zeAnimationObject*, zeAnimationObject::ChildList::const_iterator>> stack;
    for (osg::UInt64 id : touched) {
        if (pending.count(id) == 0)
            continue;
        zeAnimationObject* top = m->getObject(id);
        if (!top) {
            pending.erase(id);
            continue;
        }
        for (std::size_t hops = 0; hops < touched.size(); ++hops) {
            zeAnimationObject* parent = top->getParent();
            if (!parent || pending.count(parent->getId()) == 0)
                break;
            top = parent;
        }
        pending.erase(top->getId());
        stack.emplace_back(top, top->getChildIds().begin());
        while (!stack.empty()) {
            zeAnimationObject* current = stack.back().first;
            zeAnimationObject::ChildList::const_iterator& next = stack.back().second;
            if (next != current->getChildIds().end()) {
                const osg::UInt64 childId = *next++;
                if (pending.erase(childId) != 0) {
                    if (zeAnimationObject* child = m->getObject(childId))
                        stack.emplace_back(child, child->getChildIds().begin());
                }
                continue;
            }
            if (zeAnimationUnit* unit = zeAnimationCast<zeAnimationUnit>(current)) {
                // A block belongs to the node of its first curve that names one.
                for (const zeAnimationObject* child : current->getObjects()) {
                    const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(child);
                    const zeAnimationField* field = curve ? curve->getAnimationField() : nullptr;
                    if (zeAnimationAccess::parentNodeId(unit) == 0 && field)
                        zeAnimationAccess::setParentNodeId(unit, static_cast<osg::UInt32>(field->nodeID));
                }
            }
            zeAnimationAccess::finishAppends(current);
            stack.pop_back();
        }
    }
}

void zeAnimationFile::Loader::fixScene()
{
    if (!objectRenames.empty() || !fieldRenames.empty() || !loadedFields.empty())
        walkScene(false);
}

// Points the scene's attachments at the identifiers the load gave, and gives each loaded field
// the node whose attachment lists it (the file does not store a field's node).
void zeAnimationFile::Loader::walkScene(bool renamesOnly)
{
    osg::NodePtr root = zeAnimationManager::getSceneRootNode();
    if (root == osg::NullFC)
        return;
    std::unordered_set<osg::UInt64> fields;
    if (!renamesOnly)
        fields.insert(loadedFields.begin(), loadedFields.end());
    std::unordered_set<osg::UInt32> seen;
    std::vector<osg::NodePtr> nodes(1, root);
    while (!nodes.empty()) {
        osg::NodePtr node = nodes.back();
        nodes.pop_back();
        if (node == osg::NullFC || !seen.insert(osg::getContainerId(node)).second)
            continue;
        for (osg::UInt32 i = 0; i < node->getNChildren(); ++i)
            nodes.push_back(node->getChild(i));
        osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(node);
        if (attachment == osg::NullFC)
            continue;
        const osg::BitVector mask =
            osg::AnimAttachment::ObjectIdsFieldMask | osg::AnimAttachment::FieldIdsFieldMask;
        if (!objectRenames.empty() || !fieldRenames.empty()) {
            osg::beginEditCP(attachment, mask, 1);
            for (osg::UInt64& id : attachment->getObjectIds())
                id = resolveObject(id);
            for (osg::UInt64& id : attachment->getFieldIds())
                id = resolveField(id);
            osg::endEditCP(attachment, mask, 1);
        }
        for (osg::UInt64 id : attachment->getFieldIds()) {
            if (fields.erase(id) != 0) {
                if (zeAnimationField* field = m->getField(id))
                    field->nodeID = osg::getContainerId(node);
            }
        }
    }
    if (renamesOnly) {
        objectRenames.clear();
        fieldRenames.clear();
    }
}

// Reports progress after each element, as a percentage of the root's "objects" count, clamped to
// 0..100; a document without a count reports nothing.
class zeAnimationFile::Progress
{
public:
    explicit Progress(const zeAnimationFile::Document& document)
        : enabled(document.hasObjects && document.objects > 0), total(static_cast<float>(document.objects))
    {}

    void report(osg::UInt64 done)
    {
        if (!enabled)
            return;
        float percent = static_cast<float>(done) / (total / 100.0f);
        percent = std::min(std::max(percent, 0.0f), 100.0f);
        zeAnimationManager::the()->setFileIOProgress(zeAnimationUtils::floatToInt(percent));
    }

private:
    const bool enabled;
    const float total;
};

bool zeAnimationFile::load(const Document& document)
{
    if (_loading)
        return false;
    _loading = true;
    if (document.hasObjects) {
        std::printf("loading animation elements: %llu\n", static_cast<unsigned long long>(document.objects));
        std::fflush(stdout);
    }
    zeAnimationManager* m = zeAnimationManager::the();
    zeAnimationAccess::reserveObjects(m, document.elements.size());
    Loader loader(document, true);
    Progress progress(document);
    std::vector<osg::UInt64> made(document.elements.size(), 0);
    std::size_t next = 0;
    for (osg::UInt64 index = 0; index < document.elementCount; ++index) {
        if (next < document.elements.size() && document.elements[next].index == index) {
            made[next] = loader.create(document.elements[next]);
            ++next;
        }
        progress.report(index + 1);
    }
    loader.fixScene();
    next = 0;
    for (osg::UInt64 index = 0; index < document.elementCount; ++index) {
        if (next < document.elements.size() && document.elements[next].index == index) {
            loader.link(document.elements[next], made[next]);
            ++next;
        }
        progress.report(index + 1);
    }
    loader.finish();
    _loading = false;
    return true;
}

zeAnimationField* zeAnimationFile::createField(const Element& element, const Document& document)
{
    if (!element.hasTypeID || element.typeID != kFieldType)
        return nullptr;
    Loader loader(document, false);
    return zeAnimationManager::the()->getField(loader.create(element));
}

zeAnimationObject* zeAnimationFile::createObject(const Element& element, const Document& document,
                                                 osg::Int32 expectedType)
{
    if (!element.hasTypeID || element.typeID != expectedType ||
        expectedType < zeAnimationObject::TypePoint2D || expectedType > zeAnimationObject::TypeSequence)
        return nullptr;
    Loader loader(document, false);
    return zeAnimationManager::the()->getObject(loader.create(element));
}

void zeAnimationFile::readChildren(const Element& element, const Document& document)
{
    if (!element.has(Element::Id))
        return;
    Loader loader(document, false);
    loader.link(element, element.id);
}
