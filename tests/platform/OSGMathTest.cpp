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
    EXPECT_TRUE(zero.isZero());
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
    EXPECT_EQ(a.cross(b), Vec3f(0, 0, 1));
    EXPECT_EQ(a % b, Vec3f(0, 0, 1));
    EXPECT_FLOAT_EQ(a.dot(b), 0.f);
    EXPECT_FLOAT_EQ(Vec3f(3, 4, 0).length(), 5.f);
    Vec3f n(0, 3, 4);
    n.normalize();
    EXPECT_TRUE(n.equals(Vec3f(0, 0.6f, 0.8f), 1e-6f));
    EXPECT_EQ(a + b * 2.f, Vec3f(1, 2, 0));
    EXPECT_EQ(-a, Vec3f(-1, 0, 0));
    EXPECT_NEAR(a.enclosedAngle(b), Pi / 2, 1e-6);

    Pnt3f p(1, 1, 1), q(2, 3, 4);
    Vec3f d = q - p; // point minus point is a vector
    EXPECT_EQ(d, Vec3f(1, 2, 3));
    EXPECT_EQ(p + d, q);
    EXPECT_FLOAT_EQ(p.dist2(q), 14.f);

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

TEST(Color, ChannelsConversionsAndPackedForms)
{
    Color3f c(1, 0.5f, 0);
    EXPECT_FLOAT_EQ(c.green(), 0.5f);
    EXPECT_EQ(c.getRGB(), 0xFF8000u);
    Color3f packed;
    packed.setRGB(0x00FF00);
    EXPECT_EQ(packed, Color3f(0, 1, 0));

    Real32 h, s, v;
    Color3f(0, 0, 1).getValuesHSV(h, s, v);
    EXPECT_FLOAT_EQ(h, 240.f);
    EXPECT_FLOAT_EQ(s, 1.f);
    Color3f back;
    back.setValuesHSV(h, s, v);
    EXPECT_TRUE(back.equals(Color3f(0, 0, 1), 1e-6f));

    Color4f rgba(0, 0, 0, 1);
    EXPECT_EQ(rgba.getRGBA(), 0x000000FFu);
    EXPECT_FLOAT_EQ(rgba.alpha(), 1.f);
    Color4f parsed;
    parsed.setValue("0.25 0.5 0.75 1");
    EXPECT_EQ(parsed, Color4f(0.25f, 0.5f, 0.75f, 1.f));
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

    Matrix t;
    t.setValueTransposed(1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16);
    EXPECT_EQ(t, m);
    Matrix fromArray;
    fromArray.setValue(m.getValues()); // column-major by default
    EXPECT_EQ(fromArray, m);
    Matrix transposed;
    m.transposed(transposed);
    EXPECT_FLOAT_EQ(transposed[0][1], 2.f);

    Matrix translate;
    translate.setTranslate(1, 2, 3);
    EXPECT_FLOAT_EQ(translate[3][1], 2.f);
    Pnt3f p;
    translate.multMatrixPnt(p);
    EXPECT_EQ(p, Pnt3f(1, 2, 3));
    Vec3f dir(1, 0, 0);
    translate.multMatrixVec(dir); // directions ignore the translation
    EXPECT_EQ(dir, Vec3f(1, 0, 0));
}

TEST(Matrix, MultiplicationOrderAndInverse)
{
    Matrix translate, scale;
    translate.setTranslate(10, 0, 0);
    scale.setScale(2);

    Matrix ts = translate;
    ts.mult(scale); // translate * scale: scale applies first
    Pnt3f p(1, 0, 0);
    ts.multMatrixPnt(p);
    EXPECT_EQ(p, Pnt3f(12, 0, 0));

    Matrix st = translate;
    st.multLeft(scale); // scale * translate
    Pnt3f q(1, 0, 0);
    st.multMatrixPnt(q);
    EXPECT_EQ(q, Pnt3f(22, 0, 0));

    Matrix m;
    m.setTransform(Vec3f(1, 2, 3), Quaternion(Vec3f(1, 2, 3), 0.7f), Vec3f(2, 3, 4));
    Matrix inv;
    ASSERT_TRUE(m.inverse(inv));
    Matrix product = m;
    product.mult(inv);
    EXPECT_TRUE(product.equals(Matrix(), 1e-5f));
    EXPECT_NEAR(m.det(), 24.f, 1e-4);
    EXPECT_NEAR(m.det3(), 24.f, 1e-4);

    Matrix singular;
    singular.setScale(0, 1, 1);
    Matrix untouched;
    untouched.setScale(5);
    EXPECT_FALSE(singular.inverse(untouched));
    EXPECT_FLOAT_EQ(untouched[0][0], 5.f);
}

