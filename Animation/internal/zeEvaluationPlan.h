#ifndef ZEEVALUATIONPLAN_H
#define ZEEVALUATIONPLAN_H

// Playback-time data of one evaluated object, kept apart from the editing-time objects it is made
// from: every curve below the object as a row (its keys in contiguous arrays, its field and the
// scene target the field resolves to), grouped by the object that collects them (a block), with
// the groups pre-ordered for the three passes of an evaluation. A plan is built from the objects
// and used as long as the pool's revision (zeAnimationRevision) is the one it was built at and
// the groups' intervals still order them as they did; otherwise it is built again. Flags, play
// ranges and intervals are read from the objects on every frame, so setters need not tell it.
//
// Internal to the library, never installed.

#include "zeCurveKernel.h"
#include "zeSceneAccess.h"

#include <OpenSG/OSGBaseTypes.h>

#include <cstdint>
#include <unordered_set>
#include <vector>

class zeAnimationObject;
class zeAnimationCurve2D;
class zeAnimationField;

class zeEvaluationPlan
{
public:
    // Reads every curve below `root` at `frame` the way evaluation orders them (objects not yet
    // started show their first value, finished ones their last, running ones override both; among
    // equals the later-starting object wins), stores each value into its field and writes the
    // fields into the scene in that order. Allocates nothing once built for the root.
    void evaluate(zeAnimationObject* root, float frame, bool motionBlurOnly);

    // True while evaluate runs: a host callback reached from a scene write that evaluates again
    // must use another plan.
    bool busy() const { return running; }

private:
    struct Group
    {
        zeAnimationObject* object;
        float begin; // the interval the order below was made with
        float end;
        std::uint32_t firstRow;
        std::uint32_t rowCount;
    };
    // A group at the current frame: the pass it takes part in and its local frame.
    struct GroupFrame
    {
        float local;
        std::uint8_t pass;
    };
    // What a segment needs of a key besides its x (which lies in `xs`).
    struct Key
    {
        float y, inX, inY, outX, outY;
    };
    struct Row
    {
        zeAnimationCurve2D* curve;
        zeAnimationField* field; // null: the curve's value goes nowhere
        std::uint32_t firstKey;
        std::uint32_t keyCount;
        std::size_t hint;      // the upper bound found last
        std::size_t segmentAt; // the key starting the prepared segment, or NoSegment
        zeCurveKernel::Segment segment;
        zeSceneTarget target;
    };
    static const std::size_t NoSegment = ~std::size_t(0);
    enum Pass : std::uint8_t
    {
        Future,
        Past,
        Active,
        Skipped
    };

    bool fresh(const zeAnimationObject* root) const;
    void build(zeAnimationObject* root);
    void collect(zeAnimationObject* object, int depth);
    void addGroup(zeAnimationObject* object);
    // Works out each group's pass and local frame; false when the groups' intervals no longer
    // match the order the plan was built with.
    bool placeGroups(float frame, bool motionBlurOnly);
    void readRow(std::uint32_t index, float local, bool motionBlurOnly);
    bool rowValue(Row& row, float frame, float& value);
    void writeChanged();

    zeAnimationObject* root = nullptr;
    osg::UInt64 rootId = 0;
    std::uint64_t revision = 0;
    bool built = false;
    bool running = false;

    std::vector<Group> groups;
    std::vector<GroupFrame> frames;
    std::vector<std::uint32_t> byBegin; // group indices, stably ordered by begin
    std::vector<std::uint32_t> byEnd;   // the same by end
    std::vector<Row> rows;
    std::vector<float> xs;
    std::vector<Key> keys;
    std::vector<std::uint32_t> changed; // rows whose field took a value, in order
    std::unordered_set<const zeAnimationField*> liveFields;
};

#endif // ZEEVALUATIONPLAN_H
