// Lines, cells and numbers of a table in text.
//
// A line is a physical one. A cell that begins with a double quote goes to the closing one, if that is on the same
// line; a lone quote (as in 5" probe) is a character like others.
#pragma once

#include <cstddef>
#include <string_view>

namespace calder::plugin {

// Which characters part lines: LF (with or without a CR before it), or CR alone when the text has no LF.
[[nodiscard]] char LineEndOf(std::string_view text);
// Takes the next line off the text, without its end. False: there is none.
[[nodiscard]] bool TakeLine(std::string_view& text, char lineEnd, std::string_view& line);
[[nodiscard]] bool IsBlank(std::string_view line);

// A blank as delimiter: any run of blanks and tabs.
inline constexpr char kBlankDelimiter = ' ';

// Takes the next cell off the line, without quotes and the blanks around it. False: the line is used up. A delimiter at
// the end is followed by an empty cell, but for blanks. Begin with first = true; it is changed.
[[nodiscard]] bool TakeCell(std::string_view& line, char delimiter, bool& first, std::string_view& cell);
// The cell with that number from 0; empty when the line has fewer.
[[nodiscard]] std::string_view CellAt(std::string_view line, char delimiter, std::size_t column);

// A whole cell as a number: digits with the decimal sign, a sign, an exponent; nothing else, and finite.
[[nodiscard]] bool ParseCell(std::string_view cell, char decimal, double& value);

} // namespace calder::plugin
