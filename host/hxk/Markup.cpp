// Defaults of a markup's hooks, so that a plug-in overrides only what it needs, and the listener for changes, one for
// the process. The virtual tables of the smaller markup interfaces are here too.
#include "host/hxk/Markup.h"

#include "host/hxk/MarkupHolder.h"
#include "host/hxmk/Markup.h"
#include "host/hxmu/MarkupData.h"

namespace hxk {
namespace {

MarkupListener* s_listener = nullptr;

}  // namespace

constinit const ClassType Markup::CLASS_TYPE{8, "Markup", &Object::CLASS_TYPE};

MarkupHolder::~MarkupHolder() = default;
MarkupListener::~MarkupListener() = default;
ObjectWithRWLock::~ObjectWithRWLock() = default;

Markup::Markup() = default;
Markup::~Markup() = default;

const ClassType& Markup::GetClassType() const {
    return CLASS_TYPE;
}

void Markup::OnApplyPreferences(const Preferences& /*preferences*/) {}

bool Markup::IsEphemeral() const {
    return false;
}

bool Markup::IgnorePickFilter() const {
    return false;
}

void Markup::OnSetSelected(bool /*selected*/) {}

void Markup::OnChildSetSelected(bool /*selected*/) {}

void Markup::OnRemovedFromHolder() {}

void Markup::OnSetVisibility(bool /*visible*/) {}

void Markup::DoPreDrawFixup() {}

void Markup::Translate(const dg::DVec3& /*offset*/) {}

void Markup::SetAssociationHighlighted(bool /*highlighted*/) {}

du::SmartPtr<Markup> Markup::ConstructShadow() const {
    return nullptr;
}

du::SmartPtr<Markup> Markup::GetShadow() const {
    return nullptr;
}

std::vector<dg::DPoint3D> Markup::GetRubberBands() const {
    return {};
}

void Markup::SetContent(const du::SmartPtr<hxmu::MarkupData>& content, bool visible) {
    m_content = content;
    m_visible = visible;
}

void Markup::NotifyContentChanged() {
    if (s_listener != nullptr) {
        s_listener->OnMarkupContentChanged(*this);
    }
}

void Markup::SetListener(MarkupListener* listener) noexcept {
    s_listener = listener;
}

}  // namespace hxk

namespace hxmk {

Markup::Markup() = default;
Markup::~Markup() = default;

}  // namespace hxmk
