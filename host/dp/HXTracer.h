// The trace channel: diagnostic text for developers of the host. The host decides where it goes.
#pragma once

#include "host/HostApi.h"

#include <sstream>
#include <string>

namespace dp {

enum TraceType {
    TraceError = 0,
    TraceInfo = 1,
};

// Where a host takes trace text.
class HOST_API TraceSink {
public:
    virtual ~TraceSink();
    // Asked before a text is formatted; false drops it.
    virtual bool IsEnabled(const char* module, const char* className) const = 0;
    // Takes one finished text, line end included.
    virtual void Write(const char* module, const char* className, TraceType type, const std::string& text) = 0;
};

// A text stream that hands its text to the sink when it is destroyed, if the channel is enabled.
class HOST_API TraceFormatter {
public:
    TraceFormatter(const char* module, const char* className, TraceType type);
    ~TraceFormatter();
    TraceFormatter(const TraceFormatter&) = delete;
    TraceFormatter& operator=(const TraceFormatter&) = delete;

    template <class T>
    TraceFormatter& operator<<(const T& value) {
        if (m_enabled) {
            m_text << value;
        }
        return *this;
    }

private:
    const char* m_module;
    const char* m_className;
    TraceType m_type;
    bool m_enabled;
    std::ostringstream m_text;
};

// A channel named by module and class: `tracer(TraceError) << "text\n";` writes one text.
class HOST_API HXTracer {
public:
    // The names are not copied and must outlive the tracer.
    HXTracer(const char* module, const char* className) noexcept : m_module(module), m_className(className) {}

    TraceFormatter operator()(TraceType type) const { return {m_module, m_className, type}; }

    // Sets the sink for the process; null (the default) drops every text. Not owned: it must outlive its use.
    static void SetSink(TraceSink* sink) noexcept;

private:
    const char* m_module;
    const char* m_className;
};

}  // namespace dp
