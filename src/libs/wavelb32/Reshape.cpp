// Stretching and squeezing along both axes.
#include "libs/wavelb32/Reshape.h"
#include "libs/wavelb32/Reduce.h"
#include "libs/wavelb32/State.h"

#include <algorithm>

namespace calder {

using wavelb::TheState;

std::int32_t W_CompWaveX(WaveHandle handle, double sourceStart, double sourceSpan, std::int32_t pointCount,
                         double destinationStart, double destinationSpan) {
  const std::span<std::int16_t> all = W_Lock(handle);
  if (all.empty()) return W_BAD_HANDLE;
  if (pointCount < 1 || static_cast<std::size_t>(pointCount) > all.size()) return W_BAD_RANGE;
  const std::span<std::int16_t> codes = all.first(static_cast<std::size_t>(pointCount));
  const auto source = wavelb::WholePoints(sourceStart, sourceSpan, codes.size());
  const auto destination = wavelb::WholePoints(destinationStart, destinationSpan, codes.size());
  if (!source || !destination || !(destinationSpan > 0)) return W_BAD_RANGE;

  // The curve's points from the one at or before the source's start to the one at or after its end; after the last
  // point its code holds.
  const double last = static_cast<double>(codes.size() - 1);
  const double curveStart = std::clamp(std::floor(sourceStart), 0.0, last);
  const double curveEnd = std::clamp(std::ceil(sourceStart + sourceSpan), curveStart, last);
  std::vector<std::int16_t>& curve = TheState().copy;
  curve.assign(codes.begin() + static_cast<std::ptrdiff_t>(curveStart),
               codes.begin() + static_cast<std::ptrdiff_t>(curveEnd) + 1);
  curve.push_back(curve.back());

  // What the new area does not cover of the old one.
  const std::size_t sourceEnd = source->first + source->count;
  const std::size_t destinationEnd = destination->first + destination->count;
  const auto clear = [codes](std::size_t from, std::size_t to) {
    if (from < to) std::ranges::fill(codes.subspan(from, to - from), std::int16_t{0});
  };
  clear(source->first, std::min(sourceEnd, destination->first));
  clear(std::max(source->first, destinationEnd), sourceEnd);
  const double firstPlace = static_cast<double>(destination->first) - std::max(destinationStart, 0.0);
  wavelb::Resample(curve, codes.subspan(destination->first, destination->count),
                   {std::max(sourceStart, 0.0) - curveStart, sourceSpan, destinationSpan, firstPlace});
  return W_SUCCESS;
}

std::int32_t W_CompYMaxMin(WaveHandle handle, double start, double count, double newMaximum, double newMinimum) {
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  if (range.status != W_SUCCESS) return range.status;
  if (!wavelb::IsUsable(newMaximum) || !wavelb::IsUsable(newMinimum)) return W_BAD_VALUE;
  if (range.codes.empty()) return W_SUCCESS;
  const wavelb::Extremes old = wavelb::FindExtremes(range.codes);
  if (old.low == old.high)
    std::ranges::fill(range.codes, wavelb::ToCode((newMaximum + newMinimum) / 2));
  else
    wavelb::Rescale(range.codes, old.low, old.high, newMinimum, newMaximum);
  return W_SUCCESS;
}

std::int32_t W_CountLimited(WaveHandle handle, double start, double count, double newMaximum, double newMinimum) {
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  if (range.status != W_SUCCESS) return range.status;
  if (!wavelb::IsUsable(newMaximum) || !wavelb::IsUsable(newMinimum)) return W_BAD_VALUE;
  if (range.codes.empty()) return 0;
  const wavelb::Extremes old = wavelb::FindExtremes(range.codes);
  if (old.low == old.high) {
    const bool isLimited = std::abs(std::rint((newMaximum + newMinimum) / 2)) > W_CODE_MAX;
    return isLimited ? static_cast<std::int32_t>(range.codes.size()) : 0;
  }
  return wavelb::CountLimited(range.codes, old.low, old.high, newMinimum, newMaximum);
}

std::int32_t W_CompYAmpOff(WaveHandle handle, double start, double count, double amplitude, double offset) {
  return W_CompYMaxMin(handle, start, count, offset + amplitude / 2, offset - amplitude / 2);
}

} // namespace calder
