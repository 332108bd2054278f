// Pictures of 3D scenes.
#include "replay/picture/SceneRenderer.h"

#include "replay/picture/Clip.h"
#include "replay/picture/Image.h"
#include "scene/MeshEdges.h"
#include "scene/Polygon.h"
#include "tests/replay/PictureFixtures.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace pictures;

TEST(SceneRenderer, ShowsTheSideOfACubeThatFacesTheCamera) {
    // Faces in the colours of a colour cube: + sides plain, - sides mixed.
    const auto cube = MakeModel(
        {MakePatch({2, 0, 0}, {0, 2, 0}, {0, 0, 2}, Red), MakePatch({-2, 0, 0}, {0, 2, 0}, {0, 0, 2}, Cyan),
         MakePatch({0, 2, 0}, {2, 0, 0}, {0, 0, 2}, Green), MakePatch({0, -2, 0}, {2, 0, 0}, {0, 0, 2}, Magenta),
         MakePatch({0, 0, 2}, {2, 0, 0}, {0, 2, 0}, Blue), MakePatch({0, 0, -2}, {2, 0, 0}, {0, 2, 0}, Yellow)});
    const replay::SceneRenderer renderer(cube);
    struct Row {
        const char* name;
        dg::Location camera;
        const char* center;
    };
    const Row rows[] = {
        {"from +Z", {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 20}}, "blue"},
        {"from -Z", {{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, -20}}, "yellow"},
        {"from +X", {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {20, 0, 0}}, "red"},
        {"from -X", {{0, -1, 0}, {0, 0, 1}, {-1, 0, 0}, {-20, 0, 0}}, "cyan"},
        {"from +Y", {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}, {0, 20, 0}}, "green"},
        {"from -Y", {{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, -20, 0}}, "magenta"},
    };
    for (const Row& row : rows) {
        for (const bool orthographic : {true, false}) {
            const replay::Image image = renderer.Render(MakeView(row.camera, orthographic), 160, 100);
            EXPECT_EQ(NameOf(image.At(80, 50)), row.center) << row.name << ", orthographic " << orthographic;
            EXPECT_EQ(NameOf(image.At(10, 50)), "pale") << row.name << ": background beside the cube";
        }
    }
}

TEST(SceneRenderer, PatchesCoverTheirPixelsInAnyWindow) {
    const replay::SceneRenderer renderer(MakeModel({MakePatch({5, 0, 0}, 1, Red)}));
    viewer::ViewSnapshot view = MakeView(At(0, 0, 20));
    view.camera.SetProjection(-4, 12, -2, 8, -1, true);
    const replay::Image image = renderer.Render(view, 160, 100);
    // From 8 to 10 units right of the window's left border and from 7 to 9 below its upper one, of 10 pixels each.
    for (const auto& [x, name] : {std::pair{79, "pale"}, {80, "red"}, {99, "red"}, {100, "pale"}}) {
        EXPECT_EQ(NameOf(image.At(x, 80)), name) << x;
        EXPECT_EQ(NameOf(image.At(90, x - 10)), name) << x - 10;
    }
}

TEST(SceneRenderer, NearerSurfacesCoverFartherOnesInAnyOrder) {
    const scene::Part far = MakePatch({0, 0, -3}, 3, Red);
    const scene::Part near = MakePatch({0, 0, 3}, 1, Green);
    // A patch that leans through the far one: its left half is nearer.
    const scene::Part leaning = MakePatch({0, 0, -3}, {3, 0, -3}, {0, 0.5, 0}, Blue);
    for (const auto& parts : {std::vector{far, near, leaning}, std::vector{leaning, near, far}}) {
        const replay::SceneRenderer renderer(MakeModel(parts));
        for (const bool orthographic : {true, false}) {
            const replay::Image image = renderer.Render(MakeView(At(0, 0, 10), orthographic), 160, 100);
            EXPECT_EQ(NameOf(image.At(80, 50)), "green");
            EXPECT_EQ(NameOf(image.At(62, 50)), "blue") << "leaning, in front";
            EXPECT_EQ(NameOf(image.At(98, 50)), "red") << "leaning, behind";
        }
    }
}

