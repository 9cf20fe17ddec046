// A page's constants and expression made into the text that the evaluator gets: "[constants]expression" in lower case,
// with x in the current X unit and the value in codes.
//
// The evaluator says where in that text a fault is; PlaceOf says where the user wrote it.
#pragma once

#include "app/ConvUnit.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

// The random function's hidden argument: the first "rnd" (in lower case only) that is followed by "(" gets x as its
// first argument: "rnd()" becomes "rnd(x)", "rnd(5)" becomes "rnd(x,5)". Other texts come back unchanged.
[[nodiscard]] std::string Insert_x(std::string_view text);

// Every x that stands alone (no letter A to Z or digit beside it) in the current X unit; blanks at both ends go.
// axisPoints: the points over which X runs from its start to its end, those of the memory when 0.
[[nodiscard]] std::string ScaleXText(std::string_view text, const ConvUnit& units, const SystemInfo& settings,
                                     std::int32_t axisPoints = 0);

// An expression in the current Y unit made into one in codes: less the centre of the Y range, times codes per Y.
[[nodiscard]] std::string ScaleYText(std::string_view text, const ConvUnit& units);

enum class TextBox { Constants, Expression };

// A byte of what the user wrote; its size for the end.
struct TextPlace {
  TextBox box = TextBox::Expression;
  std::size_t position = 0;
  friend bool operator==(const TextPlace&, const TextPlace&) = default;
};

class PreparedText {
public:
  PreparedText(std::string_view constants, std::string_view expression, const ConvUnit& units,
               const SystemInfo& settings, std::int32_t axisPoints = 0);
  // The constants alone with a number after them, for checking them.
  PreparedText(std::string_view constants, long long number);

  [[nodiscard]] const std::string& Text() const { return text_; }
  // The place of a byte of Text(); of one that the program put there, the place that it was put for.
  [[nodiscard]] TextPlace PlaceOf(std::size_t position) const;

private:
  void AddConstants(std::string_view constants);

  std::string text_;
  std::size_t constantsEnd_ = 0;     // bytes of text_ up to and with "]"
  std::size_t constantsLength_ = 0;  // bytes of the user's constants
  std::vector<std::size_t> origins_; // for each byte after constantsEnd_ and for the end
};

} // namespace calder
