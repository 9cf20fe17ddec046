// Numbers as text: fixed, engineering notation with an SI prefix, by a mask, and back.
//
// All texts are made from the value's 15 significant decimal digits (nearest value, halves to even), never from its
// binary expansion, so 12.345 prints as 12.345000. A value that is not a number prints as 0, an infinity as the largest
// double.
#pragma once

#include <string>
#include <string_view>

namespace calder {

// Plain notation with 20 decimals, cut (not rounded) to the first `width` characters: 1000, 8 gives "1000.000".
[[nodiscard]] std::string FormatFixed(double value, int width);

// Engineering notation, width + 1 characters with the prefix included: 12345, 7 gives "12.3450k". The prefixes are
// a f p n u m (none) k M G; magnitudes up to 1e-18 and from 1e12 print as "1.00E+12".
[[nodiscard]] std::string FormatEng(double value, int width);

// Engineering notation whose mantissa follows a mask ("0" a digit always, "#" a digit when significant, "."): 12345.678
// with ".###" gives "12.346k", 5 gives "5".
[[nodiscard]] std::string FormatEngMask(double value, std::string_view mask);

// A number by such a mask without a prefix: 1.2341 with "0.###" gives "1.234". Rounded to the mask's decimals, halves
// to even.
[[nodiscard]] std::string FormatMask(double value, std::string_view mask);

// General form with up to 15 digits and no trailing zeros: "0.25", "1E-05".
[[nodiscard]] std::string NumberText(double value);

// Reads engineering notation: the leading number (blanks, tabs and line feeds inside it are skipped, exponents are
// introduced by E e D d) times the prefix that the text ends with. "1.5k" is 1500, "10 k" 10000, "abc" 0.
[[nodiscard]] double ParseEng(std::string_view text);

// The leading number alone, as ParseEng reads it.
[[nodiscard]] double LeadingNumber(std::string_view text);

} // namespace calder
