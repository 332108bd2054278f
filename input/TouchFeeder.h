// Contacts in, frames out: what a toolkit says of fingers becomes the touch frames and ticks that a component wants.
//
//     input::TouchFeeder feeder(sink);
//     feeder.SetGeometry({.width = 1280, .height = 800, .pixelsPerUnit = 2});
//     feeder.Down(pointer, x, y, timeStamp);   // Move, Up, Cancel: as they come
//     feeder.Advance(now);                     // once a picture, before it is drawn
//
// docs/FEEDER.md tells what each input does.
#pragma once

#include "host/workflow/Msg.h"
#include "input/ContactQueue.h"
#include "input/FeederSink.h"
#include "input/FrameMaker.h"
#include "input/Geometry.h"
#include "input/MouseEcho.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

namespace input {

struct FeederOptions {
    Feeding feeding = Feeding::FixedStep;
    RecordIds ids = RecordIds::Numbered;
    bool mouseEcho = false;                 // whether the sink gets the echo of each touch
    std::int64_t hostClockStartMs = 1000;   // the first tick's host time
    std::int32_t touchClockStartMs = 1000;  // the record time of a finger that lands then; at least 1
    // The toolkit's time of the first tick; not finite: that of the first landing, or the tick after those till then.
    double firstTickMs = std::numeric_limits<double>::quiet_NaN();
};

// Reads no clock: times are what the toolkit says, in milliseconds. Those of contacts may have another origin than
// those of Advance. Every double is defined: a time that is not finite is that of the report before, one that runs far
// back or ahead begins anew where the feeder's clock is, a coordinate that is not a number is the contact's last one.
//
// Only Advance calls the sink. The sink may call any operation of the feeder; Advance then does nothing. One thread.
class TouchFeeder {
public:
    // The sink is not owned and outlives the feeder.
    explicit TouchFeeder(FeederSink& sink, const FeederOptions& options = {});
    TouchFeeder(const TouchFeeder&) = delete;
    TouchFeeder& operator=(const TouchFeeder&) = delete;

    // How coordinates that come from now on are read, and the view that frames are bounded by.
    void SetGeometry(const Geometry& geometry) noexcept { m_geometry = geometry; }
    [[nodiscard]] const Geometry& GetGeometry() const noexcept { return m_geometry; }

    // A contact lands, in the toolkit's coordinates. If it has landed already its lift was lost: it lifts where it was.
    // The eleventh contact is dropped, and all that is said of it until it lands again.
    void Down(std::int64_t contact, double x, double y, double timeMs);
    // What did not land is ignored, here and below: pointers hover, and toolkits go on about contacts that were
    // dropped.
    void Move(std::int64_t contact, double x, double y, double timeMs);
    void Up(std::int64_t contact, double x, double y, double timeMs);
    // The toolkit no longer knows of a contact: it lifts where it was.
    void Lost(std::int64_t contact, double timeMs);
    // The system takes a contact away: it lifts where it was, without a tap, a click or coasting.
    void Cancel(std::int64_t contact, double timeMs);
    // All of them: the window was left, or something else is to follow the fingers.
    void CancelAll();
    // The screen is gone: no frame lifts the fingers, and the component ends the touch for its silence.
    void ForgetAll() noexcept;

    // The host's time is `nowMs`; sends all that is due. To be called regularly, also without contacts: ticks are the
    // component's clock. A time that is not finite, or runs back, passes none.
    void Advance(double nowMs);

    // The message that a mouse event of the toolkit is, in view pixels; none if it is the system's own echo of a touch
    // and the feeder makes the echo. Without an echo of the feeder's everything passes: components know echoes.
    [[nodiscard]] std::optional<workflow::MouseMsg> Mouse(const du::Symbol& type, double x, double y, short modifiers);

    // The contacts that are down, as far as the toolkit has said.
    [[nodiscard]] std::size_t GetContactCount() const noexcept { return m_queue.GetContactCount(); }

private:
    bool Step();
    void SendTick();
    void SendFrame(const std::optional<MadeFrame>& made);
    void SendEchoes();
    [[nodiscard]] bool IsTouched() const noexcept;

    FeederSink& m_sink;
    FeederOptions m_options;
    Geometry m_geometry;
    ContactQueue m_queue;
    FrameMaker m_frames;
    MouseEcho m_echo;
    MouseGate m_gate;
    MouseEvents m_lateEchoes;               // of the latest frame: they follow the next message
    std::int64_t m_clock = -StepUs;         // the latest step, in microseconds from the first
    std::optional<std::int64_t> m_touched;  // the latest frame
    std::optional<double> m_nowMs;          // of the latest Advance
    bool m_isAdvancing = false;
};

}  // namespace input
