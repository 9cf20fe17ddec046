// Numbers in bytes, the lowest byte first, whatever the machine's order.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace calder {

namespace detail {

template <std::size_t Size>
struct UnsignedOf;
template <>
struct UnsignedOf<2> {
  using Type = std::uint16_t;
};
template <>
struct UnsignedOf<4> {
  using Type = std::uint32_t;
};
template <>
struct UnsignedOf<8> {
  using Type = std::uint64_t;
};

} // namespace detail

// Value: a number of 2, 4 or 8 bytes. bytes: at least as many.
template <class Value>
void StoreLittleEndian(Value value, std::byte* bytes) {
  auto bits = std::bit_cast<typename detail::UnsignedOf<sizeof(Value)>::Type>(value);
  for (std::size_t i = 0; i < sizeof(Value); ++i) bytes[i] = static_cast<std::byte>((bits >> (8 * i)) & 0xFFU);
}

template <class Value>
Value LoadLittleEndian(const std::byte* bytes) {
  using Bits = typename detail::UnsignedOf<sizeof(Value)>::Type;
  Bits bits = 0;
  for (std::size_t i = 0; i < sizeof(Value); ++i)
    bits = static_cast<Bits>(bits | (static_cast<Bits>(bytes[i]) << (8 * i)));
  return std::bit_cast<Value>(bits);
}

// bytes: two for each code.
inline void StoreCodes(std::span<const std::int16_t> codes, std::byte* bytes) {
  if (codes.empty()) return;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(bytes, codes.data(), codes.size_bytes());
  } else {
    for (std::size_t i = 0; i < codes.size(); ++i) StoreLittleEndian(codes[i], bytes + 2 * i);
  }
}

inline void LoadCodes(const std::byte* bytes, std::span<std::int16_t> codes) {
  if (codes.empty()) return;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(codes.data(), bytes, codes.size_bytes());
  } else {
    for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = LoadLittleEndian<std::int16_t>(bytes + 2 * i);
  }
}

} // namespace calder
