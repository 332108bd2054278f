// The texts of the status bar.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace viewer {

// A few slots of text. Writing a slot does not show it; a repaint shows all slots as they are then. Texts are written
// in place: once a slot has held a text of some length, writing one that is no longer allocates nothing.
class StatusBar {
public:
    static constexpr int SlotCount = 4;

    // False, and nothing is written, when there is no such slot.
    bool SetText(int slot, const std::string& text) {
        if (slot < 0 || slot >= SlotCount) {
            return false;
        }
        m_texts[static_cast<std::size_t>(slot)] = text;
        return true;
    }
    // Empty for a slot that does not exist.
    [[nodiscard]] std::string GetText(int slot) const {
        return slot < 0 || slot >= SlotCount ? std::string() : m_texts[static_cast<std::size_t>(slot)];
    }

    void Repaint() { m_shown = m_texts; }
    // The texts of the latest repaint, the empty ones left out, two blanks apart.
    [[nodiscard]] std::string GetShownText() const {
        std::string line;
        for (const std::string& text : m_shown) {
            line += line.empty() || text.empty() ? text : "  " + text;
        }
        return line;
    }

private:
    using Texts = std::array<std::string, SlotCount>;

    Texts m_texts;
    Texts m_shown;
};

}  // namespace viewer
