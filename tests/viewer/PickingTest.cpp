#include "viewer/Picking.h"

#include "host/dg/Location.h"
#include "tests/viewer/ViewerFixtures.h"

#include <gmock/gmock.h>

namespace viewer {
namespace {

using testing::ElementsAre;

// 800 x 600 pixels, a window of 8 x 6 about (1, 0), seen from z = 10.
dg::Camera3D MakeCamera(bool orthographic) {
    dg::Camera3D camera;
    camera.SetViewport(800, 600);
    camera.SetProjection(-3, 5, -3, 3, -10, orthographic);
    dg::Location location;
    location.SetPos({0, 0, 10});
    camera.SetLocation(location);
    return camera;
}

TEST(Picking, APointIsSeenAtItsPixel) {
    struct Row {
        const char* name;
        bool orthographic;
        dg::DPoint3D point;
        std::optional<dg::DPoint2D> pixel;
    };
    const Row rows[] = {
        {"orthographic, lower left corner", true, {-3, -3, 0}, dg::DPoint2D(0, 0)},
        {"orthographic, depth does not count", true, {5, 3, -77}, dg::DPoint2D(800, 600)},
        {"orthographic, behind the eye", true, {1, 0, 50}, dg::DPoint2D(400, 300)},
        {"perspective, on the view plane", false, {5, -3, 0}, dg::DPoint2D(800, 0)},
        {"perspective, twice as far", false, {4, 2, -10}, dg::DPoint2D(500, 400)},
        {"perspective, beside the eye", false, {1, 0, 10}, std::nullopt},
        {"perspective, behind the eye", false, {0, 0, 11}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto pixel = ProjectPoint(MakeCamera(row.orthographic), row.point);
        ASSERT_EQ(pixel.has_value(), row.pixel.has_value());
        if (pixel) {
            EXPECT_NEAR(pixel->x, row.pixel->x, 1e-9);
            EXPECT_NEAR(pixel->y, row.pixel->y, 1e-9);
        }
    }
}

TEST(Picking, EveryPointOfARayIsSeenAtThePixelOfTheRay) {
    for (const bool orthographic : {true, false}) {
        dg::Camera3D camera = MakeCamera(orthographic);
        camera.SetLocation(dg::Location({0, 0, -1}, {0.6F, 0.8F, 0}, {0.8F, -0.6F, 0}, {4, -5, 6}));
        for (const dg::DPoint2D& at : {dg::DPoint2D(0, 0), dg::DPoint2D(799, 1), dg::DPoint2D(123, 456)}) {
            const auto ray = MakeRay(camera, at.x, at.y);
            ASSERT_TRUE(ray);
            for (const double share : {0.5, 3.0}) {
                const auto pixel = ProjectPoint(camera, ray->origin + ray->direction * share);
                ASSERT_TRUE(pixel);
                EXPECT_NEAR(pixel->x, at.x, 1e-4) << orthographic;
                EXPECT_NEAR(pixel->y, at.y, 1e-4) << orthographic;
            }
        }
    }
}

TEST(Picking, TheNearestPartUnderAPixelIsPicked) {
    scene::Model model;
    model.parts = {MakeSquare("far", 0, 0, -5), MakeSquare("near", 1, 0, 0), MakeSquare("behind the eye", 0, 0, 15),
                   MakeSquare("above", 0, 2.5, 0), scene::Part{}};
    struct Row {
        const char* name;
        bool orthographic;
        dg::DPoint3D through;  // the pixel at which this point is seen
        std::optional<std::size_t> part;
    };
    const Row rows[] = {
        {"two parts, the nearer", false, {0.5, 0, 0}, 1},
        {"past the edge of the nearer", false, {-0.2, 0, 0}, 0},
        {"orthographic cameras see what is nearest along the line", true, {0.5, 0, 0}, 2},
        {"beside everything", true, {4, -2, 0}, std::nullopt},
        {"perspective makes the far one small", false, {-0.7, 0, 0}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const dg::Camera3D camera = MakeCamera(row.orthographic);
        const auto pixel = ProjectPoint(camera, row.through);
        ASSERT_TRUE(pixel);
        EXPECT_EQ(PickPart(camera, model, pixel->x, pixel->y), row.part);
    }
    std::swap(model.parts[0], model.parts[1]);
    EXPECT_EQ(PickPart(MakeCamera(false), model, 350, 300), 0U) << "the order of the parts does not count";
}

TEST(Picking, APartIsInsideABandWithAllItsVerticesOrNotAtAll) {
    scene::Model model;
    model.parts = {MakeSquare("left", -1, 0, 0), MakeSquare("right", 3, 0, 0), scene::Part{}};
    struct Row {
        const char* name;
        RubberBand band;
        std::vector<std::size_t> parts;
    };
    const Row rows[] = {
        {"drawn from the upper right corner down", {800, 600, 0, 0}, {0, 1}},
        {"exactly the left square", {100, 200, 300, 400}, {0}},
        {"one pixel short of it", {101, 200, 300, 400}, {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FindPartsInside(MakeCamera(true), model, row.band), row.parts) << row.name;
    }
}

TEST(Picking, AViewWithoutPixelsShowsNothing) {
    scene::Model model;
    model.parts = {MakeSquare("part", 0, 0, 0)};
    dg::Camera3D camera = MakeCamera(true);
    camera.SetViewport(0, 600);
    EXPECT_FALSE(MakeRay(camera, 0, 0));
    EXPECT_FALSE(ProjectPoint(camera, {0, 0, 0}));
    EXPECT_FALSE(PickPart(camera, model, 0, 0));
    EXPECT_THAT(FindPartsInside(camera, model, {0, 0, 9, 9}), ElementsAre());
    camera.SetViewport(800, 600);
    camera.SetProjection(1, 1, -3, 3, -1, true);
    EXPECT_FALSE(ProjectPoint(camera, {0, 0, 0})) << "a window without width";
}

}  // namespace
}  // namespace viewer
