// The lines through one code that round to a run of other codes beside it: a wedge between a least and a greatest
// slope. Inside the library only.
//
// All comparisons are of whole numbers. "Rounds to the code" means a distance of at most 1/2 for an even and below 1/2
// for an odd code. A line between whole codes n points apart takes values that are multiples of 1/n, so with n up to
// 2^19 "below 1/2" is "at most 1/2 - 2^-20", and all gaps are closed in units of 2^-20.
#pragma once

#include <cstdint>

namespace calder::wavelb {

inline constexpr std::int64_t gapUnit = std::int64_t{1} << 20; // a code

// The gap through which a line must pass to round to the code.
struct Gap {
  std::int64_t lower;
  std::int64_t upper;
};
[[nodiscard]] inline Gap GapOf(std::int64_t code) {
  const std::int64_t reach = gapUnit / 2 - (code & 1);
  return {code * gapUnit - reach, code * gapUnit + reach};
}

struct Slope {
  std::int64_t rise;
  std::int64_t run; // above 0: the distance to either side
};
[[nodiscard]] inline bool IsSteeper(const Slope& a, const Slope& b) {
  return a.rise * b.run > b.rise * a.run;
}

// Looks from its code to one side only; distances are counted from the code.
class Wedge {
public:
  explicit Wedge(std::int64_t code) : origin_(code * gapUnit) {}

  // Whether the line to the code at the distance lies in the wedge.
  [[nodiscard]] bool Admits(std::int64_t distance, std::int64_t code) const {
    const Slope slope{code * gapUnit - origin_, distance};
    return isOpen_ || (!IsSteeper(least_, slope) && !IsSteeper(slope, greatest_));
  }
  // No line is left.
  [[nodiscard]] bool IsEmpty() const { return !isOpen_ && IsSteeper(least_, greatest_); }

  void Narrow(std::int64_t distance, const Gap& gap) {
    const Slope low{gap.lower - origin_, distance};
    const Slope high{gap.upper - origin_, distance};
    if (isOpen_ || IsSteeper(low, least_)) least_ = low;
    if (isOpen_ || IsSteeper(greatest_, high)) greatest_ = high;
    isOpen_ = false;
  }
  [[nodiscard]] Slope SlopeTo(std::int64_t distance, std::int64_t end) const { return {end - origin_, distance}; }
  void Narrow(const Slope& low, const Slope& high) {
    if (isOpen_ || IsSteeper(low, least_)) least_ = low;
    if (isOpen_ || IsSteeper(greatest_, high)) greatest_ = high;
    isOpen_ = false;
  }

private:
  std::int64_t origin_;
  bool isOpen_ = true; // no gap yet
  Slope least_{0, 1};
  Slope greatest_{0, 1};
};

} // namespace calder::wavelb
