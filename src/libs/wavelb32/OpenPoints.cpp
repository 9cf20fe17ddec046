#include "libs/wavelb32/OpenPoints.h"

namespace calder::wavelb {

namespace {

bool IsSteeper(const OpenPoints::Slope& a, const OpenPoints::Slope& b) {
  return std::int64_t{a.twiceRise} * b.run > std::int64_t{b.twiceRise} * a.run;
}

} // namespace

void OpenPoints::Start(std::span<const std::int16_t> codes) {
  codes_ = codes;
  isOpen_.assign(codes.size(), 0);
  isOpen_[0] = 1;
  open_.assign(1, {0, {-1, 0}, {1, 0}});
}

inline void OpenPoints::Extend(std::vector<GapEnd>& chain, const GapEnd& end, std::int64_t sign) {
  while (chain.size() >= 2) {
    const GapEnd& a = chain[chain.size() - 2];
    const GapEnd& b = chain.back();
    const std::int64_t turn = (a.x - b.x) * (end.y - b.y) - (a.y - b.y) * (end.x - b.x);
    if (sign * turn > 0) break;
    chain.pop_back();
  }
  chain.push_back(end);
}

inline bool OpenPoints::Narrow(Point& point) const {
  const std::int64_t twice = Twice(point.point);
  // From the nearest end outwards the slopes first get closer, then no more.
  Slope greatest{1, 0};
  for (auto end = uppers_.rbegin(); end != uppers_.rend(); ++end) {
    const Slope slope{static_cast<std::int32_t>(end->y - twice), static_cast<std::int32_t>(end->x) - point.point};
    if (IsSteeper(slope, greatest)) break;
    greatest = slope;
  }
  if (IsSteeper(point.greatest, greatest)) point.greatest = greatest;
  if (IsSteeper(point.least, point.greatest)) return false;
  Slope least{-1, 0};
  for (auto end = lowers_.rbegin(); end != lowers_.rend(); ++end) {
    const Slope slope{static_cast<std::int32_t>(end->y - twice), static_cast<std::int32_t>(end->x) - point.point};
    if (IsSteeper(least, slope)) break;
    least = slope;
  }
  if (IsSteeper(least, point.least)) point.least = least;
  return !IsSteeper(point.least, point.greatest);
}

void OpenPoints::Advance(std::int32_t point) {
  const std::int32_t seen = open_.back().point;
  uppers_.clear();
  lowers_.clear();
  added_.clear();
  stabber_.Clear();
  std::int32_t p = point;
  for (; p > seen; --p) {
    Point added{p, {-1, 0}, {1, 0}};
    if (Narrow(added)) {
      added_.push_back(added);
      isOpen_[static_cast<std::size_t>(p)] = 1;
    }
    const GapEnd upper{p, Twice(p) + 1};
    const GapEnd lower{p, Twice(p) - 1};
    // No line through this and all after it: no line from further left.
    if (!stabber_.Add(point - p, lower.y, upper.y)) break;
    Extend(uppers_, upper, 1);
    Extend(lowers_, lower, -1);
  }
  const bool isWhole = p == seen;
  std::size_t kept = 0;
  for (Point& old : open_) {
    if (isWhole && Narrow(old))
      open_[kept++] = old;
    else
      isOpen_[static_cast<std::size_t>(old.point)] = 0;
  }
  open_.resize(kept);
  open_.insert(open_.end(), added_.rbegin(), added_.rend());
}

} // namespace calder::wavelb
