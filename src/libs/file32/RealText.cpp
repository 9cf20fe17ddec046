#include "libs/file32/RealText.h"

#include "libs/file32/TextLines.h"
#include "platform/WaveLimits.h"

#include <algorithm>
#include <cmath>

namespace calder {

namespace {

constexpr double kFullScale = W_CODE_MAX;

bool OnlyBlankLines(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

bool ParseReals(std::string_view text, std::size_t most, RealValues& reals, TextFault& fault) {
  text = WithoutByteOrderMark(text);
  reals.values.clear();
  bool more = true;
  for (std::size_t position = 0; more && position < text.size();) {
    const std::string_view rest = text.substr(position);
    const std::string_view line = rest.substr(0, LineLength(rest));
    const std::string_view number = Trimmed(line);
    if (number.empty() && OnlyBlankLines(rest)) break;
    double value = 0;
    if (!ParseReal(number, value)) {
      fault = {LineNumber(text, position), number.empty() ? TextReason::EmptyLine : TextReason::NotANumber};
      return false;
    }
    const bool first = reals.values.empty();
    reals.maximum = first ? value : std::max(reals.maximum, value);
    reals.minimum = first ? value : std::min(reals.minimum, value);
    more = reals.values.size() < most;
    if (more) reals.values.push_back(value);
    position += line.size() + LineEndLength(rest.substr(line.size()));
  }
  if (reals.values.empty()) {
    fault = {0, TextReason::NoNumber};
    return false;
  }
  return true;
}

bool ScaleReals(const RealValues& reals, std::span<std::int16_t> codes, TextFault& fault) {
  const double scale = std::max(reals.maximum, std::abs(reals.minimum)) / kFullScale;
  if (scale == 0) {
    fault = {0, TextReason::NoScale};
    return false;
  }
  for (std::size_t i = 0; i < reals.values.size(); ++i) {
    // Near the smallest double the scale has few digits left, and the quotient may pass the full scale.
    codes[i] = static_cast<std::int16_t>(std::nearbyint(std::clamp(reals.values[i] / scale, -kFullScale, kFullScale)));
  }
  return true;
}

} // namespace calder
