// Many points to few numbers: minimum and maximum, and which bits are ever low or ever high. Inside the library only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace calder::wavelb {

struct Extremes {
  std::int16_t low = 0;
  std::int16_t high = 0;
};

// REQUIRES: codes is not empty.
[[nodiscard]] Extremes FindExtremes(std::span<const std::int16_t> codes);

// For each column c the extremes of codes[edges[c]] to codes[edges[c + 1] - 1]; a column without points gets lows[c] >
// highs[c]. REQUIRES: edges ascend, stay within codes, and there is one more of them than of lows and highs.
void ReduceColumns(std::span<const std::int16_t> codes, std::span<const std::int32_t> edges,
                   std::span<std::int16_t> lows, std::span<std::int16_t> highs);

// For each column c the bits that are set in every and in some of codes[firsts[c]] to codes[ends[c] - 1]; a column
// without points gets 0xFFFF and 0. REQUIRES: the ranges lie within codes; all spans have the same length.
void ReduceBits(std::span<const std::int16_t> codes, std::span<const std::int32_t> firsts,
                std::span<const std::int32_t> ends, std::span<std::uint16_t> always, std::span<std::uint16_t> ever);
// The same for the bits in which some point differs between the two.
void ReduceDifferences(std::span<const std::int16_t> codes, std::span<const std::int16_t> others,
                       std::span<const std::int32_t> firsts, std::span<const std::int32_t> ends,
                       std::span<std::uint16_t> differ);

} // namespace calder::wavelb
