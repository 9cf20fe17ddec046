// The 16 bits of the codes as lanes.
#include "libs/wavelb32/LaneColumns.h"
#include "libs/wavelb32/State.h"
#include "libs/wavelb32/View.h"
#include "platform/WaveformTheme.h"

#include <algorithm>

namespace calder {

using theme::Mixed;
using wavelb::HorizontalView;
using wavelb::LaneColors;
using wavelb::LaneColumns;
using wavelb::LaneRow;
using wavelb::State;
using wavelb::TheState;

namespace {

// The picture's height in units: one of margin above, three a lane. Of its rows a lane keeps a sixth clear above and
// below the trace.
constexpr int kHeightUnits = 49;
constexpr int kLaneUnits = 3;
constexpr int kClearPart = 6;

constexpr double kHalfTone = 0.45;  // how much of the trace's colour where edges follow each other
constexpr double kTint = 0.08;      // of the selected colour on a selected lane's ground
constexpr double kScopeTint = 0.22; // and between the markers

int LaneHeight(int height) {
  return kLaneUnits * height / kHeightUnits;
}

std::uint16_t BitOf(int lane) {
  return static_cast<std::uint16_t>(0x8000U >> lane);
}

// The rows of a lane's trace, the last ones included.
struct LaneTrace {
  int high = 0;
  int highEnd = 0;
  int low = 0;
  int lowEnd = 0;
};

LaneTrace TraceOf(const LaneRows& rows, int traceWidth) {
  const int clear = (rows.bottom - rows.top) / kClearPart;
  const int last = std::max(rows.bottom - 1 - clear, rows.top);
  const int low = std::max(last - traceWidth + 1, rows.top);
  const int high = std::min(rows.top + clear, low);
  return {high, std::min(high + traceWidth - 1, last), low, last};
}

// What is drawn onto a lane's ground, one after the other.
struct LaneLayer {
  const LaneColumns* columns;
  LaneColors colors;
};

// Rows of the same kind are worked out once. state.ground: the colours of the lane's ground.
void DrawLane(DeviceContext& context, int lane, const LaneRows& rows, std::span<const LaneLayer> layers) {
  State& state = TheState();
  const LaneTrace trace = TraceOf(rows, wavelb::TraceWidth(context));
  const auto kind = [&](int y) {
    return LaneRow{y >= trace.high && y <= trace.highEnd, y >= trace.low && y <= trace.lowEnd};
  };
  context.Rows(rows.top, trace.high, state.ground);
  for (int top = trace.high; top <= trace.lowEnd;) {
    const LaneRow row = kind(top);
    int bottom = top + 1;
    while (bottom <= trace.lowEnd && kind(bottom).high == row.high && kind(bottom).low == row.low) ++bottom;
    state.row = state.ground;
    for (const LaneLayer& layer : layers) DrawLaneRow(*layer.columns, BitOf(lane), row, layer.colors, state.row);
    context.Rows(top, bottom, state.row);
    top = bottom;
  }
  context.Rows(trace.lowEnd + 1, rows.bottom, state.ground);
}

// A column number, limited to the picture.
int LimitedColumn(const HorizontalView& across, double position) {
  return static_cast<int>(std::clamp(across.Column(position), 0.0, static_cast<double>(across.width)));
}

// The codes that a drawing looks at, or why there is none.
std::int32_t FindView(WaveHandle handle, std::int32_t pointCount, const HorizontalView& across, int height,
                      std::span<const std::int16_t>& codes) {
  codes = W_Lock(handle);
  if (codes.empty()) return W_BAD_HANDLE;
  if (pointCount < 0 || static_cast<std::size_t>(pointCount) > codes.size()) return W_BAD_RANGE;
  if (pointCount > 0) codes = codes.first(static_cast<std::size_t>(pointCount));
  if (!across.IsUsable() || height < 1 || height > wavelb::kPictureLimit) return W_BAD_VALUE;
  return W_SUCCESS;
}

// One lane on paper, in columns as wide as the pen: runs of one kind become one step or one rectangle.
class PaperLane {
public:
  PaperLane(DeviceContext& context, const LaneColumns& columns, int lane, int width, int height, Color halfTone)
      : context_(context), columns_(columns), bit_(BitOf(lane)), width_(width), halfTone_(halfTone),
        trace_(TraceOf(W_RowsOfLane(lane, height), wavelb::TraceWidth(context))) {}

