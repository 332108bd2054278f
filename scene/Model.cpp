// The box counts every vertex, also one that no triangle uses.
#include "scene/Model.h"

namespace scene {

dg::DBox Model::GetBounds() const {
    dg::DBox bounds;
    for (const Part& part : parts) {
        for (const dg::DPoint3D& vertex : part.vertices) {
            bounds.Enclose(vertex);
        }
    }
    return bounds;
}

}  // namespace scene
