// zeanim check: lints what the file says (its text) and what the loader made of it (the pool).

#include "zeFileText.h"
#include "zeTool.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace {

typedef zeFileText::Element Element;
typedef zeFileText::Reference Reference;

// At most this many frames of one segment are evaluated (every whole frame of shorter segments),
// and fewer on curves of many segments, so that a curve costs at most about 65,536 evaluations.
const int maxSamplesPerSegment = 512;
const int samplesPerCurve = 65536;

struct Finding
{
    enum Severity
    {
        Error,
        Warning,
        Note
    };
    Severity severity;
    std::string subject; // id and "name"
    std::string what;
    int line;
    int column;
};

class Checker
{
public:
    Checker(const std::string& file, const zeFileText& text) : file(file), elements(text.elements) {}

    void run()
    {
        indexIds();
        linkParents();
        checkCurves();
        checkBlocks();
        checkLeftovers();
        checkEvaluation();
        std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
            return a.line != b.line ? a.line < b.line : a.column < b.column;
        });
    }

    // Writes the findings; the number of errors.
    int report(zeToolOutput& output) const
    {
        static const char* const severities[] = {"error", "warning", "note"};
        int counts[3] = {0, 0, 0};
        for (const Finding& f : findings) {
            ++counts[f.severity];
            output.write(std::string(severities[f.severity]) + " " + f.subject + ": " + f.what + " (" + file +
                         ":" + std::to_string(f.line) + ":" + std::to_string(f.column) + ")\n");
        }
        if (findings.empty()) {
            std::fprintf(stderr, "%s: no findings\n", file.c_str());
        } else {
            std::fprintf(stderr, "%s: %d error%s, %d warning%s, %d note%s\n", file.c_str(), counts[0],
                         counts[0] == 1 ? "" : "s", counts[1], counts[1] == 1 ? "" : "s", counts[2],
                         counts[2] == 1 ? "" : "s");
        }
        return counts[0];
    }

