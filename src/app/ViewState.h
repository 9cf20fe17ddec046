// The range of the waveform that the main window shows.
#pragma once

#include "platform/WaveLimits.h"

#include <cstdint>

namespace calder {

struct ViewState {
  std::int32_t XStart = 0; // points at the left and right edges
  std::int32_t XEnd = 0;
  std::int32_t YStart = 0; // depths (32767 - code) at the top and bottom edges
  std::int32_t YEnd = W_CODE_SPAN;
  std::int32_t XZoom = 1; // powers of two
  std::int32_t YZoom = 1;
  std::int32_t ScrollStep = 1; // points a unit of the horizontal scroll bars
};

// One scroll unit in points: 1 up to 32768 points, above so many that a bar has about 32768 units.
[[nodiscard]] std::int32_t ScrollStepFor(std::int32_t memorySize);

} // namespace calder
