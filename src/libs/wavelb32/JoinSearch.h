// The fewest straight joins that give back a row of codes. Inside the library only.
//
// A join from point i to point j is valid when the straight line between the two codes, rounded as ExactLine does,
// gives the code of every point between them. Valid joins are not monotone: a join may be valid although a shorter one
// from the same point is not, so taking the longest each time can miss the fewest.
//
// 1. A point at which the codes bend by more than any rounding of one line can, lies inside of no valid join: it is a
//    control point of every solution. These points cut the waveform into stretches that are independent of each other.
// 2. A stretch that is one valid join is done.
// 3. For every other stretch, lines that need not pass through the codes at their ends (LineStabber) give bounds: after
// d
//    joins no solution is farther than farthest[d], and e joins before the end none is nearer than nearest[e].
// 4. The points are then searched by number of joins between these bounds, for a limit on the number of joins that
//    starts with the least possible one and grows until the end is reached. Whatever lies outside of the bounds cannot
//    be part of a solution within the limit, so the first solution found is one of the fewest.
//
// All comparisons are of whole numbers. "Rounds to the code" means a distance of at most 1/2 for an even and below 1/2
// for an odd code. A line's values between whole points n apart are multiples of 1/n, so with n below 2^19 "below 1/2"
// is "at most 1/2 - 2^-20", and all gaps are closed in units of 2^-20.
#pragma once

#include "libs/wavelb32/LineStabber.h"

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
  // A stretch that is not one join.
  struct Stretch {
    std::int32_t first;
    std::int32_t last;
    std::int32_t leastJoins;
  };
  // A point reached, and the index in nodes_ of the one it was reached from.
  struct Node {
    std::int32_t position;
    std::int32_t from;
  };

  [[nodiscard]] bool CutAtBends(std::size_t limit);
  [[nodiscard]] bool IsJoin(std::int32_t first, std::int32_t last) const;
  // Bounds for the stretch into farthest_ and nearest_; the least number of joins, or maximum + 1 when that is
  // exceeded.
  [[nodiscard]] std::int32_t BoundForwards(std::int32_t first, std::int32_t last, std::int32_t maximum);
  void BoundBackwards(std::int32_t first, std::int32_t last);
  // The points between first and last of a solution with the fewest joins, if that is at most maximum.
  [[nodiscard]] bool Solve(const Stretch& stretch, std::int32_t maximum, std::vector<std::int32_t>& between);
  [[nodiscard]] bool SolveWithin(const Stretch& stretch, std::int32_t joins, std::vector<std::int32_t>& between);
  void Expand(std::int32_t nodeIndex, std::int32_t nearest, std::int32_t farthest);

  [[nodiscard]] bool AddGap(std::int64_t x, std::int32_t point);

  std::span<const std::int16_t> codes_;
  std::vector<std::int32_t> bends_;
  std::vector<std::int32_t> farthest_;
  std::vector<std::int32_t> nearest_;
  std::vector<Node> nodes_;
  std::vector<std::uint8_t> isReached_; // by point of the stretch
  std::int32_t stretchFirst_ = 0;
  LineStabber stabber_;
};

} // namespace calder::wavelb
