// Elements of finger lists that are not in use, kept so that no touch allocates.
#pragma once

#include "touch/TouchState.h"

#include <list>

namespace touch {

// Lists take their elements here and give them back. What is spare is no part of a workflow's value: a copy has none,
// and an assignment keeps its own.
class FingerPool {
public:
    using Fingers = std::list<TouchState>;

    FingerPool() = default;
    FingerPool(const FingerPool& /*other*/) {}
    FingerPool& operator=(const FingerPool& /*other*/) { return *this; }
    ~FingerPool() = default;

    // Puts a finger at the end of a list. Allocates, and may throw, only when there is no spare element.
    void Append(Fingers& fingers, const TouchState& state) {
        if (m_spare.empty()) {
            m_spare.emplace_back();
        }
        m_spare.front() = state;
        fingers.splice(fingers.end(), m_spare, m_spare.begin());
    }
    // Takes one finger out of a list.
    void Remove(Fingers& fingers, Fingers::const_iterator finger) noexcept {
        m_spare.splice(m_spare.end(), fingers, finger);
    }
    // Empties a list.
    void RemoveAll(Fingers& fingers) noexcept { m_spare.splice(m_spare.end(), fingers); }

private:
    Fingers m_spare;
};

}  // namespace touch
