// What the text readers share: the range of a code, lines, blanks, and numbers written with "." whatever the system's
// locale.
//
// Lines end with CR LF, LF or CR; the last one may lack its end.
#pragma once

#include "platform/AsciiText.h"
#include "platform/WaveLimits.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace calder {

constexpr std::int32_t kLowestCode = -32768;
constexpr std::int32_t kHighestCode = W_CODE_MAX;

// The text without a UTF-8 byte order mark at its start.
[[nodiscard]] std::string_view WithoutByteOrderMark(std::string_view text);

// The length of the line at the start of the text, without its end.
[[nodiscard]] std::size_t LineLength(std::string_view text);
// The length of the line end at the start of the text: 2, 1, or 0 at the end of the text.
[[nodiscard]] std::size_t LineEndLength(std::string_view text);
// The number, from 1, of the line that begins at `offset`.
[[nodiscard]] std::int64_t LineNumber(std::string_view text, std::size_t offset);

// Whether a number beyond the range of a double (without a sign, "12.5e-400") is too small, not too large: whether its
// first digit that counts stands that far after the decimal point.
[[nodiscard]] bool IsTiny(std::string_view number);

// A decimal number with an optional sign, fraction and exponent, nothing before or after it. False, with `value`
// unchanged: not such a number, infinite, or too large for a double. What is too small for one is 0.
[[nodiscard]] bool ParseReal(std::string_view text, double& value);

} // namespace calder
