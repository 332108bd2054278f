// The bearing block, part by part, out of extrusions and revolutions. A cut corner, an opening on one side and the
// arrow make every direction look different, so that a picture shows how the model was turned.
#include "scene/MachinePart.h"

#include "host/dg/Functions.h"
#include "host/dg/Location.h"
#include "scene/MeshEdges.h"
#include "scene/Solids.h"

#include <numbers>

namespace scene {
namespace {

constexpr double AxisHeight = 0.25;  // of the shaft, in z
constexpr double BoreRadius = 0.46;
constexpr double ShaftRadius = 0.42;
constexpr double PlateTop = -1.3;
constexpr double UprightBack = -1.6;   // x of the face towards -X
constexpr double UprightFront = -0.7;  // x of the face towards +X
constexpr double UprightTop = 1.25;
constexpr int RoundSegments = 32;
constexpr int HoleSegments = 20;

// A frame whose W points along X, so that profiles are drawn in Y and Z.
dg::Location AlongX(double x) {
    return {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {x, 0, 0}};
}

// The same about the axis of the shaft.
dg::Location AlongShaft(double x) {
    return {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {x, 0, AxisHeight}};
}

dg::Location Flat(double z) {
    dg::Location placement;
    placement.SetPos({0, 0, z});
    return placement;
}

Part Named(const char* name, const dg::Color& color) {
    Part part;
    part.name = name;
    part.color = color;
    return part;
}

Part MakeBase() {
    Part part = Named("base", {0.55F, 0.60F, 0.66F, 1});
    // One corner is cut off, and the opening lies on one side: the plate has no symmetry.
    const Loop outline = {{-3, -1.8}, {2.3, -1.8}, {3, -1.1}, {3, 1.8}, {-3, 1.8}};
    const std::vector<Loop> holes = {
        MakeCircle({-2.5, -1.3}, 0.24, HoleSegments), MakeCircle({2.2, -1.2}, 0.24, HoleSegments),
        MakeCircle({2.5, 1.3}, 0.24, HoleSegments),   MakeCircle({-2.5, 1.3}, 0.24, HoleSegments),
        MakeCircle({1.2, 0.9}, 0.5, RoundSegments),
    };
    AddExtrusion(part, outline, holes, Flat(-1.7), PlateTop + 1.7);
    return part;
}

Part MakeUpright() {
    Part part = Named("upright", {0.25F, 0.47F, 0.76F, 1});
    const Loop outline = {{-1.4, PlateTop}, {1.4, PlateTop}, {1.1, UprightTop}, {-1.1, UprightTop}};
    AddExtrusion(part, outline, {MakeCircle({0, AxisHeight}, BoreRadius, RoundSegments)}, AlongX(UprightBack),
                 UprightFront - UprightBack);
    AddRevolution(part, MakeRectangle(0, BoreRadius, 0.35, 0.72), AlongShaft(UprightFront), RoundSegments);
    return part;
}

Part MakeRib() {
    Part part = Named("rib", {0.30F, 0.62F, 0.42F, 1});
    const dg::Location sideways{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, 0.16, 0}};
    AddExtrusion(part, {{UprightFront, PlateTop}, {0.75, PlateTop}, {UprightFront, -0.47}}, {}, sideways, 0.32);
    return part;
}

Part MakeCover() {
    Part part = Named("cover", {0.88F, 0.84F, 0.72F, 1});
    AddExtrusion(part, MakeRectangle(-2.2, -1.4, -0.1, 1.4), {}, Flat(UprightTop), 0.22);
    return part;
}

Part MakeArrow() {
    Part part = Named("arrow", {0.80F, 0.16F, 0.18F, 1});
    const Loop outline = {{-2.0, -0.28}, {-1.15, -0.28}, {-1.15, -0.75}, {-0.3, 0},
                          {-1.15, 0.75}, {-1.15, 0.28},  {-2.0, 0.28}};
    AddExtrusion(part, outline, {}, Flat(UprightTop + 0.22), 0.16);
    return part;
}

Part MakeShaft() {
    Part part = Named("shaft", {0.74F, 0.76F, 0.79F, 1});
    const Loop profile = {{-2.7, 0},  {2.8, 0},           {2.8, 0.22},         {2.72, 0.3},
                          {1.3, 0.3}, {1.3, ShaftRadius}, {-2.6, ShaftRadius}, {-2.7, ShaftRadius - 0.1}};
    AddRevolution(part, profile, AlongShaft(0), RoundSegments);
    AddBox(part, {1.75, -0.09, AxisHeight + 0.2}, {2.55, 0.09, AxisHeight + 0.42});
    return part;
}

Part MakeFlange() {
    Part part = Named("flange", {0.93F, 0.75F, 0.22F, 1});
    std::vector<Loop> holes = {MakeCircle({0, 0}, ShaftRadius, RoundSegments)};
    constexpr int boltCount = 6;
    for (int i = 0; i < boltCount; ++i) {
        const double angle = 2 * std::numbers::pi * i / boltCount;
        holes.push_back(MakeCircle({0.74 * dg::Cos(angle), 0.74 * dg::Sin(angle)}, 0.12, 12));
    }
    AddExtrusion(part, MakeCircle({0, 0}, 1.05, 48), holes, AlongShaft(1.0), 0.3);
    return part;
}

}  // namespace

std::shared_ptr<const Model> MakeMachinePart() {
    auto model = std::make_shared<Model>();
    model->name = "bearing block";
    model->parts = {MakeBase(), MakeUpright(), MakeRib(), MakeCover(), MakeArrow(), MakeShaft(), MakeFlange()};
    for (Part& part : model->parts) {
        part.edges = FindSharpEdges(part);
    }
    return model;
}

}  // namespace scene
