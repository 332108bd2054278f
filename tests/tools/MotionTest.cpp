// The bundled touch recordings: that the generator still makes exactly these files, and that the
// hands in them do what their names promise.
#include "replay/RecordingReader.h"
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
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace replay::motion;

constexpr double PxPerMm = 1280.0 / PanelWidthMm;
constexpr double PxPerInch = PxPerMm * 25.4;
constexpr std::size_t MaxFileBytes = 60'000;

const std::filesystem::path Folder = BUNDLED_RECORDINGS_DIR;

std::string FileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Sample {
    double ms = 0;  // since the first finger landed
    double x = 0;   // pixels of a view 1280 wide, y up
    double y = 0;
};

double DistancePx(const Sample& a, const Sample& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

struct Trail {
    double upMs = 0;
    std::vector<Sample> samples;  // one for each report while the finger is down

    [[nodiscard]] double DownMs() const { return samples.front().ms; }

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
    std::map<int, Trail> trails;  // by tracking id, which rises from landing to landing
    for (const replay::Report& report : replay::ReadRecordingFile(Folder / FileName(*FindGesture(name))).reports) {
        const double ms = static_cast<double>(report.timeUs) / 1000;
        for (auto& [id, trail] : trails) {
            const bool down = std::ranges::count(report.contacts, id, &replay::Contact::trackingId) > 0;
            trail.upMs = trail.upMs == 0 && !down ? ms : trail.upMs;
        }
        for (const replay::Contact& contact : report.contacts) {
            trails[contact.trackingId].samples.push_back({ms, contact.x * 1.0 / PanelUnitsPerMmX * PxPerMm,
                                                          (PanelMaxY - contact.y) * 1.0 / PanelUnitsPerMmY * PxPerMm});
        }
    }
    std::vector<Trail> inOrder;
    for (const auto& [id, trail] : trails) {
        inOrder.push_back(trail);
    }
    return inOrder;
}

TEST(BundledRecordings, AreWhatTheGeneratorMakes) {
    const std::string readme = FileText(Folder / "README.md");
    std::set<std::string> expected;
    for (const Gesture& gesture : Catalogue()) {
        SCOPED_TRACE(gesture.name);
        EXPECT_TRUE(expected.insert(FileName(gesture)).second) << "name used twice";
        EXPECT_NE(readme.find("| " + FileName(gesture) + " |"), std::string::npos) << "no row in README.md";
        EXPECT_EQ(FindGesture(gesture.name), &gesture);
        const std::string bundled = FileText(Folder / FileName(gesture));
        EXPECT_LE(bundled.size(), MaxFileBytes);
        EXPECT_TRUE(bundled == MakeRecording(gesture))
            << "write the file again with touch-motion, or undo the change to the motion model";
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(Folder)) {
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
            const double heldMs = trails[index].upMs - trails[index].DownMs();
            EXPECT_TRUE(heldMs >= row.minMs && heldMs <= row.maxMs) << heldMs;
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
    for (std::size_t last = 6; last < trail.samples.size(); ++last) {
        const Sample& from = trail.samples[last - 6];
        const Sample& to = trail.samples[last];
        peak = std::max(peak, DistancePx(from, to) / (to.ms - from.ms));
    }
    EXPECT_NEAR(peak / (450.0 / 900), 1.875, 0.1);  // the smoothest stroke peaks at 1.875 times its mean speed
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
        // From left to right: far from the half turn where the arc tangent jumps.
        const bool firstIsLeft = trails[0].samples.front().x < trails[1].samples.front().x;
        const auto direction = [&](double ms) {
            const Sample left = trails[firstIsLeft ? 0 : 1].At(ms);
            const Sample right = trails[firstIsLeft ? 1 : 0].At(ms);
            return std::atan2(right.y - left.y, right.x - left.x) * 180 / std::numbers::pi;
        };
        for (double ms = firstMs; ms < lastMs; ms += 10) {
            const double turned = direction(ms) - direction(firstMs);
            EXPECT_LT(std::abs(turned - row.turnDegrees / 2), row.turnDegrees / 2 + 5) << ms;
        }
        EXPECT_NEAR(direction(lastMs) - direction(firstMs), row.turnDegrees, 2);
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

TEST(MotionModel, ScansAreLessThanATickApart) {
    const std::vector<Scan> scans = Observe(FindGesture("three-finger-hold")->fingers, 1);
    for (std::size_t index = 1; index < scans.size(); ++index) {
        const std::int64_t gapUs = scans[index].timeUs - scans[index - 1].timeUs;
        EXPECT_GE(gapUs, 8000) << index;
        EXPECT_LT(gapUs, 10'000) << index;
    }
}

TEST(EvemuWriter, TellsWhatChangedOfFingersThatComeAndGo) {
    const Contact corner{0, {-1000, -1000}};  // beyond the edge, so moved to it
    const std::string text = WriteEvemu({{0, {corner, {1, {0, 0}}}},
                                         {9000, {corner, {1, {0, 1}}}},
                                         {18000, {corner, {1, {0, 1}}}},
                                         {27000, {{1, {1000, 1000}}}},
                                         {36000, {{1, {1000, 1000}}, {2, {0, 0}}}},
                                         {45000, {}}},
                                        "title");
    EXPECT_NE(text.find("\n# title\n"), std::string::npos);
    EXPECT_EQ(text.substr(text.find("E: ")), R"(E: 0.000000 0003 0039 0001
E: 0.000000 0003 0036 32400
E: 0.000000 0003 002f 0001
E: 0.000000 0003 0039 0002
E: 0.000000 0003 0035 16317
E: 0.000000 0003 0036 16200
E: 0.000000 0001 014a 0001
E: 0.000000 0003 0001 32400
E: 0.000000 0000 0000 0000	# SYN_REPORT
E: 0.009000 0003 0036 16100
E: 0.009000 0000 0000 0000	# SYN_REPORT
E: 0.027000 0003 002f 0000
E: 0.027000 0003 0039 -001
E: 0.027000 0003 002f 0001
E: 0.027000 0003 0035 32634
E: 0.027000 0003 0036 0000
E: 0.027000 0003 0000 32634
E: 0.027000 0003 0001 0000
E: 0.027000 0000 0000 0000	# SYN_REPORT
E: 0.036000 0003 002f 0000
E: 0.036000 0003 0039 0003
E: 0.036000 0003 0035 16317
E: 0.036000 0003 0036 16200
E: 0.036000 0000 0000 0000	# SYN_REPORT
E: 0.045000 0003 0039 -001
E: 0.045000 0003 002f 0001
E: 0.045000 0003 0039 -001
E: 0.045000 0001 014a 0000
E: 0.045000 0000 0000 0000	# SYN_REPORT
)");
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
