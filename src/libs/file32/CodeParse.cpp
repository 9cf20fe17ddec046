// Files that this program wrote, or any with nothing but a number on each line, are read in blocks: the line ends are
// found first, which gives the eight characters before each of them, and the lines are then understood by a plain loop
// without branches that the compiler turns into vector code. A block in which anything else stands is read line by
// line.
#include "libs/file32/IntegerText.h"
#include "libs/file32/Swar.h"
#include "libs/file32/TextLines.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace calder {

namespace {

constexpr std::size_t kBlockLines = 512;
constexpr std::size_t kStride = 64;                         // bytes that are searched for line ends at once
constexpr std::size_t kMostSearched = std::size_t{1} << 30; // places in a block are 32-bit numbers

struct FoundLines {
  std::size_t count = 0;
  // The place of the line end before the first line, then of each line's, from the block's beginning on (so that the
  // first is -1).
  std::array<std::int32_t, kBlockLines + kStride + 1> end;
  std::array<std::uint64_t, kBlockLines + kStride> text; // the eight characters before the line end
};

// A bit for each of the 64 characters: whether it is a line feed.
std::uint64_t LineFeeds(const char* text) {
  std::uint64_t mask = 0;
#ifdef __SSE2__
  for (unsigned part = 0; part < kStride / 16; ++part) {
    __m128i characters;
    std::memcpy(&characters, text + std::size_t{16} * part, sizeof characters);
    const int feeds = _mm_movemask_epi8(_mm_cmpeq_epi8(characters, _mm_set1_epi8('\n')));
    mask |= std::uint64_t{static_cast<std::uint32_t>(feeds)} << (16 * part);
  }
#else
  for (unsigned part = 0; part < kStride / 8; ++part) {
    const std::uint64_t difference = LoadEight(text + std::size_t{8} * part) ^ (EACH_BYTE * '\n');
    // The high bit of each byte that is zero, then these eight bits side by side.
    const std::uint64_t zero = ~(((difference & EACH_BYTE * 0x7F) + EACH_BYTE * 0x7F) | difference | EACH_BYTE * 0x7F);
    mask |= ((zero >> 7) * 0x0102040810204080 >> 56) << (8 * part);
  }
#endif
  return mask;
}

// The lines from `position` on, which has at least eight characters before it.
CALDER_VECTOR void FindLines(std::string_view text, std::size_t position, FoundLines& lines) {
  const char* const begin = text.data() + position;
  const std::size_t bytes = std::min(text.size() - position, kMostSearched);
  std::size_t count = 0;
  lines.end[0] = -1;
  for (std::size_t at = 0; count < kBlockLines && at + kStride <= bytes; at += kStride) {
    for (std::uint64_t mask = LineFeeds(begin + at); mask != 0; mask &= mask - 1) {
      const std::size_t end = at + static_cast<std::size_t>(std::countr_zero(mask));
      lines.text[count] = LoadEight(begin + end - 8);
      lines.end[++count] = static_cast<std::int32_t>(end);
    }
  }
  lines.count = count;
}

// Comparisons are written as sums and masks, for which there is vector code of unsigned 64-bit numbers.
// Whether the first `count` lines are all plain: a sign or none, one to five digits, CR or none. Then they are in
// `codes`.
CALDER_VECTOR bool ParseLines(const FoundLines& lines, std::size_t count, std::int16_t* codes) {
  const std::uint64_t* const texts = lines.text.data();
  const std::int32_t* const ends = lines.end.data();
  constexpr std::uint64_t kAboveSeven = ~std::uint64_t{7};
  std::uint64_t odd = 0; // both stay 0 while every line is plain
  std::uint32_t tooLarge = 0;
  for (std::size_t i = 0; i < count; ++i) {
    std::uint64_t line = texts[i];
    auto length = static_cast<std::uint64_t>(static_cast<std::uint32_t>(ends[i + 1] - ends[i] - 1));
    odd |= length & kAboveSeven;
    const std::uint64_t isCr = line >> 56 == '\r' ? 1 : 0;
    line <<= 8 * isCr;
    length -= isCr;
    // The line's characters are the highest bytes now.
    const std::uint64_t negative = (line >> ((64 - 8 * length) & 63) & 0xFF) == '-' ? 1 : 0;
    const std::uint64_t digits = length - negative;
    odd |= ((digits - 1) | (digits + 2)) & kAboveSeven; // one to five
    // Digits become 0 to 9, and what stands before the first one 0 as well; in any other byte a bit of the high half is
    // set, there or in the sum.
    const std::uint64_t others = (64 - 8 * digits) & 63;
    const std::uint64_t values = (line ^ EACH_BYTE * '0') >> others << others;
    odd |= (values | (values + EACH_BYTE * 6)) & EACH_BYTE * 0xF0;
    // The last four digits are joined to pairs, then to one number.
    auto number = static_cast<std::uint32_t>(values >> 32);
    number = (number * 10 + (number >> 8)) & 0x00FF00FF;
    number = (number * 100 + (number >> 16)) & 0xFFFF;
    number += static_cast<std::uint32_t>(values >> 24 & 0xFF) * 10000;
    const auto sign = static_cast<std::uint32_t>(negative);
    tooLarge |= (kHighestCode + sign - number) >> 31;
    codes[i] = static_cast<std::int16_t>((number ^ (0 - sign)) + sign);
  }
  return odd == 0 && tooLarge == 0;
}

// One number: whole, in the range of the codes. The reason why not, or none.
TextReason ParseCode(std::string_view number, std::int16_t& code) {
  std::string_view digits = number;
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  std::int16_t whole = 0;
  const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
  if (result.ec == std::errc() && result.ptr == digits.data() + digits.size()) {
    code = whole;
    return TextReason::None;
  }
  // Other programs write whole numbers as "12.0" or "1.2e+01".
  double real = 0;
  if (!ParseReal(number, real)) return TextReason::NotANumber;
  if (real < kLowestCode || real > kHighestCode) return TextReason::OutsideTheCodes;
  code = static_cast<std::int16_t>(real);
  if (code != real) return TextReason::NotWhole;
  return TextReason::None;
}

bool IsComment(std::string_view line) {
  return line.front() == ';' || line.front() == '#' || line.front() == '\'';
}

// Reads one line from `position` on, and moves past it. True when it held a code; the reason when it is refused.
bool ParseLine(std::string_view text, std::size_t& position, bool mayBeComment, std::int16_t& code,
               TextReason& reason) {
  const std::string_view rest = text.substr(position);
  const std::string_view line = rest.substr(0, LineLength(rest));
  const std::string_view number = Trimmed(line);
  const bool skipped = number.empty() || (mayBeComment && IsComment(number));
  if (!skipped) reason = ParseCode(number, code);
  if (reason == TextReason::None) position += line.size() + LineEndLength(rest.substr(line.size()));
  return !skipped;
}

} // namespace

