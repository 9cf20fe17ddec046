// Text to and from the ANSI code pages of the systems whose files the program shares: one or two bytes a character
// there, UTF-8 here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace calder {

enum class CodePage { Western = 1252, Japanese = 932 };

// A character that the page lacks, and anything that is not UTF-8, becomes "?".
[[nodiscard]] std::string ToCodePage(std::string_view utf8, CodePage page);
// The same, as many whole characters as fit `width` bytes, filled up with blanks to exactly that many.
[[nodiscard]] std::string ToCodePageField(std::string_view utf8, CodePage page, std::size_t width);

// Bytes that mean no character of the page become "?".
[[nodiscard]] std::string FromCodePage(std::string_view bytes, CodePage page);
// The text of a field: up to the first NUL, without the blanks at its end.
[[nodiscard]] std::string FromCodePageField(std::string_view field, CodePage page);

} // namespace calder
