// zeanim info: the pool as a tree, as text or JSON.

#include "zeTool.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <cstdio>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

std::string jsonString(const std::string& text)
{
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof(escaped), "\\u%04x", c);
            out += escaped;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

std::string jsonId(osg::UInt64 id)
{
    return "\"" + std::to_string(id) + "\"";
}

const char* jsonBool(bool value)
{
    return value ? "true" : "false";
}

// Writes the tree in one of the two forms. Both walk the same objects in the same order.
class InfoWriter
{
public:
    InfoWriter(bool json, zeToolOutput& output) : json(json), output(output) {}

    void run(const std::string& file)
    {
        zeAnimationManager* manager = zeAnimationManager::the();
        std::vector<zeAnimationObject*> clips;
        std::vector<zeAnimationObject*> unplaced;
        for (zeAnimationObject* root : zeToolRoots())
            (root->getTypeID() == zeAnimationObject::TypeStrip ? clips : unplaced).push_back(root);
        unsigned counts[7] = {0, 0, 0, 0, 0, 0, 0};
        const zeAnimationManager::ObjectMap objects = manager->getObjects();
        for (const auto& entry : objects) {
            const osg::UInt32 type = entry.second->getTypeID();
            counts[type < 7 ? type : 0] += 1;
            if (type == zeAnimationObject::TypePoint2D && !entry.second->getParent())
                unplaced.push_back(entry.second);
        }
        // Fields by the curves that name them, in one pass over the curves.
        std::unordered_set<const zeAnimationField*> used;
        for (const auto& entry : objects) {
            if (const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(entry.second))
                used.insert(curve->getAnimationField());
        }
        std::vector<zeAnimationField*> unused;
        for (const auto& entry : manager->getFields()) {
            if (!used.count(entry.second))
                unused.push_back(entry.second);
        }

        if (json)
            output.write("{\n  \"file\": " + jsonString(file) + ",\n  \"clips\": [");
        else
            output.write(file + "\n");
        list(clips, json ? 1 : 0);
        if (json)
            output.write(std::string(clips.empty() ? "" : "\n  ") + "],\n  \"unplaced\": [");
        else if (!unplaced.empty())
            output.write("objects that belong to nothing\n");
        list(unplaced, 1);
        if (json)
            output.write(std::string(unplaced.empty() ? "" : "\n  ") + "],\n  \"unusedFields\": [");
        else if (!unused.empty())
            output.write("fields no curve uses\n");
        for (std::size_t i = 0; i < unused.size(); ++i)
            output.write(json ? std::string(i ? ",\n    " : "\n    ") + fieldJson(unused[i])
                              : "  field " + std::to_string(unused[i]->getId()) + " " + fieldText(unused[i]) +
                                    "\n");
        static const char* const kinds[] = {"clip", "track", "block", "sequence", "curve", "key"};
        static const osg::UInt32 types[] = {5, 4, 3, 6, 2, 1};
        const std::size_t fields = manager->getFieldCount();
        if (json) {
            output.write(std::string(unused.empty() ? "" : "\n  ") + "],\n  \"counts\": {");
            for (int i = 0; i < 6; ++i)
                output.write(std::string(i ? ", " : "") + "\"" + kinds[i] +
                             "s\": " + std::to_string(counts[types[i]]));
            output.write(", \"fields\": " + std::to_string(fields) +
                         ", \"unusedFields\": " + std::to_string(unused.size()) + "}\n}\n");
            return;
        }
        std::string line = "counts:";
        for (int i = 0; i < 6; ++i)
            line += std::string(i ? ", " : " ") + plural(counts[types[i]], kinds[i]);
        output.write(line + ", " + plural(fields, "field") + " (" + std::to_string(unused.size()) +
                     " unused)\n");
    }

private:
    bool json;
    zeToolOutput& output;

    static std::string plural(std::size_t n, const std::string& kind)
    {
        return std::to_string(n) + " " + kind + (n == 1 ? "" : "s");
    }

    void list(const std::vector<zeAnimationObject*>& objects, int depth)
    {
        for (std::size_t i = 0; i < objects.size(); ++i) {
            if (json)
                output.write(std::string(i ? "," : "") + "\n" + std::string(2 * depth + 2, ' '));
            node(objects[i], depth);
        }
    }

