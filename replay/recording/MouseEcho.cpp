// Only the first finger of a touch is a mouse to the system. A finger that stays when the first one lifts does not
// become one; the next that lands alone does.
#include "replay/recording/MouseEcho.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>
#include <variant>
#include <vector>

namespace replay {

namespace {

constexpr double DragStartPx = 4;  // per axis; more begins a drag

// The finger that the system takes for the mouse.
class EchoPointer {
public:
    // The messages that a touch frame brings about.
    std::vector<Event> Follow(const workflow::TouchFrame& frame) {
        std::vector<Event> echoes;
        for (const workflow::TouchRecord& record : frame.records) {
            if (record.id == -1) {
                continue;
            }
            if (m_finger.id == -1 && m_others == 0 && (record.flags & workflow::TouchDown) != 0) {
                m_finger = record;
                m_dragging = false;
                m_joined = false;
                echoes.emplace_back(MouseEvent{"MsgMouseMove", record.x, record.y});
                echoes.emplace_back(MouseEvent{"MsgMouseLeftDown", record.x, record.y});
            } else if (record.id == m_finger.id) {
                Move(record, echoes);
            }
        }
        CountOthers(frame);
        m_joined = m_joined || m_others > 0;
        return echoes;
    }

private:
    void Move(const workflow::TouchRecord& record, std::vector<Event>& echoes) {
        const bool away = std::abs(static_cast<double>(record.x) - m_finger.x) > DragStartPx ||
                          std::abs(static_cast<double>(record.y) - m_finger.y) > DragStartPx;
        if (m_dragging) {
            echoes.emplace_back(MouseEvent{"MsgMouseLeftDrag", record.x, record.y});
        } else if (away) {
            m_dragging = true;
            echoes.emplace_back(MouseEvent{"MsgMouseInitLeftDrag", record.x, record.y});
        }
        if ((record.flags & workflow::TouchUp) != 0) {
            echoes.emplace_back(MouseEvent{"MsgMouseLeftUp", record.x, record.y});
            if (!m_dragging && !m_joined) {
                echoes.emplace_back(MouseEvent{"MsgClickLeft", record.x, record.y});
            }
            m_finger = {};
        }
    }

    // Fingers that stay when the first one lifts do not become the mouse.
    void CountOthers(const workflow::TouchFrame& frame) {
        m_others = std::count_if(frame.records.begin(), frame.records.end(), [&](const workflow::TouchRecord& record) {
            return record.id != -1 && (record.flags & workflow::TouchUp) == 0 && record.id != m_finger.id;
        });
    }

    workflow::TouchRecord m_finger;  // where and as what it landed; id -1 while there is none
    bool m_dragging = false;
    bool m_joined = false;        // by another finger while it was down
    std::ptrdiff_t m_others = 0;  // fingers that are down beside it
};

}  // namespace

void AddMouseEcho(Session& session) {
    EchoPointer pointer;
    std::vector<Event> events;
    std::vector<Event> late;
    for (Event& event : session.events) {
        std::vector<Event> echoes;
        if (const auto* touch = std::get_if<TouchEvent>(&event)) {
            echoes = pointer.Follow(touch->frame);
        }
        events.push_back(std::move(event));
        std::move(late.begin(), late.end(), std::back_inserter(events));
        late = std::move(echoes);
    }
    std::move(late.begin(), late.end(), std::back_inserter(events));
    session.events = std::move(events);
}

}  // namespace replay
