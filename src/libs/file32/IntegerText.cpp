// Codes have at most six characters, so that a whole line fits eight bytes: both directions work on a line as one
// 64-bit number, first character lowest, and never branch on the number of digits, which a waveform makes
// unpredictable.
#include "libs/file32/IntegerText.h"

#include "libs/file32/TextLines.h"

#include <bit>
#include <charconv>
#include <cstring>

namespace calder {

namespace {

constexpr std::uint64_t kEachByte = 0x0101010101010101;
constexpr std::int32_t kLowestCode = -32768;
constexpr std::int32_t kHighestCode = 32767;

std::uint64_t SwapIfBig(std::uint64_t value) {
  return std::endian::native == std::endian::little ? value : __builtin_bswap64(value);
}

std::uint64_t LoadEight(const char* text) {
  std::uint64_t value = 0;
  std::memcpy(&value, text, sizeof value);
  return SwapIfBig(value);
}

void StoreEight(char* text, std::uint64_t value) {
  value = SwapIfBig(value);
  std::memcpy(text, &value, sizeof value);
}

// A line of the plain form, as this program writes it (or with LF alone): the number of its bytes, 0 when it is
// another.
std::size_t ParsePlainLine(const char* text, std::int16_t& code) {
  std::uint64_t line = LoadEight(text);
  // The length comes from the line end alone, so that the next line can be begun before this one is understood. The
  // lowest byte of the difference that is zero is the first one whose high bit survives.
  const std::uint64_t difference = line ^ (kEachByte * '\n');
  const std::uint64_t found = (difference - kEachByte) & ~difference & (kEachByte * 0x80);
  if (found == 0) return 0;
  const std::size_t length = static_cast<std::size_t>(std::countr_zero(found)) / 8 + 1;

  const std::uint64_t negative = (((line & 0xFF) ^ '-') - 1) >> 63; // 1 for '-', 0 for others
  line >>= 8 * negative;
  // Digits become 0 to 9, and the first byte that is none gets a bit of its high half set. The sums carry upwards only,
  // which the search for the lowest such byte does not see.
  const std::uint64_t values = line ^ (kEachByte * '0');
  const std::uint64_t others = (values | (values + kEachByte * 6)) & (kEachByte * 0xF0);
  const auto digits = static_cast<unsigned>(std::countr_zero(others)) / 8;
  if (digits - 1 > 4) return 0; // none, or more than five
  const std::uint64_t end = line >> (8 * digits);
  if ((end & 0xFF) != '\n' && (end & 0xFFFF) != ('\r' | '\n' << 8)) return 0;
  // The last digit into the highest byte; zeros fill in before the first. Then pairs, fours and eights are joined.
  std::uint64_t number = values << (8 * (8 - digits));
  number = ((number * 10) + (number >> 8)) & 0x00FF00FF00FF00FF;
  number = ((number * 100) + (number >> 16)) & 0x0000FFFF0000FFFF;
  number = ((number * 10000) + (number >> 32)) & 0xFFFFFFFF;
  if (number > kHighestCode + negative) return 0;
  code = static_cast<std::int16_t>((number ^ (0 - negative)) + negative); // without a branch: signs are unpredictable
  return length;
}

// One number: whole, in the range of the codes. The reason why not, or empty.
std::string_view ParseCode(std::string_view number, std::int16_t& code) {
  std::string_view digits = number;
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  std::int16_t whole = 0;
  const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
  if (result.ec == std::errc() && result.ptr == digits.data() + digits.size()) {
    code = whole;
    return {};
  }
  // Other programs write whole numbers as "12.0" or "1.2e+01".
  double real = 0;
  if (!ParseReal(number, real)) return "not a number";
  if (real < kLowestCode || real > kHighestCode) return "outside -32768 to 32767";
  code = static_cast<std::int16_t>(real);
  if (code != real) return "not a whole number";
  return {};
}

bool IsComment(std::string_view line) {
  return line.front() == ';' || line.front() == '#' || line.front() == '\'';
}

} // namespace

std::size_t FormatCodes(std::span<const std::int16_t> codes, LineEnd end, char* text) {
  const std::uint64_t lineEnd = end == LineEnd::CrLf ? ('\r' | '\n' << 8) : '\n';
  const std::size_t endLength = end == LineEnd::CrLf ? 2 : 1;
  char* out = text;
  for (const std::int16_t code : codes) {
    const std::uint32_t negative = code < 0 ? 1 : 0;
    const auto number = static_cast<std::uint32_t>(negative != 0 ? -code : code);
    const std::uint32_t first = number / 10000;
    const std::uint32_t rest = number % 10000;
    const std::uint32_t high = rest / 100;
    const std::uint32_t pairs = high | (rest - high * 100) << 16;
    const std::uint32_t tens = // 103 / 1024 gives the exact quotient by 10 up to 178
        (pairs * 103 >> 10) & 0x000F000F;
    const std::uint32_t four = tens | (pairs - tens * 10) << 8;
    const std::uint64_t values = first | std::uint64_t{four} << 8;
    // Leading zeros go, but the last digit stays whatever it is.
    const auto zeros = static_cast<unsigned>(std::countr_zero(values | std::uint64_t{1} << 32)) / 8;
    const std::size_t length = 5 - zeros + negative;
    std::uint64_t line = (values | (kEachByte * '0' & 0xFFFFFFFFFF)) >> (8 * zeros);
    line = line << (8 * negative) | negative * std::uint64_t{'-'} | lineEnd << (8 * length);
    StoreEight(out, line);
    out += length + endLength;
  }
  return static_cast<std::size_t>(out - text);
}

bool ParseCodes(std::string_view text, std::span<std::int16_t> codes, std::size_t& count, TextFault& fault) {
  text = WithoutByteOrderMark(text);
  std::size_t position = 0;
  std::size_t filled = 0;
  while (filled < codes.size() && position < text.size()) {
    if (text.size() - position >= CODE_LINE_BYTES) {
      const std::size_t length = ParsePlainLine(text.data() + position, codes[filled]);
      if (length != 0) {
        position += length;
        ++filled;
        continue;
      }
    }
    const std::string_view rest = text.substr(position);
    const std::string_view line = rest.substr(0, LineLength(rest));
    const std::string_view number = Trimmed(line);
    if (!number.empty() && !(filled == 0 && IsComment(number))) {
      const std::string_view reason = ParseCode(number, codes[filled]);
      if (!reason.empty()) {
        fault = {LineNumber(text, position), std::string(reason)};
        return false;
      }
      ++filled;
    }
    position += line.size() + LineEndLength(rest.substr(line.size()));
  }
  if (filled == 0 && !codes.empty()) {
    fault = {0, "no number in the file"};
    return false;
  }
  count = filled;
  return true;
}

} // namespace calder
