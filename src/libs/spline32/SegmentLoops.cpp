#include "libs/spline32/SegmentLoops.h"

#include "platform/VectorClones.h"

#include <cstring>

namespace calder::spline {
namespace {

// Eight points at once, as the compiler's own vectors: it breaks short loops up into single points before it looks for
// vectors in them.
constexpr std::ptrdiff_t kBlock = 8;
using Values = double __attribute__((vector_size(kBlock * sizeof(double))));
using Wholes = std::int32_t __attribute__((vector_size(kBlock * sizeof(std::int32_t))));
using Codes = std::int16_t __attribute__((vector_size(kBlock * sizeof(std::int16_t))));
constexpr Values kSteps = {0, 1, 2, 3, 4, 5, 6, 7};

// To the nearest whole number, halves to even. REQUIRES: |value| < 2^51
[[gnu::always_inline]] inline Values Nearest(Values value) {
  constexpr double kShift = 6755399441055744.0; // 1.5 * 2^52: no place is left for a fraction
  return (value + kShift) - kShift;
}

// A positive value is limited before it is rounded: what is converted then fits 32 bits.
[[gnu::always_inline]] inline Codes Limited(Values value, double limit) {
  const Values least = Values{} - limit;
  const Values most = Values{} + limit;
  value = value < least ? least : value;
  value = value > most ? most : value;
  return __builtin_convertvector(__builtin_convertvector(Nearest(value), Wholes), Codes);
}

// The codes of valueAt(t) for the count positions t from `first` on, a block at a time; the last block overlaps the one
// before it, which gives the same codes again.
template <typename ValueAt>
[[gnu::always_inline]] inline void Fill(std::int16_t* codes, std::ptrdiff_t count, double first, double limit,
                                        const ValueAt& valueAt) {
  const std::ptrdiff_t last = count - kBlock;
  if (last < 0) {
    const Codes block = Limited(valueAt(kSteps + first), limit);
    std::memcpy(codes, &block, static_cast<std::size_t>(count) * sizeof(std::int16_t));
    return;
  }
  for (std::ptrdiff_t from = 0;; from = from + kBlock < last ? from + kBlock : last) {
    const Codes block = Limited(valueAt(kSteps + (first + static_cast<double>(from))), limit);
    std::memcpy(codes + from, &block, sizeof(block));
    if (from == last) return;
  }
}

// The product with 1 / length is off by less than 2^-34 of a code. A value of whole numbers lies on a half or at least
// 1 / (2 length), 2^-21 or more, from it: the nearest multiple of 2^-22 is on the half or on the same side of it.
struct WholeLineValue {
  double base;
  double rise;
  double inverse;
  [[gnu::always_inline]] Values operator()(Values t) const {
    constexpr double kShift = 1610612736.0; // 1.5 * 2^30: places are left down to 2^-22
    return (t * rise * inverse + base + kShift) - kShift;
  }
};

struct LineValue {
  double base;
  double rise;
  double length;
  [[gnu::always_inline]] Values operator()(Values t) const { return t * rise / length + base; }
};

struct CubicValue {
  CubicPiece c;
  [[gnu::always_inline]] Values operator()(Values t) const { return ((t * c.c3 + c.c2) * t + c.c1) * t + c.c0; }
};

CALDER_VECTOR void WholeLineLoop(std::int16_t* codes, std::ptrdiff_t count, double first, WholeLineValue value,
                                 double limit) {
  Fill(codes, count, first, limit, value);
}

CALDER_VECTOR void LineLoop(std::int16_t* codes, std::ptrdiff_t count, double first, LineValue value, double limit) {
  Fill(codes, count, first, limit, value);
}

CALDER_VECTOR void CubicLoop(std::int16_t* codes, std::ptrdiff_t count, double first, CubicValue value, double limit) {
  Fill(codes, count, first, limit, value);
}

} // namespace

void FillLine(std::span<std::int16_t> codes, double first, const LinePiece& line, std::int32_t limit) {
  const auto count = static_cast<std::ptrdiff_t>(codes.size());
  if (line.whole)
    WholeLineLoop(codes.data(), count, first, {line.base, line.rise, 1 / line.length}, limit);
  else
    LineLoop(codes.data(), count, first, {line.base, line.rise, line.length}, limit);
}

void FillCubic(std::span<std::int16_t> codes, double first, const CubicPiece& cubic, std::int32_t limit) {
  CubicLoop(codes.data(), static_cast<std::ptrdiff_t>(codes.size()), first, {cubic}, limit);
}

} // namespace calder::spline
