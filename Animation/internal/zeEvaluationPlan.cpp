#include "zeEvaluationPlan.h"

#include "zeAnimationRevision.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

// Fields and scene containers lie wherever they were allocated; a frame asks for those of the
// row this many rows ahead, so that they arrive by its turn instead of stalling it.
const std::uint32_t kAhead = 12;

inline void fetchForRead(const void* address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address, 0, 3);
#else
    (void)address;
#endif
}

inline void fetchForWrite(const void* address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address, 1, 3);
#else
    (void)address;
#endif
}

// The line of a field that takes the value.
inline void fetchValue(zeAnimationField* field)
{
    if (field)
        fetchForWrite(&field->value);
}

// The lines of a field a scene write reads: its container id and name, its value and component.
inline void fetchField(const zeAnimationField* field)
{
    fetchForRead(field);
    fetchForRead(&field->name);
    fetchForRead(&field->value);
}

} // namespace

// ---- Building -----------------------------------------------------------------------------------

bool zeEvaluationPlan::fresh(const zeAnimationObject* object) const
{
    return built && object == root && object->getId() == rootId && revision == zeAnimationRevision::current();
}

void zeEvaluationPlan::build(zeAnimationObject* object)
{
    root = object;
    rootId = object->getId();
    revision = zeAnimationRevision::current();
    groups.clear();
    rows.clear();
    segments.clear();
    writes.clear();
    xs.clear();
    keys.clear();
    std::vector<zeAnimationObject*> found;
    collect(object, 0, found);
    // Stable orders by begin and by end, ties in the order the walk found the objects. The groups
    // are stored in the order of begin, which two of the three passes follow.
    std::vector<float> begins(found.size());
    std::vector<float> ends(found.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        begins[i] = found[i]->getBegin();
        ends[i] = found[i]->getEnd();
    }
    std::vector<std::uint32_t> byBegin(found.size());
    byEnd.resize(found.size());
    for (std::uint32_t i = 0; i < found.size(); ++i)
        byBegin[i] = byEnd[i] = i;
    std::stable_sort(byBegin.begin(), byBegin.end(),
                     [&begins](std::uint32_t a, std::uint32_t b) { return begins[a] < begins[b]; });
    std::stable_sort(byEnd.begin(), byEnd.end(),
                     [&ends](std::uint32_t a, std::uint32_t b) { return ends[a] < ends[b]; });
    std::vector<std::uint32_t> stored(found.size());
    for (std::uint32_t i = 0; i < byBegin.size(); ++i) {
        stored[byBegin[i]] = i;
        addGroup(found[byBegin[i]]);
    }
    for (std::uint32_t& index : byEnd)
        index = stored[index];
    locals.resize(groups.size());
    passes.resize(groups.size());
    // No segment is prepared yet: a NaN start matches no key and no frame.
    zeCurveKernel::Segment none{};
    none.x0 = none.x1 = std::numeric_limits<float>::quiet_NaN();
    segments.assign(rows.size(), none);
    writes.resize(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        writes[i] = Write{rows[i].field, zeSceneTarget()};
    changed.clear();
    changed.reserve(rows.size());
    built = true;
}

void zeEvaluationPlan::collect(zeAnimationObject* object, int depth, std::vector<zeAnimationObject*>& found)
{
    // A block (or a curve, a key, the base object) collects its curves; the containers above it
    // pass the walk on to their children in list order. Hierarchies are at most MaxDepth deep.
    if (object->getTypeID() <= zeAnimationObject::TypeUnit) {
        found.push_back(object);
        return;
    }
    if (depth > zeAnimationObject::MaxDepth)
        return;
    for (osg::UInt64 childId : object->getChildIds()) {
        if (zeAnimationObject* child = object->resolveChild(childId))
            collect(child, depth + 1, found);
    }
}

void zeEvaluationPlan::addGroup(zeAnimationObject* object)
{
    Group group;
    group.begin = object->getBegin();
    group.end = object->getEnd();
    group.rangeBegin = object->usesPlayRange() ? object->getStartPlayRange() : group.begin;
    group.rangeEnd = object->usesPlayRange() ? object->getEndPlayRange() : group.end;
    group.repeating = object->isRepeating();
    group.firstRow = static_cast<std::uint32_t>(rows.size());
    zeAnimationManager* m = zeAnimationManager::the();
    for (osg::UInt64 curveId : object->getCurveIds()) {
        zeAnimationCurve2D* curve = m->getCurve2D(curveId);
        if (!curve)
            continue;
        Row row;
        row.field = curve->getAnimationField();
        row.begin = curve->getBegin();
        row.end = curve->getEnd();
        row.flags = static_cast<std::uint8_t>((curve->isActive() ? RowActive : 0) |
                                              (curve->getMotionBlur() ? RowMotionBlur : 0) |
                                              (curve->isRepeating() ? RowRepeating : 0));
        row.firstKey = static_cast<std::uint32_t>(xs.size());
        row.hint = 0;
        // The keys as evaluation sees them: one per x, in order of x.
        for (const zeAnimationCurve2D::PointMap::value_type& entry : curve->getPoints()) {
            const zeControlPoint2D* point = entry.second;
            xs.push_back(point->getX());
            keys.push_back(Key{point->getY(), point->getInTangentX(), point->getInTangentY(),
                               point->getOutTangentX(), point->getOutTangentY()});
        }
        row.keyCount = static_cast<std::uint32_t>(xs.size()) - row.firstKey;
        rows.push_back(row);
    }
    group.rowCount = static_cast<std::uint32_t>(rows.size()) - group.firstRow;
    groups.push_back(group);
}

// ---- Evaluating ---------------------------------------------------------------------------------

void zeEvaluationPlan::placeGroups(float frame, bool motionBlurOnly)
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const Group& group = groups[i];
        locals[i] =
            group.repeating ? zeCurveKernel::repeatWrap(frame, group.rangeBegin, group.rangeEnd) : frame;
        // The passes test the unwrapped frame against the object's own interval, even when a play
        // range is in use; only the frame the curves are read at is wrapped.
        if (motionBlurOnly)
            passes[i] = group.begin <= frame && frame <= group.end ? Active : Skipped;
        else if (group.begin > frame)
            passes[i] = Future;
        else if (group.end < frame)
            passes[i] = Past;
        else
            passes[i] = Active;
    }
}

