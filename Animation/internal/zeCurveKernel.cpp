#include "zeCurveKernel.h"

#include <cmath>

namespace zeCurveKernel {

// ---- Tangent rules --------------------------------------------------------------------------
//
// All arithmetic is single precision. A third is the float 0.33333334 (a multiplication, not a
// division); angles come from atanf and are used through tanf, cosf and sinf exactly as written:
// tanf(atanf(s)) is not simplified to s, and a cos/sin pair gives a handle of Euclidean length L.
// Each rule below is one cell of the type x length-mode grid and handles the first, last and
// inner key of its cell.

namespace {

const float kThird = 0.33333334f;

float slope(float px, float py, float qx, float qy)
{
    return (qy - py) / (qx - px);
}

// The smaller of a half interval and the cap; the half interval is kept when they are equal.
float capped(float half, float cap)
{
    return cap < half ? cap : half;
}

bool isFirst(const TangentInput& k)
{
    return !k.hasPrevious;
}

bool isLast(const TangentInput& k)
{
    return !k.hasNext;
}

// A third of the whole span around an inner key: the cap of the half-length rules.
float cap(const TangentInput& k)
{
    return (k.xb - k.xa) * kThird;
}

float slopeIn(const TangentInput& k)
{
    return slope(k.xa, k.ya, k.x, k.y);
}

float slopeOut(const TangentInput& k)
{
    return slope(k.x, k.y, k.xb, k.yb);
}

float slopeAcross(const TangentInput& k)
{
    return slope(k.xa, k.ya, k.xb, k.yb);
}

void inAlong(Handles& h, const TangentInput& k, float s, float length)
{
    const float t = tanf(atanf(s));
    h.ix = k.x - length;
    h.iy = k.y - t * length;
}

void outAlong(Handles& h, const TangentInput& k, float s, float length)
{
    const float t = tanf(atanf(s));
    h.ox = k.x + length;
    h.oy = k.y + t * length;
}

void inAtAngle(Handles& h, const TangentInput& k, float angle, float length)
{
    h.ix = k.x - cosf(angle) * length;
    h.iy = k.y - sinf(angle) * length;
}

void outAtAngle(Handles& h, const TangentInput& k, float angle, float length)
{
    h.ox = k.x + cosf(angle) * length;
    h.oy = k.y + sinf(angle) * length;
}

void flatHandles(Handles& h, const TangentInput& k, float inLength, float outLength)
{
    h.ix = k.x - inLength;
    h.iy = k.y;
    h.ox = k.x + outLength;
    h.oy = k.y;
}

void inFlat(Handles& h, const TangentInput& k, float length)
{
    h.ix = k.x - length;
    h.iy = k.y;
}

void outFlat(Handles& h, const TangentInput& k, float length)
{
    h.ox = k.x + length;
    h.oy = k.y;
}

// Linear: each handle toward its own neighbour; the outward handle of an end key is flat.
void linearThird(Handles& h, const TangentInput& k)
{
    if (isFirst(k)) {
        const float l = (k.xb - k.x) * kThird;
        inFlat(h, k, l);
        outAlong(h, k, slopeOut(k), l);
    } else if (isLast(k)) {
        const float l = (k.x - k.xa) * kThird;
        inAlong(h, k, slopeIn(k), l);
        outFlat(h, k, l);
    } else {
        const float l = (k.xb - k.xa) * kThird;
        inAtAngle(h, k, atanf(slopeIn(k)), l);
        outAtAngle(h, k, atanf(slopeOut(k)), l);
    }
}

void linearHalf(Handles& h, const TangentInput& k)
{
    if (isFirst(k)) {
        const float l = (k.xb - k.x) / 2.0f;
        inFlat(h, k, l);
        outAlong(h, k, slopeOut(k), l);
    } else if (isLast(k)) {
        const float l = (k.x - k.xa) / 2.0f;
        inAlong(h, k, slopeIn(k), l);
        outFlat(h, k, l);
    } else {
        // Not capped, unlike the other half-length rules.
        inAlong(h, k, slopeIn(k), (k.x - k.xa) / 2.0f);
        outAlong(h, k, slopeOut(k), (k.xb - k.x) / 2.0f);
    }
}

void linearFixed(Handles& h, const TangentInput& k)
{
    if (isFirst(k)) {
        inFlat(h, k, 2.0f);
        outAtAngle(h, k, atanf(slopeOut(k)), 2.0f);
    } else if (isLast(k)) {
        inAtAngle(h, k, atanf(slopeIn(k)), 2.0f);
        outFlat(h, k, 2.0f);
    } else {
        inAtAngle(h, k, atanf(slopeIn(k)), 2.0f);
        outAtAngle(h, k, atanf(slopeOut(k)), 2.0f);
    }
}

// Flat: both handles level with the key.
void flatThird(Handles& h, const TangentInput& k)
{
    const float d = isFirst(k) ? k.xb - k.x : (isLast(k) ? k.x - k.xa : k.xb - k.xa);
    flatHandles(h, k, d * kThird, d * kThird);
}

void flatHalf(Handles& h, const TangentInput& k)
{
    if (isFirst(k) || isLast(k)) {
        const float d = isFirst(k) ? k.xb - k.x : k.x - k.xa;
        flatHandles(h, k, d / 2.0f, d / 2.0f);
    } else {
        flatHandles(h, k, capped((k.x - k.xa) / 2.0f, cap(k)), capped((k.xb - k.x) / 2.0f, cap(k)));
    }
}

void flatFixed(Handles& h, const TangentInput& k)
{
    flatHandles(h, k, 2.0f, 2.0f);
}

// Smooth: one slope for both handles, from the neighbours around the key.
void smoothThird(Handles& h, const TangentInput& k)
{
    float dx = 0.0f;
    float dy = 0.0f;
    if (isFirst(k)) {
        dx = k.xb - k.x;
        dy = k.yb - k.y;
    } else if (isLast(k)) {
        dx = k.x - k.xa;
        dy = k.y - k.ya;
    } else {
        dx = k.xb - k.xa;
        dy = k.yb - k.ya;
    }
    h.ix = k.x - dx * kThird;
    h.iy = k.y - dy * kThird;
    h.ox = k.x + dx * kThird;
    h.oy = k.y + dy * kThird;
}

void smoothHalf(Handles& h, const TangentInput& k)
{
    if (isFirst(k) || isLast(k)) {
        const float s = isFirst(k) ? slopeOut(k) : slopeIn(k);
        const float l = isFirst(k) ? (k.xb - k.x) / 2.0f : (k.x - k.xa) / 2.0f;
        inAlong(h, k, s, l);
        outAlong(h, k, s, l);
    } else {
        const float s = slopeAcross(k);
        inAlong(h, k, s, capped((k.x - k.xa) / 2.0f, cap(k)));
        outAlong(h, k, s, capped((k.xb - k.x) / 2.0f, cap(k)));
    }
}

void smoothFixed(Handles& h, const TangentInput& k)
{
    const float s = isFirst(k) ? slopeOut(k) : (isLast(k) ? slopeIn(k) : slopeAcross(k));
    const float a = atanf(s);
    inAtAngle(h, k, a, 2.0f);
    outAtAngle(h, k, a, 2.0f);
}

// Forward: the slope toward the next key; the last key, with nothing ahead, is flat.
void forwardThird(Handles& h, const TangentInput& k)
{
    if (isLast(k)) {
        flatHandles(h, k, (k.x - k.xa) * kThird, (k.x - k.xa) * kThird);
        return;
    }
    const float l = isFirst(k) ? (k.xb - k.x) * kThird : (k.xb - k.xa) * kThird;
    inAlong(h, k, slopeOut(k), l);
    outAlong(h, k, slopeOut(k), l);
}

void forwardHalf(Handles& h, const TangentInput& k)
{
    if (isLast(k)) {
        flatHandles(h, k, (k.x - k.xa) / 2.0f, (k.x - k.xa) / 2.0f);
    } else if (isFirst(k)) {
        const float l = (k.xb - k.x) / 2.0f;
        inAlong(h, k, slopeOut(k), l);
        outAlong(h, k, slopeOut(k), l);
    } else {
        inAlong(h, k, slopeOut(k), capped((k.x - k.xa) / 2.0f, cap(k)));
        outAlong(h, k, slopeOut(k), capped((k.xb - k.x) / 2.0f, cap(k)));
    }
}

void forwardFixed(Handles& h, const TangentInput& k)
{
    if (isLast(k)) {
        flatHandles(h, k, 2.0f, 2.0f);
        return;
    }
    const float a = atanf(slopeOut(k));
    inAtAngle(h, k, a, 2.0f);
    outAtAngle(h, k, a, 2.0f);
}

typedef void (*Rule)(Handles&, const TangentInput&);

// Rows: linear, flat, smooth, forward. Columns: a third (4), half (64), fixed (32).
const Rule kRules[4][3] = {
    {linearThird, linearHalf, linearFixed},
    {flatThird, flatHalf, flatFixed},
    {smoothThird, smoothHalf, smoothFixed},
    {forwardThird, forwardHalf, forwardFixed},
};

int typeRow(std::uint32_t type)
{
    switch (type) {
    case 1:
        return 0;
    case 2:
        return 1;
    case 4:
        return 2;
    case 8:
        return 3;
    default:
        return -1;
    }
}

int lengthColumn(std::uint32_t lengthMode)
{
    switch (lengthMode) {
    case 4:
        return 0;
    case 64:
        return 1;
    case 32:
        return 2;
    default:
        return -1;
    }
}

} // namespace

Handles tangentHandles(std::uint32_t type, std::uint32_t lengthMode, const TangentInput& key)
{
    Handles h = {key.x, key.y, key.x, key.y};
    const int row = typeRow(type);
    const int column = lengthColumn(lengthMode);
    if (row >= 0 && column >= 0)
        kRules[row][column](h, key);
    return h;
}

// ---- Segments -------------------------------------------------------------------------------

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

void prepareSegment(Segment& segment, float x0, float y0, float h0x, float h0y, float h1x, float h1y,
                    float x1, float y1)
{
    segment.x0 = x0;
    segment.y0 = y0;
    segment.x1 = x1;
    segment.y1 = y1;
    segment.h0y = h0y;
    segment.h1y = h1y;
    const double dx = static_cast<double>(x1) - static_cast<double>(x0);
    const bool step = h1x == x1 && h1y == y1 && h0x == x0 && h0y == y0;
    segment.A = segment.p = segment.q0 = segment.s = segment.p3 = 0.0;
    if (dx == 0.0 || step)
        return;
    // X(t) = A t^3 + B t^2 + C t over the handles' abscissae normalised to the segment. A is not
    // tested against zero: handles on exact thirds give infinite or NaN terms and no root.
    const double a = (static_cast<double>(h0x) - static_cast<double>(x0)) / dx;
    const double b = (static_cast<double>(h1x) - static_cast<double>(x0)) / dx;
    const double A = 1.0 - 3.0 * b + 3.0 * a;
    const double B = 3.0 * b - 6.0 * a;
    const double C = 3.0 * a;
    segment.A = A;
    segment.p = (3.0 * A * C - B * B) / (3.0 * A * A);
    // q = 2B^3/(27A^3) - BC/(3A^2) - u/A, evaluated left to right: the first difference does not
    // depend on the frame.
    segment.q0 = 2.0 * B * B * B / (27.0 * A * A * A) - B * C / (3.0 * A * A);
    segment.s = B / (3.0 * A);
    segment.p3 = std::pow(segment.p / 3.0, 3.0);
}

bool solveSegment(const Segment& segment, float frame, float& value)
{
    const double dx = static_cast<double>(segment.x1) - static_cast<double>(segment.x0);
    if (dx == 0.0)
        return segment.y0 != 0.0f;
    double u = 0.0;
    if (frame == segment.x0)
        u = 0.0;
    else if (frame == segment.x1)
        u = 1.0;
    else
        u = (static_cast<double>(frame) - static_cast<double>(segment.x0)) / dx;

    if (segment.A == 0.0 && segment.p == 0.0) { // a step
        value = segment.y0;
        return true;
    }

    const double A = segment.A;
    const double p = segment.p;
    const double q = segment.q0 - u / A;
    const double s = segment.s;
    const double D = segment.p3 + std::pow(q / 2.0, 2.0);

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
        // Three real roots, in the trigonometric form and in degrees; the first in range wins.
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
    const double y = (1.0 - 3.0 * t + 3.0 * t2 - t3) * segment.y0 +
                     (3.0 * t - 6.0 * t2 + 3.0 * t3) * segment.h0y + (3.0 * t2 - 3.0 * t3) * segment.h1y +
                     t3 * segment.y1;
    value = (-kTolerance < y && y < kTolerance) ? 0.0f : static_cast<float>(y);
    return true;
}

// ---- Timing ---------------------------------------------------------------------------------

float repeatWrap(float frame, float b, float e)
{
    return frame - floorf((frame - b) / (e - b)) * (e - b);
}

bool playedPast(float frame, float b, float e, bool repeating, bool reverse)
{
    const float f = repeating ? repeatWrap(frame, b, e) : frame;
    return (f < b && reverse) || (f > e && !reverse);
}

} // namespace zeCurveKernel
