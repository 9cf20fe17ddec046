#include "libs/wavelb32/LaneColumns.h"

#include "libs/wavelb32/Reduce.h"
#include "libs/wavelb32/View.h"
#include "platform/VectorClones.h"

#include <algorithm>

namespace calder::wavelb {

namespace {

// A column takes in the edges of the columns to its left, so that edges are as wide as levels are high.
void WidenEdges(LaneColumns& lanes, int traceWidth) {
  for (int pass = 1; pass < traceWidth; ++pass) {
    for (std::size_t c = lanes.Width() - 1; c > 0; --c) {
      const auto hasPoints = static_cast<std::uint16_t>(lanes.ever[c] | ~lanes.always[c]);
      lanes.changed[c] = static_cast<std::uint16_t>(lanes.changed[c] | (lanes.changed[c - 1] & hasPoints));
    }
  }
}

// Edges without a gap: in all columns up to `reach` on both sides. What lies beside the picture does not end them.
void FindDense(LaneColumns& lanes, int reach) {
  const std::size_t width = lanes.Width();
  lanes.dense = lanes.changed;
  std::uint16_t* dense = lanes.dense.data();
  const std::uint16_t* changed = lanes.changed.data();
  for (std::size_t distance = 1; distance <= static_cast<std::size_t>(reach) && distance < width; ++distance) {
    for (std::size_t c = distance; c < width; ++c) {
      dense[c] = static_cast<std::uint16_t>(dense[c] & changed[c - distance]);
      dense[c - distance] = static_cast<std::uint16_t>(dense[c - distance] & changed[c]);
    }
  }
}

struct Words {
  const std::uint16_t* always;
  const std::uint16_t* ever;
  const std::uint16_t* changed;
  const std::uint16_t* dense;
};

// No branch, so that the compiler makes vector code of it.
CALDER_VECTOR void DrawRow(const Words& words, std::size_t width, std::uint16_t bit, LaneRow row, LaneColors colors,
                           std::uint32_t* pixels) {
  const Words in = words;
  const std::uint16_t highs = row.high ? bit : std::uint16_t{0};
  const std::uint16_t lows = row.low ? bit : std::uint16_t{0};
  for (std::size_t c = 0; c < width; ++c) {
    const bool dense = (in.dense[c] & bit) != 0;
    const bool shown = ((in.changed[c] & bit) | (in.ever[c] & highs) | (~in.always[c] & lows)) != 0;
    const std::uint32_t old = pixels[c];
    const std::uint32_t traced = shown ? colors.bright : old;
    pixels[c] = dense ? colors.halfTone : traced;
  }
}

} // namespace

void LaneColumns::Find(std::span<const std::int16_t> codes, const HorizontalView& across, int traceWidth) {
  const auto pointCount = static_cast<std::int32_t>(codes.size());
  const auto width = static_cast<std::size_t>(across.width);
  across.Edges(pointCount, TheState().edges);
  const std::vector<std::int32_t>& edges = TheState().edges;
  firsts.resize(width);
  ends.resize(width);
  for (std::size_t c = 0; c < width; ++c) {
    std::int32_t first = edges[c];
    std::int32_t end = edges[c + 1];
    // Between points the last one holds; the first column does not join what lies outside of the view.
    if (first > 0 && (c > 0 || first == end)) --first;
    // Right of the last point's own width nothing is drawn.
    const bool isPast =
        edges[c] == pointCount && across.start + static_cast<double>(c) * across.span / across.width >= pointCount;
    if (isPast) first = end = 0;
    firsts[c] = first;
    ends[c] = end;
  }
  for (std::vector<std::uint16_t>* words : {&always, &ever, &changed}) words->resize(width);
  ReduceBits(codes, firsts, ends, always, ever);
  for (std::size_t c = 0; c < width; ++c) changed[c] = static_cast<std::uint16_t>(ever[c] & ~always[c]);
  WidenEdges(*this, traceWidth);
  FindDense(*this, traceWidth);
}

void LaneColumns::KeepDifferences(std::span<const std::int16_t> codes, std::span<const std::int16_t> others,
                                  int traceWidth) {
  differ.resize(Width());
  ReduceDifferences(codes, others, firsts, ends, differ);
  for (int pass = 1; pass < traceWidth; ++pass)
    for (std::size_t c = Width() - 1; c > 0; --c) differ[c] = static_cast<std::uint16_t>(differ[c] | differ[c - 1]);
  for (std::size_t c = 0; c < Width(); ++c) {
    always[c] = static_cast<std::uint16_t>(always[c] | ~differ[c]);
    for (std::vector<std::uint16_t>* words : {&ever, &changed, &dense})
      (*words)[c] = static_cast<std::uint16_t>((*words)[c] & differ[c]);
  }
}

void DrawLaneRow(const LaneColumns& columns, std::uint16_t bit, LaneRow row, LaneColors colors,
                 std::span<std::uint32_t> pixels) {
  const Words words{columns.always.data(), columns.ever.data(), columns.changed.data(), columns.dense.data()};
  DrawRow(words, columns.Width(), bit, row, colors, pixels.data());
}

} // namespace calder::wavelb
