#include "libs/wavelb32/Reshape.h"
#include "libs/wavelb32/State.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace calder::wavelb {

namespace {

// In blocks that stay in the first cache: the places, then the pairs of neighbours that they lie between, then the
// codes. Only the second step is not made of vectors, so no step waits for another one's loads.
CALDER_VECTOR void ResampleLoop(const std::int16_t* curve, std::int32_t lastIndex, std::int16_t* destination,
                                std::int32_t count, Resampling r) {
  constexpr std::int32_t block = 512;
  double rests[block];
  std::int32_t indices[block];
  std::uint32_t pairs[block]; // the left code in the half that comes first in memory
  constexpr unsigned leftShift = std::endian::native == std::endian::little ? 0 : 16;
  constexpr unsigned rightShift = 16 - leftShift;
  for (std::int32_t begin = 0; begin < count; begin += block) {
    const std::int32_t points = std::min(block, count - begin);
    for (std::int32_t i = 0; i < points; ++i) {
      const double raw = r.first + (r.firstPlace + (begin + i)) * r.sourceSpan / r.destinationSpan;
      const double above = raw < 0 ? 0 : raw;
      const double place = above > lastIndex ? lastIndex : above;
      // The last pair serves the end of the curve too.
      const auto whole = static_cast<std::int32_t>(place);
      indices[i] = whole < lastIndex ? whole : lastIndex - 1;
      rests[i] = place - indices[i];
    }
    for (std::int32_t i = 0; i < points; ++i) std::memcpy(&pairs[i], curve + indices[i], sizeof(pairs[i]));
    for (std::int32_t i = 0; i < points; ++i) {
      const auto left = static_cast<std::int16_t>(pairs[i] >> leftShift);
      const auto right = static_cast<std::int16_t>(pairs[i] >> rightShift);
      destination[begin + i] = ToCode(left + (right - left) * rests[i]);
    }
  }
}

CALDER_VECTOR void RescaleLoop(std::int16_t* codes, std::int32_t count, double low, double high, double newLow,
                               double newHigh) {
  const double newSpan = newHigh - newLow;
  const double span = high - low;
  for (std::int32_t i = 0; i < count; ++i) {
    const double code = codes[i];
    const double scaled = newLow + (code - low) * newSpan / span;
    codes[i] = ToCode(code == high ? newHigh : scaled);
  }
}

CALDER_VECTOR std::int32_t LimitedLoop(const std::int16_t* codes, std::int32_t count, double low, double span,
                                       double newLow, double newSpan) {
  std::int32_t limited = 0;
  for (std::int32_t i = 0; i < count; ++i) {
    const double scaled = newLow + (codes[i] - low) * newSpan / span;
    limited += std::abs(std::rint(scaled)) > W_CODE_MAX ? 1 : 0;
  }
  return limited;
}

// The operations in codes, before rounding. With y = perCode * (code + centre) on both sides, the scale drops out of
// sums and stands once in a product or a quotient.
struct Sum {
  double centre;
  [[gnu::always_inline]] double operator()(double a, double b) const { return a + b + centre; }
};
struct Difference {
  double centre;
  [[gnu::always_inline]] double operator()(double a, double b) const { return a - b - centre; }
};
struct Product {
  Scale scale;
  [[gnu::always_inline]] double operator()(double a, double b) const {
    return (a + scale.centre) * (b + scale.centre) * scale.perCode - scale.centre;
  }
};
struct Quotient {
  explicit Quotient(const Scale& s)
      : centre(s.centre), codesPerY(1 / s.perCode), beyond(std::copysign(1e300, s.perCode)) {}
  double centre;
  double codesPerY;
  double beyond; // a code divided by 0: full scale on the side of its Y value, whatever the scale
  [[gnu::always_inline]] double operator()(double a, double b) const {
    const double dividend = a + centre;
    const double divisor = b + centre;
    const double ratio = divisor == 0 ? dividend * beyond : dividend / divisor;
    return ratio * codesPerY - centre;
  }
};

// One copy of the loop an operation; the codes are read before the result is written, see the header.
template <class Combine>
[[gnu::always_inline]] inline void CombineLoop(const std::int16_t* codes, const std::int16_t* operand,
                                               std::int16_t* result, std::int32_t count, Combine combine) {
  for (std::int32_t i = 0; i < count; ++i) result[i] = ToCode(combine(codes[i], operand[i]));
}

// Sums around a whole centre need no doubles.
[[gnu::always_inline]] inline void WholeSumLoop(const std::int16_t* codes, const std::int16_t* operand,
                                                std::int16_t* result, std::int32_t count, std::int32_t sign,
                                                std::int32_t centre) {
  for (std::int32_t i = 0; i < count; ++i) {
    const std::int32_t sum = codes[i] + sign * (operand[i] + centre);
    const std::int32_t above = sum < -W_CODE_MAX ? -W_CODE_MAX : sum;
    result[i] = static_cast<std::int16_t>(above > W_CODE_MAX ? W_CODE_MAX : above);
  }
}

CALDER_VECTOR void CalculateLoop(const std::int16_t* codes, const std::int16_t* operand, std::int16_t* result,
                                 std::int32_t count, Scale scale, Operation operation) {
  // Beyond that much every sum is limited, wherever the centre is.
  constexpr double farCentre = 4.0 * W_CODE_SPAN;
  const double near = std::min(std::max(scale.centre, -farCentre), farCentre);
  const bool isWhole = std::rint(near) == near;
  const auto whole = static_cast<std::int32_t>(near);
  switch (operation) {
  case Operation::Add:
    if (isWhole)
      WholeSumLoop(codes, operand, result, count, 1, whole);
    else
      CombineLoop(codes, operand, result, count, Sum{scale.centre});
    break;
  case Operation::Subtract:
    if (isWhole)
      WholeSumLoop(codes, operand, result, count, -1, whole);
    else
      CombineLoop(codes, operand, result, count, Difference{scale.centre});
    break;
  case Operation::Multiply: CombineLoop(codes, operand, result, count, Product{scale}); break;
  case Operation::Divide: CombineLoop(codes, operand, result, count, Quotient(scale)); break;
  }
}

template <class Combine>
[[gnu::always_inline]] inline void MarkLoop(const std::int16_t* codes, const std::int16_t* operand, std::uint8_t* marks,
                                            std::int32_t count, Combine combine, double divisorOfZero) {
  for (std::int32_t i = 0; i < count; ++i) {
    const bool limited = std::abs(std::rint(combine(codes[i], operand[i]))) > W_CODE_MAX;
    const int mark = limited ? CALC_LIMITED : CALC_SOUND;
    marks[i] = static_cast<std::uint8_t>(operand[i] == divisorOfZero ? CALC_BY_ZERO : mark);
  }
}

CALDER_VECTOR void MarkFaultsLoop(const std::int16_t* codes, const std::int16_t* operand, std::uint8_t* marks,
                                  std::int32_t count, Scale scale, Operation operation) {
  constexpr double none = 1e9; // no code is that
  switch (operation) {
  case Operation::Add: MarkLoop(codes, operand, marks, count, Sum{scale.centre}, none); break;
  case Operation::Subtract: MarkLoop(codes, operand, marks, count, Difference{scale.centre}, none); break;
  case Operation::Multiply: MarkLoop(codes, operand, marks, count, Product{scale}, none); break;
  case Operation::Divide: MarkLoop(codes, operand, marks, count, Quotient(scale), -scale.centre); break;
  }
}

} // namespace

