// The vector loops of the reshaping functions. Inside the library only.
#pragma once

#include <cstdint>
#include <span>

namespace calder::wavelb {

// Where on the curve the points of a destination lie: point i at first + (firstPlace + i) * sourceSpan /
// destinationSpan.
struct Resampling {
  double first;
  double sourceSpan;
  double destinationSpan;
  double firstPlace;
};

// Codes between the curve's points by straight lines. Places are limited to the curve.
// REQUIRES: the curve has at least two points and does not overlap the destination.
void Resample(std::span<const std::int16_t> curve, std::span<std::int16_t> destination, const Resampling& resampling);

// newLow + (code - low) * (newHigh - newLow) / (high - low); `high` becomes newHigh exactly. REQUIRES: low < high.
void Rescale(std::span<std::int16_t> codes, std::int16_t low, std::int16_t high, double newLow, double newHigh);

// How many points Rescale would have limited.
[[nodiscard]] std::int32_t CountLimited(std::span<const std::int16_t> codes, std::int16_t low, std::int16_t high,
                                        double newLow, double newHigh);

// Codes as Y values: perCode * (code + centre), perCode signed. A centre that is meant to be whole is whole, so that a
// sum of 0 is a Y value of 0.
struct Scale {
  double perCode;
  double centre;
};

enum class Operation { Add, Subtract, Multiply, Divide };

// result[i] = codes[i] op operand[i]. All three have the same length; they may overlap as long as no result falls on a
// code or an operand that is read later.
void Calculate(std::span<const std::int16_t> codes, std::span<const std::int16_t> operand,
               std::span<std::int16_t> result, const Scale& scale, Operation operation);

// marks[i] becomes CALC_... for what Calculate does at that point. All three have the same length.
void MarkFaults(std::span<const std::int16_t> codes, std::span<const std::int16_t> operand,
                std::span<std::uint8_t> marks, const Scale& scale, Operation operation);

} // namespace calder::wavelb
