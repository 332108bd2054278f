// The tick. Touch frames carry no host time, so the tick is the component's clock and its idle loop: it samples the
// spin velocity, gives the holds their chance, and ends a touch whose frames have stopped coming. The order is fixed:
// the holds see the touch before the silence clears it. Tested by tests/component/TimerTest.cpp.
#include "host/dg/Conversion.h"
#include "touch/TouchWorkflow.h"
#include "touch/shell/Boundary.h"

namespace touch {

bool TouchWorkflow::OnMsgTimer(long long now, long long interval) {
    return Guarded(*this, [&] {
        if (m_markupMode) {
            return false;
        }
        m_currentTime = now;
        m_timerInterval = interval;
        SampleSpinVelocity(interval);
        ProcessPressAndHold();
        ProcessThreeFingerHold();
        if (m_lastTouchTime > 0 && dg::WrapSubtract(m_currentTime, m_lastTouchTime) > SilenceMs && m_touchActive) {
            ResetTouchStates();
            m_touchActive = false;
        }
        return false;
    });
}

}  // namespace touch