TEST(Matrix, TransformComposesAndDecomposes)
{
    Vec3f t(1, 2, 3), s(2, 2, 2), c(0, 1, 0);
    Quaternion r(Vec3f(0, 0, 1), Real32(Pi / 2));
    Matrix m;
    m.setTransform(t, r, s, Quaternion(), c);
    // Scale and rotate about the centre, then translate: the centre itself only moves by t.
    Pnt3f centre(0, 1, 0);
    m.multMatrixPnt(centre);
    EXPECT_TRUE(centre.equals(Pnt3f(1, 3, 3), 1e-5f)) << centre;

    Matrix plain;
    plain.setTransform(t, r, s);
    Vec3f t2, s2;
    Quaternion r2, so;
    plain.getTransform(t2, r2, s2, so);
    EXPECT_TRUE(t2.equals(t, 1e-5f));
    EXPECT_TRUE(s2.equals(s, 1e-5f));
    EXPECT_TRUE(r2.equals(r, 1e-5f));
    EXPECT_TRUE(so.equals(Quaternion(), 1e-6f));

    Vec3f t3, s3;
    Quaternion r3, so3;
    m.getTransform(t3, r3, s3, so3, c);
    EXPECT_TRUE(t3.equals(t, 1e-5f)) << t3;
}

TEST(Quaternion, AxisAngleEulerAndMatrixConversions)
{
    Quaternion q(Vec3f(0, 2, 0), 1.f); // the axis need not be normalised
    Vec3f axis;
    Real32 angle;
    q.getValueAsAxisRad(axis, angle);
    EXPECT_TRUE(axis.equals(Vec3f(0, 1, 0), 1e-6f));
    EXPECT_NEAR(angle, 1.f, 1e-6);
    Real32 deg;
    q.getValueAsAxisDeg(axis, deg);
    EXPECT_NEAR(deg, 57.29578f, 1e-3);

    Quaternion zeroAxis;
    zeroAxis.setValueAsAxisRad(0, 0, 0, 1);
    EXPECT_EQ(zeroAxis, Quaternion());

    // Euler: x first, then y, then z.
    Quaternion euler;
    euler.setValue(Real32(Pi / 2), Real32(Pi / 2), 0.f);
    Vec3f v(0, 1, 0), out;
    euler.multVec(v, out);
    EXPECT_TRUE(out.equals(Vec3f(1, 0, 0), 1e-5f)) << out;

    Matrix m;
    euler.getValue(m);
    Vec3f viaMatrix(0, 1, 0);
    m.multMatrixVec(viaMatrix);
    EXPECT_TRUE(viaMatrix.equals(out, 1e-5f));
    Quaternion fromMatrix(m);
    Vec3f viaBack;
    fromMatrix.multVec(Vec3f(0, 1, 0), viaBack);
    EXPECT_TRUE(viaBack.equals(out, 1e-5f));
    EXPECT_NEAR(fromMatrix.length(), 1.f, 1e-6);

    Quaternion a(Vec3f(0, 0, 1), 0.5f), b(Vec3f(0, 0, 1), 0.25f);
    Quaternion ab = a;
    ab.mult(b);
    EXPECT_TRUE(ab.equals(Quaternion(Vec3f(0, 0, 1), 0.75f), 1e-6f));
    Quaternion half = Quaternion::slerp(Quaternion(), Quaternion(Vec3f(0, 0, 1), 1.f), 0.5f);
    EXPECT_TRUE(half.equals(Quaternion(Vec3f(0, 0, 1), 0.5f), 1e-6f));

    Quaternion turn(Vec3f(1, 0, 0), Vec3f(0, 1, 0));
    Vec3f turned;
    turn.multVec(Vec3f(1, 0, 0), turned);
    EXPECT_TRUE(turned.equals(Vec3f(0, 1, 0), 1e-6f));
}
