// Straight lines through control points.
#include "libs/spline32/Request.h"
#include "libs/spline32/SegmentLoops.h"
#include "libs/spline32/spline32.h"

#include <cmath>

namespace calder {
namespace {

constexpr double kWholeRise = 1 << 17;
constexpr double kWholeLength = 1 << 20;

// Control points are within 1e12.
bool IsWhole(double value) {
  return static_cast<double>(static_cast<std::int64_t>(value)) == value;
}

spline::LinePiece Piece(const spline::Point& a, const spline::Point& b) {
  spline::LinePiece line{a.y, b.y - a.y, b.x - a.x, false};
  line.whole = IsWhole(a.x) && IsWhole(a.y) && IsWhole(b.x) && IsWhole(b.y) && std::abs(a.y) <= kWholeRise &&
               std::abs(line.rise) <= kWholeRise && line.length <= kWholeLength;
  return line;
}

} // namespace

std::int32_t Spline_Hokan_Line(WaveHandle handle, double rangeStart, double rangeEnd, const double* x, const double* y,
                               std::int32_t count, std::int32_t memorySize, std::int32_t limit) {
  const spline::Request r(handle, rangeStart, rangeEnd, x, y, count, memorySize, limit);
  if (r.status != W_SUCCESS) return r.status;
  std::int64_t from = r.PointFrom(r.xs.front());
  r.Hold(r.first, from, r.ys.front());
  for (std::size_t i = 1; i < r.xs.size(); ++i) {
    const std::int64_t to = r.PointFrom(r.xs[i]);
    if (from < to) {
      const spline::Point left{r.xs[i - 1], r.ys[i - 1]};
      spline::FillLine(r.Points(from, to), static_cast<double>(from) - left.x, Piece(left, {r.xs[i], r.ys[i]}), limit);
    }
    from = to;
  }
  r.Hold(from, r.end, r.ys.back());
  return W_SUCCESS;
}

} // namespace calder
