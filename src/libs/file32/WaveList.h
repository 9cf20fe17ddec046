// The text of an expression list: the ranges in its head, then one block a page. docs/file-formats.md has the layout.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace calder {

// A page as the file has it: positions and amplitude in the file's units. Texts are as they stand there, in the file's
// code page, without blanks at both ends; empty for "None".
struct WaveListRecord {
  std::int16_t PageNo = 0;
  std::int16_t Function = 0;
  double StartX = 0;
  double EndX = 0;
  std::array<double, 8> Values{}; // Offset, Size, Amplitude, Period, Phase, Symmetry, Duty, Transition
  std::string Constants;
  std::string Expression;
};

// What stands for an empty text.
inline constexpr std::string_view kNoListText = "None";

// Reads a list from its start to its end; the text must outlive the reader.
class WaveListReader {
public:
  explicit WaveListReader(std::string_view text);

  // The ranges of the file's units: what X and Y values mean the left and right, lower and upper end. 0 on success;
  // negative, with the arguments as they were, when the head lacks one of them, one is no range (X: empty; both: the
  // wrong way round or not finite).
  [[nodiscard]] std::int32_t ReadWaveListHeader(double& xMinimum, double& xMaximum, double& yMinimum, double& yMaximum);

  // The next page: 1, and `record` is filled. 0: there is none. Negative: what follows is not a whole page; `record` is
  // as it was, and nothing more can be read.
  [[nodiscard]] std::int32_t ReadOneWaveList(WaveListRecord& record);

private:
  [[nodiscard]] bool NextLine(std::string_view& line);
  [[nodiscard]] bool NextValue(double& value);
  [[nodiscard]] bool NextInteger(std::int16_t& value);
  // The lines up to the one that is `last`, as one text.
  [[nodiscard]] bool NextText(std::string_view last, std::string& text);

  std::string_view rest_;
};

} // namespace calder
