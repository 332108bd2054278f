// What the host has set comes before what the system says. Only Windows is asked; elsewhere the answer is 96 pixels per
// inch.
#include "host/platform/Display.h"

#include <optional>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace platform {
namespace {

struct PixelsPerInch {
    int horizontal;
    int vertical;
};

std::optional<PixelsPerInch> s_setByHost;

#if defined(_WIN32)

static_assert(LogPixelsX == LOGPIXELSX && LogPixelsY == LOGPIXELSY);

void* OpenScreen() {
    return ::GetDC(nullptr);
}

int AskSystem(void* screen, int index) {
    return ::GetDeviceCaps(static_cast<HDC>(screen), index);
}

void CloseScreen(void* screen) {
    ::ReleaseDC(nullptr, static_cast<HDC>(screen));
}

#else

constexpr int DefaultPixelsPerInch = 96;

// There is nothing to open: any address that is not null stands for the screen.
void* OpenScreen() {
    return &s_setByHost;
}

int AskSystem(void* /*screen*/, int /*index*/) {
    return DefaultPixelsPerInch;
}

void CloseScreen(void* /*screen*/) {}

#endif

}  // namespace

DeviceContext GetDC(std::nullptr_t /*window*/) {
    return {OpenScreen()};
}

int GetDeviceCaps(DeviceContext dc, int index) {
    if (dc.handle == nullptr || (index != LogPixelsX && index != LogPixelsY)) {
        return 0;
    }
    if (s_setByHost) {
        return index == LogPixelsX ? s_setByHost->horizontal : s_setByHost->vertical;
    }
    return AskSystem(dc.handle, index);
}

void ReleaseDC(std::nullptr_t /*window*/, DeviceContext dc) {
    if (dc.handle != nullptr) {
        CloseScreen(dc.handle);
    }
}

void SetPixelsPerInch(int horizontal, int vertical) noexcept {
    s_setByHost = {horizontal, vertical};
}

void UseSystemPixelsPerInch() noexcept {
    s_setByHost.reset();
}

}  // namespace platform