    static std::string fieldText(const zeAnimationField* field)
    {
        return "(container " + std::to_string(field->fcID) + ", " + field->name + ", " + field->attribute +
               ")";
    }

    static std::string fieldJson(const zeAnimationField* field)
    {
        return "{\"id\": " + jsonId(field->getId()) + ", \"container\": " + std::to_string(field->fcID) +
               ", \"name\": " + jsonString(field->name) + ", \"attribute\": " + jsonString(field->attribute) +
               "}";
    }

    void node(zeAnimationObject* object, int depth)
    {
        const osg::UInt32 type = object->getTypeID();
        const std::string kind = zeToolKindName(type);
        if (const zeControlPoint2D* key = zeAnimationCast<zeControlPoint2D>(object)) {
            if (json)
                output.write("{\"kind\": \"key\", \"id\": " + jsonId(key->getId()) + ", \"x\": " +
                             zeToolNumber(key->getX()) + ", \"y\": " + zeToolNumber(key->getY()) + "}");
            else
                output.write(std::string(2 * depth, ' ') + "key " + std::to_string(key->getId()) + " at (" +
                             zeToolNumber(key->getX()) + ", " + zeToolNumber(key->getY()) + ")\n");
            return;
        }
        const bool empty = zeToolIsEmptyRange(object->getBegin(), object->getEnd());
        std::vector<zeAnimationObject*> children = zeToolChildren(object);
        if (json) {
            std::string text = "{\"kind\": \"" + kind + "\", \"id\": " + jsonId(object->getId()) +
                               ", \"name\": " + jsonString(object->getName());
            if (const zeAnimationStreak* track = zeAnimationCast<zeAnimationStreak>(object))
                text += ", \"number\": " + std::to_string(track->getNumber());
            text += ", \"begin\": " + (empty ? std::string("null") : zeToolNumber(object->getBegin())) +
                    ", \"end\": " + (empty ? std::string("null") : zeToolNumber(object->getEnd())) +
                    ", \"active\": " + jsonBool(object->isActive()) +
                    ", \"repeating\": " + jsonBool(object->isRepeating()) +
                    ", \"flipped\": " + jsonBool(object->isFlipped()) +
                    ", \"motionBlur\": " + jsonBool(object->getMotionBlur());
            if (const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object)) {
                const zeAnimationField* field = curve->getAnimationField();
                text += ", \"keys\": " + std::to_string(curve->getPointCount()) +
                        ", \"field\": " + (field ? fieldJson(field) : std::string("null")) + "}";
                output.write(text);
                return;
            }
            if (type == zeAnimationObject::TypeSequence) {
                output.write(text + "}");
                return;
            }
            output.write(text + ", \"children\": [");
            list(children, depth + 1);
            output.write(std::string(children.empty() ? "" : "\n" + std::string(2 * depth + 2, ' ')) + "]}");
            return;
        }
        std::string line = std::string(2 * depth, ' ') + kind + " " + std::to_string(object->getId());
        if (const zeAnimationStreak* track = zeAnimationCast<zeAnimationStreak>(object))
            line += " #" + std::to_string(track->getNumber());
        line += " \"" + object->getName() + "\": ";
        if (const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(object)) {
            const zeAnimationField* field = curve->getAnimationField();
            line += field ? "field " + std::to_string(field->getId()) + " " + fieldText(field) : "no field";
            line += ", " + plural(curve->getPointCount(), "key") + ", ";
        }
        line += empty ? "empty" : "frames " + zeToolRange(object->getBegin(), object->getEnd());
        if (!object->isActive())
            line += ", inactive";
        if (object->isRepeating())
            line += ", repeating";
        if (object->isFlipped())
            line += ", flipped";
        if (object->getMotionBlur())
            line += ", motion blur";
        output.write(line + "\n");
        if (type == zeAnimationObject::TypeCurve2D)
            return; // a curve's keys are counted, not listed
        for (zeAnimationObject* child : children)
            node(child, depth + 1);
    }
};

} // namespace

int zeToolInfo(const zeToolArguments& arguments)
{
    zeToolOutput output;
    if (!output.open(arguments.output))
        return zeToolFailed;
    InfoWriter(arguments.json, output).run(arguments.file);
    return output.close() ? zeToolDone : zeToolFailed;
}
