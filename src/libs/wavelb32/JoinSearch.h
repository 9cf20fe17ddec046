// The fewest straight joins that give back a row of codes. Inside the library only.
//
// A join from point i to point j is valid when the straight line between the two codes, rounded as ExactLine does,
// gives the code of every point between them. Valid joins are not monotone: a join may be valid although a shorter one
// from the same point is not, so taking the longest each time can miss the fewest.
//
// 1. A point at which the codes bend by more than any rounding of one line can, lies inside of no valid join: it is a
//    control point of every solution. These points cut the waveform into stretches that are independent of each other.
// 2. A stretch that is one valid join is done; every other one is left to StretchSolver.
#pragma once

#include "libs/wavelb32/StretchSolver.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace calder::wavelb {

class JoinSearch {
public:
  // REQUIRES: 1 to W_MAX_POINTS codes.
  explicit JoinSearch(std::span<const std::int16_t> codes) : codes_(codes) {}

  // The positions of the fewest control points, the first 0 and the last the last point; none when there would be more
  // than limit.
  [[nodiscard]] std::optional<std::vector<std::int32_t>> Find(std::size_t limit);

private:
  [[nodiscard]] bool CutAtBends(std::size_t limit);
  [[nodiscard]] std::span<const std::int16_t> Part(std::int32_t first, std::int32_t last) const {
    return codes_.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first) + 1);
  }

  std::span<const std::int16_t> codes_;
  std::vector<std::int32_t> bends_; // with the first and the last point
  StretchSolver solver_;
};

} // namespace calder::wavelb
