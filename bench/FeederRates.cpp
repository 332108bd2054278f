// The same touch at different rates of events and pictures, fed to the component in the reference viewer. What the view
// shows in the end must not depend on the rates: the program prints the table, and fails where they differ by more than
// the bar. Beside it stands what comes of sending the latest event with every picture. In the end it counts what the
// feeder allocates while ten fingers move: nothing.
#include "host/dg/Functions.h"
#include "input/TouchFeeder.h"
#include "viewer/ReferenceViewer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <numbers>
#include <string>
#include <variant>
#include <vector>

namespace {

std::size_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace {

constexpr double SpreadBar = 0.05;  // of the largest result; exactly this much is within it
constexpr double TailMs = 800;      // pictures after the last event: longer than coasting and silence
constexpr std::array<double, 4> EventRates = {60, 90, 120, 240};
constexpr std::array<double, 4> PictureRates = {20, 30, 60, 120};
constexpr std::array<double, 3> Phases = {0, 1.0 / 3, 2.0 / 3};  // of a scan, at which the finger lands

// A touch as hands do it: places by the time since the landing, in view pixels.
struct Touch {
    std::string name;
    std::string unit;
    bool isPerspective;
    std::vector<std::function<input::Place(double)>> fingers;
    double durationMs;
    int repetitions;
    double pauseMs;  // between repetitions
    // The result, from the views before and after, and the messages that were sent.
    std::function<double(const dg::Location&, const dg::Location&, int)> result;
};

struct ScreenEvent {
    enum class Kind : std::uint8_t { Down, Move, Up };
    Kind kind;
    std::int64_t contact;
    input::Place place;
    double timeMs;
};

double TurnedDegrees(const dg::Location& from, const dg::Location& to) {
    double trace = 0;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            trace +=
                static_cast<double>(from.GetMat().m[row][column]) * static_cast<double>(to.GetMat().m[row][column]);
        }
    }
    return std::acos(std::clamp((trace - 1) / 2, -1.0, 1.0)) * 180 / std::numbers::pi;
}

// Slow at both ends, as hands are.
double Eased(double time, double duration) {
    const double share = std::clamp(time / duration, 0.0, 1.0);
    return share * share * (3 - 2 * share);
}

input::Place Around(double radius, double angle) {
    return {500 + radius * std::cos(angle), 300 + radius * std::sin(angle)};
}

std::vector<Touch> Touches() {
    const auto turned = [](const dg::Location& from, const dg::Location& to, int) { return TurnedDegrees(from, to); };
    const auto messages = [](const dg::Location&, const dg::Location&, int count) {
        return static_cast<double>(count);
    };
    const auto pinch = [](double side) {
        return [side](double t) { return input::Place{500 + side * (100 + 80 * Eased(t, 400)), 300}; };
    };
    const auto twist = [](double start) {
        return [start](double t) { return Around(200, start + 1.5 * Eased(t, 400)); };
    };
    return {
        {"pinch",
         "distance left of 9.8",
         true,
         {pinch(-1), pinch(1)},
         400,
         1,
         0,
         [](const dg::Location&, const dg::Location& to, int) { return to.GetPos().z; }},
        {"twist", "degrees", false, {twist(0.3), twist(0.3 + std::numbers::pi)}, 400, 1, 0, turned},
        {"flick",
         "degrees",
         false,
         {[](double t) {
             return input::Place{400 + 2 * t, 300};
         }},
         100,
         1,
         0,
         turned},
        {"hold",
         "right clicks",
         false,
         {[](double) {
             return input::Place{400, 300};
         }},
         1300,
         1,
         0,
         messages},
        {"double tap",
         "clicks",
         false,
         {[](double) {
             return input::Place{400, 300};
         }},
         100,
         2,
         150,
         messages},
    };
}

// What a screen reports that scans so often: a finger that rests is not reported again, and a lift is seen one scan
// after the last place.
std::vector<ScreenEvent> Report(const Touch& touch, double rate, double phase) {
    std::vector<ScreenEvent> events;
    const double scan = 1000 / rate;
    for (int repetition = 0; repetition < touch.repetitions; ++repetition) {
        const double begin = 1e6 + repetition * (touch.durationMs + touch.pauseMs);
        double time = phase * scan;
        for (bool isFirst = true; time <= touch.durationMs + 1e-6; time += scan, isFirst = false) {
            for (std::size_t i = 0; i < touch.fingers.size(); ++i) {
                const input::Place place = touch.fingers[i](time);
                const auto kind = isFirst ? ScreenEvent::Kind::Down : ScreenEvent::Kind::Move;
                if (isFirst || place != touch.fingers[i](time - scan)) {
                    events.push_back({kind, static_cast<std::int64_t>(i), place, begin + time});
                }
            }
        }
        for (std::size_t i = 0; i < touch.fingers.size(); ++i) {
            events.push_back(
                {ScreenEvent::Kind::Up, static_cast<std::int64_t>(i), touch.fingers[i](time - scan), begin + time});
        }
    }
    return events;
}

