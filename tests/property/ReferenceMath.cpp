// Textbook formulas, without a thought for speed, that share nothing with the code they are compared with.
#include "tests/property/ReferenceMath.h"

#include <cmath>

namespace reference {

double Dot(const Vector& a, const Vector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Sum(const Vector& a, const Vector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

Vector Scaled(const Vector& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

Vector Normalized(const Vector& a) {
    return Scaled(a, 1 / std::sqrt(Dot(a, a)));
}

Vector RotatedAbout(const Vector& unitAxis, double angle, const Vector& v) {
    const Vector along = Scaled(unitAxis, Dot(unitAxis, v) * (1 - std::cos(angle)));
    const Vector across = Scaled(Cross(unitAxis, v), std::sin(angle));
    return Sum(Scaled(v, std::cos(angle)), Sum(across, along));
}

Quaternion Product(const Quaternion& a, const Quaternion& b) {
    const Vector va{a[0], a[1], a[2]};
    const Vector vb{b[0], b[1], b[2]};
    const Vector v = Sum(Cross(va, vb), Sum(Scaled(vb, a[3]), Scaled(va, b[3])));
    return {v[0], v[1], v[2], a[3] * b[3] - Dot(va, vb)};
}

Vector RotatedBy(const Quaternion& q, const Vector& v) {
    const Quaternion conjugate{-q[0], -q[1], -q[2], q[3]};
    const Quaternion turned = Product(Product(q, {v[0], v[1], v[2], 0}), conjugate);
    return {turned[0], turned[1], turned[2]};
}

Vector RowTimes(const Vector& v, const Matrix& a) {
    return Sum(Scaled(a[0], v[0]), Sum(Scaled(a[1], v[1]), Scaled(a[2], v[2])));
}

double Generator::Number(double low, double high) {
    // The standard distributions differ between libraries, the engine does not.
    return low + (high - low) * std::ldexp(static_cast<double>(m_engine() >> 11), -53);
}

Vector Generator::AnyVector(double size) {
    const double x = Number(-size, size);
    const double y = Number(-size, size);
    return {x, y, Number(-size, size)};
}

Vector Generator::UnitVector() {
    for (;;) {
        const Vector v = AnyVector(1);
        if (Dot(v, v) > 0.01 && Dot(v, v) <= 1) {
            return Normalized(v);
        }
    }
}

Matrix Generator::Frame() {
    const Vector u = UnitVector();
    Vector v = Cross(u, UnitVector());
    while (Dot(v, v) < 0.01) {
        v = Cross(u, UnitVector());
    }
    v = Normalized(v);
    return {u, v, Cross(u, v)};
}

}  // namespace reference
