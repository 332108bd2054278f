// The smallest host that a touch frame needs: views that only store, and a manager that drops everything. What a frame
// costs here is what the component costs.
#pragma once

#include "host/du/Localizer.h"
#include "host/hxk/View.h"
#include "host/workflow/SimpleWorkflow.h"

#include <array>
#include <cstdint>
#include <string>

namespace bench {

class StoredShapeView : public hxk::ShapeView {
public:
    void GetScene(du::SmartPtr<hxk::Scene>& scene) const override { scene = nullptr; }
    bool GetDefaultPreferences(du::SmartPtr<hxk::Preferences>& /*preferences*/) override { return false; }
    void GetCamera(dg::Camera3D& camera) const override { camera = m_camera; }
    void GetSpinCenter(dg::DPoint3D& center) const override { center = {}; }
    const du::Symbol& GetNavMethod() const override { return m_navMethod; }
    double GetNavSpeed() const override { return 1.0; }
    // Answers at once, so that zoom and flight have a scale.
    void GetBoundingBox(bool selectedOnly, bool visibleOnly, hxk::BoundingBoxEvent* request) override;
    void SetCameraLocation(const dg::Location& location) override;
    void SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) override;
    void AddMarkup(const du::SmartPtr<hxk::Markup>& /*markup*/) override {}
    void RemoveMarkup(const du::SmartPtr<hxk::Markup>& /*markup*/) override {}
    void BeginUpdateGroup() override {}
    void EndUpdateGroup() override {}

    void SetUp(bool orthographic, const char* navMethod);
    [[nodiscard]] std::uint64_t GetChangeCount() const noexcept { return m_changes; }

private:
    dg::Camera3D m_camera;
    du::Symbol m_navMethod;
    std::uint64_t m_changes = 0;
};

class StoredPage : public hxk::DrawingView {
public:
    void GetScene(du::SmartPtr<hxk::Scene>& scene) const override { scene = nullptr; }
    bool GetDefaultPreferences(du::SmartPtr<hxk::Preferences>& /*preferences*/) override { return false; }
    void GetOrthoWidth(double& width) const override { width = m_width; }
    void SetOrthoWidth(double width) override;
    void SetPosition(const dg::DPoint3D& position) override;
    void GetViewSize(unsigned int& width, unsigned int& height) const override;
    void GetViewLocation(dg::Location& location) const override { location = m_location; }
    void BeginUpdateGroup() override {}
    void EndUpdateGroup() override {}

    [[nodiscard]] std::uint64_t GetChangeCount() const noexcept { return m_changes; }

private:
    dg::Location m_location;
    double m_width = 16;
    std::uint64_t m_changes = 0;
};

class QuietManager : public workflow::WorkflowManagerCore {
public:
    void SendMessage(const workflow::Msg& /*message*/) override { ++m_messages; }
    void SendModeMessage(const du::Symbol&, const du::Symbol&, int, const du::SmartPtr<du::RefCounted>&) override {}
    bool SetStatusMessage(int /*slot*/, const std::string& /*text*/) override { return true; }
    void UpdateStatusMessage() override {}
    bool ManageObject(const du::SmartPtr<dom::ManagedObject>& /*object*/) override { return true; }
    void StopTransition() override {}
    std::int64_t GetTransitionContext(int /*kind*/) override { return 0; }
    void GetTransitionQueue(du::SmartPtr<workflow::TransitionQueue>& queue) override { queue = nullptr; }

    [[nodiscard]] std::uint64_t GetMessageCount() const noexcept { return m_messages; }

private:
    std::uint64_t m_messages = 0;
};

// Texts longer than a small string, so that copying one would show up as an allocation.
class LongTexts : public du::StringTableProvider {
public:
    const std::string* FindText(const char* /*table*/, const char* /*key*/) const override { return &m_text; }

private:
    std::string m_text = "Touch input: the current mode is navigate, one finger spins the model";
};

// A component from the plug-in, attached to one of the host's views.
class BenchHost {
public:
    // Loads the plug-in. Throws std::runtime_error with the reason when it cannot.
    explicit BenchHost(const char* pluginPath);
    ~BenchHost();
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;

    // Make a fresh component on a view. The switch is an environment switch that is present, or null.
    void OpenShapeView(bool orthographic, const char* navMethod, const char* environmentSwitch);
    void OpenPage();
    // Puts the floor on a 3D view in the component's place.
    void OpenFloor();

    [[nodiscard]] workflow::SimpleWorkflow& GetWorkflow() const noexcept { return *m_workflow; }
    // How often the component has changed a view or sent a message.
    [[nodiscard]] std::uint64_t GetEffectCount() const;

private:
    void MakeComponent();
    void MakeShapeView(bool orthographic, const char* navMethod);

    LongTexts m_texts;
    QuietManager m_manager;
    du::SmartPtr<StoredShapeView> m_shapeView;
    du::SmartPtr<StoredPage> m_page;
    void* m_library = nullptr;
    du::SmartPtr<workflow::Workflow> m_component;
    workflow::SimpleWorkflow* m_workflow = nullptr;
};

}  // namespace bench
