// The status text and the sender of mouse messages. Decides what the status bar says while the user works by touch: the
// name of the current mode. Tested by tests/component/ModesTest.cpp.
#include "host/du/Localizer.h"
#include "host/workflow/Msg.h"
#include "touch/TouchWorkflow.h"
#include "touch/shell/Boundary.h"

namespace touch {
namespace {

constexpr int StatusSlot = 1;

}  // namespace

bool TouchWorkflow::OnMsgUpdateStatusBar() {
    if (!m_touchSeen) {
        return false;
    }
    return Guarded(*this, [&] {
        SetStatusBarMessage();
        UpdateStatusMessage();
        return true;
    });
}

void TouchWorkflow::SetStatusBarMessage() {
    const du::Localizer texts("hxbase:hxmodulesStrings");
    const char* key = m_navigateMode ? "TouchNavigateMode" : "TouchMultiSelectMode";
    SetStatusMessage(StatusSlot, texts.LocalizeMessage(key, du::Localizer::ReturnKey));
    UpdateStatusMessage();
}

void TouchWorkflow::SendMouseMsg(du::Symbol type, int x, int y) {
    SendMessage(workflow::MouseMsg(type, x, y, 0));
}

}  // namespace touch