bool zeEvaluationPlan::rowValue(std::uint32_t index, float frame, float& value)
{
    // Keys are strictly increasing in x, so the segment prepared last is the one the frame falls in
    // whenever the frame lies between its two keys; the keys themselves need not be read then.
    zeCurveKernel::Segment& segment = segments[index];
    if (segment.x0 <= frame && frame < segment.x1)
        return zeCurveKernel::solveSegment(segment, frame, value);
    Row& row = rows[index];
    const std::size_t count = row.keyCount;
    const float* x = xs.data() + row.firstKey;
    const Key* k = keys.data() + row.firstKey;
    std::size_t hint = row.hint;
    const std::size_t upper = zeCurveKernel::upperBound(x, count, frame, hint);
    row.hint = static_cast<std::uint32_t>(hint);
    switch (zeCurveKernel::locate(count, upper)) {
    case zeCurveKernel::TooFewKeys:
        return false;
    case zeCurveKernel::BeforeFirst: // the second key's value, as it has always been
        value = k[1].y;
        return true;
    case zeCurveKernel::AfterLast:
        value = k[count - 1].y;
        return true;
    case zeCurveKernel::Inside:
        break;
    }
    const std::size_t at = upper - 1;
    if (segment.x0 != x[at]) // its start tells which segment is prepared
        zeCurveKernel::prepareSegment(segment, x[at], k[at].y, k[at].outX, k[at].outY, k[at + 1].inX,
                                      k[at + 1].inY, x[at + 1], k[at + 1].y);
    return zeCurveKernel::solveSegment(segment, frame, value);
}

void zeEvaluationPlan::readRow(std::uint32_t index, float local, bool motionBlurOnly)
{
    const Row& row = rows[index];
    if (!(row.flags & RowActive) || (motionBlurOnly && !(row.flags & RowMotionBlur)) || !row.field)
        return;
    // Clamped to the curve's own ends unless it repeats.
    float f = local;
    if (!(row.flags & RowRepeating)) {
        if (row.begin > f)
            f = row.begin;
        else if (row.end < f)
            f = row.end;
    }
    float value = 0.0f;
    if (!rowValue(index, f, value))
        return;
    row.field->value = value;
    changed.push_back(index);
}

void zeEvaluationPlan::evaluate(zeAnimationObject* object, float frame, bool motionBlurOnly)
{
    running = true;
    if (!fresh(object))
        build(object);
    placeGroups(frame, motionBlurOnly);
    changed.clear();
    const std::uint32_t rowCount = static_cast<std::uint32_t>(rows.size());
    // Not yet started objects from the latest end back, finished ones from the earliest begin on,
    // then the running ones from the earliest begin on: the last write to a field wins.
    for (std::size_t i = byEnd.size(); i-- > 0;) {
        const std::uint32_t g = byEnd[i];
        if (passes[g] != Future)
            continue;
        const Group& group = groups[g];
        for (std::uint32_t r = group.firstRow + group.rowCount; r-- > group.firstRow;) {
            if (r >= kAhead)
                fetchValue(rows[r - kAhead].field);
            readRow(r, locals[g], false);
        }
    }
    for (const Pass pass : {Past, Active}) {
        for (std::uint32_t g = 0; g < groups.size(); ++g) {
            if (passes[g] != pass)
                continue;
            const Group& group = groups[g];
            for (std::uint32_t r = group.firstRow; r < group.firstRow + group.rowCount; ++r) {
                if (r + kAhead < rowCount)
                    fetchValue(rows[r + kAhead].field);
                readRow(r, locals[g], motionBlurOnly);
            }
        }
    }
    writeChanged();
    running = false;
}

void zeEvaluationPlan::writeChanged()
{
    // A write may call the host's camera, which may change the pool and destroy fields of this
    // very batch: once the revision moved, a field is written only while the registry holds it.
    const std::uint64_t start = zeAnimationRevision::current();
    std::uint64_t liveAt = start;
    const std::size_t count = changed.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i + kAhead < count) {
            // Only fetched: a field or container that is gone by then is not written to.
            const Write& ahead = writes[changed[i + kAhead]];
            fetchField(ahead.field);
            fetchForRead(ahead.target.container);
            fetchForWrite(ahead.target.component);
        }
        Write& write = writes[changed[i]];
        const std::uint64_t now = zeAnimationRevision::current();
        if (now != start) {
            if (liveAt != now || liveFields.empty()) {
                liveFields.clear();
                for (const zeAnimationManager::FieldMap::value_type& entry :
                     zeAnimationManager::the()->getFields())
                    liveFields.insert(entry.second);
                liveAt = now;
            }
            if (liveFields.count(write.field) == 0)
                continue;
        }
        zeSceneAccess::writeFieldValue(write.field, write.target);
    }
    liveFields.clear();
}
