#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGMatrix.h>
#include <OpenSG/OSGQuaternion.h>
#include <OpenSG/OSGVector.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace osg;

TEST(Vector, ConstructionAccessAndArithmetic)
{
    Vec3f zero;
    EXPECT_EQ(zero, Vec3f(0, 0, 0));
    Vec3f v(1, 2, 3);
    EXPECT_EQ(v.x(), 1.f);
    EXPECT_EQ(v.z(), 3.f);
    v[1] = 5;
    EXPECT_EQ(v, Vec3f(1, 5, 3));
    v.setValues(4, 5);
    EXPECT_EQ(v, Vec3f(4, 5, 0)); // missing components become 0
    Vec4f four(1, 2);
    EXPECT_EQ(four, Vec4f(1, 2, 0, 0));

    Vec3f a(1, 0, 0), b(0, 1, 0);
    EXPECT_FLOAT_EQ(a.dot(b), 0.f);
    EXPECT_FLOAT_EQ(Vec3f(3, 4, 0).length(), 5.f);
    Vec3f n(0, 3, 4);
    n.normalize();
    EXPECT_TRUE(n.equals(Vec3f(0, 0.6f, 0.8f), 1e-6f));
    EXPECT_EQ(a + b * 2.f, Vec3f(1, 2, 0));
    EXPECT_EQ(-a, Vec3f(-1, 0, 0));

    Pnt3f p(1, 1, 1), q(2, 3, 4);
    Vec3f d = q - p; // point minus point is a vector
    EXPECT_EQ(d, Vec3f(1, 2, 3));
    EXPECT_EQ(p + d, q);

    Pnt3f parsed;
    parsed.setValueFromCString("7, 8");
    EXPECT_EQ(parsed, Pnt3f(7, 8, 0));

    std::ostringstream out;
    out << Vec3f(1, 2, 3);
    EXPECT_EQ(out.str(), "1, 2, 3");
    Vec3f read;
    std::istringstream in("4, 5, 6");
    in >> read;
    EXPECT_EQ(read, Vec3f(4, 5, 6));
}

TEST(Color, ChannelsAndTextForm)
{
    Color3f c(1, 0.5f, 0);
    EXPECT_FLOAT_EQ(c.green(), 0.5f);
    EXPECT_TRUE(c.equals(Color3f(1, 0.5f, 0.0001f), 1e-3f));
    Color3f read;
    read.setValue("0.5, 0.25");
    EXPECT_EQ(read, Color3f(0.5f, 0.25f, 0));
    Color4f parsed;
    parsed.setValue("0.25 0.5 0.75 1");
    EXPECT_EQ(parsed, Color4f(0.25f, 0.5f, 0.75f, 1.f));
    EXPECT_FLOAT_EQ(parsed.alpha(), 1.f);
}

TEST(Matrix, StoresColumnsButTakesValuesRowByRow)
{
    Matrix m(1, 2, 3, 4,    //
             5, 6, 7, 8,    //
             9, 10, 11, 12, //
             13, 14, 15, 16);
    EXPECT_FLOAT_EQ(m[0][0], 1.f);
    EXPECT_FLOAT_EQ(m[1][0], 2.f); // column 1, row 0
    EXPECT_FLOAT_EQ(m[3][0], 4.f);
    EXPECT_FLOAT_EQ(m[0][1], 5.f);
    EXPECT_FLOAT_EQ(m.getValues()[1], 5.f); // the raw array is column-major
    Matrix fromArray;
    fromArray.setValue(m.getValues()); // column-major by default
    EXPECT_EQ(fromArray, m);

    Matrix translate;
    translate.setTranslate(1, 2, 3);
    EXPECT_FLOAT_EQ(translate[3][1], 2.f);
    Pnt3f p;
    translate.multMatrixPnt(p);
    EXPECT_EQ(p, Pnt3f(1, 2, 3));
    Vec3f dir(1, 0, 0);
    translate.multMatrixVec(dir); // directions ignore the translation
    EXPECT_EQ(dir, Vec3f(1, 0, 0));

    Matrix ts = translate;
    Matrix scale;
    scale.setScale(2);
    ts.mult(scale); // translate * scale: scale applies first
    Pnt3f q(1, 0, 0);
    ts.multMatrixPnt(q);
    EXPECT_EQ(q, Pnt3f(3, 2, 3));
}

TEST(Matrix, TransformScalesAndRotatesAboutTheCentreThenTranslates)
{
    Vec3f t(1, 2, 3), s(2, 2, 2), c(0, 1, 0);
    Quaternion r(Vec3f(0, 0, 1), Real32(Pi / 2));
    Matrix m;
    m.setTransform(t, r, s, Quaternion(), c);
    // The centre itself only moves by t.
    Pnt3f centre(0, 1, 0);
    m.multMatrixPnt(centre);
    EXPECT_TRUE(centre.equals(Pnt3f(1, 3, 3), 1e-5f)) << centre;
    Pnt3f p(1, 1, 0); // one unit off the centre along x: scaled to 2, turned onto y
    m.multMatrixPnt(p);
    EXPECT_TRUE(p.equals(Pnt3f(1, 5, 3), 1e-5f)) << p;
}

TEST(Quaternion, AxisAngleAndEulerConversions)
{
    Quaternion q(Vec3f(0, 2, 0), 1.f); // the axis need not be normalised
    Vec3f axis;
    Real32 angle;
    q.getValueAsAxisRad(axis, angle);
    EXPECT_TRUE(axis.equals(Vec3f(0, 1, 0), 1e-6f));
    EXPECT_NEAR(angle, 1.f, 1e-6);

    Quaternion zeroAxis;
    zeroAxis.setValueAsAxisRad(0, 0, 0, 1);
    EXPECT_EQ(zeroAxis, Quaternion());

    // Euler: x first, then y, then z.
    Quaternion euler;
    euler.setValue(Real32(Pi / 2), Real32(Pi / 2), 0.f);
    Matrix m;
    euler.getValue(m);
    Vec3f v(0, 1, 0);
    m.multMatrixVec(v);
    EXPECT_TRUE(v.equals(Vec3f(1, 0, 0), 1e-5f)) << v;
}
