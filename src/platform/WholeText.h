// A number that is a whole text: nothing before it and nothing after.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace calder {

// None: the text holds something else, or a number that does not fit. base is for integers.
template <class Number, class... Base>
[[nodiscard]] std::optional<Number> ToNumber(std::string_view text, Base... base) {
  Number number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number, base...);
  if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
  return number;
}

} // namespace calder
