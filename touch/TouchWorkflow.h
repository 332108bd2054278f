// The component: one workflow that turns touch input into navigation.
//
// Operations stand under headings in the order in which a frame meets them; each heading names the source file that
// defines its operations. The state record at the end is grouped by role. docs/ARCHITECTURE.md follows one frame
// through the files.
#pragma once

#include "host/dg/Box.h"
#include "host/dg/Camera3D.h"
#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/dg/Quaternion.h"
#include "host/dg/Vec.h"
#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/hxk/Preferences.h"
#include "host/hxk/View.h"
#include "host/workflow/SimpleWorkflow.h"
#include "touch/FrameContext.h"
#include "touch/GestureTypes.h"
#include "touch/LiveObjects.h"
#include "touch/Thresholds.h"
#include "touch/TouchApi.h"
#include "touch/TouchState.h"
#include "touch/navigation/RequestInFlight.h"
#include "touch/navigation/Trackball.h"
#include "touch/tracking/FingerPool.h"

#include <array>
#include <cstdint>
#include <list>
#include <optional>
#include <string>

namespace touch {

class SpinCenterMarkup;
class TouchGetBoundsEvent;
class WorkflowInspector;

// Turns touch frames, timer ticks and the system's mouse echo of touches into camera moves of 3D views, position and
// width changes of 2D views, clicks, mode switches and status texts.
//
// Everything happens inside the host's message dispatch, on one thread. Every input is defined, whatever its integers,
// and nothing is thrown to the host. Instances live on the heap and are owned by smart pointers.
class TOUCH_API TouchWorkflow : public workflow::SimpleWorkflow {
public:
    // "touch::TouchWorkflow".
    static const du::Symbol s_class;

    // Life cycle (TouchWorkflow.cpp) ----------------------------------------------------------------------------------

    // Builds an idle workflow in navigate mode, registers its message types, and reads the environment switches and the
    // screen's resolution, which are never read again.
    explicit TouchWorkflow(const du::Symbol& name);
    // A copy shares the markup, the views and the bounds request, and has finger lists of its own. Nothing is re-read.
    // Without memory for the lists a copy throws std::bad_alloc, and an assignment changes nothing.
    TouchWorkflow(const TouchWorkflow& other);
    TouchWorkflow& operator=(const TouchWorkflow& other);
    // Releases what it shares. A markup stays in its view and a pending bounds request stays pending.
    ~TouchWorkflow() override;

    // Host interface, in the order of the virtual table ---------------------------------------------------------------

    // Attaches the workflow to a view and applies the view's default preferences. (shell/Modes.cpp)
    void SetView(const du::SmartPtr<hxk::View>& view) override;

    // Each mouse handler answers true to swallow the message, which is then an echo of a touch that is being handled as
    // a gesture, and false to let it pass. The coordinates are not looked at. (shell/MouseMessages.cpp)
    bool OnMsgDoubleClickLeft(int x, int y) override;
    bool OnMsgClickLeft(int x, int y) override;
    bool OnMsgMouseLeftDown(int x, int y) override;
    bool OnMsgMouseLeftUp(int x, int y) override;
    bool OnMsgMouseMove(int x, int y) override;
    bool OnMsgMouseInitLeftDrag(int x, int y) override;
    // Middle and right drags are the mouse's own: the status bar goes back to the host. Always false.
    bool OnMsgMouseInitMiddleDrag(int x, int y) override;
    bool OnMsgMouseInitRightDrag(int x, int y) override;
    bool OnMsgMouseLeftDrag(int x, int y) override;
    bool OnMsgMouseMiddleDrag(int x, int y) override;
    bool OnMsgMouseRightDrag(int x, int y) override;

