// Does what a host does: ticks every 10 ms, a frame for each report that changes something, and frames that repeat
// resting fingers. The ticks go on long enough after the last report for a silent touch to end.
#include "replay/recording/RecordingSession.h"

#include "host/dg/Functions.h"
#include "host/dg/Vec.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <optional>
#include <utility>

namespace replay {

namespace {

constexpr std::int64_t TickMs = 10;
constexpr std::int64_t TailMs = 600;  // longer than the silence of 500 ms that ends a touch
// Both clocks start above zero: a time of 0 or less carries no value.
constexpr std::int64_t HostClockStartMs = 1000;
constexpr std::int32_t TouchClockStartMs = 1000;
constexpr std::int64_t MicrosecondsPerMs = 1000;

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

// Sends the reports of a recording as touch frames.
class FrameSource {
public:
    explicit FrameSource(const PanelMapping& mapping) : m_mapping(mapping) {}

    // A frame for the report, or none if it changes nothing.
    std::optional<TouchEvent> FrameOf(const Report& report, std::int64_t ms) {
        if (report.contacts == m_reported) {
            return std::nullopt;
        }
        m_reported = report.contacts;

        // What stays and what goes comes before what is new, so that a full frame never loses a lift.
        std::size_t room = workflow::TouchFrame().records.size() - m_fingers.size();
        std::vector<Finger> fingers;
        for (const Finger& finger : m_fingers) {
            if (!Find(report, finger)) {
                fingers.push_back(
                    {finger.slot, {finger.record.id, finger.record.x, finger.record.y, 0, workflow::TouchUp}});
            }
        }
        for (const Contact& contact : report.contacts) {
            const bool isKnown = std::any_of(m_fingers.begin(), m_fingers.end(),
                                             [&](const Finger& finger) { return IsSame(finger, contact); });
            if (isKnown || room > 0) {
                room -= isKnown ? 0 : 1;
                fingers.push_back(
                    {contact.slot, RecordOf(contact, isKnown ? workflow::TouchMove : workflow::TouchDown)});
            }
        }
        std::stable_sort(fingers.begin(), fingers.end(),
                         [](const Finger& a, const Finger& b) { return a.slot < b.slot; });
        m_fingers = std::move(fingers);
        return Send(ms);
    }

    // A frame that repeats every finger, or none if no finger is down.
    std::optional<TouchEvent> RestFrame(std::int64_t ms) {
        for (Finger& finger : m_fingers) {
            finger.record.flags = workflow::TouchMove;
        }
        return Send(ms);
    }

private:
    struct Finger {
        std::int32_t slot;
        workflow::TouchRecord record;
    };

    static bool IsSame(const Finger& finger, const Contact& contact) {
        return finger.slot == contact.slot && finger.record.id == contact.trackingId;
    }

    static bool Find(const Report& report, const Finger& finger) {
        return std::any_of(report.contacts.begin(), report.contacts.end(),
                           [&](const Contact& contact) { return IsSame(finger, contact); });
    }

    [[nodiscard]] workflow::TouchRecord RecordOf(const Contact& contact, std::int32_t flags) const {
        const Pixel pixel = m_mapping.PixelOf(contact.x, contact.y);
        return {contact.trackingId, pixel.x, pixel.y, 0, flags};
    }

    std::optional<TouchEvent> Send(std::int64_t ms) {
        if (m_fingers.empty()) {
            return std::nullopt;
        }
        TouchEvent event;
        for (std::size_t i = 0; i < m_fingers.size(); ++i) {
            event.frame.records.at(i) = m_fingers[i].record;
            event.frame.records.at(i).time = TouchClockStartMs + static_cast<std::int32_t>(ms);
        }
        event.frame.count = static_cast<std::int32_t>(m_fingers.size());
        std::erase_if(m_fingers, [](const Finger& finger) { return finger.record.flags == workflow::TouchUp; });
        return event;
    }

    const PanelMapping& m_mapping;
    std::vector<Contact> m_reported;  // as in the last report
    std::vector<Finger> m_fingers;    // by slot; with their last records; at most as many as a frame has
};

// Puts ticks, frames of reports and frames of resting fingers in the order of their times.
class Timeline {
public:
    Timeline(const Recording& recording, const PanelMapping& mapping)
        : m_source(mapping), m_next(recording.reports.begin()), m_end(recording.reports.end()) {
        const auto ticks = static_cast<std::size_t>((TimeOf(recording.reports.GetLast()) + TailMs) / TickMs + 2);
        m_events.reserve(2 * ticks + recording.reports.GetCount());
        const std::int64_t lastMs = TimeOf(recording.reports.GetLast());
        for (std::int64_t tick = 0; tick < lastMs + TailMs + TickMs; tick += TickMs) {
            m_events.emplace_back(TimerEvent{HostClockStartMs + tick, TickMs});
            AddReportsBefore(tick + 1);
            if (m_next != m_end && tick - m_lastFrameMs >= TickMs) {
                Add(m_source.RestFrame(tick), tick);
            }
            AddReportsBefore(tick + TickMs);
        }
    }

    [[nodiscard]] std::vector<Event> TakeEvents() { return std::move(m_events); }

private:
    static std::int64_t TimeOf(const Report& report) { return report.timeUs / MicrosecondsPerMs; }

    void AddReportsBefore(std::int64_t ms) {
        for (; m_next != m_end && TimeOf(*m_next) < ms; ++m_next) {
            Add(m_source.FrameOf(*m_next, TimeOf(*m_next)), TimeOf(*m_next));
        }
    }

    void Add(const std::optional<TouchEvent>& frame, std::int64_t ms) {
        if (frame) {
            m_events.emplace_back(*frame);
            m_lastFrameMs = ms;
        }
    }

    FrameSource m_source;
    ReportList::Iterator m_next;
    std::default_sentinel_t m_end;
    std::int64_t m_lastFrameMs = 0;  // since the first report, like every time here
    std::vector<Event> m_events;
};

}  // namespace

Session SessionFromRecording(const Recording& recording, const RecordingOptions& options) {
    Session session;
    const PanelMapping mapping(recording.x, recording.y, options.mounting, options.width, options.height);
    session.host.ppiX = mapping.PixelsPerInchX();
    session.host.ppiY = mapping.PixelsPerInchY();
    session.host.environment = options.environment;
    session.view = MakeView(options);
    session.events = Timeline(recording, mapping).TakeEvents();
    return session;
}

}  // namespace replay
