// Millions of touch frames of mixed gestures through the loaded plug-in, in the reference viewer. The memory in use
// must not grow with the number of frames, and the axes of the camera, which is one for the whole run, must stay
// orthonormal. `scripts/soak` builds and runs it; docs/TESTING.md has its figures.
#include "bench/SoakTouches.h"
#include "replay/play/Player.h"
#include "replay/program/ProgressBar.h"
#include "touch/Inspection.h"
#include "touch/TouchWorkflow.h"
#include "viewer/ReferenceViewer.h"

#include <malloc.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <new>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <variant>

namespace {

std::int64_t s_bytesInUse = 0;

}  // namespace

// Counts what the whole process holds, the plug-in included, to the byte. The allocator's own figures hold its caches
// too.
void* operator new(std::size_t size) {
    void* block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    s_bytesInUse += static_cast<std::int64_t>(malloc_usable_size(block));
    return block;
}

void operator delete(void* block) noexcept {
    s_bytesInUse -= static_cast<std::int64_t>(malloc_usable_size(block));
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace {

// Of an axis product from that of the identity. The deviation itself may be this large.
constexpr double LargestDeviation = 1e-4;
// From the end of the first chapter to the end of the last one. The limits count.
constexpr std::int64_t LargestGrowthBytes = 16 * 1024;
constexpr std::int64_t LargestResidentGrowthBytes = 2 * 1024 * 1024;
// The run is divided into so many chapters, each with a fresh viewer and a fresh load of the plug-in. The first one is
// the 5 % that warm up.
constexpr int Chapters = 20;
// So many touches after the last time, the camera is brought back.
constexpr int TouchesFromHome = 12;
constexpr double HomeDistance = 20;
constexpr double HomeWidth = 16;

// What hosts differ in, chapter by chapter.
const viewer::HostSettings Settings[] = {
    {96, 96, {}, false, viewer::BoundsAnswer::NextTick},
    {96, 96, {"HXAPP_TOUCH_TWO_HANDS_EXPLORE"}, false, viewer::BoundsAnswer::NextTick},
    {110, 100, {"HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE"}, true, viewer::BoundsAnswer::Refused},
    {96, 96, {"HXAPP_TOUCH_TWO_HANDS_EXPLORE"}, true, viewer::BoundsAnswer::Never},
    {0, 0, {}, true, viewer::BoundsAnswer::Failed, false},
};

struct ShapeKind {
    bool orthographic;
    const char* navMethod;
};
constexpr ShapeKind ShapeKinds[] = {{true, "standard"}, {false, "standard"}, {false, "explore"}};
constexpr int ExploreKind = 2;
constexpr const char* PageKinds[] = {"drawingview", "imageview", "ecadpcbview", "illustration2dview"};

// What a run without all of these has not tried.
constexpr const char* NeededCounts[] = {
    "spin",
    "look around",
    "pan",
    "pinch",
    "twist",
    "flight with one hand",
    "2D pan",
    "2D pinch",
    "flight with two hands",
    "markup mode",
    "AddMarkup",
    "AddTransition",
    "MsgClickLeft",
    "MsgMouseRightDown",
    "MsgMouseLeftDrag",
    "ManageObject",
    "Cancel",
    "coasting ticks",
    "selecting",
    "camera brought back",
};

struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Memory {
    std::int64_t bytesInUse;
    std::int64_t resident;

    static Memory Measure() {
        std::int64_t pages = 0;
        std::int64_t residentPages = 0;
        std::ifstream("/proc/self/statm") >> pages >> residentPages;
        return {s_bytesInUse, residentPages * sysconf(_SC_PAGESIZE)};
    }
};

bool IsFinite(const dg::DPoint3D& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// The largest deviation of the axes' products with each other from those of an orthonormal frame; not finite when the
// placement is not.
double DeviationOf(const dg::Location& location) {
    if (!IsFinite(location.GetPos())) {
        return INFINITY;
    }
    const dg::DVec3 axes[] = {dg::DVec3(location.GetU()), dg::DVec3(location.GetV()), dg::DVec3(location.GetW())};
    double largest = 0;
    for (int i = 0; i < 3; ++i) {
        for (int j = i; j < 3; ++j) {
            const double deviation = std::abs(dg::DotProduct(axes[i], axes[j]) - (i == j ? 1 : 0));
            largest = std::isnan(deviation) ? INFINITY : std::max(largest, deviation);
        }
    }
    return largest;
}

// Looks at what the component asks of the host.
class CallCheck {
public:
    void operator()(const viewer::SetCameraLocationCall& call) { CheckFrame(call.location); }
    void operator()(const viewer::AddTransitionCall& call) {
        CheckFrame(call.end);
        ++counts["AddTransition"];
    }
    void operator()(const viewer::SetWidthCall& call) {
        if (!std::isfinite(call.width) || call.width <= 0) {
            throw Fault(std::string(call.operation) + ": the width is " + std::to_string(call.width));
        }
    }
    void operator()(const viewer::SetPositionCall& call) {
        if (!IsFinite(call.position)) {
            throw Fault("SetPosition: the position is not finite");
        }
    }
    void operator()(const viewer::SendMessageCall& call) { ++counts[call.type]; }
    void operator()(const viewer::PlainCall& call) { ++counts[call.operation]; }
    void operator()(const viewer::AddMarkupCall& /*call*/) { ++counts["AddMarkup"]; }
    void operator()(const viewer::ManageObjectCall& /*call*/) { ++counts["ManageObject"]; }
    template <class Call>
    void operator()(const Call& /*call*/) {}

    void CheckFrame(const dg::Location& location) {
        lastDeviation = DeviationOf(location);
        largestDeviation = std::max(largestDeviation, lastDeviation);
        if (!(lastDeviation <= LargestDeviation)) {
            throw Fault("the camera's frame deviates by " + std::to_string(lastDeviation) + " from orthonormality");
        }
    }

    std::map<std::string, std::int64_t> counts;
    double largestDeviation = 0;
    double lastDeviation = 0;
};

class Soak {
public:
    Soak(std::int64_t frames, std::uint32_t seed, bool exploreOnly)
        : m_frames(frames), m_exploreOnly(exploreOnly), m_random(seed), m_touches(m_random) {
        m_camera.SetPos({0, 0, HomeDistance});
    }

    [[nodiscard]] std::int64_t GetFramesDone() const noexcept { return m_done; }

    // Throws Fault when the run shows one.
    void Run() {
        std::optional<replay::ProgressBar> bar;
        if (replay::IsErrorTerminal()) {
            m_bar = &bar.emplace(std::cerr, "frames");
        }
        Memory start{};
        Memory end{};
        for (int chapter = 0; chapter < Chapters; ++chapter) {
            m_settings = &Settings[static_cast<std::size_t>(chapter) % std::size(Settings)];
            RunChapter(m_frames * (chapter + 1) / Chapters);
            end = m_memory;
            start = chapter == 0 ? m_memory : start;
            if (m_bar == nullptr) {
                std::printf("%lld of %lld frames, %lld bytes in use, deviation up to %.3g\n",
                            static_cast<long long>(m_done), static_cast<long long>(m_frames),
                            static_cast<long long>(end.bytesInUse), m_check.largestDeviation);
                std::fflush(stdout);
            }
        }
        bar.reset();
        m_bar = nullptr;
        Report(start, end);
        Judge(start, end);
    }

private:
    void RunChapter(std::int64_t lastFrame) {
        viewer::ReferenceViewer viewer(*m_settings);
        m_viewer = &viewer;
        viewer.LoadComponent(TOUCHNAV_PLUGIN, "shapeview");
        OpenShapeView();
        while (m_done < lastFrame) {
            PlayTouch(lastFrame);
            ChangeSomething();
        }
        KeepCamera();
        m_shape = nullptr;
        m_memory = Memory::Measure();
    }

    void PlayTouch(std::int64_t lastFrame) {
        const touch::WorkflowInspector inspector(static_cast<const touch::TouchWorkflow&>(*m_viewer->GetComponent()));
        for (const replay::Event& event : m_touches.Next()) {
            const bool isFrame = std::holds_alternative<replay::TouchEvent>(event);
            if (isFrame && m_done == lastFrame) {
                return;
            }
            m_viewer->GetRecorder().Clear();
            replay::Deliver(event, *m_viewer);
            for (const viewer::Call& call : m_viewer->GetRecorder().GetCalls()) {
                std::visit(m_check, call);
            }
            if (isFrame) {
                ++m_done;
                CountFrame(inspector);
            } else if (m_viewer->IsTransitionPlaying()) {
                ++m_check.counts["coasting ticks"];
            }
        }
        ++m_touchesFromHome;
        if (m_bar != nullptr) {
            m_bar->Update(static_cast<std::size_t>(m_done), static_cast<std::size_t>(m_frames));
        }
    }

    // Frames are counted by what they did only if they have moved something.
    void CountFrame(const touch::WorkflowInspector& inspector) {
        std::map<std::string, std::int64_t>& counts = m_check.counts;
        const auto& calls = m_viewer->GetRecorder().GetCalls();
        const bool moved = std::any_of(calls.begin(), calls.end(), [](const viewer::Call& call) {
            return std::holds_alternative<viewer::SetCameraLocationCall>(call) ||
                   std::holds_alternative<viewer::SetWidthCall>(call) ||
                   std::holds_alternative<viewer::SetPositionCall>(call);
        });
        counts[std::string(touch::NameOf(inspector.GetGesture()))] += 1;
        counts["selecting"] += inspector.GetNavigateMode() ? 0 : 1;
        counts["markup mode"] += inspector.GetMarkupMode() ? 1 : 0;
        if (!moved) {
            return;
        }
        const bool explores = m_shape != nullptr && m_shape->navMethod == std::string("explore");
        const bool twoHands =
            !m_settings->environment.empty() && m_settings->environment.front() == "HXAPP_TOUCH_TWO_HANDS_EXPLORE";
        switch (inspector.GetGesture()) {
        case touch::GestureSpin: ++counts[explores ? "look around" : "spin"]; break;
        case touch::GesturePanZoomRotate:
            if (explores) {
                ++counts[twoHands ? "flight with two hands" : "flight with one hand"];
            } else {
                ++counts["pan"];
                counts["pinch"] += inspector.IsZoomStarted() ? 1 : 0;
                counts["twist"] += inspector.IsRotationStarted() ? 1 : 0;
            }
            break;
        case touch::Gesture2DPan: ++counts["2D pan"]; break;
        case touch::Gesture2DZoomPan: ++counts[inspector.IsZoomStarted() ? "2D pinch" : "2D pan"]; break;
        case touch::GestureNone:
        case touch::GestureTap:
        case touch::GestureDrag:
        case touch::GestureMarkup: break;
        }
    }

    // What happens in a viewer between two touches.
    void ChangeSomething() {
        switch (bench::Below(m_random, 16)) {
        case 0:
        case 1:
        case 2: OpenShapeView(); break;
        case 3: m_exploreOnly ? OpenShapeView() : OpenPage(); break;
        case 4: m_viewer->SetMode("touch", "enter_markup_mode"); break;
        case 5:
        case 6:
        case 7:
        case 8: m_viewer->SetMode("touch", "leave_markup_mode"); break;
        case 9:
            m_viewer->UpdatePreferences(
                viewer::PreferenceValues{{"Model Viewer/display_rotation_center", bench::Below(m_random, 2) == 0}},
                "touch");
            break;
        case 10: m_viewer->UpdateStatusBar(); break;
        default: break;
        }
        if (m_touchesFromHome >= TouchesFromHome) {
            BringBack();
        }
    }

    void KeepCamera() {
        if (m_shape != nullptr) {
            m_camera = m_viewer->TakeSnapshot().camera.GetLocation();
            m_check.CheckFrame(m_camera);
        }
    }

    // The camera goes from view to view, as it does when the user changes the projection or the navigation method.
    void OpenShapeView() {
        KeepCamera();
        m_shape = m_exploreOnly ? &ShapeKinds[ExploreKind]
                                : &ShapeKinds[bench::Below(m_random, static_cast<int>(std::size(ShapeKinds)))];
        viewer::ViewSpec view;
        view.width = bench::SoakViewWidth;
        view.height = bench::SoakViewHeight;
        view.camera = CameraAt(m_camera);
        view.bounds = {{-2, -2, -2}, {2, 2, 2}};
        view.navMethod = m_shape->navMethod;
        view.preferences = viewer::PreferenceValues{{"Model Viewer/display_rotation_center", true}};
        m_viewer->SetView(view);
    }

    void OpenPage() {
        KeepCamera();
        m_shape = nullptr;
        viewer::ViewSpec view;
        view.kind = PageKinds[bench::Below(m_random, static_cast<int>(std::size(PageKinds)))];
        view.width = bench::SoakViewWidth;
        view.height = bench::SoakViewHeight;
        m_viewer->SetView(view);
    }

    [[nodiscard]] viewer::CameraSpec CameraAt(const dg::Location& location) const {
        const bool orthographic = m_shape->orthographic;
        const double width = orthographic ? HomeWidth : 0.6 * HomeWidth / HomeDistance;
        const double height = width * bench::SoakViewHeight / bench::SoakViewWidth;
        return {orthographic, -width / 2, width / 2, -height / 2, height / 2, 1, location};
    }

    // Zooms and flights would carry the camera away for good. It looks at the model again from the distance it began
    // with, and with the window it began with. Its axes stay as the gestures left them: what they have lost, they keep.
    void BringBack() {
        m_touchesFromHome = 0;
        if (m_shape == nullptr) {
            OpenPage();
            return;
        }
        KeepCamera();
        dg::Location& location = m_camera;
        dg::DPoint3D position;
        position += dg::DVec3(location.GetW()) * HomeDistance;
        location.SetPos(position);
        viewer::ViewChange change;
        change.camera = CameraAt(location);
        m_viewer->ChangeView(change);
        ++m_check.counts["camera brought back"];
    }

    void Report(const Memory& start, const Memory& end) const {
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - m_start;
        std::printf("%lld frames in %.1f s\n", static_cast<long long>(m_done), time.count());
        for (const auto& [name, count] : m_check.counts) {
            std::printf("  %-24s %lld\n", name.c_str(), static_cast<long long>(count));
        }
        std::printf("bytes in use: %lld after 5 %%, %lld at the end\n", static_cast<long long>(start.bytesInUse),
                    static_cast<long long>(end.bytesInUse));
        std::printf("resident bytes: %lld after 5 %%, %lld at the end\n", static_cast<long long>(start.resident),
                    static_cast<long long>(end.resident));
        std::printf("deviation of the camera's frame: %.3g at most, %.3g at the end\n", m_check.largestDeviation,
                    DeviationOf(m_camera));
    }

    void Judge(const Memory& start, const Memory& end) const {
        if (end.bytesInUse - start.bytesInUse > LargestGrowthBytes) {
            throw Fault("the memory in use has grown");
        }
        if (end.resident - start.resident > LargestResidentGrowthBytes) {
            throw Fault("the resident memory has grown");
        }
        for (const char* name : NeededCounts) {
            const auto found = m_check.counts.find(name);
            if (!m_exploreOnly && (found == m_check.counts.end() || found->second == 0)) {
                throw Fault(std::string("the run never came to: ") + name);
            }
        }
    }

    std::int64_t m_frames;
    bool m_exploreOnly;
    std::int64_t m_done = 0;
    std::mt19937 m_random;
    bench::SoakTouches m_touches;
    CallCheck m_check;
    dg::Location m_camera;               // as the latest shape view was left
    const ShapeKind* m_shape = nullptr;  // of the attached view; null when it is a page
    int m_touchesFromHome = 0;
    const viewer::HostSettings* m_settings = nullptr;
    viewer::ReferenceViewer* m_viewer = nullptr;  // of this chapter
    replay::ProgressBar* m_bar = nullptr;         // null when there is no terminal
    Memory m_memory{};                            // at the end of the last chapter
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App options("Sends millions of touch frames to the component and watches its memory and its cameras.");
    std::int64_t frames = 10'000'000;
    std::uint32_t seed = 1;
    options.add_option("--frames", frames, "how many frames")->check(CLI::PositiveNumber)->capture_default_str();
    options.add_option("--seed", seed, "what the touches are drawn with")->capture_default_str();
    bool exploreOnly = false;
    options.add_flag("--explore-only", exploreOnly,
                     "only looks around and flies, which never makes the camera's frame orthonormal again");
    CLI11_PARSE(options, argc, argv);
    Soak soak(frames, seed, exploreOnly);
    try {
        soak.Run();
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "touchnav-soak: after %lld frames: %s\n", static_cast<long long>(soak.GetFramesDone()),
                     fault.what());
        return 1;
    }
    return 0;
}
