// The view that a frame is about.
#pragma once

#include <utility>

namespace touch {

// Points to a view for as long as a frame for it is processed. A host call in the middle of a frame may give the
// workflow another view, or assign it a workflow that has none; the frame still ends on the view on which it began.
// It is no part of a workflow's value: a copy is not in the middle of a frame. Not owning: who sets it holds the view.
template <class View>
class FrameView {
public:
    FrameView() noexcept = default;
    FrameView(const FrameView& /*other*/) noexcept {}
    FrameView& operator=(const FrameView& /*other*/) noexcept { return *this; }
    ~FrameView() = default;

    View* Get() const noexcept { return m_view; }
    View* operator->() const noexcept { return m_view; }

    // Sets the view for its own life. Frames nest when the host delivers one in the middle of another.
    class Scope {
    public:
        Scope(FrameView& target, View* view) noexcept : m_target(target), m_outer(std::exchange(target.m_view, view)) {}
        ~Scope() { m_target.m_view = m_outer; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        FrameView& m_target;
        View* m_outer;
    };

private:
    View* m_view = nullptr;
};

}  // namespace touch
