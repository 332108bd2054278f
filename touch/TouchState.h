// One tracked finger.
#pragma once

#include <cstdint>

namespace touch {

// The kind of a finger's latest record.
enum TSType : std::int32_t {
    TSNone = 0,  // no event
    TSDown = 1,  // the finger went down
    TSMove = 2,  // it moved or rested on the screen
    TSUp = 3,    // it went up
};

inline constexpr std::int32_t FreeSlotId = -1;

// Positions are view pixels, times milliseconds of the touch records' own clock. Values of 0 or less carry no value in
// a record and never overwrite what is stored, so a stored 0 means "none yet".
struct TouchState {
    std::int32_t id = FreeSlotId;  // the host's contact id; FreeSlotId for a free slot
    std::int32_t startX = 0;       // from the first record of the finger
    std::int32_t startY = 0;       //
    std::int32_t currentX = 0;     // from the latest of the later records
    std::int32_t currentY = 0;     //
    std::int32_t startTime = 0;    // from the first record
    std::int32_t currentTime = 0;  // from the latest of the later records
    TSType state = TSNone;         // of the latest record
    bool isMoving = false;         // set once the finger was found away from its start; stays set until the reset

    // Stores a record. The first one gives a free slot its id and start values, later ones of the same finger give the
    // current values. A record of another finger changes nothing.
    constexpr void Update(std::int32_t fingerId, std::int32_t x, std::int32_t y, std::int32_t time,
                          TSType type) noexcept {
        if (id == FreeSlotId) {
            id = fingerId;
            Store(startX, x);
            Store(startY, y);
            Store(startTime, time);
        } else if (id == fingerId) {
            Store(currentX, x);
            Store(currentY, y);
            Store(currentTime, time);
        } else {
            return;
        }
        state = type;
    }

    friend constexpr bool operator==(const TouchState&, const TouchState&) = default;

private:
    static constexpr void Store(std::int32_t& field, std::int32_t value) noexcept {
        if (value > 0) {
            field = value;
        }
    }
};

// A place in view pixels.
struct PixelPosition {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

// Where the finger is: its current position when both coordinates have a value, else where it went down.
[[nodiscard]] constexpr PixelPosition GetPosition(const TouchState& finger) noexcept {
    if (finger.currentX != 0 && finger.currentY != 0) {
        return {finger.currentX, finger.currentY};
    }
    return {finger.startX, finger.startY};
}

}  // namespace touch