    // Takes preference updates and switches markup mode. Always false. (shell/Modes.cpp)
    bool OnMsgMode(const du::Symbol& workflowName, const du::Symbol& mode, const du::SmartPtr<du::RefCounted>& data,
                   int value) override;
    // Shows the mode's text when the status bar is the touch workflow's; false when it is not. (shell/StatusBar.cpp)
    bool OnMsgUpdateStatusBar() override;
    // The component's clock: host time and interval in milliseconds. Always false. (shell/Timer.cpp)
    bool OnMsgTimer(long long now, long long interval) override;
    // A touch frame; see workflow::SimpleWorkflow. True when a gesture used it. A frame for a view of an unknown kind
    // is used up without effect. (tracking/TouchIntake.cpp)
    bool OnMsgTouch(int reserved, int count, int id0, int x0, int y0, int time0, int flags0, int id1, int x1, int y1,
                    int time1, int flags1, int id2, int x2, int y2, int time2, int flags2, int id3, int x3, int y3,
                    int time3, int flags3, int id4, int x4, int y4, int time4, int flags4, int id5, int x5, int y5,
                    int time5, int flags5, int id6, int x6, int y6, int time6, int flags6, int id7, int x7, int y7,
                    int time7, int flags7, int id8, int x8, int y8, int time8, int flags8, int id9, int x9, int y9,
                    int time9, int flags9) override;

    // Whether to trace mouse and key input: never. (TouchWorkflow.cpp)
    virtual bool TraceMouseAndKeys() const;
    // s_class. (TouchWorkflow.cpp)
    virtual du::Symbol GetObjectClass() const;

    // For callers beside the host's dispatch --------------------------------------------------------------------------

    // Takes the answer to a bounds request, in world units; empty when the request failed. (navigation/SceneBounds.cpp)
    void ReceiveBounds(const dg::DBox& bounds);
    // Notes the start of a one-finger gesture on a 2D view; the coordinates are not used.
    // (navigation/View2DNavigation.cpp)
    void SingleFinger2DInitialize(int x, int y);

    // The view geometry snapshot of the latest 3D gesture step; zero before the first. (navigation/ViewGeometry.cpp)

    // The middle of the view in pixels.
    [[nodiscard]] dg::DVec2 GetPixelCenter() const;
    // The width of the projection window, and its value when the multi-finger gesture started, in model units.
    [[nodiscard]] double GetViewWidth() const;
    [[nodiscard]] double GetOriginalViewWidth() const;
    void SetOriginalViewWidth(double width);
    [[nodiscard]] bool IsOrthographic() const;
    [[nodiscard]] bool IsPerspective() const;
    [[nodiscard]] const dg::Location& GetCameraLocation() const;
    [[nodiscard]] dg::DVec3 GetCameraU() const;
    [[nodiscard]] dg::DVec3 GetCameraV() const;
    [[nodiscard]] dg::DVec3 GetCameraW() const;

protected:
    // Stores the text of the current mode in the status bar and repaints it. (shell/StatusBar.cpp)
    void SetStatusBarMessage();

    // Pixel measures. Mind the argument order: both x values first, then both y values. Differences, squares and sums
    // are 32-bit integers that wrap around; points are truncated to whole pixels first. (recognition/TouchGeometry.cpp)
    [[nodiscard]] double DistanceBetweenPoints(int x1, int x2, int y1, int y2) const;
    [[nodiscard]] double DistanceBetweenPoints(dg::DPoint2D p1, dg::DPoint2D p2) const;
    // The direction from point 2 to point 1, in radians in (-pi, pi].
    [[nodiscard]] double GetRotationAngle(int x1, int x2, int y1, int y2) const;
    // The direction from p1 to p2, in radians in (-pi, pi].
    [[nodiscard]] double GetRotationAngle(dg::DPoint2D p1, dg::DPoint2D p2) const;
    // Rounds to a number of decimal places by adding half a unit and truncating: -2.346 with 2 digits is -2.34. Values
    // beyond the 32-bit range, scaled, take the nearest end of it.
    [[nodiscard]] double GetFixedDigitNumber(double value, int digits) const;

private:
    friend class TouchGetBoundsEvent;
    friend class WorkflowInspector;

    // What a frame is for; one of them at most, and none for a missing view or one that is not of the class that it
    // says.
    struct FrameTarget {
        hxk::ShapeView* shape = nullptr;
        hxk::View2D* page = nullptr;
        bool isUnknown = false;  // a view that touch does not navigate
    };

    // TouchWorkflow.cpp
    // Takes over a copy, member by member.
    TouchWorkflow& operator=(TouchWorkflow&& copy) noexcept;
    // Reads the screen's pixels per inch.
    void GetPPI();

