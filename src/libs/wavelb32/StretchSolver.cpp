#include "libs/wavelb32/StretchSolver.h"

#include <algorithm>
#include <cstdlib>

namespace calder::wavelb {

namespace {

template <class Join>
std::span<const Join> Part(const std::vector<Join>& joins, std::int32_t begin, std::int32_t end, std::int32_t base) {
  return {joins.data() + (begin - base), static_cast<std::size_t>(end - begin)};
}

// 0: the same direction; above 0: b is steeper.
std::int64_t Turn(std::int64_t lengthA, std::int64_t riseA, std::int64_t lengthB, std::int64_t riseB) {
  return lengthA * riseB - riseA * lengthB;
}

template <class Join>
void ForgetFirst(std::vector<Join>& joins, std::int32_t count) {
  joins.erase(joins.begin(), joins.begin() + count);
}

} // namespace

void StretchSolver::AddFamily(std::int32_t point, const WholeJoin& join, const HalfJoin& step) {
  const std::int32_t row = step.row;
  wholes_.push_back({join.length + step.length, join.rise + step.rise, row > 1 ? firstOfFamily : toSplit});
  if (row > 1) wholes_.push_back({join.length + row * step.length, join.rise + row * step.rise, toSplit});
  if (row > 2) {
    families_.push_back({join.length, join.rise, step.length, step.rise, row});
    Reach(point, step.bestOfRow);
  }
}

void StretchSolver::SplitInFamilies(const WholeJoin& join, std::int32_t start, std::int32_t& best) {
  const auto index = static_cast<std::size_t>(start);
  for (std::int32_t i = starts_[index].family; i < starts_[index + 1].family; ++i) {
    const Family& family = families_[static_cast<std::size_t>(i - forgotten_.family)];
    // The turn from u + t * a to the join is base + t * step: at most three t give -1, 0 or 1.
    const std::int64_t base = Turn(family.length, family.rise, join.length, join.rise);
    const std::int64_t step = Turn(family.stepLength, family.stepRise, join.length, join.rise);
    const std::int64_t ends[] = {base + 2 * step, base + (family.end - 1) * step};
    if (step == 0 || std::min(ends[0], ends[1]) > 1 || std::max(ends[0], ends[1]) < -1) continue;
    for (std::int64_t turn = -1; turn <= 1; ++turn) {
      const std::int64_t t = (turn - base) / step;
      if (base + t * step != turn || t < 2 || t >= family.end) continue;
      const auto length = static_cast<std::int32_t>(family.length + t * family.stepLength);
      const auto rise = static_cast<std::int32_t>(family.rise + t * family.stepRise);
      if (turn == 0)
        TakeBetter(best, start - length);
      else
        halves_.push_back({length + join.length, rise + join.rise, static_cast<std::int32_t>(-turn), 0, 0, 0});
    }
  }
}

void StretchSolver::Split(std::int32_t point, std::size_t index) {
  const WholeJoin join = wholes_[index];
  const std::int32_t start = point - join.length;
  const Starts begin = starts_[static_cast<std::size_t>(start)];
  const Starts end = starts_[static_cast<std::size_t>(start) + 1];
  std::int32_t best = start;
  for (const WholeJoin& left : Part(wholes_, begin.whole, end.whole, forgotten_.whole)) {
    const std::int64_t turn = Turn(left.length, left.rise, join.length, join.rise);
    if (turn < -1 || turn > 1) continue;
    if (turn == 0)
      TakeBetter(best, left.best);
    else
      halves_.push_back({left.length + join.length, left.rise + join.rise, static_cast<std::int32_t>(-turn), 0, 0, 0});
  }
  if (join.best != firstOfFamily) {
    for (const HalfJoin& left : Part(halves_, begin.half, end.half, forgotten_.half))
      if (Turn(left.length, left.rise, join.length, join.rise) == left.side) AddFamily(point, join, left);
  }
  if (begin.family != end.family) SplitInFamilies(join, start, best);
  wholes_[index].best = best;
  Reach(point, best);
}

void StretchSolver::FinishHalfJoin(std::int32_t point, HalfJoin& join) const {
  const std::int32_t start = point - join.length;
  const auto index = static_cast<std::size_t>(start);
  join.best = join.bestOfRow = start;
  join.row = 1;
  for (const HalfJoin& left : Part(halves_, starts_[index].half, starts_[index + 1].half, forgotten_.half)) {
    if (left.length != join.length || left.rise != join.rise) continue;
    if (left.side == join.side) {
      join.row += left.row;
      TakeBetter(join.bestOfRow, left.bestOfRow);
    }
    if (left.best >= 0) TakeBetter(join.best, left.best);
    break;
  }
  const std::int32_t middle = codes_[static_cast<std::size_t>(point)] - (join.rise - join.side) / 2;
  if (middle % 2 != 0) join.best = -1;
}

void StretchSolver::AddPoint(std::int32_t point) {
  const auto index = static_cast<std::size_t>(point);
  const std::size_t firstWhole = wholes_.size();
  const std::size_t firstHalf = halves_.size();
  from_[index] = point - 1;
  wholes_.push_back({1, codes_[index] - codes_[index - 1], toSplit});
  for (std::size_t i = firstWhole; i < wholes_.size(); ++i) Split(point, i);
  for (std::size_t i = firstHalf; i < halves_.size(); ++i) {
    FinishHalfJoin(point, halves_[i]);
    if (halves_[i].best >= 0) Reach(point, halves_[i].best);
  }
  joins_[index] = joins_[static_cast<std::size_t>(from_[index])] + 1;
  starts_[index + 1] = {forgotten_.whole + static_cast<std::int32_t>(wholes_.size()),
                        forgotten_.half + static_cast<std::int32_t>(halves_.size()),
                        forgotten_.family + static_cast<std::int32_t>(families_.size())};
}

std::int32_t StretchSolver::LeastStart(std::int32_t point) {
  stabber_.Clear();
  std::int32_t start = point;
  for (; start > first_; --start) {
    const std::int64_t twice = 2 * codes_[static_cast<std::size_t>(start)];
    if (!stabber_.Add(point - start, twice - 1, twice + 1)) break;
  }
  return start;
}

void StretchSolver::Forget(std::int32_t first) {
  const Starts& begin = starts_[static_cast<std::size_t>(first)];
  ForgetFirst(wholes_, begin.whole - forgotten_.whole);
  ForgetFirst(halves_, begin.half - forgotten_.half);
  ForgetFirst(families_, begin.family - forgotten_.family);
  forgotten_ = begin;
  first_ = first;
}

bool StretchSolver::Solve(std::span<const std::int16_t> codes, std::int32_t maximum,
                          std::vector<std::int32_t>& between) {
  // Joins that no other can need any more are forgotten now and then, which keeps the others in the cache.
  constexpr std::int32_t fewPoints = 4096;
  constexpr std::int32_t growth = 3;
  codes_ = codes;
  const auto last = static_cast<std::int32_t>(codes.size()) - 1;
  joins_.resize(codes.size());
  from_.resize(codes.size());
  starts_.resize(codes.size() + 1);
  joins_[0] = from_[0] = 0;
  starts_[0] = starts_[1] = forgotten_ = {};
  wholes_.clear();
  halves_.clear();
  families_.clear();
  first_ = 0;
  std::int32_t nextForgetting = fewPoints;
  for (std::int32_t point = 1; point <= last; ++point) {
    AddPoint(point);
    if (point < nextForgetting || point == last) continue;
    Forget(LeastStart(point));
    if (*std::min_element(joins_.begin() + first_, joins_.begin() + point + 1) >= maximum) return false;
    nextForgetting = point + std::max(fewPoints, growth * (point - first_));
  }
  between.clear();
  for (std::int32_t point = from_.back(); point > 0; point = from_[static_cast<std::size_t>(point)])
    between.push_back(point);
  std::ranges::reverse(between);
  return joins_[static_cast<std::size_t>(last)] <= maximum;
}

} // namespace calder::wavelb
