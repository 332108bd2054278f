// Any integers may come in a touch frame. A hundred thousand random frames, with ticks, mouse messages, mode messages
// and view changes between them, must leave the component consistent, its memory bounded and its camera determined by
// the seed. Run under the sanitizers this also shows that no input is undefined.
#include "touch/Inspection.h"
#include "viewer/ReferenceViewer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <list>
#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MEASURE_WITH_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define MEASURE_WITH_SANITIZER
#endif
#if defined(MEASURE_WITH_SANITIZER)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // of the sanitizer's runtime, which has no header
#else
#include <malloc.h>
#endif

namespace {

using viewer::BoundsAnswer;

constexpr int FramesPerSeed = 25'000;
constexpr int WarmUpFrames = 5'000;
constexpr std::size_t AllowedGrowthBytes = 16'384;

struct SeedRow {
    std::uint32_t seed;
    viewer::HostSettings settings;

    friend void PrintTo(const SeedRow& row, std::ostream* out) { *out << "seed " << row.seed; }
};

constexpr int SmallestInt = std::numeric_limits<int>::min();
constexpr int LargestInt = std::numeric_limits<int>::max();

// Resolutions, switches, the guard against preselection and how the host answers for the scene's bounds.
const SeedRow Rows[] = {
    {11, {96, 96, {}, true, BoundsAnswer::NextTick}},
    {22, {0, -1, {"HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE"}, false, BoundsAnswer::Failed}},
    {33, {1, 4000, {"HXAPP_TOUCH_TWO_HANDS_EXPLORE"}, true, BoundsAnswer::Never}},
    {44, {SmallestInt, LargestInt, {"HXAPP_DONTPAN"}, false, BoundsAnswer::Refused}},
};

std::size_t GetBytesInUse() {
#if defined(MEASURE_WITH_SANITIZER)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(_WIN32)
    std::size_t bytes = 0;
    for (_HEAPINFO block{}; _heapwalk(&block) == _HEAPOK;) {
        bytes += block._useflag == _USEDENTRY ? block._size : 0;
    }
    return bytes;
#else
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

class Random {
public:
    explicit Random(std::uint32_t seed) : m_engine(seed) {}

    // One of 0 .. count - 1.
    int Below(int count) { return static_cast<int>(m_engine() % static_cast<std::uint32_t>(count)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <class Container>
    const auto& OneOf(const Container& values) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(std::size(values))))];
    }

    // Raw bits, ids as hosts use them, extremes, pixels.
    std::int32_t Integer() {
        constexpr std::int32_t extremes[] = {SmallestInt, SmallestInt + 1, -1, 0, 1, LargestInt};
        switch (Below(4)) {
        case 0: return static_cast<std::int32_t>(m_engine());
        case 1: return Between(-1, 12);
        case 2: return OneOf(extremes);
        default: return Between(0, 1280);
        }
    }
    std::int64_t LongInteger() {
        constexpr std::int64_t extremes[] = {std::numeric_limits<std::int64_t>::min(), -1, 0,
                                             std::numeric_limits<std::int64_t>::max()};
        return Chance(50) ? OneOf(extremes) : static_cast<std::int64_t>(std::uint64_t{m_engine()} << 32 | m_engine());
    }

private:
    std::mt19937 m_engine;
};

// Fingers that behave: they come down one after the other, rest, creep or sweep for a while, and lift. They take the
// gestures to where taps, holds, pinches and flight happen, in between the wild frames.
class PlausibleHand {
public:
    [[nodiscard]] bool IsUp() const { return m_fingers.empty(); }

    viewer::TouchFrame Next(Random& random) {
        std::erase_if(m_fingers, [](const viewer::TouchRecord& finger) { return finger.flags == viewer::TouchUp; });
        m_time += 16;
        if (IsUp()) {
            m_count = random.OneOf(Counts);
            m_step = random.OneOf(Steps);
            m_framesLeft = random.OneOf(Lengths);
        }
        --m_framesLeft;
        for (viewer::TouchRecord& finger : m_fingers) {
            finger.flags = m_framesLeft < 0 && random.Chance(60) ? viewer::TouchUp : viewer::TouchMove;
            finger.x += random.Between(-m_step, m_step);
            finger.y += random.Between(-m_step, m_step);
        }
        while (m_framesLeft >= 0 && m_fingers.size() < m_count && random.Chance(70)) {
            m_fingers.push_back(
                {m_nextId++ % 12, random.Between(1, 1280), random.Between(1, 800), 0, viewer::TouchDown});
        }
        viewer::TouchFrame frame;
        frame.count = static_cast<std::int32_t>(m_fingers.size());
        std::copy(m_fingers.begin(), m_fingers.end(), frame.records.begin());
        for (viewer::TouchRecord& record : frame.records) {
            record.time = m_time;
        }
        return frame;
    }

private:
    static constexpr std::size_t Counts[] = {1, 1, 1, 2, 2, 3, 3, 4, 7};
    static constexpr int Steps[] = {0, 2, 60};          // pixels a frame
    static constexpr int Lengths[] = {3, 30, 75, 220};  // frames: a tap, a drag, a hold, a long hold

