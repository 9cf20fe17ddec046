#include "libs/wavelb32/JoinSearch.h"

#include "libs/wavelb32/JoinLoops.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace calder::wavelb {

namespace {

constexpr std::int64_t unit = std::int64_t{1} << 20; // a code

// The gap through which a line must pass to round to the code.
struct Gap {
  std::int64_t lower;
  std::int64_t upper;
};
Gap GapOf(std::int64_t code) {
  const std::int64_t reach = unit / 2 - (code & 1);
  return {code * unit - reach, code * unit + reach};
}

struct Slope {
  std::int64_t rise;
  std::int64_t run;
};
// REQUIRES: both runs are above 0.
bool IsSteeper(const Slope& a, const Slope& b) {
  return a.rise * b.run > b.rise * a.run;
}

} // namespace

bool JoinSearch::AddGap(std::int64_t x, std::int32_t point) {
  const Gap gap = GapOf(codes_[static_cast<std::size_t>(point)]);
  return stabber_.Add(x, gap.lower, gap.upper);
}

bool JoinSearch::IsJoin(std::int32_t first, std::int32_t last) const {
  return last - first < 2 ||
         RoundsToCodes(codes_.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(last - first) + 1));
}

bool JoinSearch::CutAtBends(std::size_t limit) {
  constexpr std::size_t chunk = 4096;
  std::array<std::uint8_t, chunk> marks{};
  bends_.assign(1, 0);
  const std::size_t inner = codes_.size() < 2 ? 0 : codes_.size() - 2;
  for (std::size_t done = 0; done < inner; done += chunk) {
    const std::size_t count = std::min(chunk, inner - done);
    MarkBends(codes_.subspan(done, count + 2), std::span(marks).first(count));
    auto mark = marks.begin();
    const auto end = marks.begin() + static_cast<std::ptrdiff_t>(count);
    while ((mark = std::find(mark, end, std::uint8_t{1})) != end) {
      bends_.push_back(static_cast<std::int32_t>(done + static_cast<std::size_t>(mark - marks.begin()) + 1));
      ++mark;
    }
    if (bends_.size() >= limit) return false; // the last point is still to come
  }
  if (codes_.size() > 1) bends_.push_back(static_cast<std::int32_t>(codes_.size()) - 1);
  return bends_.size() <= limit;
}

std::int32_t JoinSearch::BoundForwards(std::int32_t first, std::int32_t last, std::int32_t maximum) {
  farthest_.assign(1, first);
  while (farthest_.back() < last) {
    if (static_cast<std::int32_t>(farthest_.size()) > maximum) return maximum + 1;
    const std::int32_t start = farthest_.back();
    stabber_.Clear();
    std::int32_t point = start;
    while (point <= last && AddGap(point - start, point)) ++point;
    farthest_.push_back(point - 1);
  }
  return static_cast<std::int32_t>(farthest_.size()) - 1;
}

void JoinSearch::BoundBackwards(std::int32_t first, std::int32_t last) {
  nearest_.assign(1, last);
  while (nearest_.back() > first) {
    const std::int32_t start = nearest_.back();
    stabber_.Clear();
    std::int32_t point = start;
    while (point >= first && AddGap(start - point, point)) --point;
    nearest_.push_back(point + 1);
  }
}

void JoinSearch::Expand(std::int32_t nodeIndex, std::int32_t nearest, std::int32_t farthest) {
  const std::int32_t start = nodes_[static_cast<std::size_t>(nodeIndex)].position;
  const std::int64_t code = codes_[static_cast<std::size_t>(start)];
  Slope least{};
  Slope greatest{};
  for (std::int32_t point = start + 1; point <= farthest; ++point) {
    const std::int64_t run = point - start;
    const std::int64_t pointCode = codes_[static_cast<std::size_t>(point)];
    const Slope slope{(pointCode - code) * unit, run};
    const bool isFirst = run == 1;
    if (point >= nearest && isReached_[static_cast<std::size_t>(point - stretchFirst_)] == 0 &&
        (isFirst || (!IsSteeper(least, slope) && !IsSteeper(slope, greatest)))) {
      isReached_[static_cast<std::size_t>(point - stretchFirst_)] = 1;
      nodes_.push_back({point, nodeIndex});
    }
    const Gap gap = GapOf(pointCode);
    const Slope low{gap.lower - code * unit, run};
    const Slope high{gap.upper - code * unit, run};
    if (isFirst || IsSteeper(low, least)) least = low;
    if (isFirst || IsSteeper(greatest, high)) greatest = high;
    if (IsSteeper(least, greatest)) return;
  }
}