// The viewer's end of the feeder.
class ViewerSink : public input::FeederSink {
public:
    explicit ViewerSink(viewer::ReferenceViewer& viewer) : m_viewer(viewer) {}
    void TakeFrame(const workflow::TouchFrame& frame) override { m_viewer.Touch(frame); }
    void TakeTick(std::int64_t now, std::int64_t interval) override { m_viewer.Tick(now, interval); }
    void TakeMouse(const du::Symbol& /*type*/, std::int32_t /*x*/, std::int32_t /*y*/) override {}

private:
    viewer::ReferenceViewer& m_viewer;
};

class FixedStep {
public:
    explicit FixedStep(viewer::ReferenceViewer& viewer) : m_sink(viewer), m_feeder(m_sink) {
        m_feeder.SetGeometry({.width = 1000, .height = 600, .rowsDown = false});
    }
    void Take(const ScreenEvent& event) {
        switch (event.kind) {
        case ScreenEvent::Kind::Down: m_feeder.Down(event.contact, event.place.x, event.place.y, event.timeMs); break;
        case ScreenEvent::Kind::Move: m_feeder.Move(event.contact, event.place.x, event.place.y, event.timeMs); break;
        case ScreenEvent::Kind::Up: m_feeder.Up(event.contact, event.place.x, event.place.y, event.timeMs); break;
        }
    }
    void Picture(double now) { m_feeder.Advance(now); }

private:
    ViewerSink m_sink;
    input::TouchFeeder m_feeder;
};

// What is often done: the fingers as they are when the picture is drawn, and landings and lifts as they come.
class LatestEvent {
public:
    explicit LatestEvent(viewer::ReferenceViewer& viewer) : m_viewer(viewer) {}
    void Take(const ScreenEvent& event) {
        const auto id = static_cast<std::size_t>(event.contact);
        workflow::TouchRecord& finger = m_fingers.at(id);
        const bool isDown = event.kind == ScreenEvent::Kind::Down;
        finger = {static_cast<std::int32_t>(id), static_cast<std::int32_t>(std::lround(event.place.x)),
                  static_cast<std::int32_t>(std::lround(event.place.y)), 0,
                  isDown ? workflow::TouchDown : workflow::TouchMove};
        if (isDown) {
            Send(event.timeMs);
        } else if (event.kind == ScreenEvent::Kind::Up) {
            finger.flags = workflow::TouchUp;
            Send(event.timeMs);
            finger = {};
        }
        finger.flags = workflow::TouchMove;
    }
    void Picture(double now) {
        const auto ms = static_cast<std::int64_t>(now - 999000);
        m_viewer.Tick(ms, ms - m_last);
        m_last = ms;
        Send(now);
    }

private:
    void Send(double now) {
        workflow::TouchFrame frame;
        for (workflow::TouchRecord finger : m_fingers) {
            if (finger.id >= 0) {
                finger.time = static_cast<std::int32_t>(now - 999000);
                frame.records.at(static_cast<std::size_t>(frame.count++)) = finger;
            }
        }
        if (frame.count > 0) {
            m_viewer.Touch(frame);
        }
    }

    viewer::ReferenceViewer& m_viewer;
    std::array<workflow::TouchRecord, 2> m_fingers{};
    std::int64_t m_last = 0;
};

viewer::ViewSpec ViewOf(const Touch& touch) {
    viewer::ViewSpec view;
    view.width = 1000;
    view.height = 600;
    view.camera.orthographic = !touch.isPerspective;
    const double halfHeight = touch.isPerspective ? 0.3 : 6;
    view.camera.left = -halfHeight * 1000 / 600;
    view.camera.right = halfHeight * 1000 / 600;
    view.camera.bottom = -halfHeight;
    view.camera.top = halfHeight;
    view.camera.location.SetPos({0, 0, 9.8});
    view.bounds = {{-2, -2, -2}, {2, 2, 2}};
    return view;
}