TEST(SceneRenderer, PerspectiveCutsOffWhatLiesBehindTheEye) {
    // A floor one unit below the eye, from far behind it to far ahead.
    const replay::SceneRenderer renderer(MakeModel({MakePatch({0, -1, 0}, {0, 0, 1000}, {1000, 0, 0}, Green)}));
    const replay::Image image = renderer.Render(MakeView(At(0, 0, 0), false), 160, 100);
    for (const int x : {2, 80, 157}) {
        EXPECT_EQ(NameOf(image.At(x, 97)), "green");
        EXPECT_EQ(NameOf(image.At(x, 55)), "green") << "close under the horizon";
        EXPECT_EQ(NameOf(image.At(x, 48)), "pale") << "above the horizon";
    }
}

TEST(SceneRenderer, FacesTurnedDifferentlyHaveDifferentLight) {
    const auto brightnessOf = [](const dg::DVec3& a, const dg::DVec3& b) {
        const replay::SceneRenderer renderer(MakeModel({MakePatch({0, 0, 0}, a, b, Red)}));
        return renderer.Render(MakeView(At(0, 0, 20)), 160, 100).At(80, 50) >> 16U & 0xFFU;
    };
    const unsigned facing = brightnessOf({2, 0, 0}, {0, 2, 0});
    EXPECT_GT(facing, brightnessOf({2, 0, -4}, {0, 2, 0}) + 30);
    EXPECT_EQ(brightnessOf({0, 2, 0}, {2, 0, 0}), facing) << "the back is lit like the front";
}

TEST(SceneRenderer, EdgesAreDrawnWhereNothingCoversThem) {
    // Half a pixel aside, so that the edges run along the middle of pixels.
    scene::Part framed = MakePatch({0.05, 0.05, 0}, 2, Red);
    framed.edges = scene::FindSharpEdges(framed);
    scene::Part cover = MakePatch({0, -2, 1}, {1, 0, 0}, {0, 1, 0}, Green);
    for (const bool orthographic : {true, false}) {
        // Ten units away both cameras see ten pixels a unit at z = 0.
        const replay::SceneRenderer renderer(MakeModel({framed, cover}));
        const replay::Image front = renderer.Render(MakeView(At(0, 0, 10), orthographic), 160, 100);
        EXPECT_EQ(NameOf(front.At(80, 29)), "dark") << "upper edge";
        EXPECT_EQ(NameOf(front.At(60, 40)), "dark") << "left edge";
        EXPECT_EQ(NameOf(front.At(80, 40)), "red") << "no diagonal";
        EXPECT_EQ(NameOf(front.At(80, 69)), "green") << "covered edge";
        const dg::Location behind({-1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, -10});
        const replay::Image back = renderer.Render(MakeView(behind, orthographic), 160, 100);
        EXPECT_EQ(NameOf(back.At(80, 69)), "dark") << "seen from behind, the edge covers the cover";
    }
}

TEST(SceneRenderer, SelectedPartsAreOrange) {
    scene::Part left = MakePatch({-3, 0, 0}, 2, Blue);
    left.name = "left";
    scene::Part right = MakePatch({3, 0, 0}, 2, Blue);
    right.name = "right";
    viewer::ViewSnapshot view = MakeView(At(0, 0, 10));
    view.selectedParts = {"right", "unknown"};
    const replay::Image image = replay::SceneRenderer(MakeModel({left, right})).Render(view, 160, 100);
    EXPECT_EQ(NameOf(image.At(50, 50)), "blue");
    const std::uint32_t pixel = image.At(110, 50);
    EXPECT_GT(pixel >> 16U & 0xFFU, pixel >> 8U & 0xFFU);
    EXPECT_GT(pixel >> 8U & 0xFFU, (pixel & 0xFFU) + 20);
}

TEST(SceneRenderer, MarkupsStandInFrontAtAFixedShareOfTheView) {
    const replay::SceneRenderer renderer(MakeModel({MakePatch({0, 0, 5}, 4, Yellow)}));
    for (const double zoom : {1.0, 4.0}) {
        viewer::ViewSnapshot view = MakeView(At(1, 0, 20));
        view.camera.SetProjection(-8 * zoom, 8 * zoom, -5 * zoom, 5 * zoom, -1, true);
        view.markups = {{{1, 0, 0}, {2, 0, 0}, 0.3, 0.5, Blue}, {{1, 0, 0}, {0, 2, 0}, 0.3, 0, Red}};
        const replay::Image image = renderer.Render(view, 160, 100);
        // One unit is 12 % of the height: 12 pixels, whatever the zoom.
        EXPECT_EQ(NameOf(image.At(108, 50)), "blue") << "the ball";
        EXPECT_NE(NameOf(image.At(112, 50)), "blue") << "beyond the ball";
        EXPECT_EQ(NameOf(image.At(80, 28)), "red") << "up to its end";
        EXPECT_NE(NameOf(image.At(80, 23)), "red") << "beyond the end";
    }
}

