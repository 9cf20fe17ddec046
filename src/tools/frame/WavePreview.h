// The small pictures of waveforms in the tool dialogs: ground, grid, curves; and the texts beside them.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <cstdint>
#include <string>

namespace calder {

class ConvUnit;
class DeviceContext;

// A part of a buffer over the whole width of a picture; all codes, -32767 at the bottom, over its height.
struct PreviewWave {
  WaveHandle buffer = 0;
  double start = 0; // points of the buffer
  double span = 0;  // points; nothing is drawn below 1
};

// Clears the picture and draws the grid and the waveform; the picture's draw mode stays.
void DrawWavePreview(DeviceContext& picture, const PreviewWave& wave);

// The Y values at the top, in the middle and at the bottom of a preview, in the current unit.
struct PreviewLabels {
  explicit PreviewLabels(const ConvUnit& units);
  std::string max;
  std::string offset;
  std::string min;
};

} // namespace calder
