// What the component asked of the host, in order.
#pragma once

#include "host/dg/Location.h"
#include "host/dg/Point.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace viewer {

// A call without arguments worth keeping: "UpdateStatusMessage", "StopTransition", "NotifyContentChanged",
// "RemoveMarkup" or "Cancel".
struct PlainCall {
    const char* operation;
};
struct SetCameraLocationCall {
    dg::Location location;
};
// "SetOrthographicWidth" or "SetOrthoWidth".
struct SetWidthCall {
    const char* operation;
    double width;
};
struct SetPositionCall {
    dg::DPoint3D position;
};
struct SendMessageCall {
    std::string type;
    int x;
    int y;
    std::optional<bool> componentAnswer;  // no value where the component has not registered the type
};
struct SendModeMessageCall {
    std::string workflow;
    std::string mode;
    int value;
};
struct SetStatusMessageCall {
    int slot;
    std::string text;
};
struct AddMarkupCall {
    dg::DPoint3D position;  // of the placement of the markup's axes
};
struct AddTransitionCall {
    dg::Location start;
    dg::Location end;
    dg::DPoint3D center;
    std::array<std::int64_t, 4> values;  // first and second 64-bit value, the 32-bit value, third 64-bit value
    bool flag;
};
struct ManageObjectCall {
    bool accepted;
};
struct GetBoundingBoxCall {
    bool selectedOnly;
    bool visibleOnly;
};
struct TraceCall {
    std::string text;
};

using Call = std::variant<PlainCall, SetCameraLocationCall, SetWidthCall, SetPositionCall, SendMessageCall,
                          SendModeMessageCall, SetStatusMessageCall, AddMarkupCall, AddTransitionCall, ManageObjectCall,
                          GetBoundingBoxCall, TraceCall>;

// Collects calls while it is switched on. A sent message is recorded before the calls that its delivery causes, and
// its answer is filled in afterwards.
class CallRecorder {
public:
    void SetEnabled(bool enabled) noexcept { m_enabled = enabled; }
    [[nodiscard]] bool IsEnabled() const noexcept { return m_enabled; }

    // Adds a call and answers its index. Nothing is added, and the answer has no meaning, while switched off.
    std::size_t Add(Call call) {
        if (!m_enabled) {
            return 0;
        }
        m_calls.push_back(std::move(call));
        return m_calls.size() - 1;
    }
    void SetComponentAnswer(std::size_t index, std::optional<bool> answer) {
        if (index < m_calls.size()) {
            if (auto* sent = std::get_if<SendMessageCall>(&m_calls[index])) {
                sent->componentAnswer = answer;
            }
        }
    }

    [[nodiscard]] const std::vector<Call>& GetCalls() const noexcept { return m_calls; }
    void Clear() noexcept { m_calls.clear(); }

private:
    std::vector<Call> m_calls;
    bool m_enabled = true;
};

}  // namespace viewer
