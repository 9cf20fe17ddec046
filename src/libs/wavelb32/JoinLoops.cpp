#include "libs/wavelb32/JoinLoops.h"

#include "platform/VectorClones.h"

#include <algorithm>
#include <cmath>

namespace calder::wavelb {

namespace {

// Three values of a line differ from their codes by at most 1/2 each, so the codes' second difference is at most 2. It
// is 2 only when all three stand on halves, and halves round to even codes.
CALDER_VECTOR void MarkLoop(const std::int16_t* codes, std::uint8_t* marks, std::int32_t count) {
  for (std::int32_t i = 0; i < count; ++i) {
    const std::int32_t left = codes[i];
    const std::int32_t middle = codes[i + 1];
    const std::int32_t right = codes[i + 2];
    const std::int32_t bend = left + right - 2 * middle;
    const std::int32_t size = bend < 0 ? -bend : bend;
    const std::int32_t allowed = 2 - ((left | middle | right) & 1);
    marks[i] = size > allowed ? 1 : 0;
  }
}

// How many codes of first to end - 1 the line misses. All numbers here are whole and below 2^38, so doubles hold them
// exactly.
CALDER_VECTOR std::int64_t CountMisses(const std::int16_t* codes, std::int32_t first, std::int32_t end, double rise,
                                       double run) {
  std::int64_t misses = 0;
  const double start = codes[0];
  for (std::int32_t i = first; i < end; ++i) {
    const std::int32_t code = codes[i];
    const double odd = code & 1;
    const double error = std::abs(i * rise - (code - start) * run);
    misses += 2 * error > run - odd ? 1 : 0;
  }
  return misses;
}

} // namespace

void MarkBends(std::span<const std::int16_t> codes, std::span<std::uint8_t> marks) {
  MarkLoop(codes.data(), marks.data(), static_cast<std::int32_t>(marks.size()));
}

bool RoundsToCodes(std::span<const std::int16_t> codes) {
  constexpr std::int32_t chunk = 512; // a long row that is no join is mostly seen at once
  const auto last = static_cast<std::int32_t>(codes.size()) - 1;
  const double rise = codes.back() - codes.front();
  for (std::int32_t first = 0; first < last; first += chunk) {
    if (CountMisses(codes.data(), first, std::min(first + chunk, last), rise, last) > 0) return false;
  }
  return true;
}

} // namespace calder::wavelb
