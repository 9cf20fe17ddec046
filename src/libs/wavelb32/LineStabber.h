// Whether one straight line passes through all of a row of vertical gaps, given gap by gap.
//
// The method is O'Rourke's ("An on-line algorithm for fitting straight lines between data ranges", Communications of
// the ACM 24, 1981): the line of the least and the line of the greatest slope are kept, each through a lower end of one
// gap and an upper end of another, and the chains of ends on which they can turn. A gap costs a few products in the
// mean.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace calder::wavelb {

struct GapEnd {
  std::int64_t x;
  std::int64_t y;
};

class LineStabber {
public:
  // Forgets all gaps.
  void Clear();
  // Takes one more gap; false, with the gap not taken, when no line passes through it and all before.
  // REQUIRES: x ascends; lower <= upper; (difference of x) * (difference of y) fits 62 bits.
  [[nodiscard]] bool Add(std::int64_t x, std::int64_t lower, std::int64_t upper);

private:
  void LowerGreatestSlope(const GapEnd& upperEnd);
  void RaiseLeastSlope(const GapEnd& lowerEnd);

  std::size_t taken_ = 0;
  // The line of the least slope runs from an upper end down to a lower end, that of the greatest the other way round.
  GapEnd leastFrom_{};
  GapEnd leastTo_{};
  GapEnd greatestFrom_{};
  GapEnd greatestTo_{};
  std::vector<GapEnd> uppers_; // the chain of upper ends that can bound a line, convex from below
  std::vector<GapEnd> lowers_;
  std::size_t upperStart_ = 0;
  std::size_t lowerStart_ = 0;
};

} // namespace calder::wavelb
