#include "host/dg/Functions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// The distance of a value from the true one, in units in the last place of a double of that size.
double ErrorInUnits(double value, long double exact) {
    const double size = std::abs(static_cast<double>(exact));
    return static_cast<double>(std::abs(value - exact)) / (std::nextafter(size, Infinity) - size);
}

struct Accuracy {
    const char* name;
    double (*function)(double);
    long double (*exact)(long double);
    double from, to;
    double units;  // the largest error that is allowed
};

const Accuracy Accuracies[] = {
    {"sine", dg::Sin, [](long double x) { return std::sin(x); }, -7, 7, 2},
    {"sine of many turns", dg::Sin, [](long double x) { return std::sin(x); }, -1e6, 1e6, 2},
    {"cosine", dg::Cos, [](long double x) { return std::cos(x); }, -7, 7, 2},
    {"cosine of many turns", dg::Cos, [](long double x) { return std::cos(x); }, -1e6, 1e6, 2},
    {"direction to the right", [](double y) { return dg::Atan2(y, 1.0); },
     [](long double y) { return std::atan2(y, 1.0L); }, -20, 20, 2},
    {"direction to the left", [](double y) { return dg::Atan2(y, -1.0); },
     [](long double y) { return std::atan2(y, -1.0L); }, -20, 20, 2},
    {"inverse sine", dg::Asin, [](long double x) { return std::asin(x); }, -1, 1, 3},
    {"inverse cosine", dg::Acos, [](long double x) { return std::acos(x); }, -1, 1, 3},
    {"power of two", dg::Exp2, [](long double x) { return std::exp2(x); }, -3, 3, 2},
    {"power of two, huge or tiny", dg::Exp2, [](long double x) { return std::exp2(x); }, -1000, 1000, 2},
};

TEST(Functions, AreAsNearToTheTruthAsTheyPromise) {
    if (std::numeric_limits<long double>::digits <= std::numeric_limits<double>::digits) {
        GTEST_SKIP() << "this machine has no wider numbers to compare with";
    }
    // A processor's own sine instruction takes a shortened pi.
    if (ErrorInUnits(1.2246467991473532e-16, std::sin(static_cast<long double>(std::numbers::pi))) > 1) {
        GTEST_SKIP() << "this C library's sine of wider numbers is not exact enough to compare with";
    }
    std::mt19937_64 random(20);
    for (const Accuracy& row : Accuracies) {
        double worst = 0;
        std::uniform_real_distribution<double> evenly(row.from, row.to);
        std::uniform_real_distribution<double> nearZero(-40, 0);
        for (int i = 0; i < 40000; ++i) {
            const double x = i % 2 == 0 ? evenly(random) : row.to * std::exp2(nearZero(random));
            worst = std::max(worst, ErrorInUnits(row.function(x), row.exact(x)));
        }
        EXPECT_LT(worst, row.units) << row.name;
        EXPECT_GT(worst, 0.1) << row.name << ": compared with itself?";
    }
}

TEST(Functions, AnswerSpecialValuesAsTheCLibraryDoes) {
    const double values[] = {0.0, -0.0, 1, -1, Infinity, -Infinity, NaN, 5e-324, -1e308, 1e308};
    for (const double y : values) {
        for (const double x : values) {
            const double direction = dg::Atan2(y, x);
            EXPECT_TRUE(std::isnan(direction)
                            ? std::isnan(std::atan2(y, x))
                            : std::bit_cast<std::uint64_t>(direction) == std::bit_cast<std::uint64_t>(std::atan2(y, x)))
                << y << ", " << x;
        }
    }
    for (const double outside : {Infinity, -Infinity, NaN}) {
        EXPECT_TRUE(std::isnan(dg::Sin(outside)) && std::isnan(dg::Cos(outside)));
        EXPECT_TRUE(std::isnan(dg::Asin(outside)) && std::isnan(dg::Acos(outside)));
    }
    EXPECT_TRUE(std::isnan(dg::Acos(1.0000001)) && std::isnan(dg::Exp2(NaN)));
    EXPECT_EQ(dg::Exp2(Infinity), Infinity);
    EXPECT_EQ(dg::Exp2(-Infinity), 0);
    EXPECT_EQ(dg::Exp2(-1074), 5e-324);
    EXPECT_EQ(dg::Exp2(0), 1);
    EXPECT_EQ(dg::PowerOfTen(22), 1e22);
    EXPECT_EQ(dg::PowerOfTen(-22), 1e-22);
    EXPECT_EQ(dg::PowerOfTen(std::numeric_limits<int>::min()), 0);
    // Far beyond the last exact turn the sine is still one.
    EXPECT_LE(std::abs(dg::Sin(1e300)), 1);
}

}  // namespace
