#include "app/PwfTable.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace calder {

std::string Resolution_Mask(double resolution) {
  // The shortest plain notation: 0.00001 has five decimals, however its number text reads.
  std::array<char, 1100> text{}; // the smallest double has 1074 decimals at most
  const char* const end =
      std::to_chars(text.data(), text.data() + text.size(), std::fabs(resolution), std::chars_format::fixed).ptr;
  const std::string_view number(text.data(), static_cast<std::size_t>(end - text.data()));
  const std::size_t point = number.find('.');
  if (point == std::string_view::npos) return "0";
  return "0." + std::string(number.size() - point - 1, '0');
}

} // namespace calder