    std::vector<viewer::TouchRecord> m_fingers;
    std::size_t m_count = 0;
    int m_step = 0;
    int m_framesLeft = 0;
    std::int32_t m_nextId = 0;
    std::int32_t m_time = 1;
};

class RandomSession {
public:
    explicit RandomSession(const SeedRow& row) : m_random(row.seed), m_viewer(row.settings) {
        m_viewer.LoadComponent(TOUCHNAV_PLUGIN, "shapeview");
        OpenView();
    }

    // One touch frame and what comes with it.
    void Step() {
        m_viewer.GetRecorder().Clear();
        m_wild = m_random.Chance(m_wild ? 80 : 2);
        m_now += m_hand.IsUp() && m_random.Chance(50) ? 600 : 16;  // a silence ends a touch
        EXPECT_TRUE(m_viewer.Touch(m_wild ? WildFrame() : m_hand.Next(m_random)).has_value());
        switch (m_random.Below(200)) {
        case 0: OpenView(); break;
        case 1: ChangeView(); break;
        case 2: ChangeMode(); break;
        case 3:
        case 4: SendMouse(); break;
        case 5: m_viewer.Tick(m_random.LongInteger(), m_random.LongInteger()); break;
        default: m_viewer.Tick(m_now, 16); break;
        }
        const auto& calls = m_viewer.GetRecorder().GetCalls();
        m_usedFrames += std::any_of(calls.begin(), calls.end(), [](const viewer::Call& call) {
            return !std::holds_alternative<viewer::SetStatusMessageCall>(call) &&
                   !std::holds_alternative<viewer::PlainCall>(call);
        });
    }

    // What is wrong with the component's state; empty when nothing is.
    [[nodiscard]] std::string FindFault() const;
    // What the view shows, to the last bit.
    [[nodiscard]] std::string GetCameraText() const;
    // How many steps made the component ask the host for more than a status text.
    [[nodiscard]] int GetUsedFrames() const { return m_usedFrames; }

private:
    viewer::TouchFrame WildFrame() {
        viewer::TouchFrame frame;
        frame.count = m_random.Integer();
        for (viewer::TouchRecord& record : frame.records) {
            record = {m_random.Integer(), m_random.Integer(), m_random.Integer(), m_random.Integer(),
                      m_random.Integer()};
        }
        return frame;
    }

    viewer::CameraSpec MakeCamera() {
        viewer::CameraSpec camera;
        camera.orthographic = m_random.Chance(50);
        camera.location.SetPos({0, 0, 20.0 * m_random.Below(2)});
        camera.right = m_random.Chance(5) ? camera.left : 8;  // a window without width
        return camera;
    }
    viewer::PreferenceValues MakePreferences() {
        return {{"Model Viewer/display_rotation_center", m_random.Chance(60)}};
    }
    std::string MakeNavMethod() { return m_random.Chance(40) ? "explore" : "standard"; }

    void OpenView() {
        viewer::ViewSpec view;
        view.kind = m_random.Chance(60) ? viewer::ViewKinds[0] : m_random.OneOf(viewer::ViewKinds);
        view.width = m_random.Chance(5) ? 0 : 1280;
        view.camera = MakeCamera();
        view.navMethod = MakeNavMethod();
        view.navSpeed = m_random.Between(-1, 3);
        view.preferences = MakePreferences();
        m_viewer.SetView(m_random.Chance(5) ? std::nullopt : std::optional(view));
    }

    void ChangeView() {
        viewer::ViewChange change;
        change.camera = MakeCamera();
        change.bounds = m_random.Chance(50) ? dg::DBox({-3, -2, -1}, {1, 2, 3}) : dg::DBox::EMPTY;
        change.spinCenter = dg::DPoint3D(m_random.Between(-2, 2), 0, 1);
        change.navMethod = MakeNavMethod();
        m_viewer.ChangeView(change);
    }

