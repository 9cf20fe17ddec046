// The loops over the points of one piece of a curve, as vectors.
#pragma once

#include <cstdint>
#include <span>

namespace calder::spline {

// A straight line: base at the position 0, rise over length. Whole: base, rise and length are whole numbers, |base| and
// |rise| at most 2^17 and length at most 2^20; then values half-way between two codes are distinguished from their
// neighbours exactly.
struct LinePiece {
  double base = 0;
  double rise = 0;
  double length = 1;
  bool whole = false;
};

// value(t) = ((c3 t + c2) t + c1) t + c0, t in points.
struct CubicPiece {
  double c0 = 0;
  double c1 = 0;
  double c2 = 0;
  double c3 = 0;
};

// codes[i] = the value at first + i, rounded to the nearest code, halves to even, limited to +-limit.
void FillLine(std::span<std::int16_t> codes, double first, const LinePiece& line, std::int32_t limit);
void FillCubic(std::span<std::int16_t> codes, double first, const CubicPiece& cubic, std::int32_t limit);

} // namespace calder::spline
