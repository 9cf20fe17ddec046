// Periodic waveforms of straight pieces: triangles, saws and squares. Inside the library only.
#pragma once

#include "libs/wavelb32/Generate.h"

#include <array>
#include <cstdint>
#include <span>

namespace calder::wavelb {

// One period. With u the fractional part of turn + shift, the piece k holds for from[k] <= u < from[k + 1] and gives
//
//   code = level[k] + slope[k] * (u - from[k])
//
// from[0] is 0 and from never falls; a piece that ends where it begins holds nowhere. Slopes are in codes a turn.
struct StraightPieces {
  static constexpr int kMost = 4;
  int count = 1;
  double shift = 0;
  std::array<double, kMost> from{};
  std::array<double, kMost> level{};
  std::array<double, kMost> slope{};
};

// rise: the part of a period that rises, 0 to 1.
[[nodiscard]] StraightPieces TrianglePieces(const Level& level, double rise);
// high: the part of a period that is high, 0 to 1. edge: the part of a period that each edge takes, 0 to the smaller of
// high and 1 - high.
[[nodiscard]] StraightPieces SquarePieces(const Level& level, double high, double edge);

void FillPieces(std::span<std::int16_t> codes, const Turns& turns, const StraightPieces& pieces);

} // namespace calder::wavelb
