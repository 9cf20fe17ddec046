// Second derivatives at the points from the tridiagonal system that the meeting slopes make, as in C. de Boor, A
// Practical Guide to Splines, chapter IV; the cyclic one by the Sherman-Morrison formula. The systems are diagonally
// dominant, so no pivots are looked for.
#include "libs/spline32/Cubic.h"

namespace calder::spline {
namespace {

// Rows below[i] u[i-1] + diagonal[i] u[i] + above[i] u[i+1] = right[i], for each of the right sides, whose places the
// solutions take. The diagonal is overwritten.
template <typename... Sides>
void SolveTridiagonal(std::span<const double> below, std::span<double> diagonal, std::span<const double> above,
                      Sides&... right) {
  const std::size_t n = diagonal.size();
  double inverse = 1 / diagonal[0];
  ((right[0] *= inverse), ...);
  for (std::size_t i = 1; i < n; ++i) { // one division a row: each waits for the one before
    const double carried = above[i - 1] * inverse;
    inverse = 1 / (diagonal[i] - below[i] * carried);
    diagonal[i] = carried;
    ((right[i] = (right[i] - below[i] * right[i - 1]) * inverse), ...);
  }
  for (std::size_t i = n - 1; i-- > 0;) ((right[i] -= diagonal[i + 1] * right[i + 1]), ...);
}

// From the values at both ends of a piece of length h and the second derivatives there.
CubicPiece Piece(double y0, double y1, double m0, double m1, double h) {
  return {y0, (y1 - y0) / h - h * (2 * m0 + m1) / 6, m0 / 2, (m1 - m0) / (6 * h)};
}

} // namespace

std::vector<CubicPiece> NaturalPieces(std::span<const Point> points) {
  if (points.size() < 2) return {};
  const std::size_t pieces = points.size() - 1;
  std::vector<double> second(points.size(), 0.0);
  if (pieces > 1) {
    const std::size_t n = pieces - 1; // inner points
    std::vector<double> below(n);
    std::vector<double> diagonal(n);
    std::vector<double> above(n);
    double h = points[1].x - points[0].x;
    double slope = (points[1].y - points[0].y) / h;
    for (std::size_t i = 0; i < n; ++i) {
      const double nextH = points[i + 2].x - points[i + 1].x;
      const double nextSlope = (points[i + 2].y - points[i + 1].y) / nextH;
      below[i] = h;
      diagonal[i] = 2 * (h + nextH);
      above[i] = nextH;
      second[i + 1] = 6 * (nextSlope - slope);
      h = nextH;
      slope = nextSlope;
    }
    std::span<double> inner = std::span(second).subspan(1, n);
    SolveTridiagonal(below, diagonal, above, inner);
  }
  std::vector<CubicPiece> result;
  result.reserve(pieces);
  for (std::size_t i = 0; i < pieces; ++i) {
    result.push_back(Piece(points[i].y, points[i + 1].y, second[i], second[i + 1], points[i + 1].x - points[i].x));
  }
  return result;
}

std::vector<CubicPiece> PeriodicPieces(std::span<const Point> points, double period) {
  const std::size_t n = points.size();
  if (n == 0) return {};
  if (n == 1) return {{points[0].y, 0, 0, 0}};
  std::vector<double> h(n);
  std::vector<double> slope(n);
  for (std::size_t i = 0; i < n; ++i) {
    const bool wraps = i + 1 == n;
    h[i] = (wraps ? points[0].x + period : points[i + 1].x) - points[i].x;
    slope[i] = (points[wraps ? 0 : i + 1].y - points[i].y) / h[i];
  }
  std::vector<double> below(n);
  std::vector<double> diagonal(n);
  std::vector<double> above(n);
  std::vector<double> second(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t before = i == 0 ? n - 1 : i - 1;
    below[i] = h[before];
    diagonal[i] = 2 * (h[before] + h[i]);
    above[i] = h[i];
    second[i] = 6 * (slope[i] - slope[before]);
  }
  if (n == 2) { // both neighbours of a point are the other one
    const double beside = h[0] + h[1];
    const double determinant = diagonal[0] * diagonal[1] - beside * beside;
    const double first = (second[0] * diagonal[1] - second[1] * beside) / determinant;
    second[1] = (second[1] * diagonal[0] - second[0] * beside) / determinant;
    second[0] = first;
  } else {
    // The corners are one outer product u v': solve for the right side and for u, then put them together.
    const double corner = below[0]; // = above[n - 1]
    const double gamma = -diagonal[0];
    std::vector<double> u(n, 0.0);
    u[0] = gamma;
    u[n - 1] = corner;
    diagonal[0] -= gamma;
    diagonal[n - 1] -= corner * corner / gamma;
    SolveTridiagonal(below, diagonal, above, second, u);
    const double ratio = corner / gamma;
    const double factor = (second[0] + ratio * second[n - 1]) / (1 + u[0] + ratio * u[n - 1]);
    for (std::size_t i = 0; i < n; ++i) second[i] -= factor * u[i];
  }
  std::vector<CubicPiece> result;
  result.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t next = i + 1 == n ? 0 : i + 1;
    result.push_back(Piece(points[i].y, points[next].y, second[i], second[next], h[i]));
  }
  return result;
}

} // namespace calder::spline
