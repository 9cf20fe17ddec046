#include "libs/wavelb32/StretchSolver.h"

#include <algorithm>

namespace calder::wavelb {

namespace {

template <class Join>
std::span<const Join> Part(const std::vector<Join>& joins, std::int32_t begin, std::int32_t end) {
  return {joins.data() + begin, static_cast<std::size_t>(end - begin)};
}

// 0: the same direction; above 0: b is steeper.
std::int64_t Turn(std::int64_t lengthA, std::int64_t riseA, std::int64_t lengthB, std::int64_t riseB) {
  return lengthA * riseB - riseA * lengthB;
}

} // namespace

inline void StretchSolver::AddFamily(std::int32_t length, std::int32_t rise, const HalfJoin& step) {
  const std::int32_t row = step.row;
  wholes_.push_back({length + step.length, rise + step.rise, row > 1 ? kFirstOfFamily : kToSplit});
  if (row > 1) wholes_.push_back({length + row * step.length, rise + row * step.rise, kToSplit});
  if (row > 2) {
    families_.push_back({length, rise, step.length, step.rise, row});
    TakeBetter(bestOfFamilies_, step.bestOfRow);
  }
}

inline void StretchSolver::SplitInFamilies(std::int32_t point, std::int32_t length, std::int32_t rise,
                                           std::int32_t& best) {
  const std::int32_t start = point - length;
  const auto index = SlotOf(start);
  for (std::int32_t i = starts_[index].family; i < starts_[index + 1].family; ++i) {
    const Family& family = families_[static_cast<std::size_t>(i)];
    // The turn from u + t * a to the join is base + t * step: at most three t give -1, 0 or 1.
    const std::int64_t base = Turn(family.length, family.rise, length, rise);
    const std::int64_t step = Turn(family.stepLength, family.stepRise, length, rise);
    const std::int64_t ends[] = {base + 2 * step, base + (family.end - 1) * step};
    if (step == 0 || std::min(ends[0], ends[1]) > 1 || std::max(ends[0], ends[1]) < -1) continue;
    for (std::int64_t turn = -1; turn <= 1; ++turn) {
      const std::int64_t t = (turn - base) / step;
      if (base + t * step != turn || t < 2 || t >= family.end) continue;
      const auto leftLength = static_cast<std::int32_t>(family.length + t * family.stepLength);
      const auto leftRise = static_cast<std::int32_t>(family.rise + t * family.stepRise);
      if (turn == 0)
        TakeBetter(best, start - leftLength);
      else
        halves_.push_back({leftLength + length, leftRise + rise, static_cast<std::int32_t>(-turn), 0, 0, 0});
    }
  }
}

inline std::int32_t StretchSolver::Split(std::int32_t point, std::size_t index) {
  // One by one: they were written just now, and a processor waits when it reads in larger pieces than it wrote.
  const std::int32_t length = wholes_[index].length;
  const std::int32_t rise = wholes_[index].rise;
  const bool isFirstOfFamily = wholes_[index].best == kFirstOfFamily;
  const std::int32_t start = point - length;
  const std::size_t slot = SlotOf(start);
  const Starts& begin = starts_[slot];
  const Starts& end = starts_[slot + 1];
  std::int32_t best = start;
  for (const WholeJoin& left : Part(wholes_, begin.whole, end.whole)) {
    const std::int64_t turn = Turn(left.length, left.rise, length, rise);
    if (turn < -1 || turn > 1) continue;
    if (turn == 0)
      TakeBetter(best, left.best);
    else
      halves_.push_back({left.length + length, left.rise + rise, static_cast<std::int32_t>(-turn), 0, 0, 0});
  }
  if (!isFirstOfFamily) {
    for (const HalfJoin& left : Part(halves_, begin.half, end.half))
      if (Turn(left.length, left.rise, length, rise) == left.side) AddFamily(length, rise, left);
  }
  if (begin.family != end.family) SplitInFamilies(point, length, rise, best);
  wholes_[index].best = best;
  return best;
}

inline void StretchSolver::FinishHalfJoin(std::int32_t point, HalfJoin& join) const {
  const std::int32_t start = point - join.length;
  const std::int32_t before = start - join.length;
  join.best = join.bestOfRow = start;
  join.row = 1;
  if (before >= 0 && CodeAt(start) - CodeAt(before) == join.rise) {
    const std::size_t index = SlotOf(start);
    const std::span<const HalfJoin> lefts = Part(halves_, starts_[index].half, starts_[index + 1].half);
    const auto left = std::ranges::find(lefts, join.length, &HalfJoin::length); // a start has one join to a point
    if (left != lefts.end()) {
      if (left->side == join.side) {
        join.row += left->row;
        TakeBetter(join.bestOfRow, left->bestOfRow);
      }
      if (left->best >= 0) TakeBetter(join.best, left->best);
    }
  }
  const std::int32_t middle = CodeAt(point) - (join.rise - join.side) / 2;
  if (middle % 2 != 0) join.best = -1;
}

inline void StretchSolver::AddPoint(std::int32_t point) {
  const auto index = static_cast<std::size_t>(point);
  const std::size_t firstWhole = wholes_.size();
  const std::size_t firstHalf = halves_.size();
  std::int32_t from = point - 1;
  std::int32_t joins = joins_[index - 1];
  const auto reach = [&](std::int32_t start) {
    const std::int32_t joinsToStart = joins_[static_cast<std::size_t>(start)];
    from = joinsToStart < joins ? start : from;
    joins = std::min(joins, joinsToStart);
  };
  bestOfFamilies_ = from;
  wholes_.push_back({1, CodeAt(point) - CodeAt(point - 1), kToSplit});
  for (std::size_t i = firstWhole; i < wholes_.size(); ++i) reach(Split(point, i));
  for (std::size_t i = firstHalf; i < halves_.size(); ++i) {
    FinishHalfJoin(point, halves_[i]);
    if (halves_[i].best >= 0) reach(halves_[i].best);
  }
  reach(bestOfFamilies_);
  from_[index] = from;
  joins_[index] = joins + 1;
  slots_[index] = static_cast<std::int32_t>(starts_.size()) - 1;
  starts_.push_back({static_cast<std::int32_t>(wholes_.size()), static_cast<std::int32_t>(halves_.size()),
                     static_cast<std::int32_t>(families_.size())});
}

void StretchSolver::Forget(std::int32_t point) {
  open_.Advance(point);
  Starts kept{};
  std::size_t points = 0;
  const auto keep = [](auto& joins, std::int32_t from, std::int32_t to, std::int32_t& count, auto isNeeded) {
    for (std::int32_t i = from; i < to; ++i) {
      const auto join = joins[static_cast<std::size_t>(i)];
      if (isNeeded(join)) joins[static_cast<std::size_t>(count++)] = join;
    }
  };
  for (const OpenPoints::Point& open : open_.Points()) {
    const std::int32_t p = open.point;
    const Starts begin = starts_[SlotOf(p)];
    const Starts end = starts_[SlotOf(p) + 1];
    starts_[points] = kept;
    slots_[static_cast<std::size_t>(p)] = static_cast<std::int32_t>(points++);
    const auto isNeeded = [&](const auto& join) { return open_.IsOpen(p - join.length); };
    keep(wholes_, begin.whole, end.whole, kept.whole, isNeeded);
    keep(halves_, begin.half, end.half, kept.half, isNeeded);
    keep(families_, begin.family, end.family, kept.family, [](const Family&) { return true; });
  }
  starts_[points] = kept;
  starts_.resize(points + 1);
  wholes_.resize(static_cast<std::size_t>(kept.whole));
  halves_.resize(static_cast<std::size_t>(kept.half));
  families_.resize(static_cast<std::size_t>(kept.family));
}

bool StretchSolver::Solve(std::span<const std::int16_t> codes, std::int32_t maximum,
                          std::vector<std::int32_t>& between) {
  // Often enough that the joins mostly stay in the cache, seldom enough that it costs little.
  constexpr std::int32_t fewPoints = 8192;
  codes_ = codes;
  const auto last = static_cast<std::int32_t>(codes.size()) - 1;
  if (codes.size() > room_) {
    room_ = codes.size();
    joins_ = std::make_unique_for_overwrite<std::int32_t[]>(room_);
    from_ = std::make_unique_for_overwrite<std::int32_t[]>(room_);
    slots_ = std::make_unique_for_overwrite<std::int32_t[]>(room_);
  }
  joins_[0] = from_[0] = 0;
  slots_[0] = 0;
  starts_.assign(2, {});
  wholes_.clear();
  halves_.clear();
  families_.clear();
  open_.Start(codes);
  std::int32_t nextForgetting = fewPoints;
  for (std::int32_t point = 1; point <= last; ++point) {
    AddPoint(point);
    if (point < nextForgetting || point == last) continue;
    Forget(point);
    // The joins go on from one of these.
    const auto isNear = [&](const OpenPoints::Point& open) {
      return joins_[static_cast<std::size_t>(open.point)] < maximum;
    };
    if (std::ranges::none_of(open_.Points(), isNear)) return false;
    nextForgetting = point + std::max(fewPoints, static_cast<std::int32_t>(open_.Points().size()));
  }
  between.clear();
  for (std::int32_t point = from_[static_cast<std::size_t>(last)]; point > 0;
       point = from_[static_cast<std::size_t>(point)])
    between.push_back(point);
  std::ranges::reverse(between);
  return joins_[static_cast<std::size_t>(last)] <= maximum;
}

} // namespace calder::wavelb