    // shell/Modes.cpp: shows or hides the spin-centre markup as the preference says; without the key nothing changes.
    void ApplyPreferences(const du::SmartPtr<hxk::Preferences>& preferences);

    // shell/StatusBar.cpp
    // Sends a mouse message, which is delivered before this returns, to this workflow too.
    void SendMouseMsg(du::Symbol type, int x, int y);

    // tracking/TouchIntake.cpp
    // What a frame for the view is for, with the view taken as the latest of its kind. The caller holds the view.
    FrameTarget FindFrameTarget(const du::SmartPtr<hxk::View>& view);
    // Stores a frame's fingers in the slots. A single finger going down starts from a clean table. Every record stays
    // where the host has put it: only those with a finger are looked at.
    void SaveFingersStatus(int count, int id0, int x0, int y0, int time0, int flags0, int id1, int x1, int y1,
                           int time1, int flags1, int id2, int x2, int y2, int time2, int flags2, int id3, int x3,
                           int y3, int time3, int flags3, int id4, int x4, int y4, int time4, int flags4, int id5,
                           int x5, int y5, int time5, int flags5, int id6, int x6, int y6, int time6, int flags6,
                           int id7, int x7, int y7, int time7, int flags7, int id8, int x8, int y8, int time8,
                           int flags8, int id9, int x9, int y9, int time9, int flags9);
    // The kind of a record from its flags.
    [[nodiscard]] static TSType GetTouchState(int flags);
    // Stores a record. False, and nothing is stored, when there is no finger in it.
    bool SaveFinger(int id, int x, int y, int time, int flags);

    // tracking/FingerSlots.cpp: the slot table.
    // The slot that holds an id; else the first free slot, which is where its finger would go; else -1.
    [[nodiscard]] int GetMatchedSlotNumber(int id) const;
    [[nodiscard]] int GetMatchedId(int slot) const;
    // The record of the slot that matches an id, which is a free one for a finger that is not tracked; null when ten
    // others are.
    [[nodiscard]] TouchState* MatchSlot(int id);
    [[nodiscard]] const TouchState* MatchSlot(int id) const;
    // Whether a finger has left its start; marks the slot when it has. The first argument is an id, or a slot index
    // when byIndex is set. False for a position with a zero coordinate and for a finger without a slot.
    bool GetFingerIsMoving(int id, int x, int y, bool byIndex);
    // Whether a finger is near its start at (x, y) and, for a positive holdTime, has been down for more than that.
    // Times are milliseconds of the touch clock. Never marks the slot.
    [[nodiscard]] bool IsHolding(int id, int x, int y, int now, int holdTime, bool byIndex) const;
    // Whether a one-finger touch has just begun, just ended, or either.
    [[nodiscard]] bool GetFirstTouchDown() const;
    [[nodiscard]] bool GetFirstTouchUp() const;
    [[nodiscard]] bool GetTouchTappedNow() const;

    // tracking/FingerLists.cpp: the gesture's fingers and the end of touches.
    void AddFingerList(TouchState state);
    // Back to idle: slots, lists, gesture record and the touch's flags.
    void ResetTouchStates();
    // The part of the reset that a stray click also causes.
    void ClearGestureRecord();
    // Notes the lift of a single finger; the gesture has then ended.
    void ClearUpFingerState();

    // recognition/ShapeRecognizer.cpp: classification and dispatch for 3D views.
    void RecognizeGesture();
    // Reads the finger set anew: lists, hands and circle.
    void UpdateGesture();
    bool processShapeViewGesture();
    // Whether a finger went up on this very frame. Several processors of a frame ask: m_frame has the answer.
    [[nodiscard]] bool DontUpdateView() const;

    // recognition/GestureStates.cpp: the transitions of a gesture.
    // What both recognisers begin with. True when the gesture was recognised on an earlier frame and goes on.
    bool StepGestureState(GestureType oneFinger, GestureType severalFingers);
    void ForgetGesture();
    void StartGesture();
    void ClassifyGesture(GestureType oneFinger, GestureType severalFingers);
    void EndGesture();

