// The vector loops of the generators. Inside the library only.
//
// A point's turn is its place in periods: period * i / count + phase / 360, i counted from the (unrounded) start of the
// range. The product comes before the quotient, so that a whole number of periods falls on whole points exactly.
#pragma once

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

void FillSine(std::span<std::int16_t> codes, const Turns& turns, const Level& level);
// rise: the part of a period that rises, 0 to 1.
void FillTriangle(std::span<std::int16_t> codes, const Turns& turns, const Level& level, double rise);
// high: the part of a period that is high, 0 to 1. edge: the part of a period that each edge takes, 0 to the smaller of
// high and 1 - high.
void FillSquare(std::span<std::int16_t> codes, const Turns& turns, const Level& level, double high, double edge);
// Values index, index + 1, ... of the noise sequence of the key.
void FillNoise(std::span<std::int16_t> codes, const Level& level, std::uint64_t key, std::uint64_t index);

} // namespace calder::wavelb
