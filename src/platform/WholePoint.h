// How a position or a length in points becomes whole points.
#pragma once

#include <cmath>

namespace calder {

// Rounded up, but for a value within 1e-6 of a whole number, which it then is: lengths are differences of positions,
// and 32.2 - 12.2 is a little more than 20. A value that is not a number stays one.
[[nodiscard]] inline double WholePoint(double points) {
  constexpr double tolerance = 1e-6;
  const double nearest = std::rint(points);
  return std::abs(points - nearest) <= tolerance ? nearest : std::ceil(points);
}

} // namespace calder
