// One finger as a mouse. The echo exists for components that tell a touch's clicks from a mouse's by it; a toolkit that
// makes an echo of its own must then not be heard twice. Tested by tests/input/FeederMouseTest.cpp.
#include "input/MouseEcho.h"

#include "host/workflow/ConstStrings.h"
#include "input/Thresholds.h"

#include <algorithm>
#include <cmath>

namespace input {
namespace {

using workflow::ConstStrings;
using workflow::TouchRecord;

void Add(MouseEvents& echoes, const du::Symbol& type, const TouchRecord& record) noexcept {
    echoes.events.at(echoes.count++) = {&type, record.x, record.y};
}

}  // namespace

MouseEvents MouseEcho::Follow(const workflow::TouchFrame& frame, bool isCancelled) noexcept {
    MouseEvents echoes;
    for (const TouchRecord& record : frame.records) {
        if (record.id == -1) {
            continue;
        }
        if (m_finger.id == -1 && !m_hasOthers && (record.flags & workflow::TouchDown) != 0) {
            m_finger = record;
            m_isDragging = false;
            m_isJoined = false;
            Add(echoes, ConstStrings::MsgMouseMove, record);
            Add(echoes, ConstStrings::MsgMouseLeftDown, record);
        } else if (record.id == m_finger.id) {
            Move(record, isCancelled, echoes);
        }
    }
    // Fingers that stay when the first one lifts do not become the mouse.
    m_hasOthers = std::any_of(frame.records.begin(), frame.records.end(), [&](const TouchRecord& record) {
        return record.id != -1 && (record.flags & workflow::TouchUp) == 0 && record.id != m_finger.id;
    });
    m_isJoined = m_isJoined || m_hasOthers;
    return echoes;
}

void MouseEcho::Move(const TouchRecord& record, bool isCancelled, MouseEvents& echoes) noexcept {
    const bool isAway = std::abs(static_cast<double>(record.x) - m_finger.x) > DragStartPx ||
                        std::abs(static_cast<double>(record.y) - m_finger.y) > DragStartPx;
    if (m_isDragging) {
        Add(echoes, ConstStrings::MsgMouseLeftDrag, record);
    } else if (isAway) {
        m_isDragging = true;
        Add(echoes, ConstStrings::MsgMouseInitLeftDrag, record);
    }
    if ((record.flags & workflow::TouchUp) == 0) {
        return;
    }
    Add(echoes, ConstStrings::MsgMouseLeftUp, record);
    if (!m_isDragging && !m_isJoined && !isCancelled) {
        Add(echoes, ConstStrings::MsgClickLeft, record);
    }
    m_finger = {};
}

bool MouseGate::Passes(const du::Symbol& type, bool isEcho) noexcept {
    const auto press = [&](Press& button) {
        button = isEcho ? Press::Unheard : Press::Heard;
        return !isEcho;
    };
    const auto follow = [&](Press& button, bool isOver) {
        const bool passes = button == Press::None ? !isEcho : button == Press::Heard;
        button = isOver ? Press::None : button;
        return passes;
    };
    if (type == ConstStrings::MsgMouseLeftDown) {
        return m_clickPasses = press(m_left);
    }
    if (type == ConstStrings::MsgMouseRightDown) {
        return press(m_right);
    }
    if (type == ConstStrings::MsgMouseLeftUp || type == ConstStrings::MsgMouseLeftDrag ||
        type == ConstStrings::MsgMouseInitLeftDrag) {
        return follow(m_left, type == ConstStrings::MsgMouseLeftUp);
    }
    if (type == ConstStrings::MsgMouseRightUp || type == ConstStrings::MsgMouseRightDrag ||
        type == ConstStrings::MsgMouseInitRightDrag) {
        return follow(m_right, type == ConstStrings::MsgMouseRightUp);
    }
    if (type == ConstStrings::MsgClickLeft || type == ConstStrings::MsgDoubleClickLeft) {
        return m_clickPasses && !(isEcho && m_left == Press::None);
    }
    return !isEcho;
}

}  // namespace input
