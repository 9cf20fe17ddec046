// One bit of the codes at a time.
#include "libs/wavelb32/State.h"
#include "platform/VectorClones.h"

#include <bit>

namespace calder {

namespace {

CALDER_VECTOR void CopyBit(std::int16_t* codes, std::size_t count, int from, int to) {
  const std::uint32_t kept = ~(1U << to);
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t bits = static_cast<std::uint16_t>(codes[i]);
    codes[i] = static_cast<std::int16_t>((bits & kept) | (((bits >> from) & 1U) << to));
  }
}

} // namespace

std::uint16_t reverse_bit(std::uint16_t pattern) {
  std::uint32_t bits = pattern;
  bits = ((bits & 0x5555U) << 1) | ((bits >> 1) & 0x5555U);
  bits = ((bits & 0x3333U) << 2) | ((bits >> 2) & 0x3333U);
  bits = ((bits & 0x0F0FU) << 4) | ((bits >> 4) & 0x0F0FU);
  return static_cast<std::uint16_t>((bits << 8) | (bits >> 8));
}

std::int32_t W_CopyBitDigital(WaveHandle handle, double start, double count, std::int32_t sourceMask,
                              std::int32_t destinationMask) {
  const auto isOneBit = [](std::int32_t mask) {
    return mask > 0 && mask <= 0x8000 && std::has_single_bit(static_cast<std::uint32_t>(mask));
  };
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  if (range.status != W_SUCCESS) return range.status;
  if (!isOneBit(sourceMask) || !isOneBit(destinationMask)) return W_BAD_VALUE;
  CopyBit(range.codes.data(), range.codes.size(), std::countr_zero(static_cast<std::uint32_t>(sourceMask)),
          std::countr_zero(static_cast<std::uint32_t>(destinationMask)));
  return W_SUCCESS;
}

} // namespace calder
