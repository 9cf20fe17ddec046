// The grid under a waveform.
#pragma once

#include "platform/WaveformTheme.h"

namespace calder {

class Grid {
public:
  int XCount = 10; // columns
  int YCount = 8;  // rows
  Color XCenterColor = theme::kGridLine;
  Color YCenterColor = theme::kGridLine;
  Color XLineColor = theme::kGridLine;
  Color YLineColor = theme::kGridLine;

  // Draws the inner lines; a centre line stands in the middle of an even count.
  void Drow(DeviceContext& picture) const;
};

} // namespace calder