    // recognition/GestureCircle.cpp: centre, span and direction of the fingers; onset of pinch and twist.
    // The circle of the fingers as they are now; no value without fingers.
    [[nodiscard]] std::optional<GestureCircle> MeasureGestureCircle() const;
    // Takes over a circle's centre and span.
    void TakeGestureCircle(const GestureCircle& circle);
    // Measures the hands and the circle again; without fingers they stay as they are.
    void UpdateGestureCircle();
    void CheckGestureCircle();
    void CheckGestureCircle2D();
    [[nodiscard]] bool AreFingersTooClose() const;
    [[nodiscard]] bool IsPinch() const;

    // recognition/View2DRecognizer.cpp: classification and dispatch for 2D views.
    void RecognizeGesture2D();
    bool process2DViewGesture();

    // recognition/TouchGeometry.cpp
    // Physical distances in inches. Mind the argument order: point by point.
    [[nodiscard]] double GetTwoFingerDistance(int id1, int id2) const;
    [[nodiscard]] double GetTwoFingerDistance(int x1, int y1, int x2, int y2) const;
    // Where a finger is, in view pixels; the origin for a finger without a slot.
    [[nodiscard]] PixelPosition GetFingerPosition(int id) const;
    // Takes the model-size scale from the model's bounds and the camera; empty bounds leave it as it is.
    void GetWorldDistance();

    // recognition/Hands.cpp: fingers to hands, and what the hands ask of explore flight.
    void GroupFingers();
    void GetHandsProperties();
    [[nodiscard]] bool GetExploreEnabled() const;
    // Flight as a world step: x sideways, y forward.
    [[nodiscard]] dg::DVec2 GetExploreFlyDelta();
    // Displacements in pixels since explore started; 0 within the dead zone (pixels).
    [[nodiscard]] double GetExploreLeftTouchXDelta(double deadZone) const;
    [[nodiscard]] double GetExploreLeftTouchYDelta(double deadZone) const;
    [[nodiscard]] double GetExploreRightTouchXDelta(double deadZone) const;
    [[nodiscard]] double GetExploreRightTouchYDelta(double deadZone) const;
    // The turn of a step of that many seconds: x about the vertical, y about the horizontal.
    [[nodiscard]] dg::DVec2 GetExploreTurnDelta(double stepSeconds) const;

    // navigation/ViewGeometry.cpp: the camera snapshot.
    // Takes the snapshot from the view of the frame.
    void UpdateViewParameters();
    // A pixel on the view plane, in model units; the three-dimensional form adds the plane's distance.
    [[nodiscard]] dg::DVec2 GetViewPlaneTouch(int x, int y) const;
    [[nodiscard]] dg::DVec3 GetViewPlaneTouch3(int x, int y) const;
    // The gesture circle's centre on the view plane, from whole pixels.
    [[nodiscard]] dg::DVec3 GetViewPlaneGestureCenter() const;

    // navigation/Spin.cpp: one finger on a 3D view. Each processor answers whether it used the frame.
    bool ProcessSpin();
    void SingleFinger3DInitialize(int x, int y, bool started);
    bool StartSpin(int x, int y);
    bool MoveSpin(TouchState& finger);
    bool ReleaseSpin(const TouchState& finger);
    void LookAround(int x, int y);
    void SpinTrackball(int x, int y);
    void ShowSpinCenterMarkup();
    void HideSpinCenterMarkup();

    // navigation/PanDrag.cpp: two-finger pan, which also takes the references of zoom and twist, and the multi-select
    // drag.
    bool ProcessPan();
    void StartPan();
    void PanPerspective();
    void PanOrthographic();
    bool ProcessDrag();

    // navigation/Zoom.cpp: pinch zoom and explore flight.
    bool ProcessZoom();
    bool StartExplore();
    bool ZoomPerspective();
    bool FlyOneHand();
    bool FlyTwoHands();
    void FlyAndTurn(const dg::DVec3& travel);
    // Signed camera travel in world units for a change of span in pixels.
    [[nodiscard]] double PerspectivePinchZoom(double spanDelta) const;
    // Zoom factor for a change of span in pixels.
    [[nodiscard]] double OrthographicDragZoom(double delta) const;
    void ZoomOrthographicView(double factor);

    // navigation/Twist.cpp: rotation about the view axis.
    bool ProcessRotation();

