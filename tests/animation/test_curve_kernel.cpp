// The curve kernel on its own, with plain numbers: every cell of the tangent grid, the segment
// solve, the segment search with its hint and the timing rules of playback.

#include "zeCurveKernel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

using namespace zeCurveKernel;

enum Position
{
    First,
    Last,
    Inner
};

struct Cell
{
    std::uint32_t type;
    std::uint32_t lengthMode;
    Position position;
    Handles expected;
};

// The key (2, 1) between (0, 0) and (9, 4). Around the inner key the half intervals are 1 and 3.5
// and the cap (a third of the span) is 3, so a capped rule and an uncapped one differ on the out
// side; the three slopes (1/2 in, 3/7 out, 4/9 across) all differ.
TangentInput keyAt(Position position)
{
    TangentInput key = {};
    key.x = 2.0f;
    key.y = 1.0f;
    key.hasPrevious = position != First;
    key.hasNext = position != Last;
    key.xb = 9.0f;
    key.yb = 4.0f;
    return key;
}

// Worked out by hand from the rules (in double precision, hence the tolerance).
const Cell kGrid[] = {
    {1, 4, First, {-0.333333f, 1.000000f, 4.333333f, 2.000000f}},
    {1, 4, Last, {1.333333f, 0.666667f, 2.666667f, 1.000000f}},
    {1, 4, Inner, {-0.683282f, -0.341641f, 4.757435f, 2.181758f}},
    {1, 64, First, {-1.500000f, 1.000000f, 5.500000f, 2.500000f}},
    {1, 64, Last, {1.000000f, 0.500000f, 3.000000f, 1.000000f}},
    {1, 64, Inner, {1.000000f, 0.500000f, 5.500000f, 2.500000f}},
    {1, 32, First, {0.000000f, 1.000000f, 3.838290f, 1.787839f}},
    {1, 32, Last, {0.211146f, 0.105573f, 4.000000f, 1.000000f}},
    {1, 32, Inner, {0.211146f, 0.105573f, 3.838290f, 1.787839f}},
    {2, 4, First, {-0.333333f, 1.000000f, 4.333333f, 1.000000f}},
    {2, 4, Last, {1.333333f, 1.000000f, 2.666667f, 1.000000f}},
    {2, 4, Inner, {-1.000000f, 1.000000f, 5.000000f, 1.000000f}},
    {2, 64, First, {-1.500000f, 1.000000f, 5.500000f, 1.000000f}},
    {2, 64, Last, {1.000000f, 1.000000f, 3.000000f, 1.000000f}},
    {2, 64, Inner, {1.000000f, 1.000000f, 5.000000f, 1.000000f}},
    {2, 32, First, {0.000000f, 1.000000f, 4.000000f, 1.000000f}},
    {2, 32, Last, {0.000000f, 1.000000f, 4.000000f, 1.000000f}},
    {2, 32, Inner, {0.000000f, 1.000000f, 4.000000f, 1.000000f}},
    {4, 4, First, {-0.333333f, 0.000000f, 4.333333f, 2.000000f}},
    {4, 4, Last, {1.333333f, 0.666667f, 2.666667f, 1.333333f}},
    {4, 4, Inner, {-1.000000f, -0.333333f, 5.000000f, 2.333333f}},
    {4, 64, First, {-1.500000f, -0.500000f, 5.500000f, 2.500000f}},
    {4, 64, Last, {1.000000f, 0.500000f, 3.000000f, 1.500000f}},
    {4, 64, Inner, {1.000000f, 0.555556f, 5.000000f, 2.333333f}},
    {4, 32, First, {0.161710f, 0.212161f, 3.838290f, 1.787839f}},
    {4, 32, Last, {0.211146f, 0.105573f, 3.788854f, 1.894427f}},
    {4, 32, Inner, {0.172377f, 0.187723f, 3.827623f, 1.812277f}},
    {8, 4, First, {-0.333333f, 0.000000f, 4.333333f, 2.000000f}},
    {8, 4, Last, {1.333333f, 1.000000f, 2.666667f, 1.000000f}},
    {8, 4, Inner, {-1.000000f, -0.285714f, 5.000000f, 2.285714f}},
    {8, 64, First, {-1.500000f, -0.500000f, 5.500000f, 2.500000f}},
    {8, 64, Last, {1.000000f, 1.000000f, 3.000000f, 1.000000f}},
    {8, 64, Inner, {1.000000f, 0.571429f, 5.000000f, 2.285714f}},
    {8, 32, First, {0.161710f, 0.212161f, 3.838290f, 1.787839f}},
    {8, 32, Last, {0.000000f, 1.000000f, 4.000000f, 1.000000f}},
    {8, 32, Inner, {0.161710f, 0.212161f, 3.838290f, 1.787839f}},
};

