#include "platform/PixelColumns.h"

#include "platform/VectorClones.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace calder {

namespace {

// Columns are taken in blocks. Most blocks of most rows are wholly covered or wholly free, and those need no
// comparison.
constexpr std::size_t kBlockColumns = 32;
constexpr std::size_t kStripBlocks = 128;

struct Block {
  std::int16_t outerTop = INT16_MAX; // above it no column of the block has a pixel
  std::int16_t outerBottom = INT16_MIN;
  std::int16_t innerTop = INT16_MIN; // from it to innerBottom every column has
  std::int16_t innerBottom = INT16_MAX;
};

Block SurveyBlock(const std::int16_t* tops, const std::int16_t* bottoms, std::size_t count) {
  Block block;
  for (std::size_t i = 0; i < count; ++i) {
    if (tops[i] > bottoms[i]) {
      block.innerBottom = INT16_MIN;
      continue;
    }
    block.outerTop = std::min(block.outerTop, tops[i]);
    block.outerBottom = std::max(block.outerBottom, bottoms[i]);
    block.innerTop = std::max(block.innerTop, tops[i]);
    block.innerBottom = std::min(block.innerBottom, bottoms[i]);
  }
  return block;
}

[[gnu::always_inline]] inline void MixRow(std::uint32_t* pixels, const std::int16_t* tops, const std::int16_t* bottoms,
                                          std::size_t count, std::int16_t y, std::uint32_t color) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool covered = (tops[i] <= y) & (y <= bottoms[i]);
    const std::uint32_t old = pixels[i];
    pixels[i] = covered ? color : old;
  }
}

[[gnu::always_inline]] inline void InvertRow(std::uint32_t* pixels, const std::int16_t* tops,
                                             const std::int16_t* bottoms, std::size_t count, std::int16_t y,
                                             std::uint32_t mask) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool covered = (tops[i] <= y) & (y <= bottoms[i]);
    pixels[i] ^= covered ? mask : 0;
  }
}

// One strip of at most kStripBlocks blocks.
CALDER_VECTOR void PaintStrip(const ColumnPaint& paint, const std::int16_t* tops, const std::int16_t* bottoms,
                              std::size_t count) {
  std::array<Block, kStripBlocks> blocks;
  const std::size_t blockCount = (count + kBlockColumns - 1) / kBlockColumns;
  int top = INT16_MAX;
  int bottom = INT16_MIN;
  for (std::size_t b = 0; b < blockCount; ++b) {
    const std::size_t first = b * kBlockColumns;
    blocks[b] = SurveyBlock(tops + first, bottoms + first, std::min(kBlockColumns, count - first));
    top = std::min<int>(top, blocks[b].outerTop);
    bottom = std::max<int>(bottom, blocks[b].outerBottom);
  }
  bottom = std::min(bottom, paint.height - 1);
  for (int row = std::max(top, 0); row <= bottom; ++row) {
    const auto y = static_cast<std::int16_t>(row);
    std::uint32_t* pixels = paint.pixels + static_cast<std::size_t>(row) * paint.stride;
    for (std::size_t b = 0; b < blockCount; ++b) {
      const Block& block = blocks[b];
      if (y < block.outerTop || y > block.outerBottom) continue;
      const std::size_t first = b * kBlockColumns;
      if (paint.invertMask != 0) {
        InvertRow(pixels + first, tops + first, bottoms + first, std::min(kBlockColumns, count - first), y,
                  paint.invertMask);
      } else if (y >= block.innerTop && y <= block.innerBottom) {
        std::fill_n(pixels + first, std::min(kBlockColumns, count - first), paint.color);
      } else if (first + kBlockColumns <= count) {
        MixRow(pixels + first, tops + first, bottoms + first, kBlockColumns, y, paint.color);
      } else {
        MixRow(pixels + first, tops + first, bottoms + first, count - first, y, paint.color);
      }
    }
  }
}

} // namespace

void PaintColumns(const ColumnPaint& paint, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) {
  constexpr std::size_t strip = kBlockColumns * kStripBlocks;
  ColumnPaint part = paint;
  for (std::size_t first = 0; first < tops.size(); first += strip) {
    PaintStrip(part, tops.data() + first, bottoms.data() + first, std::min(strip, tops.size() - first));
    part.pixels += strip;
  }
}

} // namespace calder
