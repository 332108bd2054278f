// Scans as a text recording (EVEMU 1.3) of a touch screen that speaks multi-touch protocol B.
#pragma once

#include "tools/motion/HandMotion.h"

#include <string>
#include <string_view>
#include <vector>

namespace replay::motion {

// The recorded screen: 24 inches, 16:10. The size is exactly the axis range divided by the resolution. The rows of the
// device grow downward, and its two axes differ in resolution, as those of real panels do.
inline constexpr int PanelWidthMm = 518;
inline constexpr int PanelHeightMm = 324;
inline constexpr int PanelUnitsPerMmX = 63;
inline constexpr int PanelUnitsPerMmY = 100;
inline constexpr int PanelMaxX = PanelWidthMm * PanelUnitsPerMmX;
inline constexpr int PanelMaxY = PanelHeightMm * PanelUnitsPerMmY;
inline constexpr int PanelSlots = 10;

// The whole text of a recording. `title` is one line that goes into the header as a comment. A report holds only what
// changed since the one before, and a scan without any change gives no report. Positions beyond the edge of the screen
// are moved to the edge. Throws std::invalid_argument when more than PanelSlots fingers are in contact at a time.
std::string WriteEvemu(const std::vector<Scan>& scans, std::string_view title);

}  // namespace replay::motion