bool ParseCodes(std::string_view text, std::span<std::int16_t> codes, std::size_t& count, TextFault& fault) {
  text = WithoutByteOrderMark(text);
  std::size_t position = 0;
  std::size_t filled = 0;
  std::size_t lineByLine = 8; // up to there; a block needs characters before it
  FoundLines lines;           // NOLINT(cppcoreguidelines-pro-type-member-init): filled before it is read
  while (filled < codes.size() && position < text.size()) {
    if (position >= lineByLine) {
      FindLines(text, position, lines);
      const std::size_t usable = std::min(lines.count, codes.size() - filled);
      const std::size_t blockEnd = position + static_cast<std::size_t>(lines.end[usable] + 1);
      if (usable != 0 && ParseLines(lines, usable, &codes[filled])) {
        filled += usable;
        position = blockEnd;
        continue;
      }
      lineByLine = usable != 0 ? blockEnd : text.size();
    }
    TextReason reason = TextReason::None;
    if (ParseLine(text, position, filled == 0, codes[filled], reason)) ++filled;
    if (reason != TextReason::None) {
      fault = {LineNumber(text, position), reason};
      return false;
    }
  }
  if (filled == 0 && !codes.empty()) {
    fault = {0, TextReason::NoNumber};
    return false;
  }
  count = filled;
  return true;
}

} // namespace calder
