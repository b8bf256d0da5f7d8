#ifndef ZEEVALUATIONPLAN_H
#define ZEEVALUATIONPLAN_H

// Playback-time data of one evaluated object, kept apart from the editing-time objects it is made
// from: every curve below the object as a row (its flags and interval, its keys in contiguous
// arrays, its field and the scene target the field resolves to), grouped by the object that
// collects them (a block, with its interval, play range and repeat flag), the groups laid out in
// order of begin and indexed in order of end for the three passes of an evaluation. A plan is
// built from the objects and used as long as the pool's revision (zeAnimationRevision) is the one
// it was built at; every setter of what it keeps bumps the revision, so a frame reads nothing of
// the objects but the fields it writes.
//
// Memory is laid out for the frames, not for the build: a frame walks the groups and the rows in
// the order they are stored; the data of the first pass (rows, prepared segments) lies apart from
// that of the scene writes (each row's field and scene target), so that each pass reads only what
// it needs; a row's keys are read only when the frame leaves the segment prepared last; and the
// fields and scene containers, which live wherever they were allocated, are fetched ahead of
// their turn. At 100,000 curves a frame then reads about 30 MB, which a large last-level cache
// still holds from one frame to the next.
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
        float begin; // the object's own interval, which picks the pass
        float end;
        float rangeBegin; // the range a repeating object wraps the frame into
        float rangeEnd;
        std::uint32_t firstRow;
        std::uint32_t rowCount;
        bool repeating;
    };
    // What a segment needs of a key besides its x (which lies in `xs`).
    struct Key
    {
        float y, inX, inY, outX, outY;
    };
    enum RowFlag : std::uint8_t
    {
        RowActive = 1,
        RowMotionBlur = 2,
        RowRepeating = 4
    };
    struct Row
    {
        zeAnimationField* field; // null: the curve's value goes nowhere
        float begin;             // the curve's interval, which clamps the frame it is read at
        float end;
        std::uint32_t firstKey;
        std::uint32_t keyCount;
        std::uint32_t hint; // the upper bound found last
        std::uint8_t flags;
    };
    // What the scene writes of a frame read, row by row, apart from what its first pass reads.
    struct Write
    {
        zeAnimationField* field;
        zeSceneTarget target;
    };
    enum Pass : std::uint8_t
    {
        Future,
        Past,
        Active,
        Skipped
    };

    bool fresh(const zeAnimationObject* root) const;
    void build(zeAnimationObject* root);
    void collect(zeAnimationObject* object, int depth, std::vector<zeAnimationObject*>& found);
    void addGroup(zeAnimationObject* object);
    void placeGroups(float frame, bool motionBlurOnly);
    void readRow(std::uint32_t index, float local, bool motionBlurOnly);
    bool rowValue(std::uint32_t index, float frame, float& value);
    void writeChanged();

    zeAnimationObject* root = nullptr;
    osg::UInt64 rootId = 0;
    std::uint64_t revision = 0;
    bool built = false;
    bool running = false;

    std::vector<Group> groups;                    // in order of begin (stable)
    std::vector<float> locals;                    // per group at the current frame: the frame its rows read
    std::vector<std::uint8_t> passes;             // and the pass it takes part in
    std::vector<std::uint32_t> byEnd;             // group indices, stably ordered by end
    std::vector<Row> rows;                        // group after group
    std::vector<zeCurveKernel::Segment> segments; // per row, the segment prepared last
    std::vector<Write> writes;                    // per row
    std::vector<float> xs;
    std::vector<Key> keys;
    std::vector<std::uint32_t> changed; // rows whose field took a value, in order
    std::unordered_set<const zeAnimationField*> liveFields;
};

#endif // ZEEVALUATIONPLAN_H