  void Draw() {
    path_.clear();
    for (std::size_t c = 0; c < columns_.Width();) c = Run(c);
    Flush();
  }

private:
  enum class Kind { None, Low, High, Edge, Dense };

  [[nodiscard]] Kind KindOf(std::size_t c) const {
    if (c >= columns_.Width()) return Kind::None;
    if ((columns_.dense[c] & bit_) != 0) return Kind::Dense;
    if ((columns_.changed[c] & bit_) != 0) return Kind::Edge;
    if ((columns_.ever[c] & bit_) != 0) return Kind::High;
    return (columns_.always[c] & bit_) == 0 ? Kind::Low : Kind::None;
  }

  // From column c on; gives the column after the run.
  std::size_t Run(std::size_t c) {
    const Kind kind = KindOf(c);
    std::size_t end = c + 1;
    while (kind != Kind::Edge && end < columns_.Width() && KindOf(end) == kind) ++end;
    switch (kind) {
    case Kind::None: Flush(); break;
    case Kind::Dense:
      Flush();
      context_.FillRectangle(X(c), trace_.high, X(end) - X(c), trace_.lowEnd - trace_.high + 1, halfTone_);
      break;
    case Kind::Edge: Edge(c); break;
    default: Add(X(c), kind == Kind::High); Add(std::min(X(end), width_ - 1), kind == Kind::High);
    }
    return end;
  }

  // From the level before to the one after; where both are the same, there and back.
  void Edge(std::size_t c) {
    const Kind next = KindOf(c + 1);
    const bool after = next == Kind::High || (next != Kind::Low && !level_);
    const bool before = path_.empty() ? !after : level_;
    Add(X(c), before);
    if (before == after) Add(X(c), !after);
    Add(X(c), after);
  }

  [[nodiscard]] int X(std::size_t column) const {
    return static_cast<int>(column * static_cast<std::size_t>(width_) / columns_.Width());
  }
  void Add(int x, bool high) {
    level_ = high;
    const DevicePoint point{static_cast<double>(x), static_cast<double>(high ? trace_.high : trace_.low)};
    if (path_.empty() || path_.back().x != point.x || path_.back().y != point.y) path_.push_back(point);
  }
  void Flush() {
    if (!path_.empty()) context_.Polyline(path_, 0);
    path_.clear();
  }

