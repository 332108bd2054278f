// Does what a host does: feeds what the device reported, and keeps what comes out. The clock goes on long enough after
// the last report for a silent touch to end.
#include "replay/recording/RecordingSession.h"

#include "host/dg/Functions.h"
#include "host/dg/Vec.h"
#include "input/Thresholds.h"
#include "input/TouchFeeder.h"
#include "replay/recording/ReportFeeder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace replay {

namespace {

// The clock goes on for this long after the last report: longer than the silence of 500 ms that ends a touch.
constexpr std::int64_t TailUs = 600 * input::UsPerMs;
// By then the last lift has come out of the feeder; fingers that are still down go without one.
constexpr std::int64_t SettleUs = 2 * input::StepUs;

// Default cameras look at the middle of the model from the front right and above, Z up, and show it with a little room
// around it: lengths are in radii of the model, half the diagonal of its bounds. The perspective window opens 17
// degrees to either side of the middle, on the smaller side of the view, and shows as much as the orthographic one at
// the model's own distance.
const dg::DVec3 ViewDirection{1, -1.6, 1.1};  // from the model to the camera
constexpr double HalfWindowInRadii = 1.2;
constexpr double OrthographicDistanceInRadii = 6;
constexpr double HalfFieldOfView = 17 * std::numbers::pi / 180;  // radians
const double PerspectiveHalfWindow = dg::Sin(HalfFieldOfView) / dg::Cos(HalfFieldOfView);
const double PerspectiveDistanceInRadii = HalfWindowInRadii / PerspectiveHalfWindow;

// A model without extent, or none, is shown as one of radius 1.
double RadiusOf(const dg::DBox& bounds) {
    const double radius = bounds.IsEmpty() ? 0 : bounds.GetSize().Norm() / 2;
    return radius > 0 ? radius : 1;
}

dg::FVec3 SinglePrecision(const dg::DVec3& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

viewer::CameraSpec MakeCamera(const RecordingOptions& options, const dg::DPoint3D& target) {
    dg::DVec3 w = ViewDirection;
    w.Normalize();
    dg::DVec3 u{-w.y, w.x, 0};  // level: at right angles to w and Z
    u.Normalize();
    const dg::DVec3 v = dg::CrossProduct(w, u);

    const double radius = RadiusOf(options.bounds);
    // The smaller side of the view shows the whole model, and the larger one more.
    const double halfWindow = options.orthographic ? HalfWindowInRadii * radius : PerspectiveHalfWindow;
    const double pixels = std::max(std::min(options.width, options.height), 1U);
    const double halfWidth = halfWindow * (options.width / pixels);
    const double halfHeight = halfWindow * (options.height / pixels);
    const double distance = radius * (options.orthographic ? OrthographicDistanceInRadii : PerspectiveDistanceInRadii);

    viewer::CameraSpec camera;
    camera.orthographic = options.orthographic;
    camera.left = -halfWidth;
    camera.right = halfWidth;
    camera.bottom = -halfHeight;
    camera.top = halfHeight;
    camera.distance = 1;
    camera.location = dg::Location(SinglePrecision(u), SinglePrecision(v), SinglePrecision(w), target + w * distance);
    return camera;
}

viewer::ViewSpec MakeView(const RecordingOptions& options) {
    viewer::ViewSpec view;
    view.kind = options.viewKind;
    view.width = options.width;
    view.height = options.height;
    if (viewer::IsShapeViewKind(view.kind)) {
        view.bounds = options.bounds;
        if (!view.bounds.IsEmpty()) {
            view.spinCenter = view.bounds.min + view.bounds.GetSize() * 0.5;
        }
        view.camera = MakeCamera(options, view.spinCenter);
        view.navMethod = options.navMethod;
        view.preferences = viewer::PreferenceValues{{"Model Viewer/display_rotation_center", true}};
    }
    return view;
}

// Keeps what a feeder sends as the events of a session.
class EventList : public input::FeederSink {
public:
    void TakeFrame(const workflow::TouchFrame& frame) override { m_events.emplace_back(TouchEvent{frame}); }
    void TakeTick(std::int64_t now, std::int64_t interval) override {
        m_events.emplace_back(TimerEvent{now, interval});
    }
    void TakeMouse(const du::Symbol& type, std::int32_t x, std::int32_t y) override {
        m_events.emplace_back(MouseEvent{type.GetString(), x, y});
    }

    [[nodiscard]] std::vector<Event> TakeEvents() { return std::move(m_events); }

private:
    std::vector<Event> m_events;
};

// Plays the reports to a feeder whose host looks at the clock every 10 ms.
std::vector<Event> EventsOf(const Recording& recording, const PanelMapping& mapping, const RecordingOptions& options) {
    EventList events;
    input::TouchFeeder feeder(events, {.feeding = options.feeding, .ids = input::RecordIds::Own, .firstTickMs = 0});
    feeder.SetGeometry({.width = options.width, .height = options.height, .rowsDown = false});
    ReportFeeder reports(feeder, mapping);
    ReportList::Iterator next = recording.reports.begin();
    const std::int64_t lastUs = recording.reports.GetLast().timeUs;
    bool isOver = false;
    for (std::int64_t now = 0; now < lastUs + TailUs + SettleUs; now += input::StepUs) {
        for (; next != recording.reports.end() && next->timeUs <= now; ++next) {
            reports.Tell(*next);
        }
        feeder.Advance(static_cast<double>(now) / static_cast<double>(input::UsPerMs));
        if (!isOver && now >= lastUs + SettleUs) {
            feeder.ForgetAll();
            isOver = true;
        }
    }
    return events.TakeEvents();
}

}  // namespace

Session SessionFromRecording(const Recording& recording, const RecordingOptions& options) {
    Session session;
    const PanelMapping mapping(recording.x, recording.y, options.mounting, options.width, options.height);
    session.host.ppiX = mapping.PixelsPerInchX();
    session.host.ppiY = mapping.PixelsPerInchY();
    session.host.environment = options.environment;
    session.view = MakeView(options);
    session.events = EventsOf(recording, mapping, options);
    return session;
}

}  // namespace replay
