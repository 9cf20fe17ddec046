#include "libs/wavelb32/Generate.h"
#include "libs/wavelb32/State.h"
#include "platform/VectorClones.h"

#include <cmath>
#include <numbers>
#include <type_traits>

namespace calder::wavelb {

namespace {

// No value of these levels leaves 32 bits.
bool IsSmall(const Level& level) {
  return std::abs(level.offset) + std::abs(level.half) < 1e9;
}

// As ToCode, for a value within 32 bits: whole numbers are limited several times as fast.
[[gnu::always_inline]] inline std::int16_t SmallToCode(double value) {
  const auto whole = static_cast<std::int32_t>(std::rint(value));
  const std::int32_t above = whole < -W_CODE_MAX ? -W_CODE_MAX : whole;
  return static_cast<std::int16_t>(above > W_CODE_MAX ? W_CODE_MAX : above);
}

// Fills every point with what codeAt makes of its turn; codeAt's second argument says whether SmallToCode will do.
template <typename CodeAt>
[[gnu::always_inline]] inline void FillTurns(std::int16_t* codes, std::int32_t count, const Turns& turns,
                                             const Level& level, CodeAt codeAt) {
  if (HasStep(turns) && IsSmall(level)) {
    const double step = turns.period / turns.count;
    for (std::int32_t i = 0; i < count; ++i)
      codes[i] = codeAt(step * (turns.first + i) + turns.phase, std::true_type());
    return;
  }
  for (std::int32_t i = 0; i < count; ++i)
    codes[i] = codeAt(turns.period * (turns.first + i) / turns.count + turns.phase, std::false_type());
}

// sin(2 pi turn). The turn is first reduced to -1/4..1/4 without an error; there the series to the 21st power is off by
// less than the last place. The same operations in every version of the loop, hence the same codes.
[[gnu::always_inline]] inline double SineOfTurn(double turn) {
  const double within = turn - std::rint(turn); // -1/2..1/2
  const double mirrored = std::copysign(0.5, within) - within;
  const double quarter = std::abs(within) > 0.25 ? mirrored : within;
  const double angle = quarter * (2 * std::numbers::pi);
  const double square = angle * angle;
  double series = 1.0 / 51090942171709440000.0;
  series = series * square - 1.0 / 121645100408832000.0;
  series = series * square + 1.0 / 355687428096000.0;
  series = series * square - 1.0 / 1307674368000.0;
  series = series * square + 1.0 / 6227020800.0;
  series = series * square - 1.0 / 39916800.0;
  series = series * square + 1.0 / 362880.0;
  series = series * square - 1.0 / 5040.0;
  series = series * square + 1.0 / 120.0;
  series = series * square - 1.0 / 6.0;
  return angle + angle * square * series;
}

CALDER_VECTOR void SineLoop(std::int16_t* codes, std::int32_t count, Turns turns, Level level) {
  FillTurns(
      codes, count, turns, level, [=](double turn, auto small) __attribute__((always_inline)) {
        const double value = level.offset + level.half * SineOfTurn(turn);
        if constexpr (small.value) return SmallToCode(value);
        return ToCode(value);
      });
}

constexpr std::uint64_t kNoiseStep = 0x9E3779B97F4A7C15U;

// SplitMix64's value at a place, its upper half as a signed number: -1 < unit < 1, symmetric, never at the ends.
[[gnu::always_inline]] inline double NoiseUnit(std::uint64_t place) {
  std::uint64_t value = (place ^ (place >> 30)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
  value = value ^ (value >> 31);
  constexpr double scale = 1.0 / 2147483648.0;
  return (static_cast<std::int32_t>(value >> 32) + 0.5) * scale;
}

CALDER_VECTOR void NoiseLoop(std::int16_t* codes, std::int32_t count, Level level, std::uint64_t first) {
  std::uint64_t place = first;
  if (IsSmall(level)) {
    for (std::int32_t i = 0; i < count; ++i, place += kNoiseStep)
      codes[i] = SmallToCode(level.offset + level.half * NoiseUnit(place));
    return;
  }
  for (std::int32_t i = 0; i < count; ++i, place += kNoiseStep)
    codes[i] = ToCode(level.offset + level.half * NoiseUnit(place));
}

std::int32_t Length(std::span<std::int16_t> codes) {
  return static_cast<std::int32_t>(codes.size());
}

} // namespace

void FillSine(std::span<std::int16_t> codes, const Turns& turns, const Level& level) {
  SineLoop(codes.data(), Length(codes), turns, level);
}

void FillNoise(std::span<std::int16_t> codes, const Level& level, std::uint64_t key, std::uint64_t index) {
  NoiseLoop(codes.data(), Length(codes), level, key + (index + 1) * kNoiseStep);
}

} // namespace calder::wavelb