  DeviceContext& context_;
  const LaneColumns& columns_;
  std::uint16_t bit_;
  int width_;
  Color halfTone_;
  LaneTrace trace_;
  std::vector<DevicePoint>& path_ = TheState().points;
  bool level_ = false;
};

} // namespace

LaneRows W_RowsOfLane(int lane, int height) {
  const int laneHeight = LaneHeight(height);
  if (laneHeight < 1 || lane < 0 || lane >= W_LANES) return {};
  const int first = height / kHeightUnits;
  const int margin = (height + kHeightUnits - 1) / kHeightUnits; // a row that is half margin is margin
  return {std::max(first + lane * laneHeight, margin), first + (lane + 1) * laneHeight};
}

int W_LaneAt(int row, int height) {
  if (LaneHeight(height) < 1 || row < 0 || std::int64_t{row} * kHeightUnits < height) return -1;
  return (row - height / kHeightUnits) / LaneHeight(height);
}

std::int32_t W_DrawDigitalPattern(DeviceContext& context, WaveHandle handle, double xStart, double xSpan,
                                  std::int32_t bitCount, std::int32_t bitMask, double markerA, double markerB,
                                  int width, int height, std::uint32_t traceColor, std::uint32_t groundColor,
                                  std::uint32_t selectedColor, std::uint32_t quietColor, std::int32_t pointCount,
                                  WaveHandle ghost, std::uint32_t ghostColor) {
  const HorizontalView across{xStart, xSpan, width};
  std::span<const std::int16_t> codes;
  std::span<const std::int16_t> ghostCodes;
  for (const auto& [buffer, found] : {std::pair{handle, &codes}, {ghost == 0 ? handle : ghost, &ghostCodes}}) {
    if (const std::int32_t status = FindView(buffer, pointCount, across, height, *found); status != W_SUCCESS)
      return status;
  }
  if (codes.size() != ghostCodes.size()) return W_BAD_RANGE;
  if (!wavelb::IsUsable(markerA) || !wavelb::IsUsable(markerB)) return W_BAD_VALUE;

  State& state = TheState();
  const int penWidth = wavelb::TraceWidth(context);
  state.lanes.Find(codes, across, penWidth);
  if (ghost != 0) {
    state.ghostLanes.Find(ghostCodes, across, penWidth);
    state.ghostLanes.KeepDifferences(codes, ghostCodes, penWidth);
  }
  const int scopeLeft = LimitedColumn(across, std::min(markerA, markerB));
  const int scopeRight = LimitedColumn(across, std::max(markerA, markerB));
  const Color tint = Mixed(groundColor, selectedColor, kTint);
  const Color scopeTint = Mixed(groundColor, selectedColor, kScopeTint);
  int painted = 0; // rows
  for (int lane = 0; lane < W_LANES; ++lane) {
    const LaneRows rows = W_RowsOfLane(lane, height);
    if (rows.bottom <= rows.top) continue;
    context.FillRectangle(0, painted, width, rows.top - painted, groundColor);
    painted = rows.bottom;
    const bool selected = (static_cast<std::uint32_t>(bitMask) & BitOf(lane)) != 0;
    state.ground.assign(static_cast<std::size_t>(width), selected ? tint : groundColor);
    if (selected) std::fill(state.ground.begin() + scopeLeft, state.ground.begin() + scopeRight, scopeTint);
    const Color trace = lane >= bitCount ? quietColor : selected ? selectedColor : traceColor;
    const Color ground = selected ? scopeTint : groundColor;
    const LaneLayer layers[] = {{&state.lanes, {trace, Mixed(ground, trace, kHalfTone)}},
                                {&state.ghostLanes, {ghostColor, Mixed(ground, ghostColor, kHalfTone)}}};
    DrawLane(context, lane, rows, std::span(layers).first(ghost == 0 ? 1 : 2));
  }
  context.FillRectangle(0, painted, width, height - painted, groundColor);
  return W_SUCCESS;
}

std::int32_t W_DrawDigital(DeviceContext& context, WaveHandle handle, double xStart, double xSpan, std::int32_t bitMask,
                           int width, int height, std::uint32_t halfTone) {
  // What lies closer than the pen is wide cannot be told apart.
  const int penWidth = wavelb::TraceWidth(context);
  const HorizontalView across{xStart, xSpan, std::max(1, width / penWidth)};
  std::span<const std::int16_t> codes;
  if (width < 1) return W_BAD_VALUE;
  if (const std::int32_t status = FindView(handle, 0, across, height, codes); status != W_SUCCESS) return status;
  LaneColumns& columns = TheState().lanes;
  columns.Find(codes, across, 1);
  for (int lane = 0; lane < W_LANES && W_RowsOfLane(lane, height).bottom > 0; ++lane) {
    if ((static_cast<std::uint32_t>(bitMask) & BitOf(lane)) != 0)
      PaperLane(context, columns, lane, width, height, halfTone).Draw();
  }
  return W_SUCCESS;
}

} // namespace calder
