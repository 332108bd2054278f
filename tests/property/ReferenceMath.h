// Slow and obvious geometry for tests: every number is computed the long way, in double precision, with nothing taken
// from the types it is compared with.
#pragma once

#include <array>
#include <cstdint>
#include <random>

namespace reference {

using Vector = std::array<double, 3>;
// Rows.
using Matrix = std::array<Vector, 3>;
// Vector part first.
using Quaternion = std::array<double, 4>;

[[nodiscard]] double Dot(const Vector& a, const Vector& b);
[[nodiscard]] Vector Cross(const Vector& a, const Vector& b);
[[nodiscard]] Vector Sum(const Vector& a, const Vector& b);
[[nodiscard]] Vector Scaled(const Vector& a, double factor);
[[nodiscard]] Vector Normalized(const Vector& a);

// Rodrigues' formula: v turned about a unit axis by an angle in radians, right-handed.
[[nodiscard]] Vector RotatedAbout(const Vector& unitAxis, double angle, const Vector& v);

// The product of two quaternions, and q v q*.
[[nodiscard]] Quaternion Product(const Quaternion& a, const Quaternion& b);
[[nodiscard]] Vector RotatedBy(const Quaternion& q, const Vector& v);

// The row vector v times a.
[[nodiscard]] Vector RowTimes(const Vector& v, const Matrix& a);

// Random geometry that is the same on every platform for a seed.
class Generator {
public:
    explicit Generator(std::uint64_t seed) : m_engine(seed) {}

    // Evenly in [low, high).
    double Number(double low, double high);
    Vector AnyVector(double size);
    // Evenly over the sphere.
    Vector UnitVector();
    // A right-handed frame as rows.
    Matrix Frame();

private:
    std::mt19937_64 m_engine;
};

}  // namespace reference
