// The picker answers clicks, the selector draws the band. The component sends no button-up at the end of a drag, so a
// band ends when the last finger lifts, or when nothing has dragged it for a while.
#include "viewer/ViewerWorkflows.h"

#include "host/dg/Conversion.h"
#include "host/workflow/ConstStrings.h"
#include "viewer/Picking.h"

namespace viewer {

using workflow::ConstStrings;

std::optional<std::size_t> PickScene::Pick(int x, int y) const {
    return camera != nullptr && model != nullptr ? PickPart(*camera, *model, x, y) : std::nullopt;
}

PickerWorkflow::PickerWorkflow(PickScene& scene) : SimpleWorkflow(du::Symbol("picker")), m_scene(scene) {
    SetPriority(PickPriority);
    for (const du::Symbol* type :
         {&ConstStrings::MsgClickLeft, &ConstStrings::MsgMouseRightDown, &ConstStrings::MsgMouseRightUp,
          &ConstStrings::MsgMouseMove, &ConstStrings::MsgSetMode}) {
        AddMsgTypeHandled(*type, true);
    }
}

bool PickerWorkflow::OnMsgClickLeft(int x, int y) {
    m_contextMenu.reset();
    m_scene.selected.clear();
    if (const std::optional<std::size_t> part = m_scene.Pick(x, y)) {
        m_scene.selected.push_back(*part);
    }
    return true;
}

bool PickerWorkflow::OnMsgMouseRightDown(int /*x*/, int /*y*/) {
    m_contextMenu.reset();
    m_rightDown = true;
    return true;
}

bool PickerWorkflow::OnMsgMouseRightUp(int x, int y) {
    if (!m_rightDown) {
        return false;
    }
    m_rightDown = false;
    m_contextMenu = ContextMenu{m_scene.Pick(x, y), dg::DPoint2D(x, y)};
    return true;
}

bool PickerWorkflow::OnMsgMouseMove(int x, int y) {
    m_preselected = m_preselectEnabled ? m_scene.Pick(x, y) : std::nullopt;
    return false;
}

bool PickerWorkflow::OnMsgMode(const du::Symbol& workflowName, const du::Symbol& mode,
                               const du::SmartPtr<du::RefCounted>& /*data*/, int value) {
    if (!(workflowName == GetName())) {
        return false;
    }
    if (mode == "enable_preselect") {
        m_preselectEnabled = value != 0;
        m_preselected.reset();
        return true;
    }
    return mode == "enable_geom_preselect";
}

void PickerWorkflow::Reset() noexcept {
    m_rightDown = false;
    m_preselected.reset();
    m_contextMenu.reset();
}

SelectorWorkflow::SelectorWorkflow(PickScene& scene) : SimpleWorkflow(du::Symbol("selector")), m_scene(scene) {
    SetPriority(PickPriority);
    for (const du::Symbol* type : {&ConstStrings::MsgMouseLeftDown, &ConstStrings::MsgMouseLeftDrag,
                                   &ConstStrings::MsgMouseLeftUp, &ConstStrings::MsgClickLeft}) {
        AddMsgTypeHandled(*type, true);
    }
}

bool SelectorWorkflow::OnMsgMouseLeftDown(int x, int y) {
    Finish();
    m_drag = Drag{{x, y, x, y}, false, m_now};
    return true;
}

bool SelectorWorkflow::OnMsgMouseLeftDrag(int x, int y) {
    if (!m_drag) {
        return false;
    }
    RubberBand& band = m_drag->band;
    band.x1 = x;
    band.y1 = y;
    m_drag->lastTime = m_now;
    m_drag->isBand = m_drag->isBand || dg::AbsoluteDifference(band.x1, band.x0) >= MinimumPx ||
                     dg::AbsoluteDifference(band.y1, band.y0) >= MinimumPx;
    return true;
}

bool SelectorWorkflow::OnMsgMouseLeftUp(int /*x*/, int /*y*/) {
    const bool wasDragging = m_drag.has_value();
    Finish();
    return wasDragging;
}

// The click itself is the picker's.
bool SelectorWorkflow::OnMsgClickLeft(int /*x*/, int /*y*/) {
    Reset();
    return false;
}

void SelectorWorkflow::Finish() {
    const std::optional<RubberBand> band = GetRubberBand();
    Reset();
    if (band && m_scene.camera != nullptr && m_scene.model != nullptr) {
        m_scene.selected = FindPartsInside(*m_scene.camera, *m_scene.model, *band);
    }
}

void SelectorWorkflow::Advance(std::int64_t now) {
    m_now = now;
    if (m_drag && dg::WrapSubtract(now, m_drag->lastTime) > IdleMs) {
        Finish();
    }
}

std::optional<RubberBand> SelectorWorkflow::GetRubberBand() const noexcept {
    return m_drag && m_drag->isBand ? std::optional(m_drag->band) : std::nullopt;
}

}  // namespace viewer
