// Convex chains over blocks of gaps, so that a wedge takes in a long run of gaps in few steps: of a block only the ends
// on its chains can bound a line that comes from outside. Inside the library only.
#pragma once

#include "libs/wavelb32/Wedge.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace calder::wavelb {

class GapHulls {
public:
  // REQUIRES: the codes stay where they are while the object is used.
  void Build(std::span<const std::int16_t> codes);
  [[nodiscard]] bool IsBuilt() const { return !levels_.empty(); }
  void Clear() { levels_.clear(); }

  // Narrows the wedge of the code at origin by the gaps first to end - 1, which lie all to one side of it, from the
  // origin outwards, until the wedge is empty. Returns the outermost point whose gap was taken in.
  std::int32_t Narrow(Wedge& wedge, std::int32_t origin, std::int32_t first, std::int32_t end) const;

private:
  static constexpr std::int32_t fanOut = 8;

  // Blocks of fanOut^(level + 1) points, whole ones only.
  struct Level {
    std::int32_t blockSize = 0;
    std::vector<std::int32_t> uppers; // points whose upper gap ends form the chains, block after block
    std::vector<std::int32_t> lowers;
    std::vector<std::int32_t> upperStarts; // one more than blocks
    std::vector<std::int32_t> lowerStarts;
  };

  [[nodiscard]] std::int64_t Upper(std::int32_t point) const {
    return GapOf(codes_[static_cast<std::size_t>(point)]).upper;
  }
  [[nodiscard]] std::int64_t Lower(std::int32_t point) const {
    return GapOf(codes_[static_cast<std::size_t>(point)]).lower;
  }
  void BuildLevel(std::int32_t blockSize);
  void NarrowByPoint(Wedge& wedge, std::int32_t origin, std::int32_t point) const;
  void NarrowByBlock(Wedge& wedge, std::int32_t origin, const Level& level, std::int32_t block) const;

  std::span<const std::int16_t> codes_;
  std::vector<Level> levels_;
};

} // namespace calder::wavelb
