#include "tests/viewer/ViewerFixtures.h"

#include <gmock/gmock.h>

#include <array>

namespace viewer {
namespace {

using testing::ElementsAre;

std::array<double, 4> GetWindow(const dg::Camera3D& camera) {
    std::array<double, 4> window{};
    double viewPlane = 0;
    bool orthographic = false;
    camera.GetProjection(window[0], window[1], window[2], window[3], viewPlane, orthographic);
    return window;
}

TEST(ShapeView, TakesAWidthAboutTheMiddleOfItsWindow) {
    struct Row {
        const char* name;
        std::array<double, 4> window;
        bool orthographic;
        std::array<double, 4> after;  // a width of 4 was set
    };
    const Row rows[] = {
        {"about the origin", {-8, 8, -5, 5}, true, {-2, 2, -1.25, 1.25}},
        {"about another place", {0, 2, 10, 14}, true, {-1, 3, 8, 16}},
        {"a perspective camera", {-8, 8, -5, 5}, false, {-8, 8, -5, 5}},
        {"a window without width", {1, 1, -5, 5}, true, {1, 1, -5, 5}},
    };
    for (const Row& row : rows) {
        Services services;
        ViewSpec description;
        description.camera = {row.orthographic, row.window[0], row.window[1], row.window[2], row.window[3], 1, {}};
        const auto view = services.OpenShapeView(description);
        du::SmartPtr<du::RefCounted> change(new hxk::Scene);
        view->SetOrthographicWidth(4, change);
        EXPECT_EQ(GetWindow(view->GetCurrentCamera()), row.after) << row.name;
        EXPECT_EQ(change, nullptr);
        EXPECT_THAT(services.GetCallNames(), ElementsAre("SetOrthographicWidth"));
    }
}

TEST(ShapeView, AChangeLeavesWhatItDoesNotName) {
    Services services;
    ViewSpec description;
    description.spinCenter = {1, 2, 3};
    description.navSpeed = 2;
    const auto view = services.OpenShapeView(description);
    ViewChange change;
    change.navMethod = "explore";
    change.camera = CameraSpec{false, -1, 1, -1, 1, 1, {}};
    view->Change(change);
    dg::DPoint3D center;
    view->GetSpinCenter(center);
    EXPECT_EQ(center, description.spinCenter);
    EXPECT_EQ(view->GetNavSpeed(), 2);
    EXPECT_TRUE(view->GetNavMethod() == "explore");
    EXPECT_EQ(view->GetCurrentCamera().GetViewportWidth(), description.width)
        << "a camera is set without the view's size";
    change = {};
    change.spinCenter = dg::DPoint3D(4, 5, 6);
    view->Change(change);
    EXPECT_EQ(GetWindow(view->GetCurrentCamera()), (std::array<double, 4>{-1, 1, -1, 1}));
}

TEST(ShapeView, HoldsAMarkupOnceUntilItIsRemoved) {
    struct TestMarkup final : hxk::Markup {
        void OnRemovedFromHolder() override { ++removals; }
        int removals = 0;
    };
    Services services;
    const auto view = services.OpenShapeView({});
    auto* raw = new TestMarkup;
    const du::SmartPtr<hxk::Markup> markup(raw);
    view->AddMarkup(markup);
    view->AddMarkup(markup);
    view->AddMarkup(nullptr);
    EXPECT_EQ(raw->GetReferenceCount(), 2);
    view->RemoveMarkup(markup);
    view->RemoveMarkup(markup);
    EXPECT_EQ(raw->GetReferenceCount(), 1);
    EXPECT_EQ(raw->removals, 1);
    EXPECT_THAT(services.GetCallNames(),
                ElementsAre("AddMarkup", "AddMarkup", "AddMarkup", "RemoveMarkup", "RemoveMarkup"));
}

}  // namespace
}  // namespace viewer
