// Draws what a shape view shows.
#pragma once

#include "host/dg/Vec.h"
#include "replay/picture/Image.h"
#include "scene/MeshEdges.h"
#include "scene/Model.h"
#include "viewer/ViewSnapshot.h"

#include <array>
#include <memory>
#include <vector>

namespace replay {

// The length of one markup unit in a picture, as a share of the picture's height.
inline constexpr double MarkupUnitShare = 0.12;

// Renders views of one model: lit surfaces with their visible edges and outlines, selected parts in orange, markups in
// front of all. What is worth keeping between pictures is worked out once.
class SceneRenderer {
public:
    // A null model has no parts.
    explicit SceneRenderer(std::shared_ptr<const scene::Model> model);

    // A picture of width x height pixels through the view's camera; the camera's own viewport does not matter. Only
    // the background for a camera that sees nothing; without pixels for a size that is not positive.
    [[nodiscard]] Image Render(const viewer::ViewSnapshot& view, int width, int height) const;

    // A part with what its drawing needs.
    struct Mesh {
        const scene::Part* part;
        std::vector<std::array<dg::DVec3, 3>> normals;
        std::vector<scene::MeshEdge> smoothEdges;  // outlines in some views
    };

private:
    std::shared_ptr<const scene::Model> m_model;
    std::vector<Mesh> m_meshes;
    double m_size = 0;  // the diagonal of the model
};

}  // namespace replay
