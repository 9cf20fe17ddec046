// How a parameter's values lie on a scroll bar: one position a step of the resolution, coarser ones where that would
// take more than 15000 positions (30000 with values below 0).
#pragma once

#include "app/PwfTable.h"

#include <string>

namespace calder {

// As doubles, because a definitions file may ask for any; those of a sound parameter are whole and within +-32768.
struct ScrollRange {
  double Min = 0;
  double Max = 0;
  // Whether a scroll bar can have it.
  [[nodiscard]] bool IsUsable() const;
};

[[nodiscard]] ScrollRange ScrollRangeOf(const PwfParam& param);

// REQUIRES for both: a usable range.
[[nodiscard]] int ScrollPositionOf(const PwfParam& param, const ScrollRange& range);
// Within the parameter's limits.
[[nodiscard]] double ScrolledValue(const PwfParam& param, const ScrollRange& range, int position);

// A value in the decimals of the resolution; where these would take it out of the limits, the limit as it is.
[[nodiscard]] std::string PwfValueText(const PwfParam& param, double value);

} // namespace calder
