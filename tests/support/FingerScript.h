// Finger stories: fingers, clocks and messages told in the order in which they happen, played through the reference
// viewer with the plug-in loaded.
//
//     FingerScript s = FingerScript::OnShapeView();
//     s.Down(1, 400, 300).Tick(100).Up(1);
//     s.ExpectActions({"StopTransition", "MsgClickLeft 400 300 passed"});
//
// Host time and touch time go on together, but do not start from the same number. After every event of a story the
// invariants are checked.
#pragma once

#include "host/dg/Camera3D.h"
#include "tests/support/Invariants.h"
#include "touch/Inspection.h"
#include "viewer/ReferenceViewer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tests {

using Texts = std::vector<std::string>;

// Where a finger is, in view pixels.
struct Place {
    int id;
    int x;
    int y;
};

// 1000 x 600 pixels, a camera at (0, 0, 20) that looks along -Z, the model between -2 and 2 on every axis.
// Orthographic: 0.02 model units a pixel. Perspective: 0.001 a pixel on the plane at distance 1.
[[nodiscard]] viewer::ViewSpec OrthographicView();
[[nodiscard]] viewer::ViewSpec PerspectiveView();
// The perspective view with the navigation method "explore".
[[nodiscard]] viewer::ViewSpec ExploreView();
// 800 x 400 pixels, 16 model units wide, the middle at (3, 4, 0).
[[nodiscard]] viewer::ViewSpec PageView(const std::string& kind);

[[nodiscard]] viewer::HostSettings WithSwitch(const std::string& name);

class FingerScript {
public:
    // Opens a view and loads the plug-in; the clocks have just ticked.
    static FingerScript OnShapeView(const viewer::ViewSpec& view = OrthographicView(),
                                    const viewer::HostSettings& settings = {});
    static FingerScript On2DView(const std::string& kind = "drawingview", const viewer::HostSettings& settings = {});
    // Fails the test when a text came on the trace channel that was not announced, or an announced one did not come.
    ~FingerScript();
    FingerScript(const FingerScript&) = delete;
    FingerScript& operator=(const FingerScript&) = delete;

    // Fingers. Each sends one frame with a record for every finger that is down, the resting ones with the move bit, in
    // the order in which they came down. Without a place a finger goes up where it is.
    FingerScript& Down(int id, int x, int y) { return Down({{id, x, y}}); }
    FingerScript& Down(const std::vector<Place>& places);
    FingerScript& Move(int id, int x, int y) { return Move({{id, x, y}}); }
    FingerScript& Move(const std::vector<Place>& places);
    FingerScript& Up(int id) { return Up(std::vector<int>{id}); }
    FingerScript& Up(const std::vector<int>& ids);
    FingerScript& Rest();
    // A frame of up to ten records as it is given, with a count of its own; the fingers above know nothing of it.
    FingerScript& Frame(const std::vector<workflow::TouchRecord>& records, std::int32_t count);

    // One tick after a number of milliseconds.
    FingerScript& Tick(int milliseconds = 10);
    // Ticks of 10 ms without frames, and with one after each for the resting fingers.
    FingerScript& Wait(int milliseconds);
    FingerScript& Hold(int milliseconds);

    // Ends the touch by silence, holds three fingers until the mode is switched, lifts them, lets that touch end too,
    // and sets the mark.
    FingerScript& SwitchMode();

    FingerScript& Mouse(const std::string& type, int x = 1, int y = 1);
    FingerScript& Mode(const std::string& mode, const std::string& workflow = "touch");
    FingerScript& Preferences(const std::optional<viewer::PreferenceValues>& values,
                              const std::string& workflow = "touch");
    FingerScript& StatusBar();
    FingerScript& SetView(const std::optional<viewer::ViewSpec>& view);
    FingerScript& Change(const viewer::ViewChange& change);
    // The test has taken or let go references to what the component shares: those before the next touch count anew.
    FingerScript& ForgetReferences();

