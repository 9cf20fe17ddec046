// The small pictures of waveforms in the tool dialogs: ground, grid, curves; and the texts beside them.
#pragma once

#include "libs/wavelb32/wavelb32.h"
#include "platform/DeviceContext.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace calder {

class ConvUnit;

// A part of a buffer over the whole width of a picture; all codes, -32767 at the bottom, over its height.
struct PreviewWave {
  WaveHandle buffer = 0;
  double start = 0; // points of the buffer
  double span = 0;  // points; nothing is drawn below 1
};

struct PreviewCurve {
  PreviewWave wave;
  Color color = 0;
};

// Clears the picture and draws the grid and the waveform; the picture's draw mode stays.
void DrawWavePreview(DeviceContext& picture, const PreviewWave& wave);
// The same with several curves, the first one at the back: a former or a coming one beside the present one.
void DrawWavePreview(DeviceContext& picture, std::span<const PreviewCurve> curves);

// What stands under the pointer.
struct PreviewReading {
  double point = 0; // of the buffer
  std::int32_t code = 0;
};
// The first point that the column of a picture of that width shows; none outside of the picture and of the buffer.
[[nodiscard]] std::optional<PreviewReading> ReadPreview(const PreviewWave& wave, int column, int width);

// "X 0.50, Y 1.25 V" in the current units, for a position in the waveform; "0.50 sec" and "1.25 V" alone.
[[nodiscard]] std::string PreviewValueText(const ConvUnit& units, double point, std::int32_t code);
[[nodiscard]] std::string PreviewPositionText(const ConvUnit& units, double point);
[[nodiscard]] std::string PreviewLevelText(const ConvUnit& units, std::int32_t code);

// The Y values at the top, in the middle and at the bottom of a preview, in the current unit.
struct PreviewLabels {
  explicit PreviewLabels(const ConvUnit& units);
  std::string max;
  std::string offset;
  std::string min;
};

} // namespace calder
