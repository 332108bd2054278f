// What counts as a view that somebody can look at is decided by the limits below. Once input leaves them, the camera is
// not checked until it is sensible again; slots and lists always are.
#include "tests/support/Invariants.h"

#include "touch/Inspection.h"
#include "touch/markup/SpinCenterMarkup.h"
#include "touch/navigation/TouchGetBoundsEvent.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MEASURE_WITH_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define MEASURE_WITH_SANITIZER
#endif
#if defined(MEASURE_WITH_SANITIZER)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // of the sanitizer's runtime, which has no header
#else
#include <malloc.h>
#endif

namespace tests {
namespace {

using touch::WorkflowInspector;

constexpr double FrameTolerance = 1e-4;
// Pixels: more than any screen has on one axis.
constexpr std::int32_t LargestPixel = 32'767;
constexpr unsigned int SmallestViewport = 16;
// Model units: what lies between is neither lost beside the rest of the world nor beyond single precision's squares.
constexpr double LargestLength = 1e9;
constexpr double SmallestLength = 1e-6;

// What a view shows: the camera of a 3D view, the placement of a page.
struct Picture {
    dg::Location location;
    double width = 0;  // model units; of the projection window or the page
    double height = 0;
    unsigned int pixelWidth = 0;
    unsigned int pixelHeight = 0;
};

// No value for a view that is neither.
std::optional<Picture> GetPicture(const hxk::View* view) {
    Picture picture;
    if (const auto* shape = dynamic_cast<const hxk::ShapeView*>(view)) {
        dg::Camera3D camera;
        shape->GetCamera(camera);
        double left = 0, right = 0, bottom = 0, top = 0, distance = 0;
        bool orthographic = false;
        camera.GetProjection(left, right, bottom, top, distance, orthographic);
        picture = {camera.GetLocation(), right - left, top - bottom, camera.GetViewportWidth(),
                   camera.GetViewportHeight()};
        return picture;
    }
    if (const auto* page = dynamic_cast<const hxk::View2D*>(view)) {
        page->GetViewLocation(picture.location);
        page->GetOrthoWidth(picture.width);
        page->GetViewSize(picture.pixelWidth, picture.pixelHeight);
        picture.height = picture.width;
        return picture;
    }
    return std::nullopt;
}

// These answer false for what is not a number.
bool IsWithin(const dg::DPoint3D& point, double limit) {
    return std::abs(point.x) <= limit && std::abs(point.y) <= limit && std::abs(point.z) <= limit;
}

bool IsLength(double value) {
    return value >= SmallestLength && value <= LargestLength;
}

bool IsOrthonormal(const dg::Location& location) {
    const dg::DVec3 axes[] = {dg::DVec3(location.GetU()), dg::DVec3(location.GetV()), dg::DVec3(location.GetW())};
    for (int i = 0; i < 3; ++i) {
        for (int k = i; k < 3; ++k) {
            if (!(std::abs(dg::DotProduct(axes[i], axes[k]) - (i == k ? 1 : 0)) <= FrameTolerance)) {
                return false;
            }
        }
    }
    return true;
}

bool IsSensiblePicture(const Picture& picture) {
    return IsOrthonormal(picture.location) && IsWithin(picture.location.GetPos(), LargestLength) &&
           IsLength(picture.width) && IsLength(picture.height) && picture.pixelWidth >= SmallestViewport &&
           picture.pixelHeight >= SmallestViewport && picture.pixelWidth <= LargestPixel &&
           picture.pixelHeight <= LargestPixel;
}

bool IsSensibleView(const hxk::View* view) {
    if (const auto* shape = dynamic_cast<const hxk::ShapeView*>(view)) {
        dg::DPoint3D center;
        shape->GetSpinCenter(center);
        if (!IsWithin(center, LargestLength) || !(std::abs(shape->GetNavSpeed()) <= LargestLength)) {
            return false;
        }
    }
    const std::optional<Picture> picture = GetPicture(view);
    return picture && IsSensiblePicture(*picture);
}

bool IsOnScreen(const workflow::TouchFrame& frame) {
    return std::all_of(frame.records.begin(), frame.records.end(), [](const workflow::TouchRecord& record) {
        return record.x <= LargestPixel && record.y <= LargestPixel;  // 0 and less carry no value
    });
}

bool TracksFingers(const WorkflowInspector& state) {
    return std::any_of(state.GetSlots().begin(), state.GetSlots().end(),
                       [](const touch::TouchState& slot) { return slot.id != touch::FreeSlotId; });
}

// The ids of listed fingers; more than there are slots for are a fault by themselves.
class IdList {
public:
    template <class Fingers>
    bool Append(const Fingers& fingers) {
        for (const touch::TouchState& finger : fingers) {
            if (m_count == m_ids.size()) {
                return false;
            }
            m_ids[m_count++] = finger.id;
        }
        return true;
    }
    [[nodiscard]] const std::int32_t* begin() const { return m_ids.data(); }
    [[nodiscard]] const std::int32_t* end() const { return m_ids.data() + m_count; }

private:
    std::array<std::int32_t, touch::SlotCount> m_ids{};
    std::size_t m_count = 0;
};

std::string FindSlotFault(const WorkflowInspector& state) {
    const auto& slots = state.GetSlots();
    for (auto slot = slots.begin(); slot != slots.end(); ++slot) {
        if (slot->id == touch::FreeSlotId) {
            if (*slot != touch::TouchState{}) {
                return "a free slot holds values";
            }
        } else if (std::any_of(slots.begin(), slot, [&](const auto& other) { return other.id == slot->id; })) {
            return "two slots for id " + std::to_string(slot->id);
        }
    }
    return "";
}

std::string FindFingerFault(const WorkflowInspector& state) {
    const auto& slots = state.GetSlots();
    IdList fingers;
    IdList hands;
    if (!fingers.Append(state.GetFingerList()) || !hands.Append(state.GetLeftHand()) ||
        !hands.Append(state.GetRightHand())) {
        return "more listed fingers than slots";
    }
    for (const std::int32_t& id : fingers) {
        if (std::find(fingers.begin(), &id, id) != &id) {
            return "a finger is listed twice";
        }
        if (std::none_of(slots.begin(), slots.end(), [&](const auto& slot) { return slot.id == id; })) {
            return "a listed finger has no slot";
        }
    }
    if (!std::equal(hands.begin(), hands.end(), fingers.begin(), fingers.end())) {
        return "the hands have other fingers than the list";
    }
    const bool none = fingers.begin() == fingers.end();
    if (state.GetFirstFingerId() != (none ? touch::FreeSlotId : *fingers.begin()) ||
        state.GetSecondFingerId() != (none ? touch::FreeSlotId : *(fingers.end() - 1))) {
        return "the first and second finger are not the ends of the list";
    }
    return "";
}

}  // namespace

std::string FindStateFault(const touch::TouchWorkflow& workflow) {
    const WorkflowInspector state(workflow);
    if (std::string fault = FindSlotFault(state); !fault.empty()) {
        return fault;
    }
    if (std::string fault = FindFingerFault(state); !fault.empty()) {
        return fault;
    }
    if (touch::NameOf(state.GetGesture()) == "?" || touch::NameOf(state.GetGestureState()) == "?") {
        return "a gesture or state without a name";
    }
    if (state.GetGestureState() == touch::GestureIdle && state.GetGesture() != touch::GestureNone) {
        return "an idle recogniser has a gesture";
    }
    return "";
}

std::size_t GetBytesInUse() {
#if defined(MEASURE_WITH_SANITIZER)
    return __sanitizer_get_current_allocated_bytes();
#elif defined(_WIN32)
    std::size_t bytes = 0;
    for (_HEAPINFO block{}; _heapwalk(&block) == _HEAPOK;) {
        bytes += block._useflag == _USEDENTRY ? block._size : 0;
    }
    return bytes;
#else
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

void Invariants::NoteFrame(const workflow::TouchFrame& frame) {
    m_sensible = m_sensible && IsOnScreen(frame);
}

void Invariants::NoteView(const touch::TouchWorkflow& workflow) {
    m_sensible =
        (m_sensible || !TracksFingers(WorkflowInspector(workflow))) && IsSensibleView(workflow.GetView().Get());
}

std::string Invariants::FindFault(const touch::TouchWorkflow& workflow, bool settled) {
    if (std::string fault = FindStateFault(workflow); !fault.empty()) {
        return fault;
    }
    const WorkflowInspector state(workflow);
    if (!m_copiedInCall && state.GetLastFingerCount() != 0 && state.GetLastFingerCount() != state.GetFingerCount()) {
        return "the last finger count is neither 0 nor the latest frame's";
    }
    const touch::TouchGetBoundsEvent* request = state.GetBoundsEvent();
    if (request != nullptr && !m_sharedRequest && (request->IsComplete() || request->IsCancelled())) {
        return "an ended bounds request is still waited for";
    }
    if (std::string fault = FindCameraFault(workflow); !fault.empty()) {
        return fault;
    }
    return FindReferenceFault(workflow, settled);
}

std::string Invariants::FindCameraFault(const touch::TouchWorkflow& workflow) {
    const std::optional<Picture> picture = GetPicture(workflow.GetView().Get());
    // The model's box comes in with an answer; as with the camera, gestures can also take it out of the world.
    m_sensible = m_sensible && WorkflowInspector(workflow).GetWorldDistance() <= LargestLength;
    if (!picture || !m_sensible) {
        return "";
    }
    if (!IsOrthonormal(picture->location)) {
        return "the camera's axes are not orthonormal";
    }
    if (!IsWithin(picture->location.GetPos(), std::numeric_limits<double>::max()) || !std::isfinite(picture->width)) {
        return "the camera's position or width is not finite";
    }
    m_sensible = IsSensiblePicture(*picture);
    return "";
}

Invariants::OuterReferences Invariants::CountReferences(const touch::TouchWorkflow& workflow) {
    const WorkflowInspector state(workflow);
    OuterReferences count;
    count.workflow = workflow.GetReferenceCount();
    if (const touch::SpinCenterMarkup* markup = state.GetSpinCenterMarkup()) {
        count.markup = markup->GetReferenceCount() - 1;
    }
    if (const hxk::View* view = workflow.GetView().Get()) {
        count.view = view->GetReferenceCount() - 1 - (state.GetShapeView() == view ? 1 : 0) -
                     (state.GetView2D() == view ? 1 : 0);
        du::SmartPtr<hxk::Scene> scene;
        view->GetScene(scene);
        count.scene = scene ? scene->GetReferenceCount() - 1 : 0;
    }
    return count;
}

std::string Invariants::FindReferenceFault(const touch::TouchWorkflow& workflow, bool settled) {
    const WorkflowInspector state(workflow);
    if (!settled || state.IsTouchActive() || state.GetBoundsEvent() != nullptr || state.IsSpinCenterMarkupShown()) {
        return "";
    }
    const OuterReferences now = CountReferences(workflow);
    if (!m_atRest) {
        m_atRest = now;
    }
    if (now == *m_atRest) {
        return "";
    }
    const auto change = [](const char* what, int before, int after) {
        return std::string(what) + std::to_string(before) + " to " + std::to_string(after);
    };
    return "references have changed with a touch: " + change("workflow ", m_atRest->workflow, now.workflow) +
           change(", view ", m_atRest->view, now.view) + change(", scene ", m_atRest->scene, now.scene) +
           change(", markup ", m_atRest->markup, now.markup);
}

}  // namespace tests
