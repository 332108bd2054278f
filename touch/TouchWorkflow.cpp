// Construction, copying and destruction, and the small operations that belong to no subsystem. Decides what a new
// workflow is registered for and what it reads once: switches and screen resolution.
// Tested by tests/component/TouchWorkflowTest.cpp.
#include "touch/TouchWorkflow.h"

#include "host/hxk/WorkflowManager.h"
#include "host/platform/Display.h"
#include "host/platform/Environment.h"
#include "host/workflow/ConstStrings.h"
#include "touch/markup/SpinCenterMarkup.h"
#include "touch/navigation/TouchGetBoundsEvent.h"
#include "touch/shell/Boundary.h"

#include <tuple>
#include <utility>

namespace touch {

using workflow::ConstStrings;

const du::Symbol TouchWorkflow::s_class("touch::TouchWorkflow");

TouchWorkflow::TouchWorkflow(const du::Symbol& name) : SimpleWorkflow(name) {
    AddMsgTypeHandled(ConstStrings::MsgTouch, true);
    AddMsgTypeHandled(ConstStrings::MsgUpdateStatusBar, true);
    SetPriority(hxk::WorkflowManager::TOUCHSCREEN_NAVIGATION);
    AddMsgTypeHandled(ConstStrings::MsgMouseLeftDown, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseInitLeftDrag, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseLeftDrag, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseLeftUp, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseInitRightDrag, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseRightDrag, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseInitMiddleDrag, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseMiddleDrag, true);
    AddMsgTypeHandled(ConstStrings::MsgMouseMove, true);
    AddMsgTypeHandled(ConstStrings::MsgClickLeft, true);
    AddMsgTypeHandled(ConstStrings::MsgDoubleClickLeft, true);
    AddMsgTypeHandled(ConstStrings::MsgTimer, true);
    AddMsgTypeHandled(ConstStrings::MsgSetMode, true);

    m_navigateMode = true;
    m_velocityTrackball.SetMode(Trackball::CenterWeighted);
    m_velocityTrackball.SetGain(VelocityTrackballGain);

    m_dontPan = platform::IsEnvironmentVariablePresent("HXAPP_DONTPAN");
    m_dontSpin = platform::IsEnvironmentVariablePresent("HXAPP_DONTSPIN");
    m_dontZoom = platform::IsEnvironmentVariablePresent("HXAPP_DONTZOOM");
    m_twoFingerTapModeChange = platform::IsEnvironmentVariablePresent("HXAPP_TWO_FINGER_TAP_TOUCH_MODE_CHANGE");
    m_twoHandsExplore = platform::IsEnvironmentVariablePresent("HXAPP_TOUCH_TWO_HANDS_EXPLORE");
    GetPPI();
}

TouchWorkflow::TouchWorkflow(const TouchWorkflow& other) = default;

// What is released may call back as it goes, so it goes last, when everything has been taken over.
TouchWorkflow& TouchWorkflow::operator=(const TouchWorkflow& other) {
    if (this == &other) {
        return *this;
    }
    Guarded(*this, [&] {
        const std::tuple released(GetView(), m_shapeView, m_view2D, m_spinCenterMarkup,
                                  du::SmartPtr<TouchGetBoundsEvent>(m_boundsEvent));
        TouchWorkflow copy(other);
        *this = std::move(copy);
        return true;
    });
    return *this;
}

TouchWorkflow& TouchWorkflow::operator=(TouchWorkflow&& copy) noexcept = default;

TouchWorkflow::~TouchWorkflow() = default;

bool TouchWorkflow::TraceMouseAndKeys() const {
    return false;
}

du::Symbol TouchWorkflow::GetObjectClass() const {
    return s_class;
}

void TouchWorkflow::GetPPI() {
    const platform::DeviceContext screen = platform::GetDC(nullptr);
    m_ppiX = platform::GetDeviceCaps(screen, platform::LogPixelsX);
    m_ppiY = platform::GetDeviceCaps(screen, platform::LogPixelsY);
    platform::ReleaseDC(nullptr, screen);
    if (m_ppiX == 0) {
        m_ppiX = DefaultPixelsPerInch;
    }
    if (m_ppiY == 0) {
        m_ppiY = DefaultPixelsPerInch;
    }
}

}  // namespace touch
