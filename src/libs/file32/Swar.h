// Eight characters as one number, the first one lowest, whatever the machine's order.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace calder {

inline constexpr std::uint64_t EACH_BYTE = 0x0101010101010101; // times a character: eight of it

inline std::uint64_t SwapIfBig(std::uint64_t value) {
  return std::endian::native == std::endian::little ? value : __builtin_bswap64(value);
}

inline std::uint64_t LoadEight(const char* text) {
  std::uint64_t value = 0;
  std::memcpy(&value, text, sizeof value);
  return SwapIfBig(value);
}

inline void StoreEight(char* text, std::uint64_t value) {
  value = SwapIfBig(value);
  std::memcpy(text, &value, sizeof value);
}

} // namespace calder
