// What an operation of a bus moves, and how the logs show it.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace calder {

// What an operation sends or has received: a text, a block of bytes, or a text with a block right after it.
struct BusData {
  std::string_view text{};
  std::span<const std::byte> block{};
};

// Texts in quotes with C escapes for what is not printable; blocks as their number of bytes and the bytes in
// hexadecimal. Of either at most `longest` bytes are shown; the number of bytes stands there then as well. Empty for no
// data.
[[nodiscard]] std::string ShowData(const BusData& data, std::size_t longest = std::string::npos);

} // namespace calder
