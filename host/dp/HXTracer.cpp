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

TraceFormatter::~TraceFormatter() {
    if (m_enabled && s_sink != nullptr) {
        s_sink->Write(m_module, m_className, m_type, m_text.str());
    }
}

void HXTracer::SetSink(TraceSink* sink) noexcept {
    s_sink = sink;
}

}  // namespace dp
