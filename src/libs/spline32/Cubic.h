// The coefficients of cubic splines.
#pragma once

#include "libs/spline32/Request.h"
#include "libs/spline32/SegmentLoops.h"

#include <span>
#include <vector>

namespace calder::spline {

// Both return one piece from each point to the next, t counted from the piece's left point. Value, slope and curvature
// meet at every point between.
// REQUIRES: points in strictly ascending order of x.

// The natural spline: no curvature at both ends. Two points give a straight line; fewer give none.
[[nodiscard]] std::vector<CubicPiece> NaturalPieces(std::span<const Point> points);
// The periodic spline: the last piece leads from the last point to the first one, a period later, and value, slope and
// curvature meet there too. One point gives a level line; none gives none.
// REQUIRES: period > points.back().x - points.front().x
[[nodiscard]] std::vector<CubicPiece> PeriodicPieces(std::span<const Point> points, double period);

} // namespace calder::spline
