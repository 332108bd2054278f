// The geometry types and the rotation helpers against slow reference mathematics, on random values with fixed seeds.
#include "host/dg/Camera3D.h"
#include "host/dg/Location.h"
#include "host/dg/Matrix.h"
#include "tests/property/ReferenceMath.h"
#include "touch/navigation/QuaternionMath.h"
#include "touch/navigation/Trackball.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>

namespace {

using reference::Dot;
using reference::Generator;
using reference::Matrix;
using reference::Vector;

constexpr std::uint64_t Seeds[] = {1, 20, 300, 4000};
constexpr int Rounds = 500;
constexpr double SingleTolerance = 2e-6;  // a few roundings of single-precision numbers up to 2
constexpr double DoubleTolerance = 1e-13;

class GeometryProperties : public testing::TestWithParam<std::uint64_t> {
protected:
    GeometryProperties() : random(GetParam()) {}
    Generator random;
};

dg::DVec3 ToVec(const Vector& v) {
    return {v[0], v[1], v[2]};
}
dg::DPoint3D ToPoint(const Vector& v) {
    return dg::DPoint3D(ToVec(v));
}
dg::FMat33 ToSingle(const Matrix& a) {
    const auto row = [&](std::size_t i) {
        return dg::FVec3{static_cast<float>(a[i][0]), static_cast<float>(a[i][1]), static_cast<float>(a[i][2])};
    };
    return {row(0), row(1), row(2)};
}
// Of a vector or a point.
template <class Triple>
Vector From(const Triple& v) {
    return {v.x, v.y, v.z};
}
// Element by element, because a matrix keeps single-precision values that the reference has to start from.
Matrix From(const dg::FMat33& a) {
    return {From(a.Row(0)), From(a.Row(1)), From(a.Row(2))};
}
reference::Quaternion From(const dg::Quaternion<float>& q) {
    return {q.x, q.y, q.z, q.w};
}

testing::AssertionResult Close(const Vector& actual, const Vector& expected, double tolerance) {
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(std::abs(actual[i] - expected[i]) <= tolerance)) {
            return testing::AssertionFailure()
                   << testing::PrintToString(actual) << " is not close to " << testing::PrintToString(expected);
        }
    }
    return testing::AssertionSuccess();
}

TEST_P(GeometryProperties, RotationsAgreeWithRodrigues) {
    for (int i = 0; i < Rounds; ++i) {
        const Vector axis = random.UnitVector();
        const double angle = random.Number(-7, 7);
        const Vector v = random.AnyVector(1);
        const Vector expected = reference::RotatedAbout(axis, angle, v);
        const dg::DVec3 anyLength = ToVec(reference::Scaled(axis, random.Number(0.001, 1000)));
        EXPECT_TRUE(
            Close(From(dg::DMat44::Rotation(anyLength, angle).MapDirection(ToVec(v))), expected, DoubleTolerance));

        const dg::Quaternion<float> q = touch::QuaternionFromAxisAngle(ToVec(axis), angle);
        EXPECT_GE(q.w, 0);
        EXPECT_TRUE(Close(reference::RotatedBy(From(q), v), expected, SingleTolerance));
        EXPECT_TRUE(Close(reference::RowTimes(expected, From(dg::FMat33::Rotation(q))), v, SingleTolerance));
        const dg::DPoint3D centre{3, -5, 7};
        const dg::DPoint3D turned = dg::DMat44::Rotation(centre, q).MapPoint(centre + ToVec(v));
        EXPECT_TRUE(Close(From(turned - centre), expected, SingleTolerance));

        dg::Quaternion<float> inverse = q;
        touch::InvertQuaternion(inverse);
        EXPECT_TRUE(Close(reference::RotatedBy(From(inverse), expected), v, SingleTolerance));
    }
}

