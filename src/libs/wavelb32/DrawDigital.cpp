// The 16 bits of the codes as lanes.
#include "libs/wavelb32/Reduce.h"
#include "libs/wavelb32/State.h"
#include "libs/wavelb32/View.h"

#include <algorithm>
#include <bit>

namespace calder {

using wavelb::HorizontalView;
using wavelb::State;
using wavelb::TheState;

namespace {

constexpr int kLaneCount = 16;
// The picture's height in units: one of margin above, three a lane. Of its three a lane keeps half a unit clear above
// and below the trace.
constexpr double kHeightUnits = 49;
constexpr double kLaneUnits = 3;
constexpr double kLaneClear = 0.5;

struct Lane {
  int top = 0;    // of the ground
  int bottom = 0; // of the ground, the first row that is no longer in it
  int high = 0;   // row of a set bit
  int low = 0;    // row of a clear bit
};

// Lane 0 is the top one, bit 15.
Lane LaneOf(int lane, int height) {
  const double unit = height / kHeightUnits;
  const double top = unit * (1 + kLaneUnits * lane);
  const auto row = [](double y) { return static_cast<int>(std::floor(y)); };
  const double bottom = unit * (1 + kLaneUnits * (lane + 1));
  return {row(top), row(bottom), row(top + kLaneClear * unit), row(top + (kLaneUnits - kLaneClear) * unit)};
}

// For each column which bits are always and which are ever set, with the last point before it, so that a change shows
// as a vertical line. Fills state.edges, always into state.lows, ever into state.highs.
void ReduceBits(std::span<const std::int16_t> codes, const HorizontalView& across) {
  State& state = TheState();
  const auto pointCount = static_cast<std::int32_t>(codes.size());
  across.Edges(pointCount, state.edges);
  const auto width = static_cast<std::size_t>(across.width);
  state.lows.assign(width, 0);
  state.highs.assign(width, 0);
  state.filled.assign(width, 0);
  for (std::size_t c = 0; c < width; ++c) {
    const std::int32_t end = state.edges[c + 1];
    std::int32_t first = state.edges[c];
    // Between points the last one holds; the first column does not join what lies outside of the view.
    if (first > 0 && (c > 0 || first == end)) --first;
    // Right of the last point's own width nothing is drawn.
    if (end <= first || across.start + static_cast<double>(c) * across.span / across.width >= pointCount) continue;
    const wavelb::BitUse bits =
        wavelb::FindBits(codes.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)));
    state.lows[c] = static_cast<std::int16_t>(bits.always);
    state.highs[c] = static_cast<std::int16_t>(bits.ever);
    state.filled[c] = 1;
  }
}

void DrawLane(DeviceContext& context, int lane, int height) {
  State& state = TheState();
  const Lane place = LaneOf(lane, height);
  const auto bit = static_cast<std::uint16_t>(0x8000U >> lane);
  const int traceWidth = wavelb::TraceWidth(context);
  const std::size_t width = state.lows.size();
  state.tops.resize(width);
  state.bottoms.resize(width);
  for (std::size_t c = 0; c < width; ++c) {
    wavelb::RowRange rows;
    if (state.filled[c] != 0) {
      const bool everHigh = (state.highs[c] & bit) != 0;
      const bool everLow = (state.lows[c] & bit) == 0;
      const int top = everHigh ? place.high : place.low;
      const int bottom = (everLow ? place.low : place.high) + traceWidth - 1;
      rows = wavelb::ClipRows(top, bottom, height);
    }
    state.tops[c] = rows.top;
    state.bottoms[c] = rows.bottom;
  }
  context.Columns(0, state.tops, state.bottoms);
}

// A column number for FillRectangle: limited to the picture.
int LimitedColumn(const HorizontalView& across, double position) {
  return static_cast<int>(std::clamp(across.Column(position), 0.0, static_cast<double>(across.width)));
}

} // namespace

