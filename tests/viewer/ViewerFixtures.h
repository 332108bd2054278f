// Stand-ins that the tests of the viewer's services share.
#pragma once

#include "host/workflow/ConstStrings.h"
#include "host/workflow/SimpleWorkflow.h"
#include "scene/Model.h"
#include "viewer/BoundsService.h"
#include "viewer/CallRecorder.h"
#include "viewer/MessageDispatch.h"
#include "viewer/TransitionPlayer.h"
#include "viewer/ViewerViews.h"

#include <functional>
#include <string>
#include <vector>

namespace viewer {

// A workflow in the component's place. It writes its name into a list whenever it hears a message, does what the test
// says, and answers what the test says.
class StandInWorkflow final : public workflow::SimpleWorkflow {
public:
    StandInWorkflow(const char* name, unsigned int priority, std::vector<std::string>& heard)
        : SimpleWorkflow(du::Symbol(name)), m_heard(heard) {
        SetPriority(priority);
        for (const du::Symbol* type : {&workflow::ConstStrings::MsgMouseMove, &workflow::ConstStrings::MsgClickLeft,
                                       &workflow::ConstStrings::MsgSetMode}) {
            AddMsgTypeHandled(*type, true);
        }
    }
    ~StandInWorkflow() override { m_heard.push_back(GetName().GetString() + " gone"); }

    bool OnMsgMouseMove(int /*x*/, int /*y*/) override { return Hear(); }
    bool OnMsgClickLeft(int /*x*/, int /*y*/) override {
        Hear();
        return consumesClicks;
    }
    bool OnMsgMode(const du::Symbol& /*workflow*/, const du::Symbol& /*mode*/,
                   const du::SmartPtr<du::RefCounted>& /*data*/, int /*value*/) override {
        return Hear();
    }

    bool consumes = false;
    bool consumesClicks = false;
    std::function<void()> action;

private:
    bool Hear() {
        m_heard.push_back(GetName().GetString());
        if (action) {
            action();
        }
        return consumes;
    }

    std::vector<std::string>& m_heard;
};

// The services of a viewer without the viewer.
struct Services {
    explicit Services(BoundsAnswer answer = BoundsAnswer::NextTick, bool play = true)
        : bounds(recorder, answer), transitions(recorder, play), dispatch(recorder, bounds, transitions) {}

    du::SmartPtr<ViewerShapeView> OpenShapeView(const ViewSpec& description) {
        return du::SmartPtr<ViewerShapeView>(new ViewerShapeView(description, {recorder, bounds, transitions}));
    }

    // The names of the recorded calls, of those that a test of the services makes.
    std::vector<std::string> GetCallNames() const {
        const auto nameOf = [](const auto& call) -> std::string {
            if constexpr (requires { call.operation; }) {
                return call.operation;
            } else if constexpr (requires { call.componentAnswer; }) {
                return "SendMessage " + call.type;
            } else {
                return "AddMarkup";
            }
        };
        std::vector<std::string> names;
        for (const Call& call : recorder.GetCalls()) {
            names.push_back(std::visit(nameOf, call));
        }
        return names;
    }

    CallRecorder recorder;
    BoundsService bounds;
    TransitionPlayer transitions;
    MessageDispatch dispatch;
};

// An axis-parallel square of side 2 that faces the Z axis.
inline scene::Part MakeSquare(const char* name, double x, double y, double z) {
    scene::Part part;
    part.name = name;
    part.vertices = {{x - 1, y - 1, z}, {x + 1, y - 1, z}, {x + 1, y + 1, z}, {x - 1, y + 1, z}};
    part.triangles = {{0, 1, 2}, {0, 2, 3}};
    return part;
}

}  // namespace viewer
