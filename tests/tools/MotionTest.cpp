// The bundled touch recordings: that the generator still makes exactly these files, that they obey the protocol, and
// that the hands in them do what their names promise.
#include "replay/motion/EvemuWriter.h"
#include "replay/motion/GestureCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <numbers>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace replay::motion;

constexpr double PxPerMm = 1280.0 / PanelWidthMm;
constexpr double PxPerInch = PxPerMm * 25.4;
constexpr std::size_t MaxFileBytes = 60'000;

constexpr int TrackingIdCode = 0x39;
constexpr int SlotCode = 0x2f;
constexpr int BtnTouchCode = 0x14a;

std::string FileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::filesystem::path BundledFile(std::string_view name) {
    return std::filesystem::path(BUNDLED_RECORDINGS_DIR) / (std::string(name) + ".evemu");
}

struct Event {
    double ms = 0;
    int type = 0;
    int code = 0;
    int value = 0;
};

std::vector<Event> Events(const std::string& text) {
    std::vector<Event> events;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("E: ")) {
            continue;
        }
        std::istringstream fields(line.substr(3));
        Event event;
        fields >> event.ms >> std::hex >> event.type >> event.code >> std::dec >> event.value;
        EXPECT_TRUE(fields) << line;
        event.ms *= 1000;
        events.push_back(event);
    }
    return events;
}

// Follows the events as a receiver would, and reports whatever breaks the protocol.
class ProtocolChecker {
public:
    void Take(const Event& event) {
        EXPECT_TRUE(event.ms > m_reportMs) << "report times rise";
        EXPECT_TRUE(m_open == 0 || event.ms == m_eventMs) << "one time for one report";
        m_eventMs = event.ms;
        if (event.type == 0) {
            EndReport();
            return;
        }
        ++m_open;
        if (event.type == 1) {
            EXPECT_EQ(event.code, BtnTouchCode);
            EXPECT_NE(event.value, m_touch) << "button repeated";
            m_touch = event.value;
            return;
        }
        ASSERT_EQ(event.type, 3);
        TakeAxis(event.code, event.value);
    }

    void End() const {
        EXPECT_EQ(m_open, 0) << "last report not closed";
        EXPECT_TRUE(m_contacts.empty()) << "every finger lifts";
        EXPECT_FALSE(m_usedIds.empty()) << "at least one finger lands";
    }

private:
    void TakeAxis(int code, int value) {
        const bool perSlot = code > SlotCode;
        const std::map<int, int> maxima{{0x00, PanelMaxX}, {0x01, PanelMaxY}, {SlotCode, 9},
                                        {0x35, PanelMaxX}, {0x36, PanelMaxY}, {0x39, 65535}};
        ASSERT_TRUE(maxima.contains(code)) << code;
        EXPECT_LE(value, maxima.at(code)) << code;
        EXPECT_GE(value, code == TrackingIdCode ? -1 : 0) << code;
        const auto [known, isNew] = m_known.try_emplace({perSlot ? m_slot : -1, code}, code == TrackingIdCode ? -1 : 0);
        EXPECT_NE(known->second, value) << "axis " << code << " repeated";
        known->second = value;
        if (code == SlotCode) {
            EXPECT_FALSE(m_slotPending) << "slot chosen and left";
            m_slot = value;
            m_slotPending = true;
            return;
        }
        m_slotPending = m_slotPending && !perSlot;
        if (code == TrackingIdCode && value >= 0) {
            EXPECT_TRUE(m_contacts.insert(m_slot).second) << "slot in use";
            EXPECT_TRUE(m_usedIds.insert(value).second) << "tracking id used twice";
        } else if (code == TrackingIdCode) {
            EXPECT_EQ(m_contacts.erase(m_slot), 1U) << "lift of a free slot";
        } else if (perSlot) {
            EXPECT_TRUE(m_contacts.contains(m_slot)) << "position of a free slot";
        }
    }

    void EndReport() {
        EXPECT_GT(m_open, 0) << "empty report";
        EXPECT_FALSE(m_slotPending) << "slot chosen and left";
        EXPECT_EQ(m_touch != 0, !m_contacts.empty()) << "button and contacts differ";
        m_open = 0;
        m_reportMs = m_eventMs;
    }

    double m_reportMs = 0;
    double m_eventMs = 0;
    int m_open = 0;  // events since the last report
    int m_slot = 0;
    bool m_slotPending = false;
    int m_touch = 0;
    std::set<int> m_contacts;  // slots in use
    std::set<int> m_usedIds;
    std::map<std::pair<int, int>, int> m_known;  // slot (-1: none) and axis to value
};

