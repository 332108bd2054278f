// Taps. Decides, when a finger is lifted, whether the touch was a click (one finger, short and still) or a switch of
// the mode (two fingers, where the switch for it is on). The click goes out as a left click and comes back to this
// workflow, which lets it pass once. Tested by tests/component/TapsTest.cpp.
#include "host/workflow/ConstStrings.h"
#include "touch/TouchWorkflow.h"
#include "touch/tracking/FingerMotion.h"

#include <algorithm>

namespace touch {
namespace {

// A finger without a later position has not moved.
bool HasMoved(TouchState& finger) {
    return finger.currentX != 0 && finger.currentY != 0 && MarkIfMoving(finger, finger.currentX, finger.currentY);
}

}  // namespace

bool TouchWorkflow::ProcessTap() {
    TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger == nullptr || finger->startTime == 0 || GetDuration(*finger) >= TapMs || HasMoved(*finger)) {
        return false;
    }
    // Delivery of the messages may change the slots.
    const int x = finger->currentX;
    const int y = finger->currentY;
    m_tapClickPending = true;
    m_gesture = GestureTap;
    const bool guarded = GetPreselectGuard();
    try {
        if (guarded) {
            SendPickerPreselect(0);
            SendMouseMsg(workflow::ConstStrings::MsgMouseMove, x, y);
        }
        SendMouseMsg(workflow::ConstStrings::MsgClickLeft, x, y);
    } catch (...) {
        if (guarded) {
            SendPickerPreselect(1);  // or the picker would not preselect until the next tap
        }
        throw;
    }
    // Asked anew: the click may have changed it.
    if (GetPreselectGuard()) {
        SendPickerPreselect(1);
    }
    return true;
}

void TouchWorkflow::SendPickerPreselect(int value) {
    const du::Symbol picker("picker");
    SendModeMessage(picker, du::Symbol("enable_preselect"), value, nullptr);
    SendModeMessage(picker, du::Symbol("enable_geom_preselect"), value, nullptr);
}

// The table fills from the front and is cleared as a whole, so that two taken slots are the first two.
bool TouchWorkflow::ProcessTwoFingerTap() {
    const auto isTaken = [](const TouchState& slot) { return slot.id != FreeSlotId; };
    if (!m_twoFingerTapModeChange || std::count_if(m_touchStates.begin(), m_touchStates.end(), isTaken) != 2) {
        return false;
    }
    TouchState& first = m_touchStates[0];
    TouchState& second = m_touchStates[1];
    if (HasMoved(first) || HasMoved(second)) {
        return false;
    }
    if (GetDuration(first) >= TwoFingerTapMs || GetDuration(second) >= TwoFingerTapMs) {
        return false;
    }
    if (IsModeSwitchable()) {
        m_navigateMode = !m_navigateMode;
    }
    SetStatusBarMessage();
    return true;
}

bool TouchWorkflow::IsModeSwitchable() const {
    const du::SmartPtr<hxk::View> view = GetView();  // held: a view that is asked may detach itself
    return !view || !(view->IsATypeOf(hxk::DrawingView::CLASS_TYPE) || view->IsATypeOf(hxk::ImageView::CLASS_TYPE));
}

}  // namespace touch
