// Sessions made from recordings: what a host would have sent to the component while the fingers moved.
#pragma once

#include "host/dg/Box.h"
#include "input/ContactQueue.h"
#include "replay/recording/Mounting.h"
#include "replay/recording/RecordingReader.h"
#include "replay/session/Session.h"

#include <cstdint>
#include <string>
#include <vector>

namespace replay {

// The view and the host that a recording is played to.
struct RecordingOptions {
    std::string viewKind = "shapeview";  // one of viewer::ViewKinds
    std::uint32_t width = 1280;          // of the view, in pixels, at least 2
    std::uint32_t height = 800;
    Mounting mounting;                   // of the panel in front of the view
    bool orthographic = true;            // camera of a shape view
    std::string navMethod = "standard";  // of a shape view
    std::vector<std::string> environment;
    input::Feeding feeding = input::Feeding::FixedStep;
    dg::DBox bounds{{-2, -2, -2}, {2, 2, 2}};  // of the model in a shape view; may be empty
};

// The device's range is spread over the whole view, as PanelMapping says, and its reports go through
// input::TouchFeeder, as those of a screen at hand would. Ticks come every 10 ms, the first at the first report, the
// last 600 ms after the last one. Fingers that are still down when the recording ends are not lifted: the silence that
// follows ends the touch. The pixels per inch are those of the device, if its size is known, else 96. A shape view
// shows the rotation centre and a camera that frames the bounds.
[[nodiscard]] Session SessionFromRecording(const Recording& recording, const RecordingOptions& options);

}  // namespace replay