struct Sample {
    double ms = 0;
    double x = 0;  // pixels of a view 1280 wide, y up
    double y = 0;
};

double DistancePx(const Sample& a, const Sample& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

struct Trail {
    double upMs = 0;
    std::vector<Sample> samples;  // one for each report while the finger is down

    [[nodiscard]] double DownMs() const { return samples.front().ms; }
    [[nodiscard]] double HeldMs() const { return upMs - DownMs(); }

    // Where the finger is at that time, as far as the reports tell.
    [[nodiscard]] Sample At(double ms) const {
        const auto after = std::ranges::upper_bound(samples, ms, {}, &Sample::ms);
        return after == samples.begin() ? samples.front() : *std::prev(after);
    }

    // Pixels a second over the time before the lift.
    [[nodiscard]] double LiftSpeed(double overMs) const {
        return DistancePx(At(upMs), At(upMs - overMs)) / overMs * 1000;
    }
};

// In the order of landing.
std::vector<Trail> Trails(std::string_view name) {
    std::vector<Trail> trails;
    std::map<int, std::size_t> trailOfSlot;
    std::map<int, Sample> position;
    int slot = 0;
    for (const Event& event : Events(FileText(BundledFile(name)))) {
        if (event.type == 3 && event.code == SlotCode) {
            slot = event.value;
        } else if (event.type == 3 && event.code == TrackingIdCode && event.value >= 0) {
            trailOfSlot[slot] = trails.size();
            trails.emplace_back();
        } else if (event.type == 3 && event.code == TrackingIdCode) {
            trails[trailOfSlot[slot]].upMs = event.ms;
            trailOfSlot.erase(slot);
        } else if (event.type == 3 && event.code == 0x35) {
            position[slot].x = event.value * 1.0 / PanelUnitsPerMmX * PxPerMm;
        } else if (event.type == 3 && event.code == 0x36) {
            position[slot].y = (PanelMaxY - event.value) * 1.0 / PanelUnitsPerMmY * PxPerMm;
        } else if (event.type == 0) {
            for (const auto& [used, trail] : trailOfSlot) {
                trails[trail].samples.push_back({event.ms, position[used].x, position[used].y});
            }
        }
    }
    return trails;
}

// By name, which is also what a failure prints.
class BundledRecording : public testing::TestWithParam<std::string> {
protected:
    [[nodiscard]] static const Gesture& Subject() { return *FindGesture(GetParam()); }
};

TEST_P(BundledRecording, IsWhatTheGeneratorMakes) {
    const std::string bundled = FileText(BundledFile(GetParam()));
    EXPECT_LE(bundled.size(), MaxFileBytes);
    EXPECT_TRUE(bundled == MakeRecording(Subject()))
        << "write the file again with touch-motion, or undo the change to the motion model";
}

TEST_P(BundledRecording, SpeaksProtocolB) {
    ProtocolChecker checker;
    for (const Event& event : Events(MakeRecording(Subject()))) {
        checker.Take(event);
        if (HasFailure()) {
            FAIL() << "at " << event.ms << " ms";
        }
    }
    checker.End();
}

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const Gesture& gesture : Catalogue()) {
        names.emplace_back(gesture.name);
    }
    return names;
}

