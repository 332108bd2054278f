// What the process around a viewer answers: display, switches, texts, trace channel and markup changes.
#pragma once

#include "host/dp/HXTracer.h"
#include "host/du/Localizer.h"
#include "host/hxk/Markup.h"
#include "host/platform/Environment.h"
#include "viewer/CallRecorder.h"
#include "viewer/ViewSpec.h"

#include <string>
#include <vector>

namespace viewer {

// The latest platform that is still there answers for the whole process. Platforms may go in any order; with the last
// one the host's defaults return: the system's pixels per inch, the environment of the process, no texts, no trace
// channel, no markup listener.
class ViewerPlatform final : private platform::EnvironmentProvider,
                             private du::StringTableProvider,
                             private dp::TraceSink,
                             private hxk::MarkupListener {
public:
    // Trace texts and markup changes go to the recorder, which outlives the platform.
    ViewerPlatform(const HostSettings& settings, CallRecorder& recorder);
    ~ViewerPlatform() override;
    ViewerPlatform(const ViewerPlatform&) = delete;
    ViewerPlatform& operator=(const ViewerPlatform&) = delete;

private:
    bool IsPresent(const char* name) const override;
    const std::string* FindText(const char* table, const char* key) const override;
    bool IsEnabled(const char* module, const char* className) const override;
    void Write(const char* module, const char* className, dp::TraceType type, const std::string& text) override;
    void OnMarkupContentChanged(const hxk::Markup& markup) override;

    static void Install(ViewerPlatform* platform) noexcept;

    static ViewerPlatform* s_top;

    CallRecorder& m_recorder;
    int m_ppiX;
    int m_ppiY;
    std::vector<std::string> m_switches;
    ViewerPlatform* m_below;  // the platform that this one took over from; null for the first
};

}  // namespace viewer
