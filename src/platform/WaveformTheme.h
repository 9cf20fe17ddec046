// The colours of the waveform pictures: a dark ground, quiet lines, a light blue trace.
#pragma once

#include "platform/DeviceContext.h"

namespace calder::theme {

inline constexpr Color kGround = 0x11161C;
inline constexpr Color kTrace = 0x6FB7FF;       // palette colour 9, light blue
inline constexpr Color kTraceFormer = 0x3D5C7C; // the waveform as it was, dim
inline constexpr Color kTraceGhost = 0xB08A4A;  // one that nothing has written yet
inline constexpr Color kDragLine = 0xFFC46B;    // from where to where something is dragged
inline constexpr Color kFault = 0xFF5C5C;       // limited points and the like
inline constexpr Color kGridLine = 0xD0D0D0;    // light grey, laid on thinly
inline constexpr Color kZeroLine = 0xFFFFFF;    // white, laid on thinly
inline constexpr double kGridStrength = 0.13;
inline constexpr double kCentreStrength = 0.20;
inline constexpr double kZeroStrength = 0.42;
inline constexpr Color kBitTrace = 0x6FB7FF;
inline constexpr Color kBitQuiet = 0x4A5563;    // bits that the model lacks
inline constexpr Color kBitSelected = 0x7FE9E9; // cyan
inline constexpr Color kBitGhost = 0xDDA854;    // what a typed pattern would write

// `ink` laid on `ground` with that strength, 0 to 1.
[[nodiscard]] constexpr Color Mixed(Color ground, Color ink, double strength) {
  Color mixed = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    const double under = (ground >> shift) & 0xFF;
    const double over = (ink >> shift) & 0xFF;
    mixed |= static_cast<Color>(under + (over - under) * strength) << shift;
  }
  return mixed;
}
[[nodiscard]] constexpr Color OnGround(Color color, double strength) {
  return Mixed(kGround, color, strength);
}

} // namespace calder::theme
