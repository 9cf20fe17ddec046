#include "libs/wavelb32/Reduce.h"
#include "libs/wavelb32/State.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <cstring>

namespace calder {

using wavelb::PointKind;
using wavelb::TheState;

namespace {

template <class Point>
std::int32_t PointAt(std::span<const Point> points, double index, std::int32_t pointCount) {
  if (pointCount < 1 || static_cast<std::size_t>(pointCount) > points.size()) return W_NO_DATA;
  if (!(index > -1 && index <= pointCount)) return W_NO_DATA;
  const double whole = std::min(std::max(0.0, WholePoint(index)), static_cast<double>(pointCount - 1));
  return points[static_cast<std::size_t>(whole)];
}

} // namespace

WaveHandle W_AllocMemory(std::int32_t points) {
  return TheState().buffers.Allocate(points, PointKind::Code16);
}
bool W_AllocTogether(std::int32_t points, std::span<WaveHandle> handles) {
  return TheState().buffers.AllocateTogether(points, PointKind::Code16, handles);
}
WaveHandle W_AllocMemory32(std::int32_t points) {
  return TheState().buffers.Allocate(points, PointKind::Value32);
}
std::int32_t W_WarmMemory(WaveHandle handle) {
  constexpr std::size_t pointsAPage = 2048; // of the smallest page
  const std::span<std::int16_t> points = TheState().buffers.Codes(handle);
  if (points.empty()) return W_BAD_HANDLE;
  // Each page gets the value that it has; a mere read would not make it the buffer's own.
  for (std::size_t i = 0; i < points.size(); i += pointsAPage) {
    volatile std::int16_t& point = points[i];
    point = point;
  }
  return W_SUCCESS;
}
std::int32_t W_FreeMemory(WaveHandle handle) {
  return TheState().buffers.Free(handle, PointKind::Code16);
}
std::int32_t W_FreeMemory32(WaveHandle handle) {
  return TheState().buffers.Free(handle, PointKind::Value32);
}
std::span<std::int16_t> W_Lock(WaveHandle handle) {
  return TheState().buffers.Codes(handle);
}
std::span<std::int32_t> W_Lock32(WaveHandle handle) {
  return TheState().buffers.Values(handle);
}

std::int32_t W_ClearMemory(WaveHandle handle, double start, double count) {
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  std::ranges::fill(range.codes, std::int16_t{0});
  return range.status;
}

std::int32_t W_CopyMemory(WaveHandle source, WaveHandle destination, double sourceStart, double destinationStart,
                          double count) {
  const std::span<std::int16_t> from = W_Lock(source);
  const std::span<std::int16_t> to = W_Lock(destination);
  if (from.empty() || to.empty()) return W_BAD_HANDLE;
  const auto sourceRange = wavelb::WholePoints(sourceStart, count, from.size());
  const auto destinationRange = wavelb::WholePoints(destinationStart, count, to.size());
  if (!sourceRange || !destinationRange) return W_BAD_RANGE;
  const std::size_t points = std::min(sourceRange->count, destinationRange->count);
  if (points > 0)
    std::memmove(to.data() + destinationRange->first, from.data() + sourceRange->first, points * sizeof(std::int16_t));
  return W_SUCCESS;
}

std::int32_t W_DeleteWave(WaveHandle handle, double start, double count, std::int32_t pointCount) {
  const std::span<std::int16_t> all = W_Lock(handle);
  if (all.empty()) return W_BAD_HANDLE;
  if (pointCount < 1 || static_cast<std::size_t>(pointCount) > all.size()) return W_BAD_RANGE;
  const std::span<std::int16_t> codes = all.first(static_cast<std::size_t>(pointCount));
  const auto range = wavelb::WholePoints(start, count, codes.size());
  if (!range) return W_BAD_RANGE;
  const auto removed = codes.subspan(range->first, range->count);
  const auto freed = std::shift_left(removed.begin(), codes.end(), static_cast<std::ptrdiff_t>(removed.size()));
  std::fill(freed, codes.end(), std::int16_t{0});
  return W_SUCCESS;
}

std::int32_t W_GetWaveData(WaveHandle handle, double index, std::int32_t pointCount) {
  return PointAt<std::int16_t>(W_Lock(handle), index, pointCount);
}

std::int32_t W_GetWaveData32(WaveHandle handle, double index, std::int32_t pointCount) {
  return PointAt<std::int32_t>(W_Lock32(handle), index, pointCount);
}

std::int32_t W_GetMaxMin(WaveHandle handle, double start, double count, std::int32_t which) {
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  if (range.status != W_SUCCESS || range.codes.empty() || which < 0 || which > 1) return W_NO_DATA;
  const wavelb::Extremes extremes = wavelb::FindExtremes(range.codes);
  return which == 0 ? extremes.low : extremes.high;
}

} // namespace calder
