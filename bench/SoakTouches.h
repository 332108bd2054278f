// Touches for the soak: what a host sends while fingers land, move as hands do, and lift.
#pragma once

#include "replay/session/Session.h"

#include <cstdint>
#include <random>
#include <vector>

namespace bench {

// The size of the view that the fingers are on, in pixels.
inline constexpr int SoakViewWidth = 1280;
inline constexpr int SoakViewHeight = 800;

// One of 0 .. count - 1, the same on every machine.
[[nodiscard]] int Below(std::mt19937& random, int count);
// A number between -1 and 1.
[[nodiscard]] double Signed(std::mt19937& random);

// Makes one touch after the other, on clocks that run through. The kinds of touch come in random order, each as often
// as it is meant to among any hundred or so.
class SoakTouches {
public:
    explicit SoakTouches(std::mt19937& random) : m_random(random) {}

    // The frames of the next touch, the mouse messages that the system makes of it, and a tick every 10 ms, also for a
    // while after the touch.
    [[nodiscard]] std::vector<replay::Event> Next();

private:
    void AddFrame(const workflow::TouchFrame& frame, std::vector<replay::Event>& events);
    void AddPause(int milliseconds, std::vector<replay::Event>& events);
    void PassTo(std::int64_t now, std::vector<replay::Event>& events);

    std::mt19937& m_random;
    std::vector<int> m_deck;          // the kinds that are still to come
    std::int64_t m_now = 1000;        // host milliseconds
    std::int64_t m_lastTick = 1000;   // host milliseconds
    std::int32_t m_touchClock = 500;  // milliseconds of the touch clock at m_now
    std::int32_t m_nextId = 0;
};

}  // namespace bench
