#ifndef ZEFILETEXT_H
#define ZEFILETEXT_H

// What an animation file says, element by element, with where each element and child reference
// stands in the text. zeanim check reads the file this way besides loading it: the loader
// settles every conflict of a file (a child listed twice, a reference to nothing, a NaN) by
// skipping, and the pool it makes no longer shows what was wrong.

#include <zeAnimation/zeAnimationObject.h>

#include <OpenSG/OSGBaseTypes.h>

#include <QString>

#include <string>
#include <vector>

class zeFileText
{
public:
    // The typeID of a field's element; an object's element carries its object's type id.
    static constexpr int FieldType = -1;

    // A number as the file gives it: absent, present and usable, or present but not a value of
    // its kind (the loader ignores those).
    enum State
    {
        Absent,
        Usable,
        Unusable
    };

    struct Number
    {
        State state = Absent;
        osg::UInt64 whole = 0; // ids, container ids, positions in a value
        float value = 0.0f;    // frames
    };

    struct Pair
    {
        State state = Absent;
        float x = 0.0f;
        float y = 0.0f;
    };

    // An attribute present with a value that is not of its kind.
    struct BadValue
    {
        std::string attribute;
        std::string text;
        std::string why;
    };

    // One child element of a root's child: a reference to a child object by its "id".
    struct Reference
    {
        State state = Absent;
        osg::UInt64 id = 0;
        int line = 0;
        int column = 0;
    };

    struct Element
    {
        std::string tag;
        int line = 0;
        int column = 0;
        State typeState = Absent;
        int typeID = 0;
        State idState = Absent;
        osg::UInt64 id = 0;
        std::string name;
        std::string attribute; // a field's
        Number containerId;    // a field's fcID
        Number valuePos;       // a field's
        Number field;          // a curve's field id
        Number begin;          // a sequence's
        Number end;            // a sequence's
        Pair position;         // a key's
        Pair inTangent;        // a key's
        Pair outTangent;       // a key's
        std::vector<BadValue> badValues;
        std::vector<Reference> references;

        // True when the loader makes something of the element.
        bool isUsable() const
        {
            return typeState == Usable &&
                   (typeID == FieldType ||
                    (typeID >= zeAnimationObject::TypePoint2D && typeID <= zeAnimationObject::TypeSequence));
        }
    };

    // Reads the file; false with `error` set when it cannot be read or is not XML.
    bool read(const QString& path, QString& error);

    std::vector<Element> elements;
};

#endif // ZEFILETEXT_H
