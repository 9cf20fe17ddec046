// The two conditions that amplitude and offset must meet together.
#pragma once

#include "libs/sysinf32/Model.h"

namespace calder {

// Polarity 0 and 3 swing to both sides of the offset; the others to one side, and their amplitude is a peak.
[[nodiscard]] constexpr bool IsUnipolar(std::int16_t polarity) {
  return polarity % 3 != 0;
}

// offset + h <= Offset.Max and offset - h >= Offset.Min, h = amplitude / 2 or, unipolar, amplitude; the amplitude
// inside the range and, unipolar, at most half of its maximum. False when a value is not finite.
[[nodiscard]] bool FitsOutput(const AmplitudeRange& range, double amplitude, double offset, std::int16_t polarity);

// Brings amplitude, then offset, to the nearest values that fit. A value that is not finite becomes the range's
// default.
void ClampOutput(const AmplitudeRange& range, std::int16_t polarity, double& amplitude, double& offset);

} // namespace calder
