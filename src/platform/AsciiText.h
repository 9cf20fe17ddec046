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

// Without such characters at both ends.
[[nodiscard]] constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t") {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// Without blanks at both ends; other white space stays.
[[nodiscard]] inline std::string TrimBlanks(std::string_view text) {
  return std::string(Trimmed(text, " "));
}

} // namespace calder
