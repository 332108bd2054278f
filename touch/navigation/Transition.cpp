// The base of camera transitions. Tested by tests/component/SpinAnimationTest.cpp.
#include "touch/navigation/Transition.h"

namespace animation {

Transition::Transition() = default;

Transition::~Transition() = default;

}  // namespace animation
