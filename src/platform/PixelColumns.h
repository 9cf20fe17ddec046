// The inner loop of PixelContext::Columns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace calder {

struct ColumnPaint {
  std::uint32_t* pixels;    // of the first column in row 0
  std::size_t stride;       // pixels from row to row
  int height;               // rows on the surface
  std::uint32_t color;      // what a covered pixel becomes
  std::uint32_t invertMask; // when not 0, the bits of a covered pixel that are complemented instead
};

// Column i covers rows tops[i] to bottoms[i] (none when tops[i] > bottoms[i]), cut to the surface.
// REQUIRES: both spans have the same length, and that many pixels lie in every row.
void PaintColumns(const ColumnPaint& paint, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms);

} // namespace calder
