// What the interpolations are measured against.
#pragma once

#include "libs/spline32/Cubic.h"

#include <cstdint>
#include <span>
#include <vector>

namespace calder {

// A point after the other, compiled as a plain -O2 loop: the coefficients are those of the library.
void PlainCubicWalk(std::span<std::int16_t> codes, std::span<const spline::Point> points,
                    std::span<const spline::CubicPiece> pieces);
// The straight lines by hand for AVX2, in blocks of 8 points. False where they cannot run.
[[nodiscard]] bool HandLineWalk(std::span<std::int16_t> codes, std::span<const spline::Point> points);

// GSL's cubic spline: made once, evaluated at every point and rounded.
class GslSpline {
public:
  explicit GslSpline(std::span<const spline::Point> points);
  ~GslSpline();
  GslSpline(const GslSpline&) = delete;
  GslSpline& operator=(const GslSpline&) = delete;
  void Walk(std::span<std::int16_t> codes) const;

private:
  struct Parts;
  Parts* parts_;
};

} // namespace calder