void Resample(std::span<const std::int16_t> curve, std::span<std::int16_t> destination, const Resampling& resampling) {
  ResampleLoop(curve.data(), static_cast<std::int32_t>(curve.size()) - 1, destination.data(),
               static_cast<std::int32_t>(destination.size()), resampling);
}

void Rescale(std::span<std::int16_t> codes, std::int16_t low, std::int16_t high, double newLow, double newHigh) {
  RescaleLoop(codes.data(), static_cast<std::int32_t>(codes.size()), low, high, newLow, newHigh);
}

std::int32_t CountLimited(std::span<const std::int16_t> codes, std::int16_t low, std::int16_t high, double newLow,
                          double newHigh) {
  return LimitedLoop(codes.data(), static_cast<std::int32_t>(codes.size()), low, high - low, newLow, newHigh - newLow);
}

void Calculate(std::span<const std::int16_t> codes, std::span<const std::int16_t> operand,
               std::span<std::int16_t> result, const Scale& scale, Operation operation) {
  CalculateLoop(codes.data(), operand.data(), result.data(), static_cast<std::int32_t>(result.size()), scale,
                operation);
}

void MarkFaults(std::span<const std::int16_t> codes, std::span<const std::int16_t> operand,
                std::span<std::uint8_t> marks, const Scale& scale, Operation operation) {
  MarkFaultsLoop(codes.data(), operand.data(), marks.data(), static_cast<std::int32_t>(marks.size()), scale, operation);
}

} // namespace calder::wavelb
