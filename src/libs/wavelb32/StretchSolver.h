// The fewest valid joins from the first to the last point of a stretch. Inside the library only; JoinSearch.h says what
// a valid join is.
//
// Points are searched by number of joins, from both ends at once, until the two waves meet: the first meeting is on a
// solution with the fewest joins. Lines that need not pass through the codes at their ends bound the search: for a
// limit on the joins, a point that is too far after its number of joins, or too near for those that are left, cannot be
// part of a solution within the limit. The limit starts with the least possible number and grows until a solution is
// found.
#pragma once

#include "libs/wavelb32/JoinWave.h"

#include <cstdint>
#include <span>
#include <vector>

namespace calder::wavelb {

class StretchSolver {
public:
  // The least number of joins that any solution has, or maximum + 1 when that is exceeded.
  [[nodiscard]] std::int32_t LeastJoins(std::span<const std::int16_t> codes, std::int32_t maximum);

  // The points between the first and the last of a solution with the fewest joins, in any order; false when that takes
  // more than maximum joins. leastJoins: a number of joins below which there is no solution.
  [[nodiscard]] bool Solve(std::span<const std::int16_t> codes, std::int32_t leastJoins, std::int32_t maximum,
                           std::vector<std::int32_t>& between);

private:
  [[nodiscard]] bool SolveWithin(std::int32_t joins, std::vector<std::int32_t>& between);

  std::vector<std::int16_t> reversed_;
  JoinWave fromStart_;
  JoinWave fromEnd_; // over the reversed codes
};

} // namespace calder::wavelb
