// Each name's text is its identifier: a host that spells it out gets the same Symbol.
#include "host/workflow/ConstStrings.h"

namespace workflow {

const du::Symbol ConstStrings::MsgTouch("MsgTouch");
const du::Symbol ConstStrings::MsgTimer("MsgTimer");
const du::Symbol ConstStrings::MsgSetMode("MsgSetMode");
const du::Symbol ConstStrings::MsgUpdateStatusBar("MsgUpdateStatusBar");
const du::Symbol ConstStrings::MsgMouseMove("MsgMouseMove");
const du::Symbol ConstStrings::MsgMouseLeftDown("MsgMouseLeftDown");
const du::Symbol ConstStrings::MsgMouseLeftUp("MsgMouseLeftUp");
const du::Symbol ConstStrings::MsgMouseInitLeftDrag("MsgMouseInitLeftDrag");
const du::Symbol ConstStrings::MsgMouseLeftDrag("MsgMouseLeftDrag");
const du::Symbol ConstStrings::MsgMouseRightDown("MsgMouseRightDown");
const du::Symbol ConstStrings::MsgMouseRightUp("MsgMouseRightUp");
const du::Symbol ConstStrings::MsgMouseInitRightDrag("MsgMouseInitRightDrag");
const du::Symbol ConstStrings::MsgMouseRightDrag("MsgMouseRightDrag");
const du::Symbol ConstStrings::MsgMouseInitMiddleDrag("MsgMouseInitMiddleDrag");
const du::Symbol ConstStrings::MsgMouseMiddleDrag("MsgMouseMiddleDrag");
const du::Symbol ConstStrings::MsgClickLeft("MsgClickLeft");
const du::Symbol ConstStrings::MsgDoubleClickLeft("MsgDoubleClickLeft");

}  // namespace workflow
