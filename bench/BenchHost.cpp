// Setters count and store at once, boxes are answered while they are asked for: the host adds next to nothing to what
// is measured. The component is the loaded plug-in, so that calls cross the border between libraries as in a viewer.
#include "bench/BenchHost.h"

#include "bench/Floor.h"
#include "host/platform/Environment.h"
#include "touch/Factory.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string_view>

namespace bench {
namespace {

constexpr unsigned int ViewWidth = 1280;
constexpr unsigned int ViewHeight = 800;

// At most one switch is present, whatever the process environment says.
class OneSwitch : public platform::EnvironmentProvider {
public:
    explicit OneSwitch(const char* name) : m_name(name == nullptr ? "" : name) {}
    bool IsPresent(const char* name) const override { return m_name == name; }

private:
    std::string_view m_name;
};

}  // namespace

void StoredShapeView::GetBoundingBox(bool /*selectedOnly*/, bool /*visibleOnly*/, hxk::BoundingBoxEvent* request) {
    request->SetBox(dg::DBox({-2, -2, -2}, {2, 2, 2}));
    request->Complete(0);
}

void StoredShapeView::SetCameraLocation(const dg::Location& location) {
    m_camera.SetLocation(location);
    ++m_changes;
}

void StoredShapeView::SetOrthographicWidth(double /*width*/, du::SmartPtr<du::RefCounted>& change) {
    change = nullptr;
    ++m_changes;
}

void StoredShapeView::SetUp(bool orthographic, const char* navMethod) {
    dg::Location location;
    location.SetPos({0, 0, 20});
    m_camera.SetLocation(location);
    m_camera.SetViewport(ViewWidth, ViewHeight);
    if (orthographic) {
        m_camera.SetProjection(-8, 8, -5, 5, -1, true);
    } else {
        m_camera.SetProjection(-0.48, 0.48, -0.3, 0.3, -1, false);
    }
    m_navMethod = du::Symbol(navMethod);
}

void StoredPage::SetOrthoWidth(double /*width*/) {
    ++m_changes;
}

void StoredPage::SetPosition(const dg::DPoint3D& position) {
    m_location.SetPos(position);
    ++m_changes;
}

void StoredPage::GetViewSize(unsigned int& width, unsigned int& height) const {
    width = ViewWidth;
    height = ViewHeight;
}

BenchHost::BenchHost(const char* pluginPath) : m_library(dlopen(pluginPath, RTLD_NOW | RTLD_LOCAL)) {
    if (m_library == nullptr) {
        throw std::runtime_error(dlerror());
    }
    du::Localizer::SetProvider(&m_texts);
}

BenchHost::~BenchHost() {
    m_component = nullptr;
    du::Localizer::SetProvider(nullptr);
    dlclose(m_library);
}

void BenchHost::MakeComponent() {
    auto* create = reinterpret_cast<decltype(&HXDllCreateComponent)>(dlsym(m_library, "HXDllCreateComponent"));
    if (create == nullptr || !create("shapeview", "workflow", "touch", m_component)) {
        throw std::runtime_error("the plug-in makes no component");
    }
    m_workflow = static_cast<workflow::SimpleWorkflow*>(m_component.Get());
    m_workflow->SetManager(&m_manager);
}

void BenchHost::OpenShapeView(bool orthographic, const char* navMethod, const char* environmentSwitch) {
    const OneSwitch environment(environmentSwitch);
    platform::SetEnvironmentProvider(&environment);
    MakeComponent();
    platform::SetEnvironmentProvider(nullptr);
    MakeShapeView(orthographic, navMethod);
    m_workflow->SetView(m_shapeView);
}

void BenchHost::MakeShapeView(bool orthographic, const char* navMethod) {
    m_shapeView = new StoredShapeView;
    m_shapeView->SetUp(orthographic, navMethod);
}

void BenchHost::OpenPage() {
    MakeComponent();
    m_page = new StoredPage;
    m_workflow->SetView(m_page);
}

void BenchHost::OpenFloor() {
    MakeShapeView(true, "standard");
    m_workflow = new FloorWorkflow(m_shapeView);
    m_component = m_workflow;
}

std::uint64_t BenchHost::GetEffectCount() const {
    return (m_shapeView ? m_shapeView->GetChangeCount() : 0) + (m_page ? m_page->GetChangeCount() : 0) +
           m_manager.GetMessageCount();
}

}  // namespace bench
