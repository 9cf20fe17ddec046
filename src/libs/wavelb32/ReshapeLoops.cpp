#include "libs/wavelb32/Reshape.h"
#include "libs/wavelb32/State.h"
#include "platform/VectorClones.h"

#include <limits>

namespace calder::wavelb {

namespace {

CALDER_VECTOR void ResampleLoop(const std::int16_t* curve, std::int32_t lastIndex, std::int16_t* destination,
                                std::int32_t count, Resampling r) {
  for (std::int32_t i = 0; i < count; ++i) {
    const double raw = r.first + (r.firstPlace + i) * r.sourceSpan / r.destinationSpan;
    const double above = raw < 0 ? 0 : raw;
    const double place = above > lastIndex ? lastIndex : above;
    // The last pair serves the end of the curve too.
    const auto whole = static_cast<std::int32_t>(place);
    const std::int32_t index = whole < lastIndex ? whole : lastIndex - 1;
    const double left = curve[index];
    const double right = curve[index + 1];
    destination[i] = ToCode(left + (right - left) * (place - index));
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

[[gnu::always_inline]] inline double ToY(std::int16_t code, const Scale& scale) {
  const double y = scale.middle + code * scale.half / W_CODE_MAX;
  return std::abs(y) <= scale.zeroWidth ? 0 : y;
}

[[gnu::always_inline]] inline std::int16_t FromY(double y, const Scale& scale) {
  return ToCode((y - scale.middle) * W_CODE_MAX / scale.half);
}

[[gnu::always_inline]] inline double Quotient(double a, double b) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const double signedInfinity = a < 0 ? -infinity : infinity;
  const double byZero = a == 0 ? 0 : signedInfinity;
  return b == 0 ? byZero : a / b;
}

// One copy of the loop an operation; the codes are read before the result is written, see the header.
template <class Combine>
[[gnu::always_inline]] inline void CombineLoop(const std::int16_t* codes, const std::int16_t* operand,
                                               std::int16_t* result, std::int32_t count, const Scale& scale,
                                               Combine combine) {
  for (std::int32_t i = 0; i < count; ++i)
    result[i] = FromY(combine(ToY(codes[i], scale), ToY(operand[i], scale)), scale);
}

CALDER_VECTOR void CalculateLoop(const std::int16_t* codes, const std::int16_t* operand, std::int16_t* result,
                                 std::int32_t count, Scale scale, Operation operation) {
  switch (operation) {
  case Operation::Add:
    CombineLoop(codes, operand, result, count, scale, [](double a, double b) { return a + b; });
    break;
  case Operation::Subtract:
    CombineLoop(codes, operand, result, count, scale, [](double a, double b) { return a - b; });
    break;
  case Operation::Multiply:
    CombineLoop(codes, operand, result, count, scale, [](double a, double b) { return a * b; });
    break;
  case Operation::Divide: CombineLoop(codes, operand, result, count, scale, Quotient); break;
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

void Calculate(std::span<const std::int16_t> codes, std::span<const std::int16_t> operand,
               std::span<std::int16_t> result, const Scale& scale, Operation operation) {
  CalculateLoop(codes.data(), operand.data(), result.data(), static_cast<std::int32_t>(result.size()), scale,
                operation);
}

} // namespace calder::wavelb
