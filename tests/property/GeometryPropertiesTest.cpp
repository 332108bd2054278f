// The geometry types and the rotation helpers against slow reference mathematics, on random values with fixed seeds.
#include "host/dg/Box.h"
#include "host/dg/Camera3D.h"
#include "host/dg/Location.h"
#include "host/dg/Matrix.h"
#include "tests/property/ReferenceMath.h"
#include "touch/QuaternionMath.h"
#include "touch/Trackball.h"

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
dg::FVec3 ToSingle(const Vector& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}
dg::FMat33 ToSingle(const Matrix& a) {
    return {ToSingle(a[0]), ToSingle(a[1]), ToSingle(a[2])};
}
Vector From(const dg::DVec3& v) {
    return {v.x, v.y, v.z};
}
Vector From(const dg::FVec3& v) {
    return {v.x, v.y, v.z};
}
Vector From(const dg::DPoint3D& p) {
    return {p.x, p.y, p.z};
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
        EXPECT_TRUE(Close(reference::RowTimes(v, From(dg::FMat33::Rotation(q))), expected, SingleTolerance));
        const dg::DPoint3D centre{3, -5, 7};
        const dg::DPoint3D turned = dg::DMat44::Rotation(centre, q).MapPoint(centre + ToVec(v));
        EXPECT_TRUE(Close(From(turned - centre), expected, SingleTolerance));

        dg::Quaternion<float> inverse = q;
        touch::InvertQuaternion(inverse);
        EXPECT_TRUE(Close(reference::RotatedBy(From(inverse), expected), v, SingleTolerance));
    }
}

TEST_P(GeometryProperties, ProductsAgreeWithTheProductsWrittenOut) {
    for (int i = 0; i < Rounds; ++i) {
        const dg::FMat33 a = ToSingle(Matrix{random.AnyVector(1), random.AnyVector(1), random.AnyVector(1)});
        const dg::FMat33 b = ToSingle(Matrix{random.AnyVector(1), random.AnyVector(1), random.AnyVector(1)});
        const Vector v = random.AnyVector(1);
        const Matrix product = From(a * b);
        const Matrix expected = reference::Product(From(a), From(b));
        for (std::size_t row = 0; row < 3; ++row) {
            EXPECT_TRUE(Close(product[row], expected[row], SingleTolerance));
        }
        EXPECT_TRUE(Close(From(dg::DMat33(a) * ToVec(v)), reference::TimesColumn(From(a), v), DoubleTolerance));
    }
}

TEST_P(GeometryProperties, LocationsAndMatricesComposeLikeTheMapsTheyAre) {
    for (int i = 0; i < Rounds; ++i) {
        const dg::FMat33 frame = ToSingle(random.Frame());
        const Vector eye = random.AnyVector(100);
        const dg::Location location(frame.Row(0), frame.Row(1), frame.Row(2), dg::DPoint3D(ToVec(eye)));
        const dg::DMat44 matrix(dg::DMat44::Rotation(ToVec(random.UnitVector()), random.Number(-4, 4)),
                                dg::DMat44::Translation(ToVec(random.AnyVector(10))));
        dg::DPoint3D local(ToVec(random.AnyVector(10)));

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

TEST_P(GeometryProperties, SanitizeGivesTheNearestFrameThatKeepsU) {
    for (int i = 0; i < Rounds; ++i) {
        const Matrix frame = random.Frame();
        const Matrix bent{reference::Scaled(frame[0], random.Number(0.1, 10)),
                          reference::Sum(frame[1], reference::Scaled(frame[0], random.Number(-3, 3))),
                          random.AnyVector(1)};
        dg::Location location(ToSingle(bent[0]), ToSingle(bent[1]), ToSingle(bent[2]), {});
        location.Sanitize();
        const Matrix clean = From(location.GetMat());
        for (std::size_t row = 0; row < 3; ++row) {
            EXPECT_TRUE(Close(clean[row], frame[row], SingleTolerance));
        }
    }
}

TEST_P(GeometryProperties, AMappedBoxHoldsEveryMappedPointAndTouchesOnEverySide) {
    for (int i = 0; i < Rounds; ++i) {
        const Vector low = random.AnyVector(10);
        const Vector size = {random.Number(0, 5), random.Number(0, 5), random.Number(0, 5)};
        const dg::DMat44 matrix = dg::DMat44::Rotation(ToVec(random.UnitVector()), random.Number(-4, 4));
        dg::DBox box(dg::DPoint3D(ToVec(low)), dg::DPoint3D(ToVec(reference::Sum(low, size))));
        box *= matrix;
        // Along each axis the extent of a turned box is the sum of the extents of its three edges.
        const Vector edges[] = {From(matrix.MapDirection({size[0], 0, 0})), From(matrix.MapDirection({0, size[1], 0})),
                                From(matrix.MapDirection({0, 0, size[2]}))};
        Vector extent{};
        for (const Vector& edge : edges) {
            extent = reference::Sum(extent, {std::abs(edge[0]), std::abs(edge[1]), std::abs(edge[2])});
        }
        EXPECT_TRUE(Close(From(box.GetSize()), extent, DoubleTolerance * 100));
        const dg::DPoint3D inside = matrix.MapPoint(dg::DPoint3D(
            low[0] + size[0] * random.Number(0, 1), low[1] + size[1] * random.Number(0, 1), low[2] + size[2] / 2));
        dg::DBox same = box;
        same.Enclose(inside);
        EXPECT_TRUE(Close(From(same.GetSize()), From(box.GetSize()), DoubleTolerance * 100));
    }
}

TEST_P(GeometryProperties, TheRotationFromOneVectorToAnotherTakesItThere) {
    for (int i = 0; i < Rounds; ++i) {
        const Vector from = random.UnitVector();
        // A third of the pairs are any, a third nearly opposite, a third nearly equal. The axis comes from the cross
        // product, which has lost its direction to rounding where opposite vectors are closer than this.
        const int kind = i % 3;
        const double off = std::pow(10, random.Number(kind == 1 ? -9 : -18, 0));
        const Vector nearly = reference::Scaled(from, kind == 1 ? -1 : 1);
        const Vector other = random.UnitVector();
        const Vector to =
            kind == 0 ? other : reference::Normalized(reference::Sum(nearly, reference::Scaled(other, off)));
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

std::string NameOf(const testing::TestParamInfo<std::uint64_t>& seed) {
    return "Seed" + std::to_string(seed.param);
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeometryProperties, testing::ValuesIn(Seeds), NameOf);

}  // namespace
