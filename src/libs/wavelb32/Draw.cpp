// Waveform and grid drawing.
#include "libs/wavelb32/Reduce.h"
#include "libs/wavelb32/State.h"
#include "libs/wavelb32/View.h"

#include <algorithm>

namespace calder {

using wavelb::HorizontalView;
using wavelb::State;
using wavelb::TheState;
using wavelb::VerticalView;

namespace {

constexpr Color kGridColor = 0x2A2F35;
constexpr Color kZeroColor = 0x757A7F;
constexpr int kGridColumns = 10;
constexpr int kGridRows = 8;
// From this distance on, in logical pixels, each point is marked by a dot of this size.
constexpr double kDotDistance = 8;
constexpr double kDotSize = 3;

// A column that does not meet its left neighbour is lengthened until it does: the trace has no gaps.
void JoinColumns(std::span<std::int16_t> lows, std::span<std::int16_t> highs) {
  std::int16_t leftLow = INT16_MAX;
  std::int16_t leftHigh = INT16_MIN;
  bool hasLeft = false;
  for (std::size_t c = 0; c < lows.size(); ++c) {
    const std::int16_t low = lows[c];
    const std::int16_t high = highs[c];
    if (low > high) {
      hasLeft = false;
      continue;
    }
    if (hasLeft) {
      lows[c] = std::min(low, leftHigh);
      highs[c] = std::max(high, leftLow);
    }
    leftLow = low;
    leftHigh = high;
    hasLeft = true;
  }
}

// Every column takes in the rows of its neighbours within the trace's width, so that steep edges are as wide as flat
// ones are high. tops and bottoms are codes here: a column's highest and lowest.
void WidenColumns(std::vector<std::int16_t>& lows, std::vector<std::int16_t>& highs, int traceWidth) {
  for (int pass = 1; pass < traceWidth; ++pass) {
    for (std::size_t c = lows.size() - 1; c > 0; --c) {
      lows[c] = std::min(lows[c], lows[c - 1]);
      highs[c] = std::max(highs[c], highs[c - 1]);
    }
  }
}

void DrawDense(DeviceContext& context, std::span<const std::int16_t> codes, const HorizontalView& across,
               const VerticalView& down) {
  State& state = TheState();
  across.Edges(static_cast<std::int32_t>(codes.size()), state.edges);
  const auto width = static_cast<std::size_t>(across.width);
  state.lows.resize(width);
  state.highs.resize(width);
  wavelb::ReduceColumns(codes, state.edges, state.lows, state.highs);
  JoinColumns(state.lows, state.highs);
  const int traceWidth = wavelb::TraceWidth(context);
  WidenColumns(state.lows, state.highs, traceWidth);
  for (std::size_t c = 0; c < width; ++c) {
    wavelb::RowRange rows;
    if (state.lows[c] <= state.highs[c])
      rows = wavelb::ClipRows(down.Row(state.highs[c]), down.Row(state.lows[c]) + traceWidth - 1, down.height);
    state.highs[c] = rows.top;
    state.lows[c] = rows.bottom;
  }
  context.Columns(0, state.highs, state.lows);
}

void DrawSparse(DeviceContext& context, std::span<const std::int16_t> codes, const HorizontalView& across,
                const VerticalView& down) {
  std::vector<DevicePoint>& points = TheState().points;
  points.clear();
  const auto pointCount = static_cast<std::int32_t>(codes.size());
  const std::int32_t first = across.FirstPoint(0, pointCount);
  const std::int32_t end = across.FirstPoint(across.width, pointCount);
  const auto add = [&](std::int32_t position) {
    const std::int32_t index = std::min(position, pointCount - 1);
    points.push_back({across.Column(position), down.Row(codes[static_cast<std::size_t>(index)])});
  };
  // The points just outside give the slope at the view's edges. After the last point its code holds to the right end.
  const bool hasLeft = first > 0 && first > across.start && first - 1 < across.start + across.span;
  if (hasLeft) add(first - 1);
  for (std::int32_t position = first; position < end; ++position) add(position);
  const bool hasRight = !points.empty();
  if (hasRight) add(end);
  if (points.empty()) return;

  const double scale = std::max(1.0, context.Scale());
  const bool hasDots = across.width / across.span >= kDotDistance * scale && end > first;
  const std::span<const DevicePoint> all = points;
  if (!hasDots) {
    context.Polyline(all, 0);
    return;
  }
  // Only points inside get dots.
  if (hasLeft) context.Polyline(all.first(2), 0);
  context.Polyline(all.last(2), 0);
  const std::size_t inside = static_cast<std::size_t>(end) - static_cast<std::size_t>(first);
  context.Polyline(all.subspan(hasLeft ? 1 : 0, inside), static_cast<int>(std::lround(kDotSize * scale)));
}

} // namespace

std::int32_t W_DrawWave2(DeviceContext& context, WaveHandle handle, double xStart, double yStart, double xSpan,
                         double ySpan, int width, int height, std::int32_t pointCount) {
  std::span<const std::int16_t> codes = W_Lock(handle);
  if (codes.empty()) return W_BAD_HANDLE;
  const HorizontalView across{xStart, xSpan, width};
  const VerticalView down{yStart, ySpan, height};
  if (!across.IsUsable() || !down.IsUsable()) return W_BAD_VALUE;
  if (pointCount < 0 || static_cast<std::size_t>(pointCount) > codes.size()) return W_BAD_RANGE;
  if (pointCount > 0) codes = codes.first(static_cast<std::size_t>(pointCount));
  if (across.IsDense())
    DrawDense(context, codes, across, down);
  else
    DrawSparse(context, codes, across, down);
  return W_SUCCESS;
}

std::int32_t W_DrawGrid(DeviceContext& context, int width, int height) {
  if (width < 1 || height < 1 || width > wavelb::kPictureLimit || height > wavelb::kPictureLimit) return W_BAD_VALUE;
  const int penWidth = wavelb::TraceWidth(context);
  context.SetPen(kGridColor, penWidth);
  for (int i = 1; i < kGridRows; ++i) {
    const int row = static_cast<int>(std::lround(static_cast<double>(height) * i / kGridRows));
    context.Line(0, row, width - 1, row);
  }
  for (int i = 1; i < kGridColumns; ++i) {
    const int column = static_cast<int>(std::lround(static_cast<double>(width) * i / kGridColumns));
    context.Line(column, 0, column, height - 1);
  }
  context.SetPen(kZeroColor, penWidth);
  return W_DrawGrid2(context, 0, W_CODE_SPAN, width, height);
}

std::int32_t W_DrawGrid2(DeviceContext& context, double yStart, double ySpan, int width, int height) {
  const VerticalView down{yStart, ySpan, height};
  if (!down.IsUsable() || width < 1 || width > wavelb::kPictureLimit) return W_BAD_VALUE;
  const double row = down.Row(0);
  if (row >= 0 && row < height) context.Line(0, static_cast<int>(row), width - 1, static_cast<int>(row));
  return W_SUCCESS;
}

} // namespace calder
