// The plug-in as a host loads it: found by its entry points, used, and really gone when it is closed.
#include "host/du/SmartPtr.h"
#include "host/platform/DynamicLibrary.h"
#include "host/workflow/ConstStrings.h"
#include "host/workflow/SimpleWorkflow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using Component = du::SmartPtr<workflow::Workflow>;

bool IsLoaded() {
    return platform::DynamicLibrary::IsLoaded(TOUCHNAV_PLUGIN);
}

// The plug-in, loaded from construction until Close.
class Plugin {
public:
    Plugin() : m_library(std::make_unique<platform::DynamicLibrary>(TOUCHNAV_PLUGIN)) {
        m_library->Find<void()>("HXDllInit")();
    }
    ~Plugin() { Close(); }
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    bool Create(const char* viewType, Component& component) const {
        using Factory = bool(const std::string&, const std::string&, const std::string&, Component&);
        return m_library->Find<Factory>("HXDllCreateComponent")(viewType, "workflow", "touch", component);
    }

    void Close() {
        if (m_library != nullptr) {
            m_library->Find<void()>("HXDllTerminate")();
            m_library.reset();
        }
    }

private:
    std::unique_ptr<platform::DynamicLibrary> m_library;
};

// Runs the code that could keep the plug-in: its statics, its lists, an exchange of names with the host.
void Use(workflow::Workflow& component) {
    component.HandleMsg(workflow::TimerMsg(workflow::ConstStrings::MsgTimer, 1000, 16));
    component.HandleMsg(workflow::TouchMsg(workflow::ConstStrings::MsgTouch, workflow::TouchFrame()));
    component.HandleMsg(workflow::Msg(workflow::ConstStrings::MsgUpdateStatusBar));
    EXPECT_EQ(component.GetName(), "touch");
}

TEST(Unload, ThePluginLeavesEveryTimeItIsClosedAndItsNamesStayValid) {
    ASSERT_FALSE(IsLoaded()) << "this program must not be linked with it";
    for (int round = 0; round < 3; ++round) {
        Plugin plugin;
        EXPECT_TRUE(IsLoaded());
        Component component;
        ASSERT_TRUE(plugin.Create("shapeview", component));
        EXPECT_EQ(component->GetReferenceCount(), 1);
        Use(*component);
        const du::Symbol name = component->GetName();
        component.Reset();
        plugin.Close();
        EXPECT_FALSE(IsLoaded()) << "round " << round;
        EXPECT_EQ(name, "touch");
    }
}

TEST(Unload, TwoComponentsLiveAtOnceAndARefusalChangesNothing) {
    Plugin plugin;
    Component first;
    Component second;
    ASSERT_TRUE(plugin.Create("shapeview", first));
    ASSERT_TRUE(plugin.Create("drawingview", second));
    first->SetActive(false);
    EXPECT_TRUE(second->IsActive());
    const Component copy = second;
    EXPECT_FALSE(plugin.Create("Drawingview", second));
    EXPECT_EQ(second, copy);
    ASSERT_TRUE(plugin.Create("imageview", second));
    EXPECT_EQ(copy->GetReferenceCount(), 1) << "what the pointer held before is released";
    first.Reset();
    Use(*second);
    Use(*copy);
}

}  // namespace