TEST(CurveKernelTest, EveryCellOfTheTangentGridPlacesItsHandles)
{
    for (const Cell& cell : kGrid) {
        const Handles h = tangentHandles(cell.type, cell.lengthMode, keyAt(cell.position));
        const float tolerance = 2e-6f;
        EXPECT_NEAR(h.ix, cell.expected.ix, tolerance)
            << cell.type << " " << cell.lengthMode << " " << cell.position;
        EXPECT_NEAR(h.iy, cell.expected.iy, tolerance)
            << cell.type << " " << cell.lengthMode << " " << cell.position;
        EXPECT_NEAR(h.ox, cell.expected.ox, tolerance)
            << cell.type << " " << cell.lengthMode << " " << cell.position;
        EXPECT_NEAR(h.oy, cell.expected.oy, tolerance)
            << cell.type << " " << cell.lengthMode << " " << cell.position;
    }
    // Outside the grid (no tangent, free, unknown types or length modes) the handles collapse.
    const std::uint32_t others[][2] = {{0, 64}, {16, 64}, {3, 4}, {4, 8}, {1, 0}, {8, 33}};
    for (const auto& other : others) {
        const Handles h = tangentHandles(other[0], other[1], keyAt(Inner));
        EXPECT_EQ(h.ix, 2.0f);
        EXPECT_EQ(h.iy, 1.0f);
        EXPECT_EQ(h.ox, 2.0f);
        EXPECT_EQ(h.oy, 1.0f);
    }
}

TEST(CurveKernelTest, SegmentSolveOnWorkedExamples)
{
    Segment segment;
    float value = -7.0f;
    // Symmetric handles meet in the middle; the keys themselves are hit exactly.
    prepareSegment(segment, 0.0f, 0.0f, 5.0f, 0.0f, 5.0f, 10.0f, 10.0f, 10.0f);
    ASSERT_TRUE(solveSegment(segment, 5.0f, value));
    EXPECT_FLOAT_EQ(value, 5.0f);
    ASSERT_TRUE(solveSegment(segment, 10.0f, value));
    EXPECT_FLOAT_EQ(value, 10.0f);
    ASSERT_TRUE(solveSegment(segment, 2.0f, value));
    EXPECT_GT(value, 0.0f);
    EXPECT_LT(value, 2.0f); // an ease-in: slower than the straight line at first

    // Handles on their keys: a step holding the first key's value.
    prepareSegment(segment, 0.0f, 3.0f, 0.0f, 3.0f, 10.0f, 8.0f, 10.0f, 8.0f);
    ASSERT_TRUE(solveSegment(segment, 9.5f, value));
    EXPECT_EQ(value, 3.0f);

    // Handles on exact thirds: no root, the value untouched.
    prepareSegment(segment, 0.0f, 0.0f, 1.0f, 1.0f, 2.0f, 2.0f, 3.0f, 3.0f);
    value = -7.0f;
    EXPECT_FALSE(solveSegment(segment, 1.5f, value));
    EXPECT_EQ(value, -7.0f);

    // A segment of zero length answers whether its first value is non-zero, writing nothing.
    prepareSegment(segment, 4.0f, 2.0f, 5.0f, 2.0f, 3.0f, 1.0f, 4.0f, 1.0f);
    EXPECT_TRUE(solveSegment(segment, 4.0f, value));
    prepareSegment(segment, 4.0f, 0.0f, 5.0f, 2.0f, 3.0f, 1.0f, 4.0f, 1.0f);
    EXPECT_FALSE(solveSegment(segment, 4.0f, value));
    EXPECT_EQ(value, -7.0f);

    // Results within a millionth of zero are zero; just beyond it they are kept.
    prepareSegment(segment, 0.0f, 0.0f, 5.0f, 0.0f, 5.0f, 1e-6f, 10.0f, 1e-6f);
    ASSERT_TRUE(solveSegment(segment, 5.0f, value));
    EXPECT_EQ(value, 0.0f);
    prepareSegment(segment, 0.0f, 0.0f, 5.0f, 0.0f, 5.0f, 4e-6f, 10.0f, 4e-6f);
    ASSERT_TRUE(solveSegment(segment, 5.0f, value));
    EXPECT_FLOAT_EQ(value, 2e-6f);
}

