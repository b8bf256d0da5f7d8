#include "zeEvaluationPlan.h"

#include "zeAnimationRevision.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cstring>

namespace {

// Intervals are compared bit for bit: a NaN edge is then equal to itself and does not make the
// plan rebuild on every frame.
bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof(float)) == 0;
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
    xs.clear();
    keys.clear();
    collect(object, 0);
    frames.resize(groups.size());
    byBegin.resize(groups.size());
    byEnd.resize(groups.size());
    for (std::uint32_t i = 0; i < groups.size(); ++i)
        byBegin[i] = byEnd[i] = i;
    std::stable_sort(byBegin.begin(), byBegin.end(),
                     [this](std::uint32_t a, std::uint32_t b) { return groups[a].begin < groups[b].begin; });
    std::stable_sort(byEnd.begin(), byEnd.end(),
                     [this](std::uint32_t a, std::uint32_t b) { return groups[a].end < groups[b].end; });
    changed.clear();
    changed.reserve(rows.size());
    built = true;
}

void zeEvaluationPlan::collect(zeAnimationObject* object, int depth)
{
    // A block (or a curve, a key, the base object) collects its curves; the containers above it
    // pass the walk on to their children in list order. Hierarchies are at most MaxDepth deep.
    if (object->getTypeID() <= zeAnimationObject::TypeUnit) {
        addGroup(object);
        return;
    }
    if (depth > zeAnimationObject::MaxDepth)
        return;
    for (osg::UInt64 childId : object->getChildIds()) {
        if (zeAnimationObject* child = object->resolveChild(childId))
            collect(child, depth + 1);
    }
}

void zeEvaluationPlan::addGroup(zeAnimationObject* object)
{
    Group group;
    group.object = object;
    group.begin = object->getBegin();
    group.end = object->getEnd();
    group.firstRow = static_cast<std::uint32_t>(rows.size());
    zeAnimationManager* m = zeAnimationManager::the();
    for (osg::UInt64 curveId : object->getCurveIds()) {
        zeAnimationCurve2D* curve = m->getCurve2D(curveId);
        if (!curve)
            continue;
        Row row;
        row.curve = curve;
        row.field = curve->getAnimationField();
        row.firstKey = static_cast<std::uint32_t>(xs.size());
        row.hint = 0;
        row.segmentAt = NoSegment;
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

bool zeEvaluationPlan::placeGroups(float frame, bool motionBlurOnly)
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const Group& group = groups[i];
        const zeAnimationObject* object = group.object;
        const float objectBegin = object->getBegin();
        const float objectEnd = object->getEnd();
        if (!sameBits(objectBegin, group.begin) || !sameBits(objectEnd, group.end))
            return false;
        float b = objectBegin;
        float e = objectEnd;
        if (object->usesPlayRange()) {
            b = object->getStartPlayRange();
            e = object->getEndPlayRange();
        }
        GroupFrame& place = frames[i];
        place.local = object->isRepeating() ? zeCurveKernel::repeatWrap(frame, b, e) : frame;
        // The passes test the unwrapped frame against the object's own interval, even when a play
        // range is in use; only the frame the curves are read at is wrapped.
        if (motionBlurOnly)
            place.pass = objectBegin <= frame && frame <= objectEnd ? Active : Skipped;
        else if (objectBegin > frame)
            place.pass = Future;
        else if (objectEnd < frame)
            place.pass = Past;
        else
            place.pass = Active;
    }
    return true;
}

bool zeEvaluationPlan::rowValue(Row& row, float frame, float& value)
{
    const std::size_t count = row.keyCount;
    const float* x = xs.data() + row.firstKey;
    const Key* k = keys.data() + row.firstKey;
    const std::size_t upper = zeCurveKernel::upperBound(x, count, frame, row.hint);
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
    if (row.segmentAt != at) {
        zeCurveKernel::prepareSegment(row.segment, x[at], k[at].y, k[at].outX, k[at].outY, k[at + 1].inX,
                                      k[at + 1].inY, x[at + 1], k[at + 1].y);
        row.segmentAt = at;
    }
    return zeCurveKernel::solveSegment(row.segment, frame, value);
}

void zeEvaluationPlan::readRow(std::uint32_t index, float local, bool motionBlurOnly)
{
    Row& row = rows[index];
    const zeAnimationCurve2D* curve = row.curve;
    if (!curve->isActive() || (motionBlurOnly && !curve->getMotionBlur()))
        return;
    // Clamped to the curve's own ends unless it repeats.
    float f = local;
    if (!curve->isRepeating()) {
        const float curveBegin = curve->getBegin();
        const float curveEnd = curve->getEnd();
        if (curveBegin > f)
            f = curveBegin;
        else if (curveEnd < f)
            f = curveEnd;
    }
    float value = 0.0f;
    if (!rowValue(row, f, value) || !row.field)
        return;
    row.field->value = value;
    changed.push_back(index);
}

void zeEvaluationPlan::evaluate(zeAnimationObject* object, float frame, bool motionBlurOnly)
{
    running = true;
    if (!fresh(object))
        build(object);
    if (!placeGroups(frame, motionBlurOnly)) {
        // An interval changed without a change of the revision (a setter): order again.
        build(object);
        placeGroups(frame, motionBlurOnly);
    }
    changed.clear();
    // Not yet started objects from the latest end back, finished ones from the earliest begin on,
    // then the running ones from the earliest begin on: the last write to a field wins.
    for (std::size_t i = byEnd.size(); i-- > 0;) {
        const Group& group = groups[byEnd[i]];
        const GroupFrame& place = frames[byEnd[i]];
        if (place.pass != Future)
            continue;
        for (std::uint32_t r = group.firstRow + group.rowCount; r-- > group.firstRow;)
            readRow(r, place.local, false);
    }
    for (const Pass pass : {Past, Active}) {
        for (std::uint32_t index : byBegin) {
            const Group& group = groups[index];
            const GroupFrame& place = frames[index];
            if (place.pass != pass)
                continue;
            for (std::uint32_t r = group.firstRow; r < group.firstRow + group.rowCount; ++r)
                readRow(r, place.local, motionBlurOnly);
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
    for (std::uint32_t index : changed) {
        Row& row = rows[index];
        const std::uint64_t now = zeAnimationRevision::current();
        if (now != start) {
            if (liveAt != now || liveFields.empty()) {
                liveFields.clear();
                for (const zeAnimationManager::FieldMap::value_type& entry :
                     zeAnimationManager::the()->getFields())
                    liveFields.insert(entry.second);
                liveAt = now;
            }
            if (liveFields.count(row.field) == 0)
                continue;
        }
        zeSceneAccess::writeFieldValue(row.field, row.target);
    }
    liveFields.clear();
}
