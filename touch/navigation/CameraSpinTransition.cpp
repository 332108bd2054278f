// The transition of a released spin. Tested by tests/component/SpinAnimationTest.cpp.
#include "touch/navigation/CameraSpinTransition.h"

namespace animation {

CameraSpinTransition::CameraSpinTransition() {
    kind = Kind;
}

CameraSpinTransition::~CameraSpinTransition() = default;

}  // namespace animation
