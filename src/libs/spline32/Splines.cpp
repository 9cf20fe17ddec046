// Cubic splines through control points, over a range.
#include "libs/spline32/Cubic.h"
#include "libs/spline32/Request.h"
#include "libs/spline32/spline32.h"

#include <algorithm>
#include <utility>

namespace calder {
namespace {

using spline::CubicPiece;
using spline::Point;
using spline::Request;

// Points from `least` to `most`, one an X; of points on one X the first counts, as it does for the ends of a period.
std::vector<Point> PointsBetween(const Request& r, double least, double most) {
  std::vector<Point> points;
  points.reserve(r.xs.size());
  for (std::size_t i = 0; i < r.xs.size(); ++i) {
    if (r.xs[i] < least || r.xs[i] > most) continue;
    if (points.empty() || r.xs[i] > points.back().x) points.push_back({r.xs[i], r.ys[i]});
  }
  return points;
}

// Fills from the whole point `from` up to the position `to` and gives the whole point there.
std::int64_t FillPiece(const Request& r, std::int64_t from, double to, double left, const CubicPiece& piece) {
  const std::int64_t end = r.PointFrom(to);
  if (from < end) spline::FillCubic(r.Points(from, end), static_cast<double>(from) - left, piece, r.limit);
  return std::max(from, end);
}

void FillNatural(const Request& r) {
  const std::vector<Point> points = PointsBetween(r, r.xs.front(), r.xs.back());
  const std::vector<CubicPiece> pieces = NaturalPieces(points);
  std::int64_t at = r.PointFrom(points.front().x);
  r.Hold(r.first, at, points.front().y);
  for (std::size_t i = 0; i < pieces.size(); ++i) at = FillPiece(r, at, points[i + 1].x, points[i].x, pieces[i]);
  r.Hold(at, r.end, points.back().y);
}

// The period runs from `start` to `end`; a point at its end is the one at its start, which counts.
void FillPeriodic(const Request& r, double start, double end) {
  std::vector<Point> points = PointsBetween(r, start, end);
  if (points.size() > 1 && points.front().x == start && points.back().x == end) points.pop_back();
  if (points.empty()) return FillNatural(r);
  const double period = end - start;
  const std::vector<CubicPiece> pieces = PeriodicPieces(points, period);
  const std::size_t last = pieces.size() - 1;
  std::int64_t at = FillPiece(r, r.PointFrom(start), points.front().x, points.back().x - period, pieces[last]);
  for (std::size_t i = 0; i < last; ++i) at = FillPiece(r, at, points[i + 1].x, points[i].x, pieces[i]);
  const double again = points.front().x + period;
  at = FillPiece(r, at, again, points.back().x, pieces[last]);
  // The last whole point of a range may lie a part of a point after its end.
  FillPiece(r, at, static_cast<double>(r.end), again, pieces.front());
}

} // namespace

std::int32_t Spline_Hokan_Spline(std::int32_t mode, WaveHandle handle, double rangeStart, double rangeEnd,
                                 const double* x, const double* y, std::int32_t count, std::int32_t memorySize,
                                 std::int32_t limit) {
  if (mode < SPLINE_NATURAL || mode > SPLINE_PERIODIC_WHOLE) return W_BAD_VALUE;
  const Request r(handle, rangeStart, rangeEnd, x, y, count, memorySize, limit);
  if (r.status != W_SUCCESS) return r.status;
  if (mode == SPLINE_NATURAL)
    FillNatural(r);
  else if (mode == SPLINE_PERIODIC_WHOLE)
    FillPeriodic(r, 0, memorySize);
  else if (rangeEnd > rangeStart)
    FillPeriodic(r, rangeStart, rangeEnd);
  return W_SUCCESS;
}

void Q_Sort(double* x, double* y, std::int32_t first, std::int32_t last) {
  if (x == nullptr || y == nullptr || first < 0 || last <= first) return;
  std::vector<Point> points;
  for (std::int32_t i = first; i <= last; ++i) points.push_back({x[i], y[i]});
  std::ranges::stable_sort(points, [](const Point& a, const Point& b) { return a.x < b.x; });
  for (std::int32_t i = first; i <= last; ++i) {
    x[i] = points[static_cast<std::size_t>(i - first)].x;
    y[i] = points[static_cast<std::size_t>(i - first)].y;
  }
}

} // namespace calder
