// From values of any size to codes.
#pragma once

#include "common/Importer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace calder::plugin {

enum class Scaling {
  Automatic, // AsCodes when all values are whole numbers from -32768 to 32767, Peak otherwise
  Peak,      // the largest magnitude becomes full scale, 32767
  AsCodes,   // rounded to whole numbers, halves to even, and limited to full scale
};

// Takes note of all values first; then makes codes of them.
class CodeScale {
public:
  // REQUIRES: the value is finite.
  void Note(double value) {
    peak_ = std::max(peak_, std::abs(value));
    const bool code = value >= kLowest && value <= kHighest && value == std::rint(value);
    codes_ = codes_ && code;
    beyond_ += value < kLowest || value > kHighest ? 1 : 0;
  }
  void Choose(Scaling scaling) { asCodes_ = scaling == Scaling::AsCodes || (scaling == Scaling::Automatic && codes_); }
  [[nodiscard]] std::int16_t Code(double value) const {
    if (asCodes_) return static_cast<std::int16_t>(std::rint(std::clamp(value, kLowest, kHighest)));
    // Dividing first keeps peaks near the ends of a double's range from vanishing or overflowing.
    return peak_ == 0 ? std::int16_t{0} : static_cast<std::int16_t>(std::rint(value / peak_ * kHighest));
  }
  // How many values the codes have no room for.
  [[nodiscard]] std::int64_t Limited() const { return asCodes_ ? beyond_ : 0; }

private:
  static constexpr double kHighest = 32767;
  static constexpr double kLowest = -32768;

  double peak_ = 0;
  bool codes_ = true;
  bool asCodes_ = false;
  std::int64_t beyond_ = 0;
};

[[nodiscard]] inline Option ScalingOption(const Editor& editor, Scaling scaling) {
  return {CALDER_OPTION_CHOICE,
          "scale",
          editor.Pick("換算", "Scale"),
          editor.Pick("自動（16 bit の整数ならコード、他は最大値）\n最大値をフルスケールに\n値をそのままコードに",
                      "Automatic: codes if all are whole 16-bit numbers, else the peak\nThe peak becomes full scale\n"
                      "Values are codes as they are"),
          0,
          0,
          static_cast<double>(scaling)};
}

// A line of the report; empty for none.
[[nodiscard]] inline std::string LimitedText(const Editor& editor, std::int64_t limited) {
  if (limited == 0) return {};
  return editor.Pick("フルスケールに制限した点数: ", "Points limited to full scale: ") + std::to_string(limited) + "\n";
}

} // namespace calder::plugin
