// The text form of real values: one number a line, scaled on reading so that the largest magnitude becomes full scale.
// docs/file-formats.md has the rules.
#pragma once

#include "libs/file32/TextFault.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace calder {

// Real values on their way to codes.
struct RealValues {
  std::vector<double> values;
  double maximum = 0; // of the values, and of the one that follows the last value taken
  double minimum = 0;
};

// Takes at most `most` values (1 or more) into `reals`, whose memory is reused. False with `fault` filled.
[[nodiscard]] bool ParseReals(std::string_view text, std::size_t most, RealValues& reals, TextFault& fault);

// Code i is value i / (peak / 32767), to the nearest, halves to even, where the peak is the larger of the maximum and
// the magnitude of the minimum. False with `fault` filled when that scale is zero. `codes` has room for all values.
[[nodiscard]] bool ScaleReals(const RealValues& reals, std::span<std::int16_t> codes, TextFault& fault);

} // namespace calder
