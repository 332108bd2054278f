// The display query: the pixels per logical inch of the screen.
#pragma once

#include "host/HostApi.h"

#include <cstddef>

namespace platform {

// What the system gave for the screen; null when there is none.
struct DeviceContext {
    void* handle = nullptr;
};

inline constexpr int LogPixelsX = 88;
inline constexpr int LogPixelsY = 90;

// The screen's device context; give it back with ReleaseDC.
[[nodiscard]] HOST_API DeviceContext GetDC(std::nullptr_t window);
// The pixels per logical inch for LogPixelsX or LogPixelsY; 0 for any other index or a null context.
[[nodiscard]] HOST_API int GetDeviceCaps(DeviceContext dc, int index);
HOST_API void ReleaseDC(std::nullptr_t window, DeviceContext dc);

// Until a host says otherwise the query answers what the system says, and 96 by 96 where there is no system call for
// it. Any value may be set, 0 too.
HOST_API void SetPixelsPerInch(int horizontal, int vertical) noexcept;
// Goes back to what the system says.
HOST_API void UseSystemPixelsPerInch() noexcept;

}  // namespace platform
