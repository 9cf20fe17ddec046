// The vector loops of the generators. Inside the library only.
//
// A point's turn is its place in periods: period * i / count + phase / 360, i counted from the (unrounded) start of the
// range. The product comes before the quotient, so that a whole number of periods falls on whole points exactly.
#pragma once

#include <cmath>
#include <cstdint>
#include <span>

namespace calder::wavelb {

struct Turns {
  double first;  // place of the first point, in points from the unrounded start of the range
  double period; // periods over the range
  double count;  // points of the range, unrounded
  double phase;  // in turns
};

struct Level {
  double offset;
  double half; // half of the amplitude
};

// In the usual case the count is a power of two, and a division by that is a product with its inverse, to the last bit.
[[nodiscard]] inline bool HasStep(const Turns& turns) {
  int exponent = 0;
  return std::frexp(turns.count, &exponent) == 0.5 && std::abs(turns.period) > 1e-200;
}

void FillSine(std::span<std::int16_t> codes, const Turns& turns, const Level& level);
// Values index, index + 1, ... of the noise sequence of the key.
void FillNoise(std::span<std::int16_t> codes, const Level& level, std::uint64_t key, std::uint64_t index);

} // namespace calder::wavelb
