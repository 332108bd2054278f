// Random numbers are made here, because those of the standard library may differ between platforms, and each finger has
// its own, so that a change to one path leaves the other fingers as they were.
#include "tools/motion/HandMotion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace replay::motion {

namespace {

// The scan period stays below 10 ms at its longest, so that a finger in motion has moved between any two ticks of a
// 10 ms clock.
constexpr std::int64_t ScanPeriodUs = 9000;
constexpr std::int64_t ScanJitterUs = 350;  // either way
constexpr std::int64_t FirstScanUs = 1;     // recorders stamp the first event just after 0

constexpr double SettleMs = 60;   // after landing the pad flattens ...
constexpr double SettleMm = 0.4;  // ... and carries the contact's centre along, mostly towards the wrist
constexpr double RollMs = 40;     // before the lift the pad rolls off, mostly towards the finger tip
constexpr double RollMm = 0.3;

constexpr double TremorMinHz = 8;
constexpr double TremorMaxHz = 12;
constexpr double TremorMm = 0.02;  // amplitude of each partial; friction damps the tremor of a hand in the air
constexpr std::size_t TremorPartials = 3;

constexpr double SensorNoiseMm = 0.015;  // standard deviation per axis
constexpr double HysteresisMm = 0.08;    // the reported position trails the measured one by up to this much

// A counter stepped by an odd constant and scrambled. Standard distributions may differ between libraries, so every
// draw is formed here.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_counter(seed) {}

    // In [0, 1).
    double Unit() { return static_cast<double>(Next() >> 11U) * 0x1p-53; }

    double Between(double low, double high) { return low + (high - low) * Unit(); }

    // Roughly normal with mean 0 and deviation 1: four uniform draws have a variance of a third.
    double Normal() {
        double sum = -2;
        for (int draw = 0; draw < 4; ++draw) {
            sum += Unit();
        }
        return sum * std::numbers::sqrt3;
    }

private:
    std::uint64_t Next() {
        m_counter += 0x9e3779b97f4a7c15U;
        std::uint64_t mixed = m_counter;
        mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31U);
    }

    std::uint64_t m_counter;
};

// The share of a stroke that is done at the share t of its time: speed and acceleration are 0 at both ends.
double MinimumJerk(double t) {
    const double u = std::clamp(t, 0.0, 1.0);
    return u * u * u * (10 + u * (6 * u - 15));
}

Point Along(const Reach& reach, Point from, double timeMs) {
    const double done = MinimumJerk((timeMs - reach.startMs) / reach.durationMs);
    const Point way{reach.to.x - from.x, reach.to.y - from.y};
    const double length = std::hypot(way.x, way.y);
    const double bow = length > 0 ? reach.bowMm * std::sin(std::numbers::pi * done) / length : 0;
    return {from.x + way.x * done - way.y * bow, from.y + way.y * done + way.x * bow};
}

Point Along(const Turn& turn, Point from, double timeMs) {
    const double done = MinimumJerk((timeMs - turn.startMs) / turn.durationMs);
    const double scale = 1 + (turn.radiusFactor - 1) * done;
    const double cosine = std::cos(turn.angle * done) * scale;
    const double sine = std::sin(turn.angle * done) * scale;
    const Point arm{from.x - turn.centre.x, from.y - turn.centre.y};
    return {turn.centre.x + arm.x * cosine - arm.y * sine, turn.centre.y + arm.x * sine + arm.y * cosine};
}

Point PlannedPosition(const FingerPath& path, double timeMs) {
    Point at = path.landing;
    for (const Stroke& stroke : path.strokes) {
        at = std::visit([&](const auto& one) { return timeMs > one.startMs ? Along(one, at, timeMs) : at; }, stroke);
    }
    return at;
}

// The tremor of one finger along one axis.
class Tremor {
public:
    explicit Tremor(Random& random) {
        for (Partial& partial : m_partials) {
            partial.radiansPerMs = random.Between(TremorMinHz, TremorMaxHz) * 2 * std::numbers::pi / 1000;
            partial.phase = random.Between(0, 2 * std::numbers::pi);
        }
    }

