// The views of the reference viewer.
#pragma once

#include "host/dg/Box.h"
#include "host/dg/Camera3D.h"
#include "host/du/SmartPtr.h"
#include "host/hxk/Markup.h"
#include "host/hxk/View.h"
#include "viewer/ViewSpec.h"

#include <vector>

namespace viewer {

class BoundsService;
class CallRecorder;
class TransitionPlayer;

// What views report to; it all outlives the views' use.
struct ViewServices {
    CallRecorder& recorder;
    BoundsService& bounds;
    TransitionPlayer& transitions;
};

// A set of settings that inherits nothing.
class ViewerPreferences final : public hxk::Preferences {
public:
    explicit ViewerPreferences(const PreferenceValues& values) : m_values(values) {}
    bool GetBool(const du::Symbol& key, bool& value, bool* isOwn = nullptr) const override;

private:
    PreferenceValues m_values;
};

// What every view has: a scene, maybe preferences, and update groups. Base is one of the host's view classes.
template <class Base>
class CommonView : public Base {
public:
    CommonView(const ViewSpec& description, const hxk::ClassType& type) : m_type(type), m_scene(new hxk::Scene) {
        if (description.preferences) {
            m_preferences = new ViewerPreferences(*description.preferences);
        }
    }

    const hxk::ClassType& GetClassType() const override { return m_type; }
    void GetScene(du::SmartPtr<hxk::Scene>& scene) const override { scene = m_scene; }
    bool GetDefaultPreferences(du::SmartPtr<hxk::Preferences>& preferences) override {
        preferences = m_preferences;
        return m_preferences != nullptr;
    }
    // Nobody watches a headless view, so a group holds nothing back; its depth shows that groups are closed again.
    void BeginUpdateGroup() override { ++m_updateGroups; }
    void EndUpdateGroup() override { --m_updateGroups; }
    [[nodiscard]] int GetOpenUpdateGroups() const noexcept { return m_updateGroups; }

private:
    const hxk::ClassType& m_type;
    du::SmartPtr<hxk::Scene> m_scene;
    du::SmartPtr<hxk::Preferences> m_preferences;
    int m_updateGroups = 0;
};

// The 3D view. What comes through the host interface is recorded; what the viewer does itself is not.
class ViewerShapeView final : public CommonView<hxk::ShapeView> {
public:
    ViewerShapeView(const ViewSpec& description, const ViewServices& services);

    void GetCamera(dg::Camera3D& camera) const override { camera = m_camera; }
    void GetSpinCenter(dg::DPoint3D& center) const override { center = m_spinCenter; }
    const du::Symbol& GetNavMethod() const override { return m_navMethod; }
    double GetNavSpeed() const override { return m_navSpeed; }
    void GetBoundingBox(bool selectedOnly, bool visibleOnly, hxk::BoundingBoxEvent* request) override;
    // Also ends a transition that moves this view: whoever sets the camera takes it over.
    void SetCameraLocation(const dg::Location& location) override;
    // A perspective camera keeps its window. There is never a record of the change.
    void SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) override;
    void AddMarkup(const du::SmartPtr<hxk::Markup>& markup) override;
    void RemoveMarkup(const du::SmartPtr<hxk::Markup>& markup) override;

    // Moves the camera without a record, and without ending the transition that moves it.
    void PlaceCamera(const dg::Location& location) noexcept { m_camera.SetLocation(location); }
    // A camera that is set ends a transition that moves this view.
    void Change(const ViewChange& change);
    // Detaches all markups.
    void RemoveMarkups();

    [[nodiscard]] const dg::Camera3D& GetCurrentCamera() const noexcept { return m_camera; }
    [[nodiscard]] const dg::DBox& GetBounds() const noexcept { return m_bounds; }
    [[nodiscard]] const std::vector<du::SmartPtr<hxk::Markup>>& GetMarkups() const noexcept { return m_markups; }

private:
    std::vector<du::SmartPtr<hxk::Markup>>::iterator Find(const du::SmartPtr<hxk::Markup>& markup);
    void SetCamera(const CameraSpec& description);

    ViewServices m_services;
    dg::Camera3D m_camera;
    dg::DPoint3D m_spinCenter;
    dg::DBox m_bounds;
    du::Symbol m_navMethod;
    double m_navSpeed;
    std::vector<du::SmartPtr<hxk::Markup>> m_markups;
};

// Opens a view of the kind that is given. Throws std::invalid_argument for a kind that is not one of ViewKinds.
[[nodiscard]] du::SmartPtr<hxk::View> OpenView(const ViewSpec& description, const ViewServices& services);

}  // namespace viewer
