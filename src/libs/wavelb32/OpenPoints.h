// The points from which a straight line can still go on: through the code of the point and within 1/2 of each code
// after it. Inside the library only.
//
// Each open point has the wedge of its lines. A block of new codes narrows the wedges at once: only the codes on the
// convex chains of the block's ends above and below can bound a line that comes from before it.
#pragma once

#include "libs/wavelb32/LineStabber.h"

#include <cstdint>
#include <span>
#include <vector>

namespace calder::wavelb {

class OpenPoints {
public:
  struct Slope {
    std::int32_t twiceRise;
    std::int32_t run; // 0: vertical
  };
  struct Point {
    std::int32_t point;
    Slope least;
    Slope greatest;
  };

  // Begins with the first point alone. REQUIRES: the codes stay where they are while the object is used for them.
  void Start(std::span<const std::int16_t> codes);
  // Goes on to the point, which lies after that of the last call.
  void Advance(std::int32_t point);

  // Ascending; the last one is the point of the last call.
  [[nodiscard]] std::span<const Point> Points() const { return open_; }
  [[nodiscard]] bool IsOpen(std::int32_t point) const { return isOpen_[static_cast<std::size_t>(point)] != 0; }

private:
  [[nodiscard]] std::int64_t Twice(std::int32_t point) const {
    return 2 * std::int64_t{codes_[static_cast<std::size_t>(point)]};
  }
  // False when no line is left.
  [[nodiscard]] bool Narrow(Point& point) const;
  // From right to left. sign: 1 for the ends above, whose chain bends up, -1 for those below.
  static void Extend(std::vector<GapEnd>& chain, const GapEnd& end, std::int64_t sign);

  std::span<const std::int16_t> codes_;
  std::vector<Point> open_;
  std::vector<Point> added_;
  std::vector<std::uint8_t> isOpen_; // by point
  LineStabber stabber_;
  std::vector<GapEnd> uppers_; // heights in halves of a code
  std::vector<GapEnd> lowers_;
};

} // namespace calder::wavelb
