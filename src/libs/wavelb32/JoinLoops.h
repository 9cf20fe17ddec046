// The vector loops of the search for joins. Inside the library only.
#pragma once

#include <cstdint>
#include <span>

namespace calder::wavelb {

// marks[i] = 1 when codes[i + 1] lies inside of no valid join, else 0: no line rounds to codes[i], codes[i + 1] and
// codes[i + 2]. REQUIRES: two more codes than marks.
void MarkBends(std::span<const std::int16_t> codes, std::span<std::uint8_t> marks);

// Whether the line from the first to the last code rounds to all of them. REQUIRES: 2 to 2^19 + 1 codes.
[[nodiscard]] bool RoundsToCodes(std::span<const std::int16_t> codes);

} // namespace calder::wavelb
