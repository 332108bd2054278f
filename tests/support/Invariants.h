// What must hold of a component after every event, whatever came in.
#pragma once

#include "host/dg/Location.h"
#include "host/hxk/View.h"
#include "host/workflow/TouchFrame.h"
#include "touch/TouchWorkflow.h"
#include "viewer/ViewSpec.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tests {

// What is wrong with the state of a component between two events; empty when nothing is.
[[nodiscard]] std::string FindStateFault(const touch::TouchWorkflow& workflow);

// The memory that the process has allocated.
[[nodiscard]] std::size_t GetBytesInUse();

// Follows one component through a session and says after every event what is wrong.
//
// The camera must stay sound only while what comes in is what a screen sends for a view that somebody can look at:
// fingers on the screen, a window and a viewport with an area, and lengths that single precision can tell apart. After
// anything else it must again from when the host shows such a view while the component tracks no finger.
class Invariants {
public:
    // Before a frame is sent.
    void NoteFrame(const workflow::TouchFrame& frame);
    // A call came from within a call, or as no screen and no host would make it.
    void NoteDisorder() { m_sensible = false; }
    // Whether the camera must be sound now.
    [[nodiscard]] bool IsSensible() const { return m_sensible; }
    // After the host has opened a view, or changed the camera or another property of it.
    void NoteView(const touch::TouchWorkflow& workflow);
    // The host or a test has taken or let go references to the component, its views or its markup.
    void ForgetReferences() { m_atRest.reset(); }
    // The component has been copied or assigned in the middle of a call: what it got is the
    // state of a frame that is half done.
    void NoteCopyInCall() { m_copiedInCall = true; }
    // Another workflow has become the owner of the component's bounds request too.
    void ShareRequest() { m_sharedRequest = true; }

    // Empty when nothing is wrong. `settled`: no transition holds the view.
    [[nodiscard]] std::string FindFault(const touch::TouchWorkflow& workflow, bool settled);

private:
    // The references that others than the component's own members hold on it and on what it shares.
    struct OuterReferences {
        int workflow = 0;
        int view = 0;
        int scene = 0;
        int markup = 0;

        friend bool operator==(const OuterReferences&, const OuterReferences&) = default;
    };

    [[nodiscard]] static OuterReferences CountReferences(const touch::TouchWorkflow& workflow);
    [[nodiscard]] std::string FindCameraFault(const touch::TouchWorkflow& workflow);
    [[nodiscard]] std::string FindReferenceFault(const touch::TouchWorkflow& workflow, bool settled);

    bool m_sensible = false;       // the input, since the host last set the camera
    bool m_sharedRequest = false;  // a shared request can end without the component
    bool m_copiedInCall = false;
    std::optional<OuterReferences> m_atRest;
};

}  // namespace tests
