// Kinds are shape views, 2D views, and "other", which stands for every view that the component does not know.
#include "viewer/ViewSpec.h"

#include <algorithm>

namespace viewer {

bool IsShapeViewKind(const std::string& kind) {
    return kind == "shapeview";
}

bool Is2DViewKind(const std::string& kind) {
    return std::find(ViewKinds.begin(), ViewKinds.end(), kind) != ViewKinds.end() && kind != "shapeview" &&
           kind != "other";
}

}  // namespace viewer
