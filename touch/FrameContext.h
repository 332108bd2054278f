// What holds only while a touch frame is processed.
#pragma once

#include "host/hxk/View.h"

#include <cassert>
#include <utility>

namespace touch {

// The view that a frame is about, and whether one of its fingers has lifted. A host call in the middle of a frame may
// give the workflow another view, or assign it a workflow that has none; the frame still ends on the view on which it
// began. It is no part of a workflow's value: a copy is not in the middle of a frame. Not owning: who begins a frame
// holds its view.
class FrameContext {
    struct Views {
        hxk::ShapeView* shape = nullptr;
        hxk::View2D* page = nullptr;
    };

public:
    FrameContext() noexcept = default;
    FrameContext(const FrameContext& /*other*/) noexcept {}
    FrameContext& operator=(const FrameContext& /*other*/) noexcept { return *this; }
    ~FrameContext() = default;

    // Whether a frame for a 3D view is being processed.
    [[nodiscard]] bool HasShapeView() const noexcept { return m_views.shape != nullptr; }
    // The frame's view. Only inside a frame for a 3D view, or for a 2D view.
    [[nodiscard]] hxk::ShapeView& GetShapeView() const noexcept {
        assert(m_views.shape != nullptr);
        return *m_views.shape;
    }
    [[nodiscard]] hxk::View2D& GetPage() const noexcept {
        assert(m_views.page != nullptr);
        return *m_views.page;
    }
    // Whether a finger went up on this frame, which then moves nothing. Said anew before the processors run.
    [[nodiscard]] bool HasLift() const noexcept { return m_hasLift; }
    void SetLift(bool hasLift) noexcept { m_hasLift = hasLift; }

    // One frame, for one view at most. Frames nest when the host delivers one in the middle of another.
    class Scope {
    public:
        Scope(FrameContext& context, hxk::ShapeView* shapeView, hxk::View2D* page) noexcept
            : m_context(context), m_outer(std::exchange(context.m_views, {shapeView, page})) {}
        ~Scope() { m_context.m_views = m_outer; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        FrameContext& m_context;
        Views m_outer;
    };

private:
    Views m_views;
    bool m_hasLift = false;
};

}  // namespace touch
