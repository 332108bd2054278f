// Each change is recorded as it was asked for and then takes effect at once. A camera that is set ends the transition
// that moves it, and a page keeps its width when it is asked for an infinite one.
#include "viewer/ViewerViews.h"

#include "viewer/BoundsService.h"
#include "viewer/CallRecorder.h"
#include "viewer/MarkupLines.h"
#include "viewer/TransitionPlayer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>

namespace viewer {
namespace {

// Not constexpr: on Windows the address of another library's data is known only when the program runs.
const hxk::ClassType EcadSchematicType{hxk::EcadSchematicViewId, "EcadSchematicView", &hxk::View2D::CLASS_TYPE};
const hxk::ClassType EcadPcbType{hxk::EcadPcbViewId, "EcadPcbView", &hxk::View2D::CLASS_TYPE};
const hxk::ClassType SchematicFigureType{hxk::SchematicFigureViewId, "SchematicFigureView", &hxk::View2D::CLASS_TYPE};
// Neither a shape view nor a 2D view; the number is free.
const hxk::ClassType OtherType{1000, "OtherView", &hxk::View::CLASS_TYPE};

// A 2D page. Base is one of the host's 2D view classes.
template <class Base>
class PageView final : public CommonView<Base> {
public:
    PageView(const ViewSpec& description, const hxk::ClassType& type, CallRecorder& recorder)
        : CommonView<Base>(description, type),
          m_recorder(recorder),
          m_width(description.width),
          m_height(description.height),
          m_orthoWidth(description.orthoWidth),
          m_placement(description.placement) {}

    void GetOrthoWidth(double& width) const override { width = m_orthoWidth; }
    void SetOrthoWidth(double width) override {
        if (m_recorder.IsEnabled()) {
            m_recorder.Add(SetWidthCall{"SetOrthoWidth", width});
        }
        // Two fingers that meet in one pixel ask for an infinite width.
        if (std::isfinite(width)) {
            m_orthoWidth = width;
        }
    }
    void SetPosition(const dg::DPoint3D& position) override {
        if (m_recorder.IsEnabled()) {
            m_recorder.Add(SetPositionCall{position});
        }
        m_placement.SetPos(position);
    }
    void GetViewSize(unsigned int& width, unsigned int& height) const override {
        width = m_width;
        height = m_height;
    }
    void GetViewLocation(dg::Location& location) const override { location = m_placement; }

private:
    CallRecorder& m_recorder;
    unsigned int m_width;
    unsigned int m_height;
    double m_orthoWidth;
    dg::Location m_placement;
};

template <class Base>
du::SmartPtr<hxk::View> OpenPage(const ViewSpec& description, const hxk::ClassType& type, CallRecorder& recorder) {
    return du::SmartPtr<hxk::View>(new PageView<Base>(description, type, recorder));
}

}  // namespace

bool ViewerPreferences::GetBool(const du::Symbol& key, bool& value, bool* isOwn) const {
    const auto found = m_values.find(key.GetString());
    if (found == m_values.end()) {
        return false;
    }
    value = found->second;
    if (isOwn != nullptr) {
        *isOwn = true;
    }
    return true;
}

ViewerShapeView::ViewerShapeView(const ViewSpec& description, const ViewServices& services)
    : CommonView(description, hxk::ShapeView::CLASS_TYPE),
      m_services(services),
      m_spinCenter(description.spinCenter),
      m_bounds(description.bounds),
      m_navMethod(description.navMethod.c_str()),
      m_navSpeed(description.navSpeed) {
    m_camera.SetViewport(description.width, description.height);
    SetCamera(description.camera);
    m_markups.reserve(4);
}

void ViewerShapeView::GetBoundingBox(bool selectedOnly, bool visibleOnly, hxk::BoundingBoxEvent* request) {
    if (m_services.recorder.IsEnabled()) {
        m_services.recorder.Add(GetBoundingBoxCall{selectedOnly, visibleOnly});
    }
    m_services.bounds.Ask(*this, request);
}

void ViewerShapeView::SetCameraLocation(const dg::Location& location) {
    if (m_services.recorder.IsEnabled()) {
        m_services.recorder.Add(SetCameraLocationCall{location});
    }
    m_services.transitions.CameraWasSet(*this);
    PlaceCamera(location);
}

void ViewerShapeView::SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) {
    if (m_services.recorder.IsEnabled()) {
        m_services.recorder.Add(SetWidthCall{"SetOrthographicWidth", width});
    }
    change = nullptr;

    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    double viewPlane = 0;
    bool orthographic = false;
    m_camera.GetProjection(left, right, bottom, top, viewPlane, orthographic);
    const double oldWidth = right - left;
    if (!orthographic || oldWidth == 0.0) {
        return;
    }
    const double centerX = (left + right) * 0.5;
    const double centerY = (bottom + top) * 0.5;
    const double halfHeight = (top - bottom) * 0.5 * (width / oldWidth);
    m_camera.SetProjection(centerX - width * 0.5, centerX + width * 0.5, centerY - halfHeight, centerY + halfHeight,
                           viewPlane, orthographic);
}

