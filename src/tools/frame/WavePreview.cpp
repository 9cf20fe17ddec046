#include "tools/frame/WavePreview.h"

#include "app/ConvUnit.h"
#include "platform/DeviceContext.h"
#include "platform/WaveformTheme.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <cmath>

namespace calder {

namespace {

// The last point of the part holds up to its end; what the buffer has after it is no part of it.
double PointsUpTo(const PreviewWave& wave) {
  return std::min(WholePoint(wave.start) + WholePoint(wave.span), static_cast<double>(W_Lock(wave.buffer).size()));
}

std::string WithUnit(const std::string& value, const std::string& unit) {
  return unit.empty() ? value : value + " " + unit;
}

} // namespace

void DrawWavePreview(DeviceContext& picture, const PreviewWave& wave) {
  const PreviewCurve curve{wave, theme::kTrace};
  DrawWavePreview(picture, std::span(&curve, 1));
}

void DrawWavePreview(DeviceContext& picture, std::span<const PreviewCurve> curves) {
  const int width = picture.Width();
  const int height = picture.Height();
  const DrawMode saved = picture.GetDrawMode();
  picture.FillRectangle(0, 0, width, height, theme::kGround);
  W_DrawGrid(picture, width, height);
  picture.SetDrawMode(DrawMode::CopyPen);
  for (const auto& [wave, color] : curves) {
    picture.SetPen(color, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
    const double points = PointsUpTo(wave);
    if (points >= 1) {
      W_DrawWave2(picture, wave.buffer, wave.start, 0, wave.span, W_CODE_SPAN, width, height,
                  static_cast<std::int32_t>(points));
    }
  }
  picture.SetDrawMode(saved);
}

std::optional<PreviewReading> ReadPreview(const PreviewWave& wave, int column, int width) {
  if (column < 0 || column >= width) return std::nullopt;
  const double point = std::min(WholePoint(wave.start + column * wave.span / width), PointsUpTo(wave) - 1);
  if (!(point >= 0)) return std::nullopt;
  const std::int32_t code = W_GetWaveData(wave.buffer, point, static_cast<std::int32_t>(W_Lock(wave.buffer).size()));
  return PreviewReading{point, code};
}

std::string PreviewValueText(const ConvUnit& units, double point, std::int32_t code) {
  return "X " + units.PointToXText(point) + ", Y " + PreviewLevelText(units, code);
}

std::string PreviewPositionText(const ConvUnit& units, double point) {
  return WithUnit(units.PointToXText(point), units.XUnitName());
}

std::string PreviewLevelText(const ConvUnit& units, std::int32_t code) {
  return WithUnit(units.CodeToYText(code), units.YUnitName());
}

PreviewLabels::PreviewLabels(const ConvUnit& units)
    : max(units.CodeToYText(W_CODE_MAX)), offset(units.CodeToYText(0)), min(units.CodeToYText(-W_CODE_MAX)) {}

} // namespace calder
