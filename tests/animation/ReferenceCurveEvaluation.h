#ifndef REFERENCECURVEEVALUATION_H
#define REFERENCECURVEEVALUATION_H

// The curve evaluation and the key lookups written the plain way: every call resolves the child
// list and builds the key map afresh, then follows the algorithm step by step. The library's
// cached versions must agree with these bit for bit.

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

namespace reference {

// The keys in child order, resolved one by one.
inline std::vector<zeControlPoint2D*> keys(const zeAnimationCurve2D* curve)
{
    std::vector<zeControlPoint2D*> result;
    for (osg::UInt64 childId : curve->getChildIds()) {
        if (zeControlPoint2D* point = zeAnimationManager::the()->getPoint2D(childId))
            result.push_back(point);
    }
    return result;
}

// x to the first key in child order with that x.
inline std::map<float, zeControlPoint2D*> pointMap(const zeAnimationCurve2D* curve)
{
    std::map<float, zeControlPoint2D*> points;
    for (zeControlPoint2D* point : keys(curve))
        points.emplace(point->getX(), point);
    return points;
}

inline bool computeCurveValue(zeAnimationCurve2D* curve, float frame, float& value)
{
    if (!curve)
        return false;
    const std::map<float, zeControlPoint2D*> points = pointMap(curve);
    if (points.size() < 2)
        return false;
    const std::map<float, zeControlPoint2D*>::const_iterator upper = points.upper_bound(frame);
    if (upper == points.begin()) {
        value = std::next(points.begin())->second->getY();
        return true;
    }
    const zeControlPoint2D* k0 = std::prev(upper)->second;
    if (upper == points.end()) {
        value = k0->getY();
        return true;
    }
    const zeControlPoint2D* k1 = upper->second;
    const double x0 = k0->getX();
    const double y0 = k0->getY();
    const double x1 = k1->getX();
    const double y1 = k1->getY();
    // getOutTangentX and friends read the key itself when the handle is missing.
    const double h0x = k0->getOutTangentX();
    const double h0y = k0->getOutTangentY();
    const double h1x = k1->getInTangentX();
    const double h1y = k1->getInTangentY();

    const double dx = x1 - x0;
    if (dx == 0.0)
        return y0 != 0.0;
    double u;
    if (frame == k0->getX())
        u = 0.0;
    else if (frame == k1->getX())
        u = 1.0;
    else
        u = (static_cast<double>(frame) - x0) / dx;

    if (k1->getInTangentX() == k1->getX() && k1->getInTangentY() == k1->getY() &&
        k0->getOutTangentX() == k0->getX() && k0->getOutTangentY() == k0->getY()) {
        value = k0->getY();
        return true;
    }

    const double a = (h0x - x0) / dx;
    const double b = (h1x - x0) / dx;
    const double A = 1.0 - 3.0 * b + 3.0 * a;
    const double B = 3.0 * b - 6.0 * a;
    const double C = 3.0 * a;
    const double p = (3.0 * A * C - B * B) / (3.0 * A * A);
    const double q = 2.0 * B * B * B / (27.0 * A * A * A) - B * C / (3.0 * A * A) - u / A;
    const double s = B / (3.0 * A);
    // Powers of the discriminant through pow, as the evaluation has always computed them.
    const double D = std::pow(p / 3.0, 3.0) + std::pow(q / 2.0, 2.0);

    double t;
    if (std::fabs(D) < 1e-6) {
        if (p == 0.0 && q == 0.0) {
            t = -s;
        } else {
            const double t1 = -std::pow(4.0 * q, 1.0 / 3.0) - s;
            if (0.0 <= t1 && t1 <= 1.0) {
                t = t1;
            } else {
                const double t2 = std::pow(q / 2.0, 1.0 / 3.0) - s;
                if (0.0 <= t2 && t2 <= 1.0)
                    t = t2;
                else
                    return false;
            }
        }
    } else if (D >= 1e-6) {
        const double v1 = -q / 2.0 + std::sqrt(D);
        const double v2 = -q / 2.0 - std::sqrt(D);
        const double c1 = v1 >= 0.0 ? std::pow(v1, 1.0 / 3.0) : -std::pow(std::fabs(v1), 1.0 / 3.0);
        const double c2 = v2 >= 0.0 ? std::pow(v2, 1.0 / 3.0) : -std::pow(std::fabs(v2), 1.0 / 3.0);
        t = c1 + c2 - s;
    } else if (D <= -1e-6) {
        const double pi = 3.14159265358;
        const double phi = std::acos(q / (-2.0 * std::sqrt(std::pow(-p / 3.0, 3.0))));
        const double theta = phi * 180.0 / pi / 3.0;
        const double r = 2.0 * std::sqrt(-p / 3.0);
        const double t0 = r * std::cos((theta + 0.0) * pi / 180.0) - s;
        const double t1 = r * std::cos((theta + 120.0) * pi / 180.0) - s;
        const double t2 = r * std::cos((theta + 240.0) * pi / 180.0) - s;
        if (t0 <= 1.0 && t0 + 1e-6 >= 0.0)
            t = t0;
        else if (t1 <= 1.0 && t1 + 1e-6 >= 0.0)
            t = t1;
        else if (t2 <= 1.0 && t2 + 1e-6 >= 0.0)
            t = t2;
        else
            return false;
    } else {
        return false; // D is NaN: no branch takes it
    }

    // t squared as one product, t cubed through pow.
    const double tt = t * t;
    const double t3 = std::pow(t, 3.0);
    const double y = (1.0 - 3.0 * t + 3.0 * tt - t3) * y0 + (3.0 * t - 6.0 * tt + 3.0 * t3) * h0y +
                     (3.0 * tt - 3.0 * t3) * h1y + t3 * y1;
    if (y > -1e-6 && y < 1e-6)
        value = 0.0f;
    else
        value = static_cast<float>(y);
    return true;
}

// The entries around x in the key map; false when no entry has exactly that x.
inline bool mapNeighbours(const zeAnimationCurve2D* curve, float x, const zeControlPoint2D*& previous,
                          const zeControlPoint2D*& next)
{
    const std::map<float, zeControlPoint2D*> points = pointMap(curve);
    std::map<float, zeControlPoint2D*>::const_iterator it = points.lower_bound(x);
    if (it == points.end() || it->first != x)
        return false;
    previous = it == points.begin() ? nullptr : std::prev(it)->second;
    next = std::next(it) == points.end() ? nullptr : std::next(it)->second;
    return true;
}

inline zeControlPoint2D* findPoint(const zeAnimationCurve2D* curve, float x)
{
    for (zeControlPoint2D* point : keys(curve)) {
        if (point->getX() == x)
            return point;
    }
    return nullptr;
}

inline std::pair<zeControlPoint2D*, zeControlPoint2D*> neighboursOf(const zeAnimationCurve2D* curve,
                                                                    const zeControlPoint2D* point)
{
    const std::vector<zeControlPoint2D*> all = keys(curve);
    for (std::size_t i = 0; point && i < all.size(); ++i) {
        if (all[i] == point)
            return {i > 0 ? all[i - 1] : nullptr, i + 1 < all.size() ? all[i + 1] : nullptr};
    }
    return {nullptr, nullptr};
}

inline std::pair<zeControlPoint2D*, zeControlPoint2D*> neighboursAround(const zeAnimationCurve2D* curve,
                                                                        float x)
{
    std::pair<zeControlPoint2D*, zeControlPoint2D*> result(nullptr, nullptr);
    for (zeControlPoint2D* point : keys(curve)) {
        if (point->getX() < x)
            result.first = point;
        else if (point->getX() > x && !result.second)
            result.second = point;
    }
    return result;
}

// An object's evaluation step by step: the curves below it collected into the three lists, each
// sorted stably by its key, then read in the documented order, the last value for a field
// winning. Gives the value each field ends with.
struct CurveAt
{
    float key;
    zeAnimationCurve2D* curve;
    float frame;
};

inline void collect(zeAnimationObject* object, float frame, bool motionBlurOnly, std::vector<CurveAt>& past,
                    std::vector<CurveAt>& active, std::vector<CurveAt>& future)
{
    float b = object->getBegin();
    float e = object->getEnd();
    if (object->usesPlayRange()) {
        b = object->getStartPlayRange();
        e = object->getEndPlayRange();
    }
    const float local = object->isRepeating() ? frame - floorf((frame - b) / (e - b)) * (e - b) : frame;
    if (object->getTypeID() <= 3) {
        for (zeAnimationCurve2D* curve : object->getCurves()) {
            if (motionBlurOnly) {
                if (curve->getMotionBlur() && object->getBegin() <= frame && frame <= object->getEnd())
                    active.push_back({object->getBegin(), curve, local});
            } else if (object->getBegin() > frame) {
                future.push_back({object->getEnd(), curve, local});
            } else if (object->getEnd() < frame) {
                past.push_back({object->getBegin(), curve, local});
            } else {
                active.push_back({object->getBegin(), curve, local});
            }
        }
        return;
    }
    for (zeAnimationObject* child : object->getObjects())
        collect(child, frame, motionBlurOnly, past, active, future);
}

inline std::map<zeAnimationField*, float> evaluateObject(zeAnimationObject* object, float frame,
                                                         bool motionBlurOnly)
{
    std::vector<CurveAt> past, active, future;
    collect(object, frame, motionBlurOnly, past, active, future);
    const auto byKey = [](const CurveAt& a, const CurveAt& b) { return a.key < b.key; };
    std::stable_sort(past.begin(), past.end(), byKey);
    std::stable_sort(active.begin(), active.end(), byKey);
    std::stable_sort(future.begin(), future.end(), byKey);
    std::vector<CurveAt> order(future.rbegin(), future.rend());
    order.insert(order.end(), past.begin(), past.end());
    order.insert(order.end(), active.begin(), active.end());
    std::map<zeAnimationField*, float> values;
    for (const CurveAt& entry : order) {
        zeAnimationCurve2D* curve = entry.curve;
        if (!curve->isActive())
            continue;
        float f = entry.frame;
        if (curve->getBegin() > f && !curve->isRepeating())
            f = curve->getBegin();
        else if (curve->getEnd() < f && !curve->isRepeating())
            f = curve->getEnd();
        float value = 0.0f;
        zeAnimationField* field = curve->getAnimationField();
        if (computeCurveValue(curve, f, value) && field)
            values[field] = value;
    }
    return values;
}

} // namespace reference

#endif // REFERENCECURVEEVALUATION_H