    void ChangeMode() {
        const std::string name = m_random.Chance(90) ? "touch" : "picker";
        if (m_random.Chance(30)) {
            m_viewer.UpdatePreferences(MakePreferences(), name);
        } else {
            m_viewer.SetMode(name, m_random.Chance(25) ? "enter_markup_mode" : "leave_markup_mode");
        }
    }

    void SendMouse() {
        const char* const types[] = {"Move",          "LeftDown",  "LeftUp",         "InitLeftDrag", "LeftDrag",
                                     "InitRightDrag", "RightDrag", "InitMiddleDrag", "MiddleDrag",   "RightDown"};
        const std::string type = m_random.Chance(80)   ? std::string("MsgMouse") + m_random.OneOf(types)
                                 : m_random.Chance(50) ? "MsgClickLeft"
                                                       : "MsgDoubleClickLeft";
        const int x = m_random.Integer();
        m_viewer.Mouse(type, x, m_random.Integer());
    }

    Random m_random;
    viewer::ReferenceViewer m_viewer;
    PlausibleHand m_hand;
    bool m_wild = false;
    std::int64_t m_now = 1000;
    int m_usedFrames = 0;
};

std::string RandomSession::FindFault() const {
    const touch::WorkflowInspector state(static_cast<const touch::TouchWorkflow&>(*m_viewer.GetComponent()));
    std::set<std::int32_t> slots;
    for (const touch::TouchState& slot : state.GetSlots()) {
        if (slot.id == touch::FreeSlotId && slot != touch::TouchState{}) {
            return "a free slot holds values";
        }
        if (slot.id != touch::FreeSlotId && !slots.insert(slot.id).second) {
            return "two slots for id " + std::to_string(slot.id);
        }
    }
    std::list<touch::TouchState> hands = state.GetLeftHand();
    hands.insert(hands.end(), state.GetRightHand().begin(), state.GetRightHand().end());
    for (const auto& fingers : {state.GetFingerList(), hands}) {
        std::set<std::int32_t> ids;
        for (const touch::TouchState& finger : fingers) {
            if (!ids.insert(finger.id).second || !slots.contains(finger.id)) {
                return "listed twice, or without a slot: id " + std::to_string(finger.id);
            }
        }
    }
    for (const int id : {state.GetFirstFingerId(), state.GetSecondFingerId()}) {
        if (id != touch::FreeSlotId && !slots.contains(id)) {
            return "no slot for the first or second finger, id " + std::to_string(id);
        }
    }
    if (touch::NameOf(state.GetGesture()) == "?" || touch::NameOf(state.GetGestureState()) == "?") {
        return "a gesture or state without a name";
    }
    return "";
}

std::string RandomSession::GetCameraText() const {
    const viewer::ViewSnapshot snapshot = m_viewer.TakeSnapshot();
    std::array<double, 5> window{};
    bool orthographic = false;
    snapshot.camera.GetProjection(window[0], window[1], window[2], window[3], window[4], orthographic);
    std::ostringstream text;
    text << std::hexfloat << snapshot.orthoWidth;
    for (const double number : window) {
        text << ' ' << number;
    }
    for (const dg::Location& location : {snapshot.camera.GetLocation(), snapshot.placement}) {
        for (const dg::FVec3& axis : {location.GetU(), location.GetV(), location.GetW()}) {
            text << ' ' << axis.x << ' ' << axis.y << ' ' << axis.z;
        }
        text << ' ' << location.GetPos().x << ' ' << location.GetPos().y << ' ' << location.GetPos().z;
    }
    return text.str();
}

class RandomFrames : public testing::TestWithParam<SeedRow> {};

TEST_P(RandomFrames, LeaveTheComponentConsistentItsMemoryBoundedAndItsCameraDetermined) {
    RandomSession session(GetParam());
    RandomSession twin(GetParam());
    std::size_t before = 0;
    for (int frame = 0; frame < FramesPerSeed; ++frame) {
        session.Step();
        twin.Step();
        ASSERT_EQ(session.FindFault(), "") << "frame " << frame;
        if (frame % 100 == 99) {
            ASSERT_EQ(session.GetCameraText(), twin.GetCameraText()) << "frame " << frame;
        }
        if (frame == WarmUpFrames) {
            before = GetBytesInUse();
        }
    }
    EXPECT_LE(GetBytesInUse(), before + AllowedGrowthBytes);
    EXPECT_GT(session.GetUsedFrames(), FramesPerSeed / 25) << "most frames are for nothing";
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomFrames, testing::ValuesIn(Rows),
                         [](const auto& row) { return "Seed" + std::to_string(row.param.seed); });

}  // namespace
