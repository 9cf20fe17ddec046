#include "tools/pwf/PwfScroll.h"

#include "app/EngValB.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr double kMostPositions = 15000;
constexpr double kMostSignedPositions = 30000;
constexpr double kLowestPosition = -32768;
constexpr double kHighestPosition = 32767;

} // namespace

bool ScrollRange::IsUsable() const {
  return Min >= kLowestPosition && Max <= kHighestPosition && Min < Max;
}

ScrollRange ScrollRangeOf(const PwfParam& param) {
  const double steps = (param.MaxValue - param.MinValue) / param.Resolution;
  const double most = param.MinValue >= 0 ? kMostPositions : kMostSignedPositions;
  const double step = param.Resolution * (steps > most ? steps / most : 1);
  return {std::nearbyint(param.MinValue / step), std::nearbyint(param.MaxValue / step)};
}

int ScrollPositionOf(const PwfParam& param, const ScrollRange& range) {
  const double position = param.Value * (range.Max - range.Min) / (param.MaxValue - param.MinValue);
  return static_cast<int>(std::nearbyint(std::clamp(position, range.Min, range.Max)));
}

double ScrolledValue(const PwfParam& param, const ScrollRange& range, int position) {
  const double value = (param.MaxValue - param.MinValue) * position / (range.Max - range.Min);
  return std::clamp(value, param.MinValue, param.MaxValue);
}

std::string PwfValueText(const PwfParam& param, double value) {
  std::string text = FormatMask(value, Resolution_Mask(param.Resolution));
  const double shown = LeadingNumber(text);
  if (shown >= param.MinValue && shown <= param.MaxValue) return text;
  if (value < param.MinValue || value > param.MaxValue) return text; // it was outside before
  return NumberText(shown < param.MinValue ? param.MinValue : param.MaxValue);
}

} // namespace calder
