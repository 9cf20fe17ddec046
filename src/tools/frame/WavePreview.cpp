#include "tools/frame/WavePreview.h"

#include "app/ConvUnit.h"
#include "platform/DeviceContext.h"
#include "platform/WaveformTheme.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <cmath>

namespace calder {

void DrawWavePreview(DeviceContext& picture, const PreviewWave& wave) {
  const int width = picture.Width();
  const int height = picture.Height();
  const DrawMode saved = picture.GetDrawMode();
  picture.FillRectangle(0, 0, width, height, theme::kGround);
  W_DrawGrid(picture, width, height);
  picture.SetDrawMode(DrawMode::CopyPen);
  picture.SetPen(theme::kTrace, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
  // The last point of the part holds up to its end; what the buffer has after it is no part of it.
  const double points =
      std::min(WholePoint(wave.start) + WholePoint(wave.span), static_cast<double>(W_Lock(wave.buffer).size()));
  if (points >= 1) {
    W_DrawWave2(picture, wave.buffer, wave.start, 0, wave.span, W_CODE_SPAN, width, height,
                static_cast<std::int32_t>(points));
  }
  picture.SetDrawMode(saved);
}

PreviewLabels::PreviewLabels(const ConvUnit& units)
    : max(units.CodeToYText(W_CODE_MAX)), offset(units.CodeToYText(0)), min(units.CodeToYText(-W_CODE_MAX)) {}

} // namespace calder