TEST_P(GeometryProperties, LocationsAndMatricesComposeLikeTheMapsTheyAre) {
    for (int i = 0; i < Rounds; ++i) {
        const dg::FMat33 frame = ToSingle(random.Frame());
        const Vector eye = random.AnyVector(100);
        const dg::Location location(frame.Row(0), frame.Row(1), frame.Row(2), ToPoint(eye));
        const dg::DMat44 matrix(dg::DMat44::Rotation(ToVec(random.UnitVector()), random.Number(-4, 4)),
                                dg::DMat44::Translation(ToVec(random.AnyVector(10))));
        const dg::DPoint3D local = ToPoint(random.AnyVector(10));

        dg::DPoint3D world = local;
        world *= location;
        EXPECT_TRUE(Close(From(world), reference::Sum(reference::RowTimes(From(local), From(frame)), eye), 1e-12));

        dg::DPoint3D before = local;  // local, then the location, then the matrix in the world
        before *= location * matrix;
        EXPECT_TRUE(Close(From(before), From(matrix.MapPoint(world)), 1e-5));
        dg::DPoint3D after = local;  // the matrix in the frame, then the location
        after *= matrix * location;
        dg::DPoint3D moved = matrix.MapPoint(local);
        EXPECT_TRUE(Close(From(after), From(moved *= location), 1e-5));

        dg::Camera3D camera;
        camera.SetLocation(location);
        EXPECT_TRUE(Close(From(camera.GetWorldToEye().MapPoint(world)), From(local), 2e-5));
    }
}

TEST_P(GeometryProperties, TheRotationFromOneVectorToAnotherTakesItThere) {
    for (int i = 0; i < Rounds; ++i) {
        const Vector from = random.UnitVector();
        // Any pair, nearly opposite, nearly equal, opposite. The axis comes from the cross product, which has lost its
        // direction to rounding where vectors are closer to opposite than this.
        const int kind = i % 4;
        const double off = kind == 3 ? 0 : std::pow(10, random.Number(kind == 1 ? -9 : -18, 0));
        const Vector nearly = reference::Scaled(from, kind == 2 ? 1 : -1);
        const Vector other = random.UnitVector();
        const Vector bent = reference::Normalized(reference::Sum(nearly, reference::Scaled(other, off)));
        const Vector to = kind == 0 ? other : bent;
        const dg::Quaternion<float> q = touch::QuaternionFromTo(ToVec(from), ToVec(to));
        EXPECT_GE(q.w, 0);
        EXPECT_NEAR(Dot({q.x, q.y, q.z}, {q.x, q.y, q.z}) + double{q.w} * q.w, 1, SingleTolerance);
        EXPECT_TRUE(Close(reference::RotatedBy(From(q), from), to, SingleTolerance))
            << "kind " << kind << ", off " << off;
    }
}

TEST_P(GeometryProperties, SlerpTurnsByItsShareOfTheAngle) {
    for (int i = 0; i < Rounds; ++i) {
        const Vector axis = random.UnitVector();
        const double start = random.Number(-3, 3);
        const double turn = random.Number(-2.8, 2.8);
        const double share = random.Number(-0.5, 1.5);
        const Vector v = random.UnitVector();
        const dg::Quaternion<float> q = touch::SlerpQuaternion(
            touch::QuaternionFromAxisAngle(ToVec(axis), start),
            touch::QuaternionFromAxisAngle(ToVec(axis), start + turn), static_cast<float>(share));
        EXPECT_TRUE(Close(reference::RotatedBy(From(q), v), reference::RotatedAbout(axis, start + share * turn, v),
                          5 * SingleTolerance))
            << "turn " << turn;
    }
}

TEST_P(GeometryProperties, ATrackballStepTakesOneProjectionToTheNext) {
    touch::Trackball ball;
    ball.SetRadius(250);
    ball.BeginDrag({640, 400, 0}, {640, 400, 0}, dg::DVec3::ZERO, false);
    for (int i = 0; i < Rounds; ++i) {
        const dg::DPoint3D finger{random.Number(0, 1280), random.Number(0, 800), 0};
        const Vector before = From(ball.lastVector);
        const dg::Quaternion<float> q = ball.Drag(finger);
        EXPECT_NEAR(ball.lastVector.Norm(), 1, DoubleTolerance);
        EXPECT_TRUE(Close(reference::RotatedBy(From(q), before), From(ball.lastVector), SingleTolerance));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeometryProperties, testing::ValuesIn(Seeds),
                         [](const auto& seed) { return "Seed" + std::to_string(seed.param); });

}  // namespace
