// The host library has one provider of each kind for the process, and several viewers may be alive. So platforms form a
// stack: the latest answers, and one may go from the middle.
#include "viewer/ViewerPlatform.h"

#include "host/platform/Display.h"

#include <algorithm>
#include <string_view>

namespace viewer {
namespace {

struct TableText {
    const char* key;
    std::string text;
};

constexpr std::string_view TableName = "hxbase:hxmodulesStrings";

}  // namespace

ViewerPlatform* ViewerPlatform::s_top = nullptr;

ViewerPlatform::ViewerPlatform(const HostSettings& settings, CallRecorder& recorder)
    : m_recorder(recorder),
      m_ppiX(settings.ppiX),
      m_ppiY(settings.ppiY),
      m_switches(settings.environment),
      m_below(s_top) {
    Install(this);
}

ViewerPlatform::~ViewerPlatform() {
    if (s_top == this) {
        Install(m_below);
        return;
    }
    ViewerPlatform* above = s_top;
    while (above->m_below != this) {
        above = above->m_below;
    }
    above->m_below = m_below;
}

void ViewerPlatform::Install(ViewerPlatform* platform) noexcept {
    s_top = platform;
    if (platform != nullptr) {
        platform::SetPixelsPerInch(platform->m_ppiX, platform->m_ppiY);
    } else {
        platform::UseSystemPixelsPerInch();
    }
    platform::SetEnvironmentProvider(platform);
    du::Localizer::SetProvider(platform);
    dp::HXTracer::SetSink(platform);
    hxk::Markup::SetListener(platform);
}

bool ViewerPlatform::IsPresent(const char* name) const {
    return std::find(m_switches.begin(), m_switches.end(), name) != m_switches.end();
}

const std::string* ViewerPlatform::FindText(const char* table, const char* key) const {
    static const TableText texts[] = {
        {"TouchNavigateMode", "Touch: navigate"},
        {"TouchMultiSelectMode", "Touch: select"},
    };
    if (table != TableName) {
        return nullptr;
    }
    for (const TableText& entry : texts) {
        if (std::string_view(entry.key) == key) {
            return &entry.text;
        }
    }
    return nullptr;
}

bool ViewerPlatform::IsEnabled(const char* /*module*/, const char* /*className*/) const {
    return true;
}

void ViewerPlatform::Write(const char* /*module*/, const char* /*className*/, dp::TraceType /*type*/,
                           const std::string& text) {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(TraceCall{text});
    }
}

void ViewerPlatform::OnMarkupContentChanged(const hxk::Markup& /*markup*/) {
    if (m_recorder.IsEnabled()) {
        m_recorder.Add(PlainCall{"NotifyContentChanged"});
    }
}

}  // namespace viewer