bool JoinSearch::SolveWithin(const Stretch& stretch, std::int32_t joins, std::vector<std::int32_t>& between) {
  const auto farthestAfter = [&](std::int32_t d) {
    return static_cast<std::size_t>(d) < farthest_.size() ? farthest_[static_cast<std::size_t>(d)] : stretch.last;
  };
  const auto nearestBefore = [&](std::int32_t e) {
    return static_cast<std::size_t>(e) < nearest_.size() ? nearest_[static_cast<std::size_t>(e)] : stretch.first;
  };
  stretchFirst_ = stretch.first;
  isReached_.assign(static_cast<std::size_t>(stretch.last - stretch.first) + 1, 0);
  nodes_.assign(1, {stretch.first, -1});
  std::size_t layerStart = 0;
  for (std::int32_t d = 1; d <= joins && layerStart < nodes_.size(); ++d) {
    const std::size_t layerEnd = nodes_.size();
    for (std::size_t i = layerStart; i < layerEnd; ++i)
      Expand(static_cast<std::int32_t>(i), nearestBefore(joins - d), farthestAfter(d));
    layerStart = layerEnd;
    if (isReached_.back() == 0) continue;
    const auto isLast = [&](const Node& node) { return node.position == stretch.last; };
    auto node = std::find_if(nodes_.begin() + static_cast<std::ptrdiff_t>(layerEnd), nodes_.end(), isLast);
    assert(node != nodes_.end());
    for (node = nodes_.begin() + node->from; node->from >= 0; node = nodes_.begin() + node->from)
      between.push_back(node->position);
    std::ranges::reverse(between);
    return true;
  }
  return false;
}

bool JoinSearch::Solve(const Stretch& stretch, std::int32_t maximum, std::vector<std::int32_t>& between) {
  if (stretch.leastJoins > maximum) return false;
  static_cast<void>(BoundForwards(stretch.first, stretch.last, maximum));
  BoundBackwards(stretch.first, stretch.last);
  std::int32_t slack = 0;
  for (;;) {
    const std::int32_t joins = std::min(stretch.leastJoins + slack, maximum);
    if (SolveWithin(stretch, joins, between)) return true;
    if (joins == maximum) return false;
    slack = slack == 0 ? 1 : 2 * slack;
  }
}

std::optional<std::vector<std::int32_t>> JoinSearch::Find(std::size_t limit) {
  if (!CutAtBends(limit)) return std::nullopt;
  // What a solution needs at least, in control points.
  auto least = static_cast<std::int64_t>(bends_.size());
  const auto most = static_cast<std::int64_t>(limit);
  std::vector<Stretch> stretches;
  for (std::size_t i = 1; i < bends_.size(); ++i) {
    if (IsJoin(bends_[i - 1], bends_[i])) continue;
    const auto maximum = static_cast<std::int32_t>(most - least + 1);
    const std::int32_t joins = std::max(BoundForwards(bends_[i - 1], bends_[i], maximum), 2);
    least += joins - 1;
    if (least > most) return std::nullopt;
    stretches.push_back({bends_[i - 1], bends_[i], joins});
  }
  std::vector<std::int32_t> positions = bends_;
  std::vector<std::int32_t> between;
  for (const Stretch& stretch : stretches) {
    const auto maximum = static_cast<std::int32_t>(most - least) + stretch.leastJoins;
    between.clear();
    if (!Solve(stretch, maximum, between)) return std::nullopt;
    least += static_cast<std::int64_t>(between.size()) + 1 - stretch.leastJoins;
    positions.insert(positions.end(), between.begin(), between.end());
  }
  std::ranges::sort(positions);
  return positions;
}

} // namespace calder::wavelb
