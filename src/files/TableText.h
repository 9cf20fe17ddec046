// Text tables of control points: one line a point, X and Y in the current units, separated by a blank (.prn), a tab
// (.tsv) or a comma (.csv), lines ended by CR LF. docs/file-formats.md has the layout.
#pragma once

#include "app/SplinePoints.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

class ConvUnit;

// Takes one number from the front of `text`: leading blanks and tabs, the number's text up to a CR, a comma, a tab, a
// blank or the end, then blanks and tabs with at most one comma among them and at most one line end (CR LF or CR). The
// number is read in engineering notation, so words count as 0; a line feed alone ends nothing. False: there is none,
// `text` is as it was.
[[nodiscard]] bool Take_Number(double& value, std::string_view& text);

struct TableContent {
  std::vector<SplinePoint> points; // as they stand in the text; X 0 to the memory size, Y inside the codes
  // The line of the number at which the reading stopped before the end of the text; 0: nothing was left over.
  std::int64_t faultLine = 0;
};

// The text without a carriage return in it, and with a line feed between two lines: numbers of two lines would run
// together.
[[nodiscard]] bool EndsLinesInFeedsAlone(std::string_view text);
// The same text with CR LF after each line.
[[nodiscard]] std::string WithLineEnds(std::string_view text);

// Values outside the current ranges are brought to their ends.
[[nodiscard]] TableContent ParseTable(std::string_view text, const ConvUnit& units);
// separator: of the two columns.
[[nodiscard]] std::string ComposeTable(const SplinePoints& points, const ConvUnit& units, char separator);
// By the name's last four characters, without regard to case.
[[nodiscard]] char SeparatorOf(std::string_view path);

} // namespace calder
