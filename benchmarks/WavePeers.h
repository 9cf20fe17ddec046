// What the waveform library is measured against: the bare minimum of each work, written by hand for this processor.
#pragma once

#include <cstdint>
#include <span>

namespace calder {

// Reads all codes.
[[nodiscard]] std::int16_t PeerMinimum(std::span<const std::int16_t> codes);
// One period of a full-scale sine with a vector library, rounded and narrowed by hand. False where it cannot run.
[[nodiscard]] bool PeerSine(std::span<std::int16_t> codes);

// 12.3 periods of a full-scale triangle (30 % rise), square (30 % duty), square with slopes, and noise.
[[nodiscard]] bool PeerTriangle(std::span<std::int16_t> codes);
[[nodiscard]] bool PeerSquare(std::span<std::int16_t> codes);
[[nodiscard]] bool PeerSlopes(std::span<std::int16_t> codes);
[[nodiscard]] bool PeerNoise(std::span<std::int16_t> codes);

// result[i] = a[i] op b[i], op 0 to 3 for + - * /, on a scale on which code 0 is the Y value perCode * centre. With the
// centre 0 the sums are saturated additions of codes.
[[nodiscard]] bool PeerCombine(std::span<const std::int16_t> a, std::span<const std::int16_t> b,
                               std::span<std::int16_t> result, double perCode, double centre, int operation);

// The curve laid over the result by straight lines, one point after the other, compiled with -O2.
void PeerLinearWalk(std::span<const std::int16_t> curve, std::span<std::int16_t> result);

// The loop itself, where it was built.
void SleefSine(std::span<std::int16_t> codes);

} // namespace calder
