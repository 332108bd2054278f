// Elementary functions of the same bits everywhere: an argument is brought near zero without losing digits, and a short
// Taylor polynomial does the rest. No operation here may be fused (-ffp-contract=off).
#include "host/dg/Functions.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>

namespace dg {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

// A number as the unevaluated sum of a double and what that has rounded away.
struct Extended {
    double high;
    double low;
};

constexpr Extended HalfPi{0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
constexpr Extended Pi{0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53};

// a - b for an a of at least b's size, or one half of pi and a little more of b.
constexpr Extended Subtract(const Extended& a, const Extended& b) noexcept {
    const double high = a.high - b.high;
    return {high, ((a.high - high) - b.high) + (a.low - b.low)};
}

// coefficients[0] + coefficients[1] x + ...
template <std::size_t N>
constexpr double Polynomial(const std::array<double, N>& coefficients, double x) noexcept {
    double sum = coefficients[N - 1];
    for (std::size_t i = N - 1; i-- > 0;) {
        sum = sum * x + coefficients[i];
    }
    return sum;
}

constexpr double InverseFactorial(int n) noexcept {
    double factorial = 1;
    for (int i = 2; i <= n; ++i) {
        factorial *= i;
    }
    return 1 / factorial;
}

// (sin x - x) / x^3 and (cos x - 1 + x^2 / 2) / x^4 in powers of x^2, for |x| up to pi / 4.
constexpr std::array SineSeries{-InverseFactorial(3),  InverseFactorial(5),  -InverseFactorial(7), InverseFactorial(9),
                                -InverseFactorial(11), InverseFactorial(13), -InverseFactorial(15)};
constexpr std::array CosineSeries{InverseFactorial(4),   -InverseFactorial(6), InverseFactorial(8),
                                  -InverseFactorial(10), InverseFactorial(12), -InverseFactorial(14),
                                  InverseFactorial(16)};

double SineNearZero(const Extended& x) noexcept {
    const double square = x.high * x.high;
    return x.high + (square * x.high * Polynomial(SineSeries, square) + x.low * (1 - square / 2));
}

double CosineNearZero(const Extended& x) noexcept {
    const double square = x.high * x.high;
    const double half = square / 2;
    const double leading = 1 - half;
    const double rest = square * square * Polynomial(CosineSeries, square) - x.high * x.low;
    return leading + (((1 - leading) - half) + rest);
}

struct Reduced {
    Extended angle;  // in [-pi / 4, pi / 4]
    int quarters;    // quarter turns taken away, modulo 4
};

// Half of pi in three pieces; a product of one of the first two with a whole number below 2^20 is exact.
constexpr double HalfPiPiece1 = 0x1.921fb54400000p+0;
constexpr double HalfPiPiece2 = 0x1.0b4611a600000p-34;
constexpr double HalfPiPiece3 = 0x1.3198a2e037073p-69;
constexpr double LargestAngle = 1e6;  // radians; itself still reduced by these pieces

Reduced Reduce(double angle) noexcept {
    if (std::abs(angle) > LargestAngle) {
        angle = std::fmod(angle, 2 * std::numbers::pi);
    }
    if (std::abs(angle) <= std::numbers::pi / 4) {
        return {{angle, 0}, 0};
    }
    const double quarters = std::floor(angle * (2 / std::numbers::pi) + 0.5);
    const double first = angle - quarters * HalfPiPiece1;
    const double second = quarters * HalfPiPiece2;
    const double high = first - second;
    // What the difference has rounded away, whichever of the two is the larger.
    const double taken = first - high;
    const double rounded = (first - (high + taken)) + (taken - second);
    return {{high, rounded - quarters * HalfPiPiece3}, static_cast<int>(static_cast<std::int64_t>(quarters) & 3)};
}

// atan(i / 16).
constexpr double AtanStep = 16;
constexpr std::array<Extended, 17> AtanTable{{
    {0, 0},
    {0x1.ff55bb72cfdeap-5, -0x1.c934d86d23f1dp-60},
    {0x1.fd5ba9aac2f6ep-4, -0x1.cd37686760c17p-59},
    {0x1.7b97b4bce5b02p-3, 0x1.347b0b4f881cap-58},
    {0x1.f5b75f92c80ddp-3, 0x1.8ab6e3cf7afbdp-57},
    {0x1.362773707ebccp-2, -0x1.963a544b672d8p-57},
    {0x1.6f61941e4def1p-2, -0x1.c63aae6f6e918p-56},
    {0x1.a64eec3cc23fdp-2, -0x1.24dec1b50b7ffp-56},
    {0x1.dac670561bb4fp-2, 0x1.a2b7f222f65e2p-56},
    {0x1.0657e94db30d0p-1, -0x1.d5b495f6349e6p-56},
    {0x1.1e00babdefeb4p-1, -0x1.928df287a668fp-58},
    {0x1.345f01cce37bbp-1, 0x1.1021137c71102p-55},
    {0x1.4978fa3269ee1p-1, 0x1.2419a87f2a458p-56},
    {0x1.5d58987169b18p-1, 0x1.0028e4bc5e7cap-57},
    {0x1.700a7c5784634p-1, -0x1.8c34d25aadef6p-56},
    {0x1.819d0b7158a4dp-1, -0x1.bf76229d3b917p-56},
    {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
}};

// (atan u - u) / u^3 in powers of u^2, for |u| up to 1 / 32.
constexpr std::array AtanSeries{-1.0 / 3, 1.0 / 5, -1.0 / 7, 1.0 / 9, -1.0 / 11};

// atan(smaller / larger) for 0 <= smaller <= larger; two infinities are alike.
Extended AtanOfRatio(double smaller, double larger) noexcept {
    if (smaller == larger) {
        return AtanTable.back();
    }
    const double ratio = smaller / larger;
    const auto nearest = static_cast<std::size_t>(std::floor(ratio * AtanStep + 0.5));
    if (nearest == 0) {
        const double square = ratio * ratio;
        return {ratio, ratio * square * Polynomial(AtanSeries, square)};
    }
    const double start = static_cast<double>(nearest) / AtanStep;
    const double u = (ratio - start) / (1 + ratio * start);
    const double square = u * u;
    const Extended& known = AtanTable[nearest];
    const double high = known.high + u;
    return {high, ((known.high - high) + u) + (u * square * Polynomial(AtanSeries, square) + known.low)};
}

constexpr Extended Ln2{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};

// (e^y - 1 - y) / y^2 for |y| up to ln 2 / 2, in powers of y.
constexpr std::array ExponentialSeries{
    InverseFactorial(2),  InverseFactorial(3),  InverseFactorial(4), InverseFactorial(5),  InverseFactorial(6),
    InverseFactorial(7),  InverseFactorial(8),  InverseFactorial(9), InverseFactorial(10), InverseFactorial(11),
    InverseFactorial(12), InverseFactorial(13), InverseFactorial(14)};

constexpr double ExponentOfInfinity = 1100;  // beyond the exponents of a double, subnormal ones included

}  // namespace

double Sin(double angle) noexcept {
    if (!std::isfinite(angle)) {
        return NaN;
    }
    const Reduced reduced = Reduce(angle);
    switch (reduced.quarters) {
    case 0: return SineNearZero(reduced.angle);
    case 1: return CosineNearZero(reduced.angle);
    case 2: return -SineNearZero(reduced.angle);
    default: return -CosineNearZero(reduced.angle);
    }
}

double Cos(double angle) noexcept {
    if (!std::isfinite(angle)) {
        return NaN;
    }
    const Reduced reduced = Reduce(angle);
    switch (reduced.quarters) {
    case 0: return CosineNearZero(reduced.angle);
    case 1: return -SineNearZero(reduced.angle);
    case 2: return -CosineNearZero(reduced.angle);
    default: return SineNearZero(reduced.angle);
    }
}

double Atan2(double y, double x) noexcept {
    if (std::isnan(x) || std::isnan(y)) {
        return NaN;
    }
    const double width = std::abs(x);
    const double height = std::abs(y);
    if (height == 0) {
        return std::copysign(std::signbit(x) ? Pi.high : 0, y);
    }
    const bool steep = height > width;
    Extended angle = steep ? AtanOfRatio(width, height) : AtanOfRatio(height, width);
    if (steep) {
        angle = Subtract(HalfPi, angle);
    }
    if (std::signbit(x)) {
        angle = Subtract(Pi, angle);
    }
    return std::copysign(angle.high + angle.low, y);
}

double Asin(double value) noexcept {
    return Atan2(value, std::sqrt((1 - value) * (1 + value)));
}

double Acos(double value) noexcept {
    return Atan2(std::sqrt((1 - value) * (1 + value)), value);
}

double Exp2(double exponent) noexcept {
    if (std::isnan(exponent)) {
        return NaN;
    }
    if (std::abs(exponent) > ExponentOfInfinity) {
        return exponent < 0 ? 0 : Infinity;
    }
    const double whole = std::floor(exponent + 0.5);
    const double fraction = exponent - whole;
    const double y = fraction * Ln2.high;
    const double sum = 1 + y;
    const double rest = ((1 - sum) + y) + (y * y * Polynomial(ExponentialSeries, y) + fraction * Ln2.low * sum);
    return std::ldexp(sum + rest, static_cast<int>(whole));
}

double PowerOfTen(int exponent) noexcept {
    // A power up to the 22nd is exact, and so is every product on the way to it.
    double power = 1;
    double square = 10;
    for (auto rest = exponent < 0 ? 0U - static_cast<unsigned>(exponent) : static_cast<unsigned>(exponent); rest != 0;
         rest >>= 1U) {
        if ((rest & 1U) != 0) {
            power *= square;
        }
        square *= square;
    }
    return exponent < 0 ? 1 / power : power;
}

}  // namespace dg
