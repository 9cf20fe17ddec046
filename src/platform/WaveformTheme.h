// The colours of the waveform pictures: a dark ground, quiet lines, a light blue trace.
#pragma once

#include "platform/DeviceContext.h"

namespace calder::theme {

inline constexpr Color kGround = 0x11161C;
inline constexpr Color kTrace = 0x6FB7FF;       // palette colour 9, light blue
inline constexpr Color kTraceFormer = 0x3D5C7C; // the waveform as it was, dim
inline constexpr Color kTraceGhost = 0xB08A4A;  // one that nothing has written yet
inline constexpr Color kFault = 0xFF5C5C;       // limited points and the like
inline constexpr Color kGridLine = 0xD0D0D0;    // light grey, laid on thinly
inline constexpr Color kZeroLine = 0xFFFFFF;    // white, laid on thinly
inline constexpr double kGridStrength = 0.13;
inline constexpr double kCentreStrength = 0.20;
inline constexpr double kZeroStrength = 0.42;
inline constexpr Color kBitTrace = 0x6FB7FF;
inline constexpr Color kBitQuiet = 0x3A4552;
inline constexpr Color kBitSelected = 0x7FE9E9;
inline constexpr Color kBitScope = 0x14392B;

// `color` laid on the ground with that strength, 0 to 1.
[[nodiscard]] constexpr Color OnGround(Color color, double strength) {
  Color mixed = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    const double ground = (kGround >> shift) & 0xFF;
    const double ink = (color >> shift) & 0xFF;
    mixed |= static_cast<Color>(ground + (ink - ground) * strength) << shift;
  }
  return mixed;
}

} // namespace calder::theme
