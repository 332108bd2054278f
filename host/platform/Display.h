// The display query: the pixels per logical inch of the screen.
#pragma once

#if defined(_WIN32)

#include <windows.h>

namespace platform {

using DeviceContext = ::HDC;

[[nodiscard]] inline DeviceContext GetDC(std::nullptr_t) {
    return ::GetDC(nullptr);
}
[[nodiscard]] inline int GetDeviceCaps(DeviceContext dc, int index) {
    return ::GetDeviceCaps(dc, index);
}
inline void ReleaseDC(std::nullptr_t, DeviceContext dc) {
    ::ReleaseDC(nullptr, dc);
}

inline constexpr int LogPixelsX = LOGPIXELSX;
inline constexpr int LogPixelsY = LOGPIXELSY;

}  // namespace platform

#else

#include "host/HostApi.h"

#include <cstddef>

namespace platform {

// Where there is no system call for it, the host says what the screen's resolution is.
struct DeviceContext {
    bool valid = false;
};

inline constexpr int LogPixelsX = 88;
inline constexpr int LogPixelsY = 90;

// The screen's device context; give it back with ReleaseDC.
[[nodiscard]] HOST_API DeviceContext GetDC(std::nullptr_t window);
// The pixels per logical inch for LogPixelsX or LogPixelsY; 0 for any other index or an invalid context.
[[nodiscard]] HOST_API int GetDeviceCaps(DeviceContext dc, int index);
HOST_API void ReleaseDC(std::nullptr_t window, DeviceContext dc);

// Sets what the query answers from now on; 96 by 96 until set. Any value is allowed, 0 too.
HOST_API void SetPixelsPerInch(int horizontal, int vertical) noexcept;

}  // namespace platform

#endif
