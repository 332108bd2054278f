// The viewer's own workflows: they do what the mouse messages ask, whoever sent them.
#pragma once

#include "host/dg/Camera3D.h"
#include "host/dg/Point.h"
#include "host/workflow/SimpleWorkflow.h"
#include "scene/Model.h"
#include "viewer/ViewSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace viewer {

// What the workflows pick from, and what is picked. The viewer keeps it up to date.
struct PickScene {
    const dg::Camera3D* camera = nullptr;       // of the attached shape view; null when there is none
    std::shared_ptr<const scene::Model> model;  // null for nothing
    std::vector<std::size_t> selected;          // indices of the model's parts, in the order of selection

    // The part under a pixel.
    [[nodiscard]] std::optional<std::size_t> Pick(int x, int y) const;
};

// The rank of both workflows, below that of touch navigation.
inline constexpr unsigned int PickPriority = 100;

// The context actions that a right click opened.
struct ContextMenu {
    std::optional<std::size_t> part;  // none: those of the view
    dg::DPoint2D at;                  // view pixels
};

// The workflow "picker": a click selects the part under it in place of what was selected, and nothing where there is no
// part; a right button that goes up again opens the context actions of the part under it; a move highlights the part
// under it ahead of a click, as long as the mode message "enable_preselect" has not switched that off. The finer
// "enable_geom_preselect" is understood, but the faces and edges of a part are never highlighted.
class PickerWorkflow final : public workflow::SimpleWorkflow {
public:
    explicit PickerWorkflow(PickScene& scene);

    bool OnMsgClickLeft(int x, int y) override;
    bool OnMsgMouseRightDown(int x, int y) override;
    bool OnMsgMouseRightUp(int x, int y) override;
    bool OnMsgMouseMove(int x, int y) override;
    bool OnMsgMode(const du::Symbol& workflowName, const du::Symbol& mode, const du::SmartPtr<du::RefCounted>& data,
                   int value) override;

    // Forgets what was under an earlier pointer: the scene has changed.
    void Reset() noexcept;
    void CloseContextMenu() noexcept { m_contextMenu.reset(); }
    [[nodiscard]] const std::optional<ContextMenu>& GetContextMenu() const noexcept { return m_contextMenu; }
    // The part that is highlighted ahead of a click.
    [[nodiscard]] std::optional<std::size_t> GetPreselected() const noexcept { return m_preselected; }

private:
    PickScene& m_scene;
    bool m_preselectEnabled = true;
    bool m_rightDown = false;
    std::optional<std::size_t> m_preselected;
    std::optional<ContextMenu> m_contextMenu;
};

// The workflow "selector": a left button that goes down and is dragged draws a band, and the parts that lie inside it
// become selected, in place of what was selected, when the drag ends. A drag by touch has no message for its end: it
// ends when the viewer reports the end of the touch, when the next button goes down, or after half a second without a
// drag. A click means that there was no drag.
class SelectorWorkflow final : public workflow::SimpleWorkflow {
public:
    explicit SelectorWorkflow(PickScene& scene);

    bool OnMsgMouseLeftDown(int x, int y) override;
    bool OnMsgMouseLeftDrag(int x, int y) override;
    bool OnMsgMouseLeftUp(int x, int y) override;
    bool OnMsgClickLeft(int x, int y) override;

    // The drag is over: selects what lies inside the band, if there is one.
    void Finish();
    // Drops the band and selects nothing.
    void Reset() noexcept { m_drag.reset(); }
    // A tick of the viewer.
    void Advance(std::int64_t now);
    // The band that is being drawn.
    [[nodiscard]] std::optional<RubberBand> GetRubberBand() const noexcept;

private:
    static constexpr std::int64_t IdleMs = 500;    // of host time without a drag; more ends it
    static constexpr std::uint32_t MinimumPx = 4;  // on one axis; less is no band

    struct Drag {
        RubberBand band;
        bool isBand = false;
        std::int64_t lastTime = 0;  // host ms of the last message
    };

    PickScene& m_scene;
    std::optional<Drag> m_drag;
    std::int64_t m_now = 0;
};

}  // namespace viewer
