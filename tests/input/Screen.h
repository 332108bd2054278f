// A screen of 1000 x 600 pixels, rows upward, before a feeder; and what the feeder sent, as texts.
#pragma once

#include "input/TouchFeeder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

using Texts = std::vector<std::string>;

inline constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinite = std::numeric_limits<double>::infinity();

// A frame as text: of each record the id, "v" down, "." move or "^" up, and the place; then the time: "0v100,200
// @1000".
inline std::string TextOf(const workflow::TouchFrame& frame) {
    std::ostringstream text;
    for (int i = 0; i < frame.count; ++i) {
        const workflow::TouchRecord& record = frame.records.at(static_cast<std::size_t>(i));
        const char* flag = record.flags == workflow::TouchDown ? "v" : record.flags == workflow::TouchUp ? "^" : ".";
        text << record.id << flag << record.x << ',' << record.y << ' ';
    }
    text << '@' << frame.records[0].time;
    return text.str();
}

class Screen : public input::FeederSink {
public:
    explicit Screen(const input::FeederOptions& options = {}) : feeder(*this, options) {
        feeder.SetGeometry({.width = 1000, .height = 600, .rowsDown = false});
    }

    void TakeFrame(const workflow::TouchFrame& frame) override {
        frames.push_back(frame);
        log.push_back(TextOf(frame));
    }
    void TakeTick(std::int64_t hostMs, std::int64_t interval) override {
        ticks.push_back(hostMs);
        log.push_back((std::ostringstream() << "tick " << hostMs << ' ' << interval).str());
    }
    void TakeMouse(const du::Symbol& type, std::int32_t x, std::int32_t y) override {
        mouse.push_back((std::ostringstream() << type.GetString() << ' ' << x << ',' << y).str());
        log.push_back(mouse.back());
    }

    // Pictures, 60 a second, for a while.
    Screen& Wait(double ms) {
        for (const double end = now + ms; now < end;) {
            now = std::min(end, now + 1000.0 / 60);
            feeder.Advance(now);
        }
        return *this;
    }
    // The frames in which fingers land or lift.
    [[nodiscard]] Texts Landmarks() const {
        Texts texts;
        for (const workflow::TouchFrame& frame : frames) {
            const std::string text = TextOf(frame);
            if (text.find_first_of("v^") != std::string::npos) {
                texts.push_back(text);
            }
        }
        return texts;
    }
    // The horizontal places of the first finger, frame by frame.
    [[nodiscard]] std::vector<int> Columns() const {
        std::vector<int> columns;
        for (const workflow::TouchFrame& frame : frames) {
            columns.push_back(frame.records[0].x);
        }
        return columns;
    }

    input::TouchFeeder feeder;
    std::vector<workflow::TouchFrame> frames;
    std::vector<std::int64_t> ticks;
    Texts mouse;
    Texts log;
    double now = 0;
};

}  // namespace tests
