// Every limit and factor of the component, with its unit and whether the limit itself counts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <numbers>

namespace touch {

// Finger tracking ----------------------------------------------------------------------------------------------------

// Fingers tracked between two resets; records of further fingers are dropped.
inline constexpr std::size_t SlotCount = 10;
// Per axis, from the finger's start: exactly this far still counts as still.
inline constexpr std::uint32_t StillLimitPx = 30;
// Host ms since a one-finger touch began or ended; strictly less is "just now".
inline constexpr std::int64_t RecentTouchMs = 50;
// Host ms without a touch frame; strictly more ends the touch.
inline constexpr std::int64_t SilenceMs = 500;
// Where the display reports 0 pixels per inch.
inline constexpr std::int32_t DefaultPixelsPerInch = 96;

// Taps and holds, in ms of the touch records' clock ------------------------------------------------------------------

// A one-finger tap lasts strictly less.
inline constexpr std::int32_t TapMs = 150;
// Each finger of a two-finger tap is down for strictly less.
inline constexpr std::int32_t TwoFingerTapMs = 300;
// A press-and-hold fires from the first to the second of these, both included.
inline constexpr std::int32_t PressAndHoldFirstMs = 1001;
inline constexpr std::int32_t PressAndHoldLastMs = 1099;
// Each finger of a three-finger hold is down for strictly more ...
inline constexpr std::int32_t ThreeFingerHoldMs = 3000;
// ... and the third one for strictly less.
inline constexpr std::int32_t ThreeFingerHoldEndMs = 3100;

// Hands and the gesture circle ---------------------------------------------------------------------------------------

// A gap between neighbouring fingers that is strictly wider can divide two hands.
inline constexpr double HandGapInch = 2.0;
// Two fingers this close, or closer, start neither pinch nor twist.
inline constexpr double TwoFingerProximityInch = 1.5;
// Three or four fingers whose neighbours are all this close, or closer, start neither pinch nor twist.
inline constexpr double NeighbourProximityInch = 2.0;
// Reference span over current span: strictly outside this band is a pinch.
inline constexpr double PinchBandLow = 0.85;
inline constexpr double PinchBandHigh = 1.15;
// Change of the circle's direction in radians: strictly more is a twist.
inline constexpr double TwistThresholdRad = 0.25;

// Spin and coasting --------------------------------------------------------------------------------------------------

// Trackball radius as a share of the smaller half of the view.
inline constexpr double TrackballRadiusShare = 0.8;
// How much faster the velocity trackball turns near the centre of the view.
inline constexpr double VelocityTrackballGain = 2.0;
// Squared length up to which (inclusive) a projected trackball point has no direction: 2^-50.
inline constexpr double TrackballMinNormSquared = 8.881784197001252e-16;
// Share of the angle between the finger rays by which looking around turns the camera.
inline constexpr double LookAroundShare = 0.6;
// acos(w) of the sampled rotation in radians: strictly more coasts on release.
inline constexpr double CoastThresholdRad = 0.03;
// A velocity sample covers this many ms over the tick's interval.
inline constexpr float VelocitySampleMs = 50.0F;
// Host ms that a coasting spin takes.
inline constexpr std::int64_t CoastDurationMs = 100;

// Zoom ---------------------------------------------------------------------------------------------------------------

// Both zoom laws divide by the view's width in pixels, at least this.
inline constexpr double MinReferenceWidthPx = 128.0;
// Powers of two per reference width of span change, orthographic.
inline constexpr double OrthographicZoomExponent = 6.0;
// Normalised pinch per reference width of span change, perspective.
inline constexpr double PerspectiveSpanScale = 10.0;
// World step per world distance, for the perspective pinch and for explore flight.
inline constexpr double PerspectiveStepScale = 10.0;
inline constexpr double ExploreStepScale = 0.0001;

// Explore flight -----------------------------------------------------------------------------------------------------

// Displacement in pixels: exactly this far still counts as none.
inline constexpr double ExploreDeadZonePx = 5.0;
// Sideways flight starts beyond the view's width divided by this; both flight axes count in such bands.
inline constexpr double FlyBandsPerView = 20.0;
// Turn in radians per second at half a view of displacement.
inline constexpr double TurnGain = -4.0;
// Yaw per turn and window width, pitch per turn and window height.
inline constexpr double ExploreYawScale = 0.5;
inline constexpr double ExplorePitchScale = -0.5;
inline constexpr double SecondsPerMs = 0.001;
// The turn axis is reversed when the camera's up axis has turned strictly more than this from where it was.
inline constexpr double UpFlipRad = std::numbers::pi / 2;

}  // namespace touch
