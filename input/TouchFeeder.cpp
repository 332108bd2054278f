// Goes from step to step of the feeder's clock as far as reports and the host's time allow, and sends what is due in
// the order of the conventions: a tick, the echo of the frame before, the frame. Tested by
// tests/input/FeederClockTest.cpp and FeederFramesTest.cpp.
#include "input/TouchFeeder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace input {
namespace {

constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

// Sets a flag while it lives, also when a sink throws.
class Raised {
public:
    explicit Raised(bool& flag) noexcept : m_flag(flag) { m_flag = true; }
    ~Raised() { m_flag = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& m_flag;
};

}  // namespace

TouchFeeder::TouchFeeder(FeederSink& sink, const FeederOptions& options)
    : m_sink(sink),
      m_options(options),
      m_queue(options.feeding, options.firstTickMs),
      m_frames(options.feeding, options.ids, options.touchClockStartMs) {}

void TouchFeeder::Down(std::int64_t contact, double x, double y, double timeMs) {
    m_queue.Down(contact, PlaceOf(m_geometry, x, y), timeMs, m_clock);
}

void TouchFeeder::Move(std::int64_t contact, double x, double y, double timeMs) {
    m_queue.Move(contact, PlaceOf(m_geometry, x, y), timeMs, m_clock);
}

void TouchFeeder::Up(std::int64_t contact, double x, double y, double timeMs) {
    m_queue.Up(contact, PlaceOf(m_geometry, x, y), timeMs, m_clock);
}

void TouchFeeder::Lost(std::int64_t contact, double timeMs) {
    m_queue.Up(contact, {Unknown, Unknown}, timeMs, m_clock);
}

void TouchFeeder::Cancel(std::int64_t contact, double timeMs) {
    m_queue.Cancel(contact, timeMs, m_clock);
}

void TouchFeeder::CancelAll() {
    m_queue.CancelAll(m_clock);
}

void TouchFeeder::ForgetAll() noexcept {
    m_queue.Clear();
    m_frames.Clear();
    m_echo.Clear();
}

void TouchFeeder::Advance(double nowMs) {
    if (m_isAdvancing) {
        return;
    }
    const Raised advancing(m_isAdvancing);
    const double elapsedMs = m_nowMs && std::isfinite(nowMs) ? std::max(0.0, nowMs - *m_nowMs) : 0;
    m_nowMs = std::isfinite(nowMs) ? nowMs : m_nowMs;
    const double graceMs = static_cast<double>(GraceUs) / static_cast<double>(UsPerMs);
    m_queue.Pass(std::llround(std::min(elapsedMs, graceMs) * static_cast<double>(UsPerMs)));
    for (int steps = 0; steps < MaxStepsPerAdvance && Step(); ++steps) {
    }
}

bool TouchFeeder::Step() {
    if (m_queue.TakeOverflow()) {
        m_frames.CancelAll();
    }
    const std::int64_t horizon = m_queue.GetHorizon();
    const bool isEveryReport = m_options.feeding == Feeding::EveryReport;
    const auto isReportDueBefore = [&](std::int64_t time) {
        const ContactEvent* report = m_queue.GetFirst();
        return isEveryReport && report != nullptr && report->time < time && report->time <= horizon &&
               !m_frames.IsCancelling();
    };
    if (isReportDueBefore(m_clock + StepUs)) {
        SendFrame(m_frames.MakeReport(m_queue, m_geometry));
        return true;
    }
    if (m_clock + StepUs > horizon) {
        return false;
    }
    m_clock += StepUs;
    SendTick();
    if (!isEveryReport) {
        SendFrame(m_frames.MakeStep(m_queue, m_geometry, m_clock));
    } else if (!isReportDueBefore(m_clock + UsPerMs)) {  // a report of the same millisecond stands for a rest
        SendFrame(m_frames.MakeRest(m_geometry, m_clock));
    }
    return true;
}

void TouchFeeder::SendTick() {
    m_sink.TakeTick(m_options.hostClockStartMs + m_clock / UsPerMs, StepUs / UsPerMs);
    SendEchoes();
}

void TouchFeeder::SendFrame(const std::optional<MadeFrame>& made) {
    if (!made) {
        return;
    }
    m_touched = m_clock;
    m_sink.TakeFrame(made->frame);
    if (m_options.mouseEcho) {
        SendEchoes();
        m_lateEchoes = m_echo.Follow(made->frame, made->isCancelled);
    }
}

void TouchFeeder::SendEchoes() {
    if (m_lateEchoes.count == 0) {
        return;
    }
    const MouseEvents echoes = std::exchange(m_lateEchoes, {});
    for (std::size_t i = 0; i < echoes.count; ++i) {
        m_sink.TakeMouse(*echoes.events.at(i).type, echoes.events.at(i).x, echoes.events.at(i).y);
    }
}

std::optional<workflow::MouseMsg> TouchFeeder::Mouse(const du::Symbol& type, double x, double y, short modifiers) {
    if (!m_gate.Passes(type, m_options.mouseEcho && IsTouched())) {
        return std::nullopt;
    }
    const Place place = PlaceOf(m_geometry, std::isnan(x) ? 0 : x, std::isnan(y) ? 0 : y);
    const Pixel pixel = PixelOf(m_geometry, place);
    return workflow::MouseMsg(type, pixel.x, pixel.y, modifiers);
}

bool TouchFeeder::IsTouched() const noexcept {
    return m_queue.GetContactCount() > 0 || m_queue.GetFirst() != nullptr || m_frames.HasFingers() ||
           (m_touched && m_clock - *m_touched < EchoTailUs);
}

}  // namespace input
