#include "host/hxk/Observable.h"

namespace hxk {

Observable::~Observable() = default;

Observable::UpdateGroup::UpdateGroup(const du::SmartPtr<Observable>& observable) : m_observable(observable) {
    if (m_observable) {
        m_observable->BeginUpdateGroup();
    }
}

Observable::UpdateGroup::~UpdateGroup() {
    if (m_observable) {
        m_observable->EndUpdateGroup();
    }
}

}  // namespace hxk