void ViewerShapeView::AddMarkup(const du::SmartPtr<hxk::Markup>& markup) {
    if (m_services.recorder.IsEnabled()) {
        m_services.recorder.Add(AddMarkupCall{markup ? GetMarkupPosition(*markup) : dg::DPoint3D::ORIGIN});
    }
    if (markup && Find(markup) == m_markups.end()) {
        m_markups.push_back(markup);
    }
}

void ViewerShapeView::RemoveMarkup(const du::SmartPtr<hxk::Markup>& markup) {
    if (m_services.recorder.IsEnabled()) {
        m_services.recorder.Add(PlainCall{"RemoveMarkup"});
    }
    const auto found = Find(markup);
    if (found != m_markups.end()) {
        const du::SmartPtr<hxk::Markup> removed = *found;
        m_markups.erase(found);
        removed->OnRemovedFromHolder();
    }
}

void ViewerShapeView::RemoveMarkups() {
    while (!m_markups.empty()) {
        const du::SmartPtr<hxk::Markup> removed = m_markups.back();
        m_markups.pop_back();
        removed->OnRemovedFromHolder();
    }
}

void ViewerShapeView::Change(const ViewChange& change) {
    if (change.camera) {
        m_services.transitions.CameraWasSet(*this);
        SetCamera(*change.camera);
    }
    m_spinCenter = change.spinCenter.value_or(m_spinCenter);
    m_bounds = change.bounds.value_or(m_bounds);
    m_navSpeed = change.navSpeed.value_or(m_navSpeed);
    if (change.navMethod) {
        m_navMethod = du::Symbol(change.navMethod->c_str());
    }
}

std::vector<du::SmartPtr<hxk::Markup>>::iterator ViewerShapeView::Find(const du::SmartPtr<hxk::Markup>& markup) {
    return std::find(m_markups.begin(), m_markups.end(), markup);
}

void ViewerShapeView::SetCamera(const CameraSpec& description) {
    m_camera.SetProjection(description.left, description.right, description.bottom, description.top,
                           -description.distance, description.orthographic);
    m_camera.SetLocation(description.location);
}

du::SmartPtr<hxk::View> OpenView(const ViewSpec& description, const ViewServices& services) {
    if (description.kind == "shapeview") {
        return du::SmartPtr<hxk::View>(new ViewerShapeView(description, services));
    }
    if (description.kind == "other") {
        return du::SmartPtr<hxk::View>(new CommonView<hxk::View>(description, OtherType));
    }

    struct PageKind {
        const char* kind;
        du::SmartPtr<hxk::View> (*open)(const ViewSpec&, const hxk::ClassType&, CallRecorder&);
        const hxk::ClassType& type;
    };
    static const PageKind pageKinds[] = {
        {"drawingview", &OpenPage<hxk::DrawingView>, hxk::DrawingView::CLASS_TYPE},
        {"imageview", &OpenPage<hxk::ImageView>, hxk::ImageView::CLASS_TYPE},
        {"illustration2dview", &OpenPage<hxk::DocumentView>, hxk::DocumentView::CLASS_TYPE},
        {"ecadschematicview", &OpenPage<hxk::View2D>, EcadSchematicType},
        {"ecadpcbview", &OpenPage<hxk::View2D>, EcadPcbType},
        {"schematicfigureview", &OpenPage<hxk::View2D>, SchematicFigureType},
    };
    const auto* found = std::find_if(std::begin(pageKinds), std::end(pageKinds),
                                     [&](const PageKind& page) { return description.kind == page.kind; });
    if (found == std::end(pageKinds)) {
        throw std::invalid_argument("there is no view kind \"" + description.kind + "\"");
    }
    return found->open(description, found->type, services.recorder);
}

}  // namespace viewer
