// The class descriptions of the views, with the host's numbers. They are constants of the host library, ready before
// any constructor runs, because they are compared by address.
#include "host/hxk/View.h"

namespace hxk {

constinit const ClassType View::CLASS_TYPE{2, "View", &Object::CLASS_TYPE};
constinit const ClassType ShapeView::CLASS_TYPE{3, "ShapeView", &View::CLASS_TYPE};
constinit const ClassType View2D::CLASS_TYPE{4, "View2D", &View::CLASS_TYPE};
constinit const ClassType DrawingView::CLASS_TYPE{5, "DrawingView", &View2D::CLASS_TYPE};
constinit const ClassType ImageView::CLASS_TYPE{6, "ImageView", &View2D::CLASS_TYPE};
constinit const ClassType DocumentView::CLASS_TYPE{7, "DocumentView", &View2D::CLASS_TYPE};

Scene::~Scene() = default;
Preferences::~Preferences() = default;
View::~View() = default;
ShapeView::~ShapeView() = default;
View2D::~View2D() = default;
DrawingView::~DrawingView() = default;
ImageView::~ImageView() = default;
DocumentView::~DocumentView() = default;

const ClassType& View::GetClassType() const {
    return CLASS_TYPE;
}

const ClassType& ShapeView::GetClassType() const {
    return CLASS_TYPE;
}

const ClassType& View2D::GetClassType() const {
    return CLASS_TYPE;
}

const ClassType& DrawingView::GetClassType() const {
    return CLASS_TYPE;
}

const ClassType& ImageView::GetClassType() const {
    return CLASS_TYPE;
}

const ClassType& DocumentView::GetClassType() const {
    return CLASS_TYPE;
}

}  // namespace hxk