    // navigation/SceneBounds.cpp: asks the host for the model's box.
    void RequestBounds();

    // navigation/SpinAnimation.cpp: coasting. The elapsed time is in host milliseconds.
    void SampleSpinVelocity(std::int64_t elapsed);
    void StartSpinAnimation();
    void ApplyGestureCamera(const dg::Location& location);

    // navigation/View2DNavigation.cpp
    bool Process2DPan();
    bool Pan2D(TouchState& finger);
    bool Process2DZoom();

    // taps/Taps.cpp
    bool ProcessTap();
    bool ProcessTwoFingerTap();
    void SendPickerPreselect(int value);
    // Whether the current view has modes to switch: all but drawings and images.
    [[nodiscard]] bool IsModeSwitchable() const;

    // taps/Holds.cpp
    void ProcessPressAndHold();
    void ProcessThreeFingerHold();

    // shell/MouseMessages.cpp
    [[nodiscard]] bool IsRecognized(GestureType gesture) const;
    [[nodiscard]] bool IsOtherGesture() const;
    [[nodiscard]] bool IsNavigating() const;
    bool ReleaseStatusBar();

    // markup/SpinCenterMarkup.cpp: creates the markup for the current view's spin centre; nothing on other views.
    void AddSpinCenterMarkup();

    // State record ====================================================================================================
    // "Touch" below is the time from a first finger to the reset; the reset is ResetTouchStates.

    // Shared host objects; each holds one reference.
    du::SmartPtr<SpinCenterMarkup> m_spinCenterMarkup;  // exists while the preference shows the rotation centre
    du::SmartPtr<hxk::ShapeView> m_shapeView;           // of the latest frame on a 3D view; replaced, never cleared
    du::SmartPtr<hxk::View2D> m_view2D;                 // of the latest frame on a 2D view; replaced, never cleared
    RequestInFlight m_boundsEvent;                      // the request in flight, which holds this workflow in turn

    // The frame that is being processed. Processors, recognisers and the camera snapshot need one.
    FrameContext m_frame;

    // Model size and camera snapshot. World and view-plane lengths are model units.
    dg::DBox m_modelBounds;                // world; as last received
    dg::DVec3 m_panAnchor;                 // view-plane point of the centre at the last pan step; a ray in perspective
    dg::DVec3 m_lookRay;                   // ray through the finger at the last look-around step
    double m_lastZoomSpan = 0;             // pixels; span at the last applied zoom step
    double m_viewPixelWidth = 0;           // pixels
    double m_viewPixelHeight = 0;          // pixels
    double m_projLeft = 0;                 // edges of the projection window
    double m_projRight = 0;                //
    double m_projBottom = 0;               //
    double m_projTop = 0;                  //
    double m_viewPlaneDistance = 0;        // the window's third coordinate in the camera's frame, below zero
    bool m_orthographic = false;           // else perspective
    dg::Location m_cameraLocation;         // world
    double m_viewWidth = 0;                // m_projRight - m_projLeft
    double m_originalViewWidth = 0;        // view width when the multi-finger gesture started, 3D and 2D
    double m_viewHeight = 0;               // m_projTop - m_projBottom
    double m_worldDistance = 0;            // model-size scale; 0 until the first bounds arrive
    double m_zoomStep = 0;                 // world step of the current zoom law
    bool m_spinCenterMarkupShown = false;  // the markup is in the view; from the first spin step to the lift

    // Finger lists and hands. Lists are rebuilt when the finger count changes and emptied by the reset. What is in them
    // is as old as that: where a finger is now its slot knows (GetFingerPosition).
    std::list<TouchState> m_fingerList;                  // fingers down or moving, left to right
    std::list<TouchState> m_leftHandList;                // empty when there is one hand
    std::list<TouchState> m_rightHandList;               // all fingers when there is one hand
    FingerPool m_fingerPool;                             // elements that the lists do not use
    dg::DPoint2D m_leftHandCenter = dg::DPoint2D::BAD;   // pixels; centre of the hand's box
    dg::DPoint2D m_rightHandCenter = dg::DPoint2D::BAD;  //
    double m_leftHandSize = 0;                           // pixels; diagonal of the hand's box
    double m_rightHandSize = 0;                          //
    dg::DPoint2D m_exploreLeftStart;                     // pixels; hand centres and circle centre when explore started
    dg::DPoint2D m_exploreRightStart;                    //
    dg::DPoint2D m_exploreCenterStart;                   //

