// The component's objects that are alive. While there is one, a host may still call or release it, and so run the code
// of this library.
#pragma once

#include <cstdint>
#include <string>

namespace touch {

enum class ObjectKind : std::uint8_t { Workflow, BoundsRequest, Transition, SpinCenterMarkup };

// A member that counts the object it belongs to, for as long as that lives. It is no part of the object's value.
class LiveObject {
public:
    explicit LiveObject(ObjectKind kind) noexcept;
    LiveObject(const LiveObject& other) noexcept;
    LiveObject& operator=(const LiveObject& /*other*/) noexcept { return *this; }
    ~LiveObject();

private:
    ObjectKind m_kind;
};

// How many objects of each kind there are ("1 workflow(s), 2 transition(s)"); empty when there is none.
[[nodiscard]] std::string DescribeLiveObjects();

}  // namespace touch
