// The part of a waveform that a drawing shows, and where its points and codes stand in the picture. Inside the library
// only.
#pragma once

#include "libs/wavelb32/State.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace calder::wavelb {

// Rows and columns are kept in 16 bits on their way to the device.
inline constexpr int kPictureLimit = INT16_MAX;

struct HorizontalView {
  double start = 0; // in points
  double span = 0;
  int width = 0; // in pixels

  [[nodiscard]] bool IsUsable() const {
    return wavelb::IsUsable(start) && wavelb::IsUsable(span) && span > 0 && width >= 1 && width <= kPictureLimit;
  }
  [[nodiscard]] bool IsDense() const { return span > width; }
  // Column of a position, rounded down; beyond the picture too.
  [[nodiscard]] double Column(double position) const { return std::floor((position - start) * width / span); }
  // The first whole point that stands in the column or to its right, limited to 0..pointCount.
  [[nodiscard]] std::int32_t FirstPoint(int column, std::int32_t pointCount) const {
    const double point = std::ceil(start + column * span / width);
    return point <= 0 ? 0 : point >= pointCount ? pointCount : static_cast<std::int32_t>(point);
  }
  // FirstPoint of every column and of the right edge.
  void Edges(std::int32_t pointCount, std::vector<std::int32_t>& edges) const {
    edges.resize(static_cast<std::size_t>(width) + 1);
    for (int column = 0; column <= width; ++column)
      edges[static_cast<std::size_t>(column)] = FirstPoint(column, pointCount);
  }
};

struct VerticalView {
  double start = 0; // depths
  double span = 0;
  int height = 0; // in pixels

  [[nodiscard]] bool IsUsable() const {
    return wavelb::IsUsable(start) && wavelb::IsUsable(span) && span > 0 && height >= 1 && height <= kPictureLimit;
  }
  // Row of a code, rounded down; beyond the picture too. The depth at the lower edge belongs to the view and stands in
  // the last row, or code -32767 could never be seen.
  [[nodiscard]] double Row(double code) const {
    const double depth = W_CODE_MAX - code - start;
    const double row = std::floor(depth * height / span);
    return row >= height && depth <= span ? height - 1 : row;
  }
};

// Rows from top to bottom, cut to the picture; nothing of it inside gives top > bottom.
struct RowRange {
  std::int16_t top = 1;
  std::int16_t bottom = 0;
};
[[nodiscard]] inline RowRange ClipRows(double top, double bottom, int height) {
  if (!(top <= bottom) || bottom < 0 || top >= height) return {};
  const double cutTop = top < 0 ? 0 : top;
  const double cutBottom = bottom > height - 1 ? height - 1 : bottom;
  return {static_cast<std::int16_t>(cutTop), static_cast<std::int16_t>(cutBottom)};
}

// How many device pixels wide a trace of one logical pixel is.
[[nodiscard]] inline int TraceWidth(const DeviceContext& context) {
  const double scale = context.Scale();
  return scale > 1 && scale <= 64 ? static_cast<int>(std::lround(scale)) : 1;
}

} // namespace calder::wavelb