private:
    const std::string& file;
    const std::vector<Element>& elements;
    std::vector<Finding> findings;
    // The element the loader makes the object or field of an id from: the first that has it.
    std::unordered_map<osg::UInt64, std::size_t> byId;
    // Per element: the element that holds it (the first valid listing), or none.
    std::vector<std::size_t> parent;
    std::vector<bool> firstOfId;
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    static std::string kindOf(const Element& e)
    {
        return e.typeID == zeFileText::FieldType ? "field"
                                                 : zeToolKindName(static_cast<osg::UInt32>(e.typeID));
    }

    static std::string nameOf(const Element& e)
    {
        if (e.typeID == zeAnimationObject::TypePoint2D)
            return "key";
        if (e.typeID == zeFileText::FieldType &&
            (e.name.empty() || e.attribute.compare(0, e.name.size(), e.name) == 0))
            return e.attribute;
        if (e.typeID == zeFileText::FieldType)
            return e.name + "." + e.attribute;
        return e.name;
    }

    static std::string subjectOf(const Element& e)
    {
        return (e.idState == zeFileText::Usable ? std::to_string(e.id) : std::string("-")) + " \"" +
               nameOf(e) + "\"";
    }

    // "block 123 "name"", for messages that name another element.
    static std::string describe(const Element& e) { return kindOf(e) + " " + subjectOf(e); }

    void add(Finding::Severity severity, const Element& subject, const std::string& what, int line,
             int column)
    {
        findings.push_back(Finding{severity, subjectOf(subject), what, line, column});
    }

    void add(Finding::Severity severity, const Element& subject, const std::string& what)
    {
        add(severity, subject, what, subject.line, subject.column);
    }

    const Element* find(osg::UInt64 id) const
    {
        const auto it = byId.find(id);
        return it == byId.end() ? nullptr : &elements[it->second];
    }

    std::size_t indexOf(const Element* e) const { return static_cast<std::size_t>(e - elements.data()); }

    // Which kinds a container holds, in words and as a test.
    static const char* holds(int typeID)
    {
        switch (typeID) {
        case zeAnimationObject::TypeCurve2D:
            return "a curve holds keys";
        case zeAnimationObject::TypeUnit:
            return "a block holds curves";
        case zeAnimationObject::TypeStreak:
            return "a track holds blocks, clips and sequences";
        default:
            return "a clip holds tracks";
        }
    }

    static bool canHold(int container, int child)
    {
        switch (container) {
        case zeAnimationObject::TypeCurve2D:
            return child == zeAnimationObject::TypePoint2D;
        case zeAnimationObject::TypeUnit:
            return child == zeAnimationObject::TypeCurve2D;
        case zeAnimationObject::TypeStreak:
            return child == zeAnimationObject::TypeUnit || child == zeAnimationObject::TypeStrip ||
                   child == zeAnimationObject::TypeSequence;
        case zeAnimationObject::TypeStrip:
            return child == zeAnimationObject::TypeStreak;
        default:
            return false;
        }
    }

    void indexIds()
    {
        static const char* const tags[] = {"field", "", "point", "curve", "block", "track", "clip", "field"};
        firstOfId.assign(elements.size(), false);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Element& e = elements[i];
            for (const zeFileText::BadValue& bad : e.badValues)
                add(Finding::Error, e,
                    bad.attribute + " is \"" + bad.text + "\": " + bad.why + "; the loader ignores it");
            if (!e.isUsable()) {
                add(Finding::Warning, e,
                    "<" + e.tag + "> without a usable typeID makes nothing" +
                        (e.typeState == zeFileText::Usable ? " (typeID " + std::to_string(e.typeID) + ")"
                                                           : ""));
                continue;
            }
            if (e.tag != tags[e.typeID + 1])
                add(Finding::Warning, e,
                    "<" + e.tag + "> with typeID " + std::to_string(e.typeID) + " makes a " + kindOf(e));
            if (e.idState != zeFileText::Usable) {
                add(Finding::Warning, e, "has no usable id, so nothing can refer to it");
                continue;
            }
            const auto inserted = byId.emplace(e.id, i);
            firstOfId[i] = inserted.second;
            if (!inserted.second) {
                const Element& first = elements[inserted.first->second];
                add(Finding::Error, e,
                    "id already used by the " + kindOf(first) + " at line " + std::to_string(first.line) +
                        "; the loader gives this " + kindOf(e) +
                        " a fresh id and references reach the first");
            }
        }
    }

    bool isAncestor(std::size_t candidate, std::size_t of) const
    {
        for (std::size_t at = of; at != none; at = parent[at]) {
            if (at == candidate)
                return true;
        }
        return false;
    }

    // Every child reference, in the order the loader links them: the first listing of an object
    // gives it its parent.
    void linkParents()
    {
        parent.assign(elements.size(), none);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Element& e = elements[i];
            if (!e.isUsable() || !firstOfId[i])
                continue;
            if (!e.references.empty() &&
                (e.typeID < zeAnimationObject::TypeCurve2D || e.typeID > zeAnimationObject::TypeStrip)) {
                add(Finding::Warning, e,
                    "lists children, which a " + kindOf(e) + " cannot have; they are ignored");
                continue;
            }
            std::unordered_set<osg::UInt64> listed;
            for (const Reference& r : e.references)
                linkOne(i, r, listed);
        }
    }

    void linkOne(std::size_t container, const Reference& r, std::unordered_set<osg::UInt64>& listed)
    {
        const Element& e = elements[container];
        if (r.state != zeFileText::Usable) {
            add(Finding::Error, e, "a child entry has no usable id", r.line, r.column);
            return;
        }
        const std::string id = std::to_string(r.id);
        const Element* child = find(r.id);
        if (!child) {
            add(Finding::Error, e, "lists " + id + ", which names nothing in the file", r.line, r.column);
            return;
        }
        if (!canHold(e.typeID, child->typeID)) {
            add(Finding::Error, e,
                "lists the " + describe(*child) + "; " + holds(e.typeID) + ", so it is skipped", r.line,
                r.column);
            return;
        }
        if (!listed.insert(r.id).second) {
            add(Finding::Warning, e, "lists " + id + " twice", r.line, r.column);
            return;
        }
        const std::size_t c = indexOf(child);
        if (parent[c] != none) {
            const Element& holder = elements[parent[c]];
            add(Finding::Error, e,
                "lists the " + describe(*child) + ", which the " + describe(holder) + " at line " +
                    std::to_string(holder.line) + " already holds; it stays there",
                r.line, r.column);
            return;
        }
        if (isAncestor(c, container)) {
            add(Finding::Error, e, "lists the " + describe(*child) + ", which holds it: the loop is left out",
                r.line, r.column);
            return;
        }
        parent[c] = container;
    }

    // The keys a curve element holds, in its order.
    std::vector<const Element*> keysOf(std::size_t curve) const
    {
        std::vector<const Element*> keys;
        std::unordered_set<const Element*> seen;
        for (const Reference& r : elements[curve].references) {
            const Element* key = r.state == zeFileText::Usable ? find(r.id) : nullptr;
            // A key listed twice holds its parent once: only its first listing counts.
            if (key && key->typeID == zeAnimationObject::TypePoint2D && parent[indexOf(key)] == curve &&
                seen.insert(key).second)
                keys.push_back(key);
        }
        return keys;
    }

    void checkCurves()
    {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Element& e = elements[i];
            if (!e.isUsable() || !firstOfId[i])
                continue;
            if (e.typeID == zeAnimationObject::TypeSequence && e.begin.state == zeFileText::Usable &&
                e.end.state == zeFileText::Usable && e.end.value < e.begin.value)
                add(Finding::Error, e,
                    "ends at frame " + zeToolNumber(e.end.value) + ", before it begins at frame " +
                        zeToolNumber(e.begin.value));
            if (e.typeID != zeAnimationObject::TypeCurve2D)
                continue;
            if (e.field.state == zeFileText::Absent) {
                add(Finding::Warning, e, "has no field, so playback writes its values nowhere");
            } else if (e.field.state == zeFileText::Usable) {
                const Element* field = find(e.field.whole);
                if (!field)
                    add(Finding::Error, e,
                        "field " + std::to_string(e.field.whole) + " names nothing in the file");
                else if (field->typeID != zeFileText::FieldType)
                    add(Finding::Error, e,
                        "field " + std::to_string(e.field.whole) + " is the " + describe(*field));
            }
            checkKeys(e, keysOf(i));
        }
    }

    // Keys at one frame, and handles that run backwards or past the neighbouring key.
    void checkKeys(const Element& curve, const std::vector<const Element*>& listed)
    {
        // The loader keeps the last listed key of each frame.
        std::map<float, const Element*> byFrame;
        for (const Element* key : listed) {
            if (key->position.state != zeFileText::Usable)
                continue;
            const auto inserted = byFrame.emplace(key->position.x, key);
            if (!inserted.second) {
                add(Finding::Error, curve,
                    "keys " + std::to_string(inserted.first->second->id) + " and " + std::to_string(key->id) +
                        " share frame " + zeToolNumber(key->position.x) +
                        "; the loader keeps the last listed",
                    key->line, key->column);
                inserted.first->second = key;
            }
        }
        const Element* previous = nullptr;
        for (const auto& entry : byFrame) {
            const Element* key = entry.second;
            const float x = entry.first;
            if (previous && previous->outTangent.state == zeFileText::Usable) {
                const float p = previous->position.x;
                const float h = previous->outTangent.x;
                if (h < p)
                    handle(curve, *previous,
                           "out-handle of the key at frame " + zeToolNumber(p) +
                               " runs backwards in time, to frame " + zeToolNumber(h));
                else if (h > x)
                    handle(curve, *previous,
                           "out-handle of the key at frame " + zeToolNumber(p) + " reaches frame " +
                               zeToolNumber(h) + ", beyond the next key at frame " + zeToolNumber(x));
            }
            if (previous && key->inTangent.state == zeFileText::Usable) {
                const float h = key->inTangent.x;
                if (h > x)
                    handle(curve, *key,
                           "in-handle of the key at frame " + zeToolNumber(x) +
                               " runs forwards in time, to frame " + zeToolNumber(h));
                else if (h < previous->position.x)
                    handle(curve, *key,
                           "in-handle of the key at frame " + zeToolNumber(x) + " reaches frame " +
                               zeToolNumber(h) + ", before the previous key at frame " +
                               zeToolNumber(previous->position.x));
            }
            previous = key;
        }
    }

    void handle(const Element& curve, const Element& key, const std::string& what)
    {
        add(Finding::Error, curve, what, key.line, key.column);
    }

    // Two curves of a block on one field component: only one of them can show.
    void checkBlocks()
    {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Element& block = elements[i];
            if (!block.isUsable() || block.typeID != zeAnimationObject::TypeUnit || !firstOfId[i])
                continue;
            std::map<std::string, const Element*> driven;
            for (const Reference& r : block.references) {
                const Element* curve = r.state == zeFileText::Usable ? find(r.id) : nullptr;
                if (!curve || curve->typeID != zeAnimationObject::TypeCurve2D ||
                    parent[indexOf(curve)] != i || curve->field.state != zeFileText::Usable)
                    continue;
                const Element* field = find(curve->field.whole);
                std::string component = "field " + std::to_string(curve->field.whole);
                if (field && field->typeID == zeFileText::FieldType &&
                    field->containerId.state == zeFileText::Usable)
                    component = nameOf(*field) + " of container " + std::to_string(field->containerId.whole);
                const auto inserted = driven.emplace(component, curve);
                if (!inserted.second && inserted.first->second != curve)
                    add(Finding::Error, block,
                        "its curves " + subjectOf(*inserted.first->second) + " and " + subjectOf(*curve) +
                            " both drive " + component + "; only one of them can show",
                        r.line, r.column);
            }
        }
    }

    void checkLeftovers()
    {
        std::vector<bool> usedField(elements.size(), false);
        for (const Element& e : elements) {
            if (e.isUsable() && e.typeID == zeAnimationObject::TypeCurve2D &&
                e.field.state == zeFileText::Usable) {
                if (const Element* field = find(e.field.whole))
                    usedField[indexOf(field)] = true;
            }
        }
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Element& e = elements[i];
            if (!e.isUsable() || !firstOfId[i])
                continue;
            if (e.typeID == zeFileText::FieldType && !usedField[i])
                add(Finding::Note, e, "no curve uses this field");
            if (e.typeID == zeAnimationObject::TypePoint2D && parent[i] == none)
                add(Finding::Warning, e, "belongs to no curve");
        }
    }

    // What the library's own evaluation makes of each curve the loader made.
    void checkEvaluation()
    {
        zeAnimationManager* manager = zeAnimationManager::the();
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Element& e = elements[i];
            zeAnimationCurve2D* curve =
                e.isUsable() && e.typeID == zeAnimationObject::TypeCurve2D && firstOfId[i]
                    ? manager->getCurve2D(e.id)
                    : nullptr;
            if (!curve)
                continue;
            const zeAnimationCurve2D::PointMap keys = curve->getPoints();
            if (keys.size() < 2) {
                add(Finding::Warning, e,
                    "has " + std::to_string(keys.size()) + (keys.size() == 1 ? " key" : " keys") +
                        " once loaded, so evaluation yields no value");
                continue;
            }
            const int budget = std::max(
                1, std::min(maxSamplesPerSegment, samplesPerCurve / static_cast<int>(std::min<std::size_t>(
                                                                        keys.size(), samplesPerCurve))));
            for (auto k1 = std::next(keys.begin()); k1 != keys.end(); ++k1)
                checkSegment(e, curve, *std::prev(k1)->second, *k1->second, budget);
        }
    }

    void checkSegment(const Element& e, zeAnimationCurve2D* curve, const zeControlPoint2D& k0,
                      const zeControlPoint2D& k1, int budget)
    {
        const double x0 = k0.getX();
        const double x1 = k1.getX();
        // Every whole frame inside the segment when there are few enough, else evenly spread ones.
        const double firstWhole = std::floor(x0) + 1.0;
        const double wholeFrames = std::ceil(x1) - 1.0 - firstWhole + 1.0;
        const bool onWholeFrames = wholeFrames >= 1.0 && wholeFrames <= budget;
        const int samples = onWholeFrames ? static_cast<int>(wholeFrames) : wholeFrames < 1.0 ? 1 : budget;
        int failed = 0;
        float first = 0.0f;
        for (int s = 0; s < samples; ++s) {
            const double frame = onWholeFrames ? firstWhole + s : x0 + (x1 - x0) * (s + 1) / (samples + 1);
            float value = 0.0f;
            if (!zeAnimationController::computeCurveValue(curve, static_cast<float>(frame), value) &&
                failed++ == 0)
                first = static_cast<float>(frame);
        }
        if (failed == 0)
            return;
        const Element* where = find(k0.getId());
        add(Finding::Error, e,
            "yields no value at " + std::to_string(failed) + " of " + std::to_string(samples) +
                " frames tried between the keys at frames " + zeToolNumber(k0.getX()) + " and " +
                zeToolNumber(k1.getX()) + ", first at frame " + zeToolNumber(first),
            where ? where->line : e.line, where ? where->column : e.column);
    }
};

} // namespace

int zeToolCheck(const zeToolArguments& arguments)
{
    zeFileText text;
    QString error;
    if (!text.read(QString::fromLocal8Bit(arguments.file.c_str()), error)) {
        zeToolError(arguments.file + ": " + error.toStdString());
        return zeToolFailed;
    }
    zeToolOutput output;
    if (!output.open(arguments.output))
        return zeToolFailed;
    Checker checker(arguments.file, text);
    checker.run();
    const int errors = checker.report(output);
    if (!output.close())
        return zeToolFailed;
    return errors > 0 ? zeToolFindings : zeToolDone;
}