    // Screen, counts and finger ids.
    std::int32_t m_ppiX = 0;                     // pixels per inch, never 0 after construction
    std::int32_t m_ppiY = 0;                     //
    std::int32_t m_lastFingerCount = 0;          // of the last processed frame; 0 makes the next frame start anew
    std::int32_t m_fingerCount = 0;              // of the latest frame
    std::int32_t m_firstFingerId = FreeSlotId;   // leftmost finger; drives one-finger gestures
    std::int32_t m_secondFingerId = FreeSlotId;  // rightmost finger
    std::int32_t m_touchTime = 0;                // touch ms; of the first record of the latest frame
    bool m_fingerCountChanged = false;           // the gesture (re)started on this frame

    // Spin.
    Trackball m_spinTrackball;             // drives the spin
    Trackball m_velocityTrackball;         // sampled on ticks
    dg::Quaternion<float> m_spinVelocity;  // rotation of the latest sample
    dg::DPoint3D m_spinCenter;             // world; read when a spin starts
    dg::DVec3 m_exploreUp;                 // the camera's up axis when explore started

    // Times, in host milliseconds.
    std::int64_t m_touchDownTime = 0;  // when the latest one-finger gesture started
    std::int64_t m_touchUpTime = 0;    // when its finger was lifted; 0 from its start until then
    std::int64_t m_currentTime = 0;    // of the latest tick
    std::int64_t m_timerInterval = 0;  // of the latest tick
    std::int64_t m_lastTouchTime = 0;  // when the latest frame arrived; 0 before the first

    // Flags.
    bool m_touchActive = false;             // frames have come and the silence has not yet ended the touch
    bool m_dontPan = false;                 // switch: panning does not move 3D views
    bool m_dontSpin = false;                // switch: twisting does not turn the view
    bool m_dontZoom = false;                // switch: pinching does not zoom
    bool m_spinInertia = true;              // a released spin coasts on
    bool m_holdClickSent = false;           // this touch has sent its right click; until the reset
    bool m_touchSeen = false;               // the status bar shows the touch mode; until a middle or right drag
    bool m_tapClickPending = false;         // the next left click is the component's own; until then or the reset
    bool m_doubleClickWhileDown = false;    // a double click came while the finger was down; until the left up
    bool m_rotationStarted = false;         // a twist has been recognised; until the reset
    bool m_zoomStarted = false;             // a pinch has been recognised; until the reset
    bool m_threeFingerToggled = false;      // this touch has toggled the mode by holding; until the reset
    bool m_twoFingerTapModeChange = false;  // switch: a two-finger tap toggles the mode
    bool m_viewChanged = false;             // this touch has moved the view; until the reset
    bool m_twoHandsExplore = false;         // switch: two hands fly
    bool m_exploreStarted = false;          // explore start values are taken; until the finger count changes
    bool m_markupMode = false;              // touch does not navigate; switched by mode messages

    // Finger slots: every finger seen since the reset, lifted ones included.
    std::array<TouchState, SlotCount> m_touchStates;

    // Gesture record.
    GestureType m_gesture = GestureNone;
    GestureState m_gestureState = GestureIdle;
    dg::DPoint2D m_gestureCenter = dg::DPoint2D::BAD;  // pixels; centre of the gesture circle
    dg::DPoint2D m_lastPanCenter = dg::DPoint2D::BAD;  // pixels; the centre at the previous 2D pan step
    double m_gestureSpan = 0;                          // pixels; diameter of the circle, 0 for one finger
    double m_gestureAngle = 0;                         // radians in [0, 2 pi); direction of the circle
    double m_lastGestureAngle = 0;   // radians; direction at the start or at the last applied twist step
    double m_startGestureAngle = 0;  // radians; reference of the twist onset
    double m_startGestureSpan = 0;   // pixels; reference of the pinch onset and of the zoom

    LiveObject m_live{ObjectKind::Workflow};
};

}  // namespace touch
