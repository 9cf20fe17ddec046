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

// The loop itself, where it was built.
void SleefSine(std::span<std::int16_t> codes);

} // namespace calder
