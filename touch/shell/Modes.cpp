// Modes and preferences: what the host switches from outside. Decides when markup mode is on, in which touch does not
// navigate, and whether the spin-centre markup exists. Tested by tests/component/ModesTest.cpp.
#include "touch/TouchWorkflow.h"
#include "touch/markup/SpinCenterMarkup.h"
#include "touch/shell/Boundary.h"

namespace touch {

bool TouchWorkflow::OnMsgMode(const du::Symbol& workflowName, const du::Symbol& mode,
                              const du::SmartPtr<du::RefCounted>& data, int /*value*/) {
    return Guarded(*this, [&] {
        // Preferences are the host's, not one workflow's: they are taken whoever they are addressed to.
        if (mode == "update_preferences") {
            const du::SmartPtr<hxk::Preferences> preferences(dynamic_cast<hxk::Preferences*>(data.Get()));
            if (preferences) {
                ApplyPreferences(preferences);
            }
        }
        if (workflowName != GetName()) {
            return false;
        }
        if (mode == "enter_markup_mode") {
            m_markupMode = true;
        } else if (mode == "leave_markup_mode") {
            m_markupMode = false;
        }
        return false;
    });
}

void TouchWorkflow::SetView(const du::SmartPtr<hxk::View>& view) {
    Guarded(*this, [&] {
        // A reference of its own: the caller's pointer may change while its view is asked.
        const du::SmartPtr<hxk::View> held(view.Get());
        SimpleWorkflow::SetView(held);
        if (!held) {
            return false;
        }
        du::SmartPtr<hxk::Preferences> preferences;
        held->GetDefaultPreferences(preferences);
        if (preferences) {
            ApplyPreferences(preferences);
        }
        return true;
    });
}

void TouchWorkflow::ApplyPreferences(const du::SmartPtr<hxk::Preferences>& preferences) {
    bool show = false;
    if (!preferences->GetBool(du::Symbol("Model Viewer/display_rotation_center"), show)) {
        return;
    }
    if (!show) {
        m_spinCenterMarkup = nullptr;
    } else if (!m_spinCenterMarkup) {
        AddSpinCenterMarkup();
    }
}

}  // namespace touch
