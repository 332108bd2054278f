#include "host/platform/Display.h"

#if !defined(_WIN32)

namespace platform {
namespace {

int s_horizontal = 96;
int s_vertical = 96;

}  // namespace

DeviceContext GetDC(std::nullptr_t /*window*/) {
    return {true};
}

int GetDeviceCaps(DeviceContext dc, int index) {
    if (!dc.valid) {
        return 0;
    }
    if (index == LogPixelsX) {
        return s_horizontal;
    }
    return index == LogPixelsY ? s_vertical : 0;
}

void ReleaseDC(std::nullptr_t /*window*/, DeviceContext /*dc*/) {}

void SetPixelsPerInch(int horizontal, int vertical) noexcept {
    s_horizontal = horizontal;
    s_vertical = vertical;
}

}  // namespace platform

#endif
