// The mouse messages that a system makes of a touch, and which of a toolkit's own mouse events are such echoes.
#pragma once

#include "host/du/Symbol.h"
#include "host/workflow/TouchFrame.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <tuple>

namespace input {

struct MouseEvent {
    const du::Symbol* type = nullptr;  // one of workflow::ConstStrings
    std::int32_t x = 0;                // view pixels
    std::int32_t y = 0;
};

// What one frame brings about, in order: at most two for each of its records, as ids may stand in it twice.
struct MouseEvents {
    std::array<MouseEvent, 2 * std::tuple_size_v<decltype(workflow::TouchFrame::records)>> events{};
    std::size_t count = 0;
};

// Follows the first finger of each touch: the pointer moves there and the left button goes down, is dragged once the
// finger has left its place, and goes up, with a click if it was never dragged, no other finger joined it and the touch
// was not cancelled.
class MouseEcho {
public:
    [[nodiscard]] MouseEvents Follow(const workflow::TouchFrame& frame, bool isCancelled) noexcept;
    void Clear() noexcept { *this = {}; }

private:
    void Move(const workflow::TouchRecord& record, bool isCancelled, MouseEvents& echoes) noexcept;

    workflow::TouchRecord m_finger;  // where and as what it landed; id -1 while there is none
    bool m_isDragging = false;
    bool m_isJoined = false;   // by another finger while it was down
    bool m_hasOthers = false;  // fingers that are down beside it
};

// Lets a toolkit's mouse events through that are no echoes of a touch. A button that went down before the touch comes
// up again, and one that went down in it stays unheard until it is up.
class MouseGate {
public:
    // Whether an event of this type may go on; `isEcho` tells that there is a touch, or was one just now.
    [[nodiscard]] bool Passes(const du::Symbol& type, bool isEcho) noexcept;

private:
    enum class Press : std::uint8_t { None, Heard, Unheard };

    Press m_left = Press::None;
    Press m_right = Press::None;
    bool m_clickPasses = true;  // whether the latest left press did
};

}  // namespace input
