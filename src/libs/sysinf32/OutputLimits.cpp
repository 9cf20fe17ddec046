#include "libs/sysinf32/OutputLimits.h"

#include <algorithm>
#include <cmath>

namespace calder {

namespace {

double HalfSwing(double amplitude, std::int16_t polarity) {
  return IsUnipolar(polarity) ? amplitude : amplitude / 2;
}

double LargestAmplitude(const AmplitudeRange& range, std::int16_t polarity) {
  return IsUnipolar(polarity) ? range.Amplitude.Max / 2 : range.Amplitude.Max;
}

} // namespace

bool FitsOutput(const AmplitudeRange& range, double amplitude, double offset, std::int16_t polarity) {
  const double half = HalfSwing(amplitude, polarity);
  return amplitude >= range.Amplitude.Min && amplitude <= LargestAmplitude(range, polarity) &&
         offset + half <= range.Offset.Max && offset - half >= range.Offset.Min;
}

void ClampOutput(const AmplitudeRange& range, std::int16_t polarity, double& amplitude, double& offset) {
  if (!std::isfinite(amplitude)) amplitude = range.Amplitude.Default;
  if (!std::isfinite(offset)) offset = range.Offset.Default;
  amplitude = std::clamp(amplitude, range.Amplitude.Min, LargestAmplitude(range, polarity));
  const double half = HalfSwing(amplitude, polarity);
  const double centre = range.Offset.Min + (range.Offset.Max - range.Offset.Min) / 2;
  offset = std::max(range.Offset.Min + half, std::min(range.Offset.Max - half, offset));
  // Limit minus half and back may round past the limit by the last bit: first the offset gives way, then, when the
  // swing fills the whole range, the amplitude.
  constexpr int kSteps = 4;
  for (int i = 0; i < kSteps && !FitsOutput(range, amplitude, offset, polarity); ++i)
    offset = std::nextafter(offset, centre);
  for (int i = 0; i < kSteps && !FitsOutput(range, amplitude, offset, polarity); ++i)
    amplitude = std::nextafter(amplitude, range.Amplitude.Min);
}

} // namespace calder
