// The names of messages that hosts send and workflows handle.
#pragma once

#include "host/HostApi.h"
#include "host/du/Symbol.h"

namespace workflow {

// The names of the message types, built when the host library is loaded.
struct HOST_API ConstStrings {
    static const du::Symbol MsgTouch;
    static const du::Symbol MsgTimer;
    static const du::Symbol MsgSetMode;
    static const du::Symbol MsgUpdateStatusBar;
    static const du::Symbol MsgMouseMove;
    static const du::Symbol MsgMouseLeftDown;
    static const du::Symbol MsgMouseLeftUp;
    static const du::Symbol MsgMouseInitLeftDrag;
    static const du::Symbol MsgMouseLeftDrag;
    static const du::Symbol MsgMouseRightDown;
    static const du::Symbol MsgMouseRightUp;
    static const du::Symbol MsgMouseInitRightDrag;
    static const du::Symbol MsgMouseRightDrag;
    static const du::Symbol MsgMouseInitMiddleDrag;
    static const du::Symbol MsgMouseMiddleDrag;
    static const du::Symbol MsgClickLeft;
    static const du::Symbol MsgDoubleClickLeft;
};

}  // namespace workflow
