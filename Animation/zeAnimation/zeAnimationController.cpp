#include <zeAnimation/zeAnimationController.h>

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <cmath>

namespace {

// The truncated value of pi the solver has always used; part of its results.
const double kPi = 3.14159265358;
const double kTolerance = 1e-6;

double signedCubeRoot(double v)
{
    return v >= 0.0 ? std::pow(v, 1.0 / 3.0) : -std::pow(std::fabs(v), 1.0 / 3.0);
}

bool inUnit(double t)
{
    return 0.0 <= t && t <= 1.0;
}

} // namespace

bool zeAnimationController::computeCurveValue(zeAnimationCurve2D* curve, float frame, float& value)
{
    if (!curve)
        return false;
    // The curve's key cache answers the map's upper bound without building the map, and
    // remembers the last segment, so playback frame after frame needs no search at all.
    const zeControlPoint2D* k0 = nullptr;
    const zeControlPoint2D* k1 = nullptr;
    switch (curve->locateSegment(frame, k0, k1)) {
    case zeAnimationCurve2D::TooFewKeys:
        return false;
    case zeAnimationCurve2D::BeforeFirst:
        // Before the first key the second key's value holds; kept as it has always been.
        value = k0->getY();
        return true;
    case zeAnimationCurve2D::AfterLast:
        value = k0->getY();
        return true;
    case zeAnimationCurve2D::InsideSegment:
        break;
    }
    const float x0 = k0->getX();
    const float y0 = k0->getY();
    const float x1 = k1->getX();
    const float y1 = k1->getY();
    const float h0x = k0->getOutTangentX();
    const float h0y = k0->getOutTangentY();
    const float h1x = k1->getInTangentX();
    const float h1y = k1->getInTangentY();

    const double dx = static_cast<double>(x1) - static_cast<double>(x0);
    if (dx == 0.0)
        return y0 != 0.0f;
    double u = 0.0;
    if (frame == x0)
        u = 0.0;
    else if (frame == x1)
        u = 1.0;
    else
        u = (static_cast<double>(frame) - static_cast<double>(x0)) / dx;

    // Both inner handles on their keys: a step, not a straight line.
    if (h1x == x1 && h1y == y1 && h0x == x0 && h0y == y0) {
        value = y0;
        return true;
    }

    const double a = (static_cast<double>(h0x) - static_cast<double>(x0)) / dx;
    const double b = (static_cast<double>(h1x) - static_cast<double>(x0)) / dx;
    const double A = 1.0 - 3.0 * b + 3.0 * a;
    const double B = 3.0 * b - 6.0 * a;
    const double C = 3.0 * a;
    const double p = (3.0 * A * C - B * B) / (3.0 * A * A);
    const double q = 2.0 * B * B * B / (27.0 * A * A * A) - B * C / (3.0 * A * A) - u / A;
    const double s = B / (3.0 * A);
    const double D = std::pow(p / 3.0, 3.0) + std::pow(q / 2.0, 2.0);

    double t = 0.0;
    if (std::fabs(D) < kTolerance) {
        if (p == 0.0 && q == 0.0) {
            t = -s;
        } else {
            // pow with exponent 1/3 directly: a negative base gives NaN and fails the range test.
            const double t1 = -std::pow(4.0 * q, 1.0 / 3.0) - s;
            const double t2 = std::pow(q / 2.0, 1.0 / 3.0) - s;
            if (inUnit(t1))
                t = t1;
            else if (inUnit(t2))
                t = t2;
            else
                return false;
        }
    } else if (D >= kTolerance) {
        const double root = std::sqrt(D);
        t = signedCubeRoot(-q / 2.0 + root) + signedCubeRoot(-q / 2.0 - root) - s;
    } else if (D <= -kTolerance) {
        const double phi = std::acos(q / (-2.0 * std::sqrt(std::pow(-p / 3.0, 3.0))));
        const double theta = phi * 180.0 / kPi / 3.0;
        const double r = 2.0 * std::sqrt(-p / 3.0);
        bool found = false;
        for (int k = 0; k < 3 && !found; ++k) {
            const double candidate = r * std::cos((theta + 120.0 * k) * kPi / 180.0) - s;
            if (candidate <= 1.0 && candidate + kTolerance >= 0.0) {
                t = candidate;
                found = true;
            }
        }
        if (!found)
            return false;
    } else {
        return false; // NaN coefficients: no branch accepts a root.
    }

    const double t2 = t * t;
    const double t3 = std::pow(t, 3.0);
    const double y = (1.0 - 3.0 * t + 3.0 * t2 - t3) * y0 + (3.0 * t - 6.0 * t2 + 3.0 * t3) * h0y +
                     (3.0 * t2 - 3.0 * t3) * h1y + t3 * y1;
    value = (-kTolerance < y && y < kTolerance) ? 0.0f : static_cast<float>(y);
    return true;
}
