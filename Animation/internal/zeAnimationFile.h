#ifndef ZEANIMATIONFILE_H
#define ZEANIMATIONFILE_H

// Internal to the library, not installed: the animation file written and read as a stream, so
// that neither direction ever holds a document tree of the whole pool. zeAnimationManager's file
// operations are thin forwarders to this class; its DOM builders and readers share the value
// encodings and the loader defined here, so both paths give the same text and the same pool.

#include <OpenSG/OSGBaseTypes.h>

#include "zeAnimationAccess.h"

#include <zeAnimation/zeAnimationManager.h>

#include <QString>

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class QDomDocument;
class QDomElement;

class zeAnimationFile
{
public:
    // What one child element of the document's root says. An attribute that is present but is
    // not a value of its kind (not a number, out of range, NaN or infinite, a flag other than
    // 0 or 1, an unknown tangent mode) counts as missing, so the object keeps its default.
    struct Element
    {
        enum Attribute : osg::UInt32
        {
            Id = 1u << 0,
            Name = 1u << 1,
            FieldAttribute = 1u << 2, // the field's "attribute"
            ContainerId = 1u << 3,    // a field's "fcID"
            FieldId = 1u << 4,        // a curve's "field"
            Value = 1u << 5,
            ValuePos = 1u << 6,
            Dirty = 1u << 7,
            Active = 1u << 8,
            Repeating = 1u << 9,
            Flipped = 1u << 10,
            MotionBlur = 1u << 11,
            Begin = 1u << 12,
            End = 1u << 13,
            TangentType = 1u << 14,
            TangentLengthMode = 1u << 15,
            Position = 1u << 16,
            InTangent = 1u << 17,
            OutTangent = 1u << 18
        };

        bool has(Attribute attribute) const { return (present & attribute) != 0; }

        osg::UInt64 index = 0; // position among the root's child elements
        bool hasTypeID = false;
        osg::Int32 typeID = 0;
        osg::UInt32 present = 0;
        osg::UInt64 id = 0;
        osg::UInt64 containerId = 0;
        osg::UInt64 fieldId = 0;
        osg::UInt32 name = 0;      // index into Document::strings
        osg::UInt32 attribute = 0; // index into Document::strings
        osg::UInt32 valuePos = 0;
        float value = 0.0f;
        float begin = 0.0f;
        float end = 0.0f;
        float position[2] = {0.0f, 0.0f};
        float inTangent[2] = {0.0f, 0.0f};
        float outTangent[2] = {0.0f, 0.0f};
        osg::UInt8 tangentType = 0;
        osg::UInt8 tangentLengthMode = 0;
        bool dirty = false;
        bool active = false;
        bool repeating = false;
        bool flipped = false;
        bool motionBlur = false;
        // The "id"s of the element's own child elements, in document order.
        std::size_t firstChild = 0;
        std::size_t childCount = 0;
    };

    // The root and its child elements. Elements that cannot make anything (no usable typeID)
    // are counted but not kept.
    struct Document
    {
        bool hasObjects = false;
        osg::UInt64 objects = 0;
        osg::UInt64 elementCount = 0;
        std::deque<Element> elements; // a deque: a million of them are never moved

        std::vector<osg::UInt64> children;
        std::vector<std::string> strings{std::string()};
    };

    // A file holds at most this many child elements of the root and this many child references
    // in all; larger files are refused instead of exhausting memory.
    static const osg::UInt64 MaxElements = 8000000;
    static const osg::UInt64 MaxChildReferences = 64000000;

    // The manager's registries, read in place (copying a million entries is not cheap).
    static const zeAnimationManager::ObjectMap& objectMap() { return zeAnimationAccess::objects(); }
    static const zeAnimationManager::FieldMap& fieldMap() { return zeAnimationAccess::fields(); }

    // ---- Encodings ------------------------------------------------------------------------
    // A float as Qt's general format with 6 significant digits.
    static QString formatFloat(float value);
    // Two floats as C printf's "%f %f".
    static QString formatPair(float x, float y);
    // The attributes of an element, by name, in the order the element tables give them.
    typedef std::vector<std::pair<const char*, QString>> Attributes;
    static Attributes fieldAttributes(const zeAnimationField* field);
    static Attributes objectAttributes(const zeAnimationObject* object);
    // The tag of an object's element, and of the child elements that list its children.
    static const char* tagName(osg::UInt32 typeID);
    static const char* childTagName(osg::UInt32 typeID);
    // The order of the file's element groups after the fields: keys, curves, visible blocks,
    // sequences, clips with a reference, tracks, the other clips; each group in identifier order.
    // The keys, the bulk of any pool, are handed to `key` during the one walk of the registry
    // that sorts the rest into groups, which are returned in file order.
    static std::vector<const zeAnimationObject*>
    fileOrder(const std::function<void(const zeControlPoint2D*)>& key);
    // The children an element lists, in the order the file gives them: a curve's keys, a
    // block's curves, a track's objects, a clip's tracks.
    static std::vector<osg::UInt64> listedChildren(const zeAnimationObject* object);
    // True when a clip belongs to the clips written before the tracks: its reference id (the
    // parent id) names an object of the pool.
    static bool isReferencedClip(const zeAnimationObject* clip);

    // ---- Writing --------------------------------------------------------------------------
    // Writes the pool to `path` atomically: a temporary file in the target's folder, flushed
    // and synced, renamed over the target. False, with the target untouched and no temporary
    // file left, on any failure.
    static bool save(const char* path);

    // ---- Reading --------------------------------------------------------------------------
    // Parses the text into `document`; false (with `error` set) when it is not a well-formed
    // animation document. The source is a file name or the text itself.
    static bool parseFile(const QString& path, Document& document, QString& error);
    static bool parseText(const QString& text, Document& document, QString& error);
    static bool parseDom(const QDomDocument& dom, Document& document, QString& error);
    static Element readElement(const QDomElement& element, Document& document);

    // Creates the document's objects and fields and links them, as one load. False only when a
    // load is already running (a host callback started another).
    static bool load(const Document& document);
    // The single-element readers behind the manager's DOM readers.
    static zeAnimationField* createField(const Element& element, const Document& document);
    static zeAnimationObject* createObject(const Element& element, const Document& document,
                                           osg::Int32 expectedType);
    static void readChildren(const Element& element, const Document& document);

    static bool isLoading() { return _loading; }

private:
    class Loader;
    class Progress;

    static bool _loading;
};

#endif // ZEANIMATIONFILE_H
