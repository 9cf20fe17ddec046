#include "libs/file32/TextLines.h"

#include "platform/AsciiText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace calder {

bool IsTiny(std::string_view number) {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  const std::size_t first = digits.find_first_of("123456789");
  if (first == std::string_view::npos) return true;
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const auto magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  if (mark == number.size()) return magnitude < 0;
  std::string_view exponentText = number.substr(mark + 1);
  if (exponentText.front() == '+') exponentText.remove_prefix(1);
  std::int64_t exponent = 0;
  if (std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent).ec != std::errc()) {
    return exponentText.front() == '-';
  }
  return exponent < -magnitude;
}

std::string_view WithoutByteOrderMark(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  return text;
}

std::size_t LineLength(std::string_view text) {
  const auto isEnd = [](char c) { return c == '\n' || c == '\r'; };
  return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isEnd) - text.begin());
}

std::size_t LineEndLength(std::string_view text) {
  if (text.starts_with("\r\n")) return 2;
  return text.starts_with('\r') || text.starts_with('\n') ? 1 : 0;
}

std::int64_t LineNumber(std::string_view text, std::size_t offset) {
  std::int64_t line = 1;
  for (std::size_t i = 0; i < offset; ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && !(i + 1 < offset && text[i + 1] == '\n'))) ++line;
  }
  return line;
}

bool ParseReal(std::string_view text, double& value) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return false;
  }
  // from_chars knows "inf" and "nan", which no file of ours means.
  const std::string_view unsignedText = text.starts_with('-') ? text.substr(1) : text;
  if (unsignedText.empty() || !(IsDigit(unsignedText.front()) || unsignedText.front() == '.')) return false;
  double parsed = 0;
  const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (result.ptr != text.data() + text.size()) return false;
  if (result.ec == std::errc::result_out_of_range && IsTiny(unsignedText))
    parsed = 0;
  else if (result.ec != std::errc() || !std::isfinite(parsed))
    return false;
  value = parsed;
  return true;
}

} // namespace calder
