// Fingers that behave as those of people do: they come down together or one after the other, in one hand or two, rest,
// creep, sweep, pinch, turn and lift. They take a generated session to where real gestures happen.
#pragma once

#include "fuzz/Choices.h"
#include "host/workflow/TouchFrame.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fuzz {

class PlausibleHand {
public:
    [[nodiscard]] bool IsUp() const { return m_fingers.empty(); }

    // These take effect with the next frame. Fingers may come down beside those that are down already.
    void PutDown(Choices& choices);
    void ChooseMotion(Choices& choices);
    void LiftAll();
    void LiftOne(Choices& choices);

    // The next frame, so many milliseconds of the touch clock after the one before.
    workflow::TouchFrame MakeFrame(std::int32_t milliseconds);

private:
    enum class Motion { Rest, Creep, Sweep, Apart, Together, Turn, Fly, Jump };

    struct Finger {
        std::int32_t id;
        double x;
        double y;
        std::int32_t flags;
    };

    void Advance(Finger& finger, double centerX, double centerY) const;

    std::vector<Finger> m_fingers;
    Motion m_motion = Motion::Rest;
    double m_stepX = 0;  // pixels a frame
    double m_stepY = 0;
    std::int32_t m_nextId = 0;
    std::int32_t m_time = 1000;
};

}  // namespace fuzz