std::string TestName(const testing::TestParamInfo<std::string>& row) {
    std::string name = row.param;
    std::ranges::replace(name, '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, BundledRecording, testing::ValuesIn(Names()), TestName);

TEST(BundledRecordings, FolderAndReadmeHoldTheCatalogue) {
    std::set<std::string> expected;
    const std::string readme = FileText(std::filesystem::path(BUNDLED_RECORDINGS_DIR) / "README.md");
    for (const Gesture& gesture : Catalogue()) {
        EXPECT_TRUE(expected.insert(FileName(gesture)).second) << "name used twice: " << gesture.name;
        EXPECT_NE(readme.find("| " + FileName(gesture) + " |"), std::string::npos) << "no row: " << gesture.name;
        EXPECT_EQ(FindGesture(gesture.name), &gesture);
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(BUNDLED_RECORDINGS_DIR)) {
        if (entry.path().extension() == ".evemu") {
            found.insert(entry.path().filename().string());
        }
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(FindGesture("wave"), nullptr);
}

TEST(BundledRecordings, RestingFingersStayWithinAPixelForTheirTime) {
    struct Row {
        std::string_view name;
        std::size_t still;  // the first contacts, which rest
        std::size_t contacts;
        double minMs, maxMs;  // how long each of the resting ones is held
    };
    for (const Row& row : {Row{"tap", 1, 1, 60, 130}, Row{"double-tap", 2, 2, 60, 130},
                           Row{"two-finger-tap", 2, 2, 160, 280}, Row{"press-and-hold", 1, 1, 1200, 1500},
                           Row{"three-finger-hold", 3, 3, 3200, 3500}, Row{"select-drag", 3, 4, 3200, 3500}}) {
        SCOPED_TRACE(row.name);
        const std::vector<Trail> trails = Trails(row.name);
        ASSERT_EQ(trails.size(), row.contacts);
        for (std::size_t index = 0; index < row.still; ++index) {
            EXPECT_GE(trails[index].HeldMs(), row.minMs);
            EXPECT_LE(trails[index].HeldMs(), row.maxMs);
            for (const Sample& sample : trails[index].samples) {
                EXPECT_LT(DistancePx(sample, trails[index].samples.front()), 1.5) << sample.ms;
            }
        }
    }
}

TEST(BundledRecordings, FingersLandAndLiftApartAsTheGestureNeeds) {
    const std::vector<Trail> tap = Trails("two-finger-tap");
    EXPECT_GT(std::abs(tap[1].upMs - tap[0].upMs), 25) << "a frame with one finger lies between the lifts";
    const std::vector<Trail> taps = Trails("double-tap");
    EXPECT_GT(taps[1].DownMs(), taps[0].upMs + 100);
    const std::vector<Trail> select = Trails("select-drag");
    EXPECT_EQ(select[0].upMs, select[1].upMs);
    EXPECT_EQ(select[0].upMs, select[2].upMs);
    EXPECT_GT(select[3].DownMs(), select[0].upMs + 600) << "the touch is over before the drag begins";
    for (const std::string_view name : {"pan", "twist", "two-hands", "three-finger-hold"}) {
        const std::vector<Trail> trails = Trails(name);
        for (std::size_t index = 1; index < trails.size(); ++index) {
            EXPECT_GT(trails[index].DownMs(), trails[index - 1].DownMs()) << name;
            EXPECT_NE(trails[index].upMs, trails[index - 1].upMs) << name;
        }
    }
}

TEST(BundledRecordings, OneFingerStrokesGoWhereTheySay) {
    struct Row {
        std::string_view name;
        std::size_t contact;
        double dx, dy;  // pixels
        bool thrown;    // lifts at speed
    };
    for (const Row& row : {Row{"spin-right", 0, 450, 10, false}, Row{"spin-up", 0, -10, 299, false},
                           Row{"spin-around", 0, -22, -33, false}, Row{"flick", 0, 178, 51, true},
                           Row{"drag-2d", 0, 237, 180, false}, Row{"select-drag", 3, 358, -210, false}}) {
        SCOPED_TRACE(row.name);
        const std::vector<Trail> trails = Trails(row.name);
        ASSERT_EQ(trails.size(), row.contact + 1);
        const Trail& trail = trails.back();
        EXPECT_NEAR(trail.samples.back().x - trail.samples.front().x, row.dx, 3);
        EXPECT_NEAR(trail.samples.back().y - trail.samples.front().y, row.dy, 3);
        if (row.thrown) {
            EXPECT_GT(trail.LiftSpeed(20), 1000);
        } else {
            EXPECT_LT(trail.LiftSpeed(40), 30);
        }
    }
}

TEST(BundledRecordings, StrokeSpeedIsBellShaped) {
    const Trail trail = Trails("spin-right").front();
    double peak = 0;
    double peakMs = 0;
    for (std::size_t last = 6; last < trail.samples.size(); ++last) {
        const Sample& from = trail.samples[last - 6];
        const Sample& to = trail.samples[last];
        const double speed = DistancePx(from, to) / (to.ms - from.ms);
        if (speed > peak) {
            peak = speed;
            peakMs = (from.ms + to.ms) / 2;
        }
    }
    EXPECT_NEAR(peak / (450.0 / 900), 1.875, 0.1);  // the smoothest stroke peaks at 1.875 times its mean speed
    EXPECT_NEAR(peakMs, 530, 100);
}

TEST(BundledRecordings, TwoFingersSpreadAndTurnAsTheySay) {
    struct Row {
        std::string_view name;
        double fromInches, toInches;
        double turnDegrees;  // of the line between them
    };
    for (const Row& row : {Row{"pan", 1.8, 1.8, 0}, Row{"pinch-open", 2.2, 5, 0}, Row{"pinch-close", 5, 2.2, 0},
                           Row{"twist", 4, 4.1, 80}, Row{"pinch-2d", 2.4, 4.8, 0}, Row{"one-hand-flight", 2.2, 7, 0}}) {
        SCOPED_TRACE(row.name);
        const std::vector<Trail> trails = Trails(row.name);
        ASSERT_EQ(trails.size(), 2U);
        const double firstMs = trails[1].DownMs();
        const double lastMs = std::min(trails[0].upMs, trails[1].upMs) - 5;
        EXPECT_NEAR(DistancePx(trails[0].At(firstMs), trails[1].At(firstMs)) / PxPerInch, row.fromInches, 0.03);
        EXPECT_NEAR(DistancePx(trails[0].At(lastMs), trails[1].At(lastMs)) / PxPerInch, row.toInches, 0.03);
        const auto direction = [&](double ms) {
            // From left to right: far from the half turn where the arc tangent jumps.
            const bool firstIsLeft = trails[0].samples.front().x < trails[1].samples.front().x;
            const Sample left = trails[firstIsLeft ? 0 : 1].At(ms);
            const Sample right = trails[firstIsLeft ? 1 : 0].At(ms);
            EXPECT_LT(left.x, right.x) << "the fingers swap sides at " << ms << " ms";
            return std::atan2(right.y - left.y, right.x - left.x) * 180 / std::numbers::pi;
        };
        const double startDegrees = direction(firstMs);
        EXPECT_NEAR(direction(lastMs) - startDegrees, row.turnDegrees, 2);
        for (double ms = firstMs; ms < lastMs; ms += 10) {
            const double turned = direction(ms) - startDegrees;
            EXPECT_LT(std::abs(turned - row.turnDegrees / 2), row.turnDegrees / 2 + 5) << ms;
        }
    }
}

TEST(BundledRecordings, FourFingersAreTwoHands) {
    for (const std::string_view name : {"two-hands", "two-hands-flight"}) {
        SCOPED_TRACE(name);
        const std::vector<Trail> trails = Trails(name);
        ASSERT_EQ(trails.size(), 4U);
        for (const double ms : {trails[3].DownMs(), trails[0].upMs - 5}) {
            EXPECT_LT(DistancePx(trails[0].At(ms), trails[1].At(ms)) / PxPerInch, 1.5);
            EXPECT_LT(DistancePx(trails[2].At(ms), trails[3].At(ms)) / PxPerInch, 1.5);
            EXPECT_GT(DistancePx(trails[1].At(ms), trails[2].At(ms)) / PxPerInch, 3);
        }
    }
}

TEST(MotionModel, EqualSeedsGiveEqualScansAndOthersDiffer) {
    const std::vector<FingerPath> path = FindGesture("spin-right")->fingers;
    const std::string once = WriteEvemu(Observe(path, 7), "one");
    EXPECT_EQ(once, WriteEvemu(Observe(path, 7), "one"));
    EXPECT_NE(once, WriteEvemu(Observe(path, 8), "one"));
}

TEST(MotionModel, ScansAreLessThanATickApart) {
    const std::vector<Scan> scans = Observe(FindGesture("three-finger-hold")->fingers, 1);
    for (std::size_t index = 1; index < scans.size(); ++index) {
        const std::int64_t gapUs = scans[index].timeUs - scans[index - 1].timeUs;
        EXPECT_GE(gapUs, 8000) << index;
        EXPECT_LT(gapUs, 10'000) << index;
    }
}

TEST(EvemuWriter, MovesPositionsBeyondTheEdgeToTheEdge) {
    const std::string text = WriteEvemu({{1, {{0, {-1000, -1000}}}}, {9001, {{0, {1000, 1000}}}}, {18001, {}}}, "edge");
    EXPECT_NE(text.find("0003 0036 32400\n"), std::string::npos) << "below the lower edge: the last row";
    EXPECT_NE(text.find("0003 0035 32634\n"), std::string::npos) << "beyond the right edge: the last column";
    EXPECT_NE(text.find("0003 0036 0000\n"), std::string::npos) << "above the upper edge: row 0";
}

TEST(EvemuWriter, RefusesMoreFingersThanSlots) {
    Scan scan{1, {}};
    for (std::size_t finger = 0; finger < 10; ++finger) {
        scan.contacts.push_back({finger, {static_cast<double>(finger), 0}});
    }
    EXPECT_NO_THROW(WriteEvemu({scan}, "ten"));
    scan.contacts.push_back({10, {}});
    EXPECT_THROW(WriteEvemu({scan}, "eleven"), std::invalid_argument);
}

}  // namespace
