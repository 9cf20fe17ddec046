// Letters, digits and blanks of ASCII, whatever the locale: bytes above 127 stay as they are, so UTF-8 passes through.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace calder {

[[nodiscard]] constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

[[nodiscard]] constexpr char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

[[nodiscard]] inline std::string LowerText(std::string text) {
  for (char& c : text) c = Lower(c);
  return text;
}

[[nodiscard]] constexpr bool EqualWithoutCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

// Without blanks at both ends; other white space stays.
[[nodiscard]] inline std::string TrimBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

} // namespace calder