TEST(SceneRenderer, ADegenerateViewIsAnEmptyPicture) {
    scene::Part bad = MakePatch({0, 0, 0}, 2, Red);
    bad.vertices[1] = {NaN, Infinity, 1e308};
    bad.edges = scene::FindSharpEdges(bad);
    const replay::SceneRenderer renderer(MakeModel({MakePatch({0, 0, 0}, 2, Red), bad}));
    viewer::ViewSnapshot good = MakeView(At(0, 0, 10));
    const replay::Image empty = replay::SceneRenderer(nullptr).Render(good, 40, 30);
    EXPECT_EQ(NameOf(renderer.Render(good, 40, 30).At(20, 15)), "red") << "a bad part does not spoil the others";

    viewer::ViewSnapshot broken = good;
    broken.markups = {{{0, 0, 0}, {1, 0, 0}, 0.1, 0.1, Red}};
    for (const auto& [left, viewPlane, eye] :
         {std::array{8.0, -1.0, 10.0}, {NaN, -1.0, 10.0}, {-8.0, 0.0, 10.0}, {-8.0, -1.0, Infinity}}) {
        broken.camera.SetProjection(left, 8, -5, 5, viewPlane, false);
        broken.camera.SetLocation(At(0, 0, eye));
        EXPECT_EQ(renderer.Render(broken, 40, 30).pixels, empty.pixels) << left << " " << viewPlane << " " << eye;
    }

    good.markups = {{{NaN, 0, 0}, {1, 0, 0}, 0.1, 0.1, Red},
                    {{9, 0, 0}, {NaN, 0, Infinity}, 0.1, 0.1, Red},
                    {{0, 0, 0}, {1e300, 0, 0}, Infinity, NaN, Red}};
    EXPECT_EQ(renderer.Render(good, 40, 30).pixels.size(), 1200U);
    // Axes without a direction, and a view from inside at an extreme zoom.
    good.camera.SetLocation({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
    EXPECT_EQ(renderer.Render(good, 40, 30).pixels.size(), 1200U);
    good.camera.SetLocation(At(0, 0, 0));
    good.camera.SetProjection(-1e-300, 1e-300, -1e-300, 1e-300, -1e-3, false);
    EXPECT_EQ(renderer.Render(good, 40, 30).pixels.size(), 1200U);
    EXPECT_TRUE(renderer.Render(good, 0, 30).pixels.empty());
    EXPECT_TRUE(renderer.Render(good, 40, -1).pixels.empty());
}

TEST(Clip, CutsLinesAndAreasAtTheRectangle) {
    const replay::ClipRect rect{0, 0, 10, 5};
    const auto line = replay::ClipLine({-10, 0}, {20, 3}, rect);
    ASSERT_TRUE(line);
    EXPECT_NEAR(line->first.x, 0, 1e-12);
    EXPECT_NEAR(line->first.y, 1, 1e-12);
    EXPECT_NEAR(line->second.x, 10, 1e-12);
    EXPECT_NEAR(line->second.y, 2, 1e-12);
    EXPECT_FALSE(replay::ClipLine({-1, 4.5}, {3, 9}, rect)) << "passes the corner outside";
    EXPECT_FALSE(replay::ClipLine({2, 2}, {NaN, 2}, rect));
    EXPECT_FALSE(replay::ClipLine({-1.7e308, 2}, {1.7e308, 2}, rect)) << "a difference that overflows";

    const scene::Loop area = replay::ClipArea({{-5, -5}, {5, -5}, {5, 50}, {-5, 50}}, rect);
    EXPECT_NEAR(scene::GetSignedArea(area), 25, 1e-12);
    EXPECT_TRUE(replay::ClipArea({{11, 0}, {12, 0}, {12, 1}}, rect).empty());
    EXPECT_TRUE(replay::ClipArea({{1, 1}, {NaN, 1}, {1, 2}}, rect).empty());
}

}  // namespace