    // The component's answer to the latest input; none where it was not asked.
    [[nodiscard]] std::optional<bool> Answer() const noexcept { return m_answer; }
    // Its answer to a mouse message: "passed", "swallowed" or, where it has not registered the type, "unheard".
    [[nodiscard]] std::string AnswerTo(const std::string& mouseType);

    // What the component asked of the host since the latest mark, in order and as text: "SetCameraLocation",
    // "MsgClickLeft 120 45 passed", "picker enable_preselect 0", "ManageObject accepted", and so on. The status bar,
    // which every frame writes, is left out of the actions.
    [[nodiscard]] Texts Actions() const;
    [[nodiscard]] Texts StatusCalls() const;
    // The calls of one kind since the latest mark.
    template <class Kind>
    [[nodiscard]] std::vector<Kind> Calls() const {
        std::vector<Kind> wanted;
        for (const viewer::Call& call : CallsSinceMark()) {
            if (const auto* found = std::get_if<Kind>(&call)) {
                wanted.push_back(*found);
            }
        }
        return wanted;
    }
    FingerScript& Mark();

    // Compare and set the mark, so that a later check looks only at what came after. Messages are those to other
    // workflows: mouse messages and mode messages.
    FingerScript& ExpectActions(const Texts& expected, const char* file = __builtin_FILE(),
                                int line = __builtin_LINE());
    FingerScript& ExpectMessages(const Texts& expected, const char* file = __builtin_FILE(),
                                 int line = __builtin_LINE());
    FingerScript& ExpectNoActions(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
        return ExpectActions({}, file, line);
    }
    // The next text on the trace channel, without its line end.
    FingerScript& AnnounceTrace(const std::string& text);

    [[nodiscard]] viewer::ReferenceViewer& Viewer() noexcept { return m_viewer; }
    [[nodiscard]] viewer::ViewSnapshot View() const { return m_viewer.TakeSnapshot(); }
    [[nodiscard]] dg::Camera3D Camera() const { return View().camera; }
    [[nodiscard]] dg::Location CameraLocation() const { return Camera().GetLocation(); }
    // The middle of a 2D view.
    [[nodiscard]] dg::DPoint3D PagePosition() const { return View().placement.GetPos(); }
    // The pixel at which a shape view shows a world point; the view has it in front of it.
    [[nodiscard]] dg::DPoint2D PixelOf(const dg::DPoint3D& point) const;

    [[nodiscard]] touch::TouchWorkflow& Component() const;
    [[nodiscard]] touch::WorkflowInspector Inspect() const { return touch::WorkflowInspector(Component()); }
    [[nodiscard]] touch::GestureType Gesture() const { return Inspect().GetGesture(); }
    [[nodiscard]] touch::GestureState State() const { return Inspect().GetGestureState(); }

    [[nodiscard]] std::int64_t HostTime() const noexcept { return m_hostTime; }
    [[nodiscard]] std::int32_t TouchTime() const noexcept { return m_touchTime; }

private:
    struct Finger {
        Place place;
        std::int32_t flags;
    };

    FingerScript(const viewer::ViewSpec& view, const viewer::HostSettings& settings);
    Finger& Find(int id);
    FingerScript& SendFrame();
    FingerScript& Send(const workflow::TouchFrame& frame);
    FingerScript& CheckInvariants();
    FingerScript& CheckInvariantsOfNewView();
    [[nodiscard]] std::vector<viewer::Call> CallsSinceMark() const;
    void Compare(const char* what, const Texts& actual, const Texts& expected, const char* file, int line);

    mutable viewer::ReferenceViewer m_viewer;
    Invariants m_invariants;
    std::vector<Finger> m_fingers;
    std::int64_t m_hostTime = 10000;
    std::int32_t m_touchTime = 500000;
    std::optional<bool> m_answer;
    std::size_t m_mark = 0;
    Texts m_announcedTraces;
};

}  // namespace tests
