// A code and its line end have at most eight characters, so that a line is made as one 64-bit number. All lines of a
// block are made first, by a plain loop that the compiler turns into vector code; then they are put one after the
// other.
#include "libs/file32/IntegerText.h"
#include "libs/file32/Swar.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <array>

namespace calder {

namespace {

constexpr std::size_t kBlock = 512;

struct Lines {
  std::array<std::uint64_t, kBlock> text;
  std::array<std::uint8_t, kBlock> length;
};

// count: at most kBlock. end, endLength: the characters of the line end.
CALDER_VECTOR void MakeLines(const std::int16_t* codes, std::size_t count, std::uint64_t end, std::uint32_t endLength,
                             Lines& lines) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t code = codes[i];
    const std::uint32_t negative = static_cast<std::uint32_t>(code) >> 31;
    const auto number = static_cast<std::uint32_t>(code < 0 ? -code : code);
    // Quotients by 100, 100 and 10, exact up to 43698, 1098 and 178.
    const std::uint32_t hundreds = number * 5243 >> 19;
    const std::uint32_t first = hundreds * 41 >> 12;
    const std::uint32_t pairs = (hundreds - first * 100) | (number - hundreds * 100) << 16;
    const std::uint32_t tens = (pairs * 103 >> 10) & 0x000F000F;
    const std::uint32_t four = tens | (pairs - tens * 10) << 8;
    // Leading zeros go, but the last digit stays whatever it is.
    const std::uint32_t zeros =
        (number < 10 ? 1U : 0U) + (number < 100 ? 1U : 0U) + (number < 1000 ? 1U : 0U) + (number < 10000 ? 1U : 0U);
    const std::uint32_t length = 5 - zeros + negative;
    std::uint64_t line = ((first | std::uint64_t{four} << 8) + (EACH_BYTE * '0' & 0xFFFFFFFFFF)) >> (8 * zeros);
    const std::uint32_t sign = negative * '-';
    line = line << (8 * negative) | sign;
    lines.text[i] = line | end << (8 * length);
    lines.length[i] = static_cast<std::uint8_t>(length + endLength);
  }
}

} // namespace

std::size_t FormatCodes(std::span<const std::int16_t> codes, LineEnd end, char* text) {
  const std::uint64_t characters = end == LineEnd::CrLf ? ('\r' | '\n' << 8) : '\n';
  const std::uint32_t endLength = end == LineEnd::CrLf ? 2 : 1;
  Lines lines; // NOLINT(cppcoreguidelines-pro-type-member-init): filled before it is read
  char* out = text;
  while (!codes.empty()) {
    const std::size_t count = std::min(codes.size(), kBlock);
    MakeLines(codes.data(), count, characters, endLength, lines);
    for (std::size_t i = 0; i < count; ++i) {
      StoreEight(out, lines.text[i]);
      out += lines.length[i];
    }
    codes = codes.subspan(count);
  }
  return static_cast<std::size_t>(out - text);
}

} // namespace calder