    [[nodiscard]] double At(double timeMs) const {
        double sum = 0;
        for (const Partial& partial : m_partials) {
            sum += TremorMm * std::sin(partial.radiansPerMs * timeMs + partial.phase);
        }
        return sum;
    }

private:
    struct Partial {
        double radiansPerMs = 0;
        double phase = 0;
    };
    std::array<Partial, TremorPartials> m_partials;
};

// One finger as the controller follows it. Each has random numbers of its own, so that a change to one finger's path
// leaves the others as they were.
class FingerObserver {
public:
    FingerObserver(const FingerPath& path, std::uint64_t seed)
        : m_path(path), m_random(seed), m_tremorX(m_random), m_tremorY(m_random) {
        m_settle.x = SettleMm * m_random.Between(-0.5, 0.5);
        m_settle.y = SettleMm * m_random.Between(0.4, 1.0);
        m_roll.x = RollMm * m_random.Between(-0.5, 0.5);
        m_roll.y = RollMm * m_random.Between(0.4, 1.0);
    }

    [[nodiscard]] bool InContact(double timeMs) const { return timeMs >= m_path.downMs && timeMs < m_path.upMs; }

    // The position to report. Must be asked in time order, once for each scan in contact.
    Point Report(double timeMs) {
        const Point measured = Measure(timeMs);
        if (!m_seen) {
            m_seen = true;
            m_reported = measured;
            return m_reported;
        }
        const Point lag{measured.x - m_reported.x, measured.y - m_reported.y};
        const double distance = std::hypot(lag.x, lag.y);
        if (distance > HysteresisMm) {
            const double share = 1 - HysteresisMm / distance;
            m_reported.x += lag.x * share;
            m_reported.y += lag.y * share;
        }
        return m_reported;
    }

private:
    Point Measure(double timeMs) {
        Point at = PlannedPosition(m_path, timeMs);
        const double settling = std::max(0.0, 1 - (timeMs - m_path.downMs) / SettleMs);
        const double rolling = std::max(0.0, 1 - (m_path.upMs - timeMs) / RollMs);
        at.x += m_settle.x * settling * settling + m_roll.x * rolling * rolling + m_tremorX.At(timeMs);
        at.y += m_settle.y * settling * settling + m_roll.y * rolling * rolling + m_tremorY.At(timeMs);
        at.x += SensorNoiseMm * m_random.Normal();
        at.y += SensorNoiseMm * m_random.Normal();
        return at;
    }

    const FingerPath& m_path;
    Random m_random;
    Tremor m_tremorX;
    Tremor m_tremorY;
    Point m_settle;  // offset at landing, mm
    Point m_roll;    // offset at the lift, mm
    Point m_reported;
    bool m_seen = false;  // m_reported holds a position
};

}  // namespace

std::vector<Scan> Observe(const std::vector<FingerPath>& fingers, std::uint64_t seed) {
    Random clock(seed);
    std::vector<FingerObserver> observers;
    double lastLiftMs = 0;
    for (const FingerPath& path : fingers) {
        observers.emplace_back(path, seed + 1 + observers.size() * 1'000'003);
        lastLiftMs = std::max(lastLiftMs, path.upMs);
    }
    std::vector<Scan> scans;
    for (std::int64_t count = 0;; ++count) {
        const double jitter = count == 0 ? 0.0 : clock.Between(-1, 1) * static_cast<double>(ScanJitterUs);
        Scan scan{FirstScanUs + count * ScanPeriodUs + std::llround(jitter), {}};
        const double timeMs = static_cast<double>(scan.timeUs) / 1000;
        for (std::size_t finger = 0; finger < observers.size(); ++finger) {
            if (observers[finger].InContact(timeMs)) {
                scan.contacts.push_back({finger, observers[finger].Report(timeMs)});
            }
        }
        scans.push_back(std::move(scan));
        if (timeMs >= lastLiftMs) {
            return scans;
        }
    }
}

}  // namespace replay::motion