// The Bezier at parameter t, and t found by bisection on its monotonic x: the solve's answer must
// lie on the curve at the frame.
double bezier(double p0, double p1, double p2, double p3, double t)
{
    const double s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

TEST(CurveKernelTest, SegmentSolveLiesOnTheBezierAtTheFrame)
{
    std::mt19937 random(14);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    int solved = 0;
    for (int i = 0; i < 2000; ++i) {
        const float x0 = -50.0f + 100.0f * unit(random);
        const float x1 = x0 + 0.5f + 40.0f * unit(random);
        const float h0x = x0 + (x1 - x0) * unit(random);
        const float h1x = x0 + (x1 - x0) * unit(random);
        const float y0 = 10.0f * unit(random), h0y = 10.0f * unit(random);
        const float h1y = 10.0f * unit(random), y1 = 10.0f * unit(random);
        const float frame = x0 + (x1 - x0) * unit(random);
        Segment segment;
        prepareSegment(segment, x0, y0, h0x, h0y, h1x, h1y, x1, y1);
        float value = 0.0f;
        if (!solveSegment(segment, frame, value))
            continue;
        ++solved;
        double low = 0.0, high = 1.0;
        for (int k = 0; k < 60; ++k) {
            const double mid = 0.5 * (low + high);
            (bezier(x0, h0x, h1x, x1, mid) < frame ? low : high) = mid;
        }
        const double expected = bezier(y0, h0y, h1y, y1, low);
        EXPECT_NEAR(value, expected, 2e-3) << x0 << " " << h0x << " " << h1x << " " << x1 << " at " << frame;
    }
    EXPECT_GT(solved, 1900); // handles strictly inside the segment almost always give a root
}

TEST(CurveKernelTest, SearchFindsTheUpperBoundWithOrWithoutAHint)
{
    const float xs[] = {0.0f, 10.0f, 20.0f, 30.0f};
    std::size_t hint = 0;
    // Frame after frame: the hint is followed.
    EXPECT_EQ(upperBound(xs, 4, 0.0f, hint), 1u);
    EXPECT_EQ(upperBound(xs, 4, 9.5f, hint), 1u);
    EXPECT_EQ(upperBound(xs, 4, 10.0f, hint), 2u); // a key's own frame starts its segment
    EXPECT_EQ(hint, 2u);
    // Jumps both ways, a hint out of range, before the first key, at and after the last, NaN.
    EXPECT_EQ(upperBound(xs, 4, 25.0f, hint), 3u);
    EXPECT_EQ(upperBound(xs, 4, 5.0f, hint), 1u);
    hint = 99;
    EXPECT_EQ(upperBound(xs, 4, 15.0f, hint), 2u);
    EXPECT_EQ(upperBound(xs, 4, -1.0f, hint), 0u);
    EXPECT_EQ(upperBound(xs, 4, 30.0f, hint), 4u);
    EXPECT_EQ(upperBound(xs, 4, 1e30f, hint), 4u);
    EXPECT_EQ(upperBound(xs, 4, std::numeric_limits<float>::quiet_NaN(), hint), 4u);
    EXPECT_EQ(upperBound(xs, 0, 3.0f, hint), 0u);

    // Where the frame falls: before the first key, at or after the last, or inside.
    EXPECT_EQ(locate(1, 0), TooFewKeys);
    EXPECT_EQ(locate(1, 1), TooFewKeys);
    EXPECT_EQ(locate(4, 0), BeforeFirst);
    EXPECT_EQ(locate(4, 1), Inside);
    EXPECT_EQ(locate(4, 3), Inside);
    EXPECT_EQ(locate(4, 4), AfterLast);
}

TEST(CurveKernelTest, PlayingPastTheEndNeedsAFrameBeyondTheEdge)
{
    // Forward over [0, 10]: the end frame itself still plays; before the begin is not past.
    EXPECT_FALSE(playedPast(10.0f, 0.0f, 10.0f, false, false));
    EXPECT_TRUE(playedPast(10.5f, 0.0f, 10.0f, false, false));
    EXPECT_FALSE(playedPast(-5.0f, 0.0f, 10.0f, false, false));
    // In reverse the begin is the edge.
    EXPECT_FALSE(playedPast(0.0f, 0.0f, 10.0f, false, true));
    EXPECT_TRUE(playedPast(-0.5f, 0.0f, 10.0f, false, true));
    EXPECT_FALSE(playedPast(12.0f, 0.0f, 10.0f, false, true));
    // Repeating never finishes: the frame is wrapped into the range first.
    EXPECT_FALSE(playedPast(25.0f, 0.0f, 10.0f, true, false));
    EXPECT_FALSE(playedPast(-25.0f, 0.0f, 10.0f, true, true));
    EXPECT_FLOAT_EQ(repeatWrap(25.0f, 0.0f, 10.0f), 5.0f);
    EXPECT_FLOAT_EQ(repeatWrap(-3.0f, 0.0f, 10.0f), 7.0f);
    EXPECT_FLOAT_EQ(repeatWrap(11.0f, 1.0f, 11.0f), 1.0f);
}

} // namespace
