// The transition of a released spin: the camera is carried about the spin centre.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/du/SmartPtr.h"
#include "host/hxk/View.h"
#include "touch/LiveObjects.h"
#include "touch/navigation/Transition.h"

namespace animation {

class CameraSpinTransition : public Transition {
public:
    // The kind of every transition of this class; what has it may be read as one.
    static constexpr std::int32_t Kind = 15;

    CameraSpinTransition();
    ~CameraSpinTransition() override;

    du::SmartPtr<hxk::ShapeView> view;
    dg::Location start;       // of the camera, when the finger lifted
    dg::Location end;         // one sampled rotation further
    dg::DPoint3D spinCenter;  // world

private:
    touch::LiveObject m_live{touch::ObjectKind::Transition};
};

}  // namespace animation