template <class Feed>
double Play(const Touch& touch, double eventRate, double pictureRate, double phase) {
    viewer::ReferenceViewer viewer({});
    viewer.LoadComponent(TOUCHNAV_PLUGIN, "shapeview");
    viewer.SetView(ViewOf(touch));
    const dg::Location before = viewer.TakeSnapshot().camera.GetLocation();
    Feed feed(viewer);
    const std::vector<ScreenEvent> events = Report(touch, eventRate, phase);
    std::size_t next = 0;
    for (int picture = 0;; ++picture) {
        const double now = events.front().timeMs - 5 + picture * 1000 / pictureRate;
        for (; next < events.size() && events[next].timeMs <= now; ++next) {
            feed.Take(events[next]);
        }
        feed.Picture(now);
        if (now > events.back().timeMs + TailMs) {
            break;
        }
    }
    int messages = 0;
    for (const viewer::Call& call : viewer.GetRecorder().GetCalls()) {
        const auto* sent = std::get_if<viewer::SendMessageCall>(&call);
        messages += sent != nullptr && (sent->type == "MsgClickLeft" || sent->type == "MsgMouseRightDown") ? 1 : 0;
    }
    return touch.result(before, viewer.TakeSnapshot().camera.GetLocation(), messages);
}

struct Range {
    double low = 0;
    double high = 0;
    bool isEmpty = true;

    void Add(double value) {
        low = isEmpty ? value : std::min(low, value);
        high = isEmpty ? value : std::max(high, value);
        isEmpty = false;
    }
    [[nodiscard]] double Spread() const {
        const double largest = std::max(std::abs(low), std::abs(high));
        return largest > 0 ? (high - low) / largest : 0;
    }
};

// False when the results differ by more than the bar, or nothing came of the touch.
bool PrintTouch(const Touch& touch) {
    Range steps;
    Range latest;
    Range phases;
    std::printf("\n%s (%s)\n  events/s", touch.name.c_str(), touch.unit.c_str());
    for (const double pictures : PictureRates) {
        std::printf("%9.0f/s", pictures);
    }
    std::printf("\n");
    for (const double events : EventRates) {
        std::printf("  %8.0f", events);
        for (const double pictures : PictureRates) {
            const double value = Play<FixedStep>(touch, events, pictures, 0);
            steps.Add(value);
            latest.Add(Play<LatestEvent>(touch, events, pictures, 0));
            std::printf("%11.3f", value);
            for (const double phase : Phases) {
                phases.Add(Play<FixedStep>(touch, events, pictures, phase));
            }
        }
        std::printf("\n");
    }
    std::printf("  %.3f to %.3f, spread %.1f %%", steps.low, steps.high, 100 * steps.Spread());
    std::printf("; landing anywhere in a scan %.3f to %.3f", phases.low, phases.high);
    std::printf("; latest event a picture %.3f to %.3f\n", latest.low, latest.high);
    return steps.Spread() <= SpreadBar && steps.high != 0;
}

class CountingSink : public input::FeederSink {
public:
    void TakeFrame(const workflow::TouchFrame& /*frame*/) override { ++frames; }
    void TakeTick(std::int64_t /*now*/, std::int64_t /*interval*/) override {}
    void TakeMouse(const du::Symbol& /*type*/, std::int32_t /*x*/, std::int32_t /*y*/) override {}
    int frames = 0;
};

// Ten fingers that move, with 120 reports and 60 pictures a second. False when the feeder allocates.
bool PrintAllocations() {
    CountingSink sink;
    input::TouchFeeder feeder(sink, {.mouseEcho = true});
    feeder.SetGeometry({.width = 1000, .height = 600});
    for (std::int64_t id = 0; id < 10; ++id) {
        feeder.Down(id, 100.0 * static_cast<double>(id), 300, 0);
    }
    const std::size_t before = allocations;
    for (int report = 1; report <= 12000; ++report) {
        const double time = report * 1000.0 / 120;
        for (std::int64_t id = 0; id < 10; ++id) {
            feeder.Move(id, 100.0 * static_cast<double>(id) + report % 50, 300, time);
        }
        if (report % 2 == 0) {
            feeder.Advance(time);
        }
    }
    std::printf("\nten moving fingers: %zu allocations in %d frames\n", allocations - before, sink.frames);
    return allocations == before && sink.frames == 10001;
}

}  // namespace

int main() {
    bool isWithinBar = true;
    for (const Touch& touch : Touches()) {
        isWithinBar = PrintTouch(touch) && isWithinBar;
    }
    const bool allocatesNothing = PrintAllocations();
    std::printf("\n%s\n",
                isWithinBar ? "every spread is within the bar of 5 %" : "FAILED: a spread is above the bar of 5 %");
    return isWithinBar && allocatesNothing ? 0 : 1;
}
