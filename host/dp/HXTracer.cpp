// One sink for the whole process. Whether a channel is enabled is asked once for each text, before anything of it is
// formatted, so that a channel that is off costs next to nothing.
#include "host/dp/HXTracer.h"

namespace dp {
namespace {

TraceSink* s_sink = nullptr;

}  // namespace

TraceSink::~TraceSink() = default;

TraceFormatter::TraceFormatter(const char* module, const char* className, TraceType type)
    : m_module(module),
      m_className(className),
      m_type(type),
      m_enabled(s_sink != nullptr && s_sink->IsEnabled(module, className)) {}

// What the sink throws ends here, and its text is lost: a destructor has nobody to tell.
TraceFormatter::~TraceFormatter() {
    if (!m_enabled || s_sink == nullptr) {
        return;
    }
    try {
        s_sink->Write(m_module, m_className, m_type, m_text.str());
    } catch (...) {  // NOLINT(bugprone-empty-catch)
    }
}

void HXTracer::SetSink(TraceSink* sink) noexcept {
    s_sink = sink;
}

}  // namespace dp
