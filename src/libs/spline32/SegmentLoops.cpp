#include "libs/spline32/SegmentLoops.h"

#include "platform/VectorClones.h"

#include <cmath>

namespace calder::spline {
namespace {

// Values are limited before they are rounded: what is converted then fits 32 bits.
[[gnu::always_inline]] inline std::int16_t Limited(double value, double limit) {
  const double above = value < -limit ? -limit : value;
  const double inside = above > limit ? limit : above;
  return static_cast<std::int16_t>(static_cast<std::int32_t>(std::rint(inside)));
}

// As many points as the longest vectors hold: shorter loops would leave most of a piece to single steps.
constexpr std::ptrdiff_t kBlock = 8;

// Calls valueAt(i) for every i below count, in blocks; the last block overlaps the one before it, which gives the same
// codes again.
template <typename ValueAt>
[[gnu::always_inline]] inline void Fill(std::int16_t* codes, std::ptrdiff_t count, double limit, ValueAt valueAt) {
  if (count < kBlock) {
    for (std::ptrdiff_t i = 0; i < count; ++i) codes[i] = Limited(valueAt(static_cast<double>(i)), limit);
    return;
  }
  for (std::ptrdiff_t block = 0; block < count; block += kBlock) {
    const std::ptrdiff_t from = block + kBlock <= count ? block : count - kBlock;
    for (std::ptrdiff_t i = 0; i < kBlock; ++i)
      codes[from + i] = Limited(valueAt(static_cast<double>(from + i)), limit);
  }
}

// The product with 1 / length is off by less than 2^-35 of a code. A value of whole numbers lies on a half or at least
// 2^-31 from it, and a position's half is distinguished from its neighbours within 2^-20 for the lengths of a waveform.
CALDER_VECTOR void WholeLineLoop(std::int16_t* codes, std::ptrdiff_t count, double first, double base, double rise,
                                 double length, double limit) {
  const double inverse = 1 / length;
  const double near = inverse / 4;
  Fill(
      codes, count, limit, [=](double i) __attribute__((always_inline)) {
        const double value = rise * (first + i) * inverse + base;
        const double halves = std::rint(2 * value) * 0.5;
        return std::abs(value - halves) < near ? halves : value;
      });
}

CALDER_VECTOR void LineLoop(std::int16_t* codes, std::ptrdiff_t count, double first, double base, double rise,
                            double length, double limit) {
  Fill(
      codes, count, limit, [=](double i) __attribute__((always_inline)) { return base + rise * (first + i) / length; });
}

CALDER_VECTOR void CubicLoop(std::int16_t* codes, std::ptrdiff_t count, double first, CubicPiece c, double limit) {
  Fill(
      codes, count, limit, [=](double i) __attribute__((always_inline)) {
        const double t = first + i;
        return ((c.c3 * t + c.c2) * t + c.c1) * t + c.c0;
      });
}

} // namespace

void FillLine(std::span<std::int16_t> codes, double first, const LinePiece& line, std::int32_t limit) {
  const auto count = static_cast<std::ptrdiff_t>(codes.size());
  if (line.whole)
    WholeLineLoop(codes.data(), count, first, line.base, line.rise, line.length, limit);
  else
    LineLoop(codes.data(), count, first, line.base, line.rise, line.length, limit);
}

void FillCubic(std::span<std::int16_t> codes, double first, const CubicPiece& cubic, std::int32_t limit) {
  CubicLoop(codes.data(), static_cast<std::ptrdiff_t>(codes.size()), first, cubic, limit);
}

} // namespace calder::spline
