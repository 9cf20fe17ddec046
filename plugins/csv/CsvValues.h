// The values of one column of a table in text.
#pragma once

#include "csv/CsvLayout.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace calder::plugin {

// What becomes of a row whose cell is no number.
enum class RejectedCell {
  Repeat, // the value before it once more, so that later points keep their time
  LeaveOut,
  Refuse, // the whole table
};

struct CsvReject {
  std::int64_t line = 0; // 1-based
  std::string cell;      // its beginning; empty: an empty or missing cell
};

struct CsvValues {
  std::vector<double> values;
  std::vector<CsvReject> rejects; // the first kMostRejects of them
  std::int64_t rejectCount = 0;
  // How far a point lies from the place that its time gives it, at most, of the whole length; 0 without a time column.
  double unevenness = 0;
};

inline constexpr std::size_t kMostRejects = 20000;

// Reads on after the header. Blank lines are passed over, and so are empty cells after the last number. Cells before
// the first number have no value to repeat and are left out. With RejectedCell::Refuse the reading ends at the first
// one. progress: called now and then with 0 to 1.
[[nodiscard]] CsvValues ReadValues(std::string_view text, const CsvLayout& layout, RejectedCell rejected,
                                   const std::function<void(double)>& progress);

} // namespace calder::plugin