std::int32_t W_DrawDigitalPattern(DeviceContext& context, WaveHandle handle, double xStart, double xSpan,
                                  std::int32_t bitCount, std::int32_t bitMask, double markerA, double markerB,
                                  int width, int height, std::uint32_t traceColor, std::uint32_t quietColor,
                                  std::uint32_t selectedColor, std::uint32_t scopeColor, std::int32_t pointCount) {
  std::span<const std::int16_t> codes = W_Lock(handle);
  if (codes.empty()) return W_BAD_HANDLE;
  if (pointCount < 0 || static_cast<std::size_t>(pointCount) > codes.size()) return W_BAD_RANGE;
  if (pointCount > 0) codes = codes.first(static_cast<std::size_t>(pointCount));
  const HorizontalView across{xStart, xSpan, width};
  if (!across.IsUsable() || height < 1 || height > wavelb::kPictureLimit) return W_BAD_VALUE;
  if (!wavelb::IsUsable(markerA) || !wavelb::IsUsable(markerB)) return W_BAD_VALUE;

  ReduceBits(codes, across);
  const int scopeLeft = LimitedColumn(across, std::min(markerA, markerB));
  const int scopeRight = LimitedColumn(across, std::max(markerA, markerB));
  const int penWidth = wavelb::TraceWidth(context);
  for (int lane = 0; lane < kLaneCount; ++lane) {
    if ((static_cast<std::uint32_t>(bitMask) & (0x8000U >> lane)) != 0) {
      const Lane place = LaneOf(lane, height);
      context.FillRectangle(0, place.top, width, place.bottom - place.top, selectedColor);
      context.FillRectangle(scopeLeft, place.top, scopeRight - scopeLeft, place.bottom - place.top, scopeColor);
    }
    context.SetPen(lane < bitCount ? traceColor : quietColor, penWidth);
    DrawLane(context, lane, height);
  }
  return W_SUCCESS;
}

std::int32_t W_DrawDigital(DeviceContext& context, WaveHandle handle, double xStart, double xSpan, std::int32_t bitMask,
                           int width, int height) {
  const std::span<const std::int16_t> codes = W_Lock(handle);
  if (codes.empty()) return W_BAD_HANDLE;
  const HorizontalView across{xStart, xSpan, width};
  if (!across.IsUsable() || height < 1 || height > wavelb::kPictureLimit) return W_BAD_VALUE;
  ReduceBits(codes, across);
  for (int lane = 0; lane < kLaneCount; ++lane) {
    if ((static_cast<std::uint32_t>(bitMask) & (0x8000U >> lane)) != 0) DrawLane(context, lane, height);
  }
  return W_SUCCESS;
}

std::uint16_t reverse_bit(std::uint16_t pattern) {
  std::uint32_t bits = pattern;
  bits = ((bits & 0x5555U) << 1) | ((bits >> 1) & 0x5555U);
  bits = ((bits & 0x3333U) << 2) | ((bits >> 2) & 0x3333U);
  bits = ((bits & 0x0F0FU) << 4) | ((bits >> 4) & 0x0F0FU);
  return static_cast<std::uint16_t>((bits << 8) | (bits >> 8));
}

std::int32_t W_CopyBitDigital(WaveHandle handle, double start, double count, std::int32_t sourceMask,
                              std::int32_t destinationMask) {
  const auto isOneBit = [](std::int32_t mask) {
    return mask > 0 && mask <= 0x8000 && std::has_single_bit(static_cast<std::uint32_t>(mask));
  };
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  if (range.status != W_SUCCESS) return range.status;
  if (!isOneBit(sourceMask) || !isOneBit(destinationMask)) return W_BAD_VALUE;
  const int from = std::countr_zero(static_cast<std::uint32_t>(sourceMask));
  const int to = std::countr_zero(static_cast<std::uint32_t>(destinationMask));
  for (std::int16_t& code : range.codes) {
    const std::uint32_t bits = static_cast<std::uint16_t>(code);
    const std::uint32_t moved = ((bits >> from) & 1U) << to;
    code = static_cast<std::int16_t>((bits & ~static_cast<std::uint32_t>(destinationMask)) | moved);
  }
  return W_SUCCESS;
}

} // namespace calder
