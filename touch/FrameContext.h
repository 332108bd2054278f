// What holds only while a touch frame is processed.
#pragma once

#include "host/hxk/View.h"

#include <cassert>

namespace touch {

// The view that a frame is about, and whether one of its fingers has lifted. A host call in the middle of a frame may
// give the workflow another view, or assign it a workflow that has none; the frame still ends on the view on which it
// began. It is no part of a workflow's value: a copy is not in the middle of a frame. Not owning: who begins a frame
// holds its view.
class FrameContext {
    struct Frame {
        hxk::ShapeView* shapeView = nullptr;
        hxk::View2D* page = nullptr;
        bool hasLift = false;
    };

public:
    FrameContext() noexcept = default;
    FrameContext(const FrameContext& /*other*/) noexcept {}
    FrameContext& operator=(const FrameContext& /*other*/) noexcept { return *this; }
    ~FrameContext() = default;

    // Whether a frame for a 3D view is being processed.
    [[nodiscard]] bool HasShapeView() const noexcept { return m_frame.shapeView != nullptr; }
    // The frame's view. Only inside a frame for a 3D view, or for a 2D view.
    [[nodiscard]] hxk::ShapeView& GetShapeView() const noexcept {
        assert(m_frame.shapeView != nullptr);
        return *m_frame.shapeView;
    }
    [[nodiscard]] hxk::View2D& GetPage() const noexcept {
        assert(m_frame.page != nullptr);
        return *m_frame.page;
    }
    // Whether a finger went up on this frame, which then moves nothing.
    [[nodiscard]] bool HasLift() const noexcept { return m_frame.hasLift; }
    void SetLift(bool hasLift) noexcept { m_frame.hasLift = hasLift; }

    // One frame, for one view at most. Frames nest when the host delivers one in the middle of another.
    class Scope {
    public:
        Scope(FrameContext& context, hxk::ShapeView* shapeView, hxk::View2D* page) noexcept
            : m_context(context), m_outer(context.m_frame) {
            context.m_frame = {shapeView, page, false};
        }
        ~Scope() { m_context.m_frame = m_outer; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        FrameContext& m_context;
        Frame m_outer;
    };

private:
    Frame m_frame;
};

}  // namespace touch
