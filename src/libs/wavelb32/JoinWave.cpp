#include "libs/wavelb32/JoinWave.h"

#include <algorithm>
#include <numeric>

namespace calder::wavelb {

namespace {

// Up to this many gaps one by one, beyond it by blocks.
constexpr std::int32_t shortRun = 24;
// Going from the reached points to the others costs about (points of the layer) * (length of a join), the other way
// about (points not reached) * pullCost.
constexpr std::int64_t pullCost = 48;

} // namespace

void JoinWave::SetCodes(std::span<const std::int16_t> codes) {
  codes_ = codes;
  hulls_.Clear();
  reaches_.clear();
  starts_.clear();
}

std::int32_t JoinWave::FarthestFrom(std::int32_t start) {
  stabber_.Clear();
  for (std::int32_t point = start; point <= Last(); ++point) {
    const Gap gap = GapOf(CodeAt(point));
    if (!stabber_.Add(point - start, gap.lower, gap.upper)) return point - 1;
  }
  return Last();
}

std::int32_t JoinWave::LeastJoins(std::int32_t maximum) {
  farthest_.assign(1, 0);
  while (farthest_.back() < Last()) {
    if (static_cast<std::int32_t>(farthest_.size()) > maximum) return maximum + 1;
    farthest_.push_back(FarthestFrom(farthest_.back()));
  }
  return static_cast<std::int32_t>(farthest_.size()) - 1;
}

std::int32_t JoinWave::Farthest(std::int32_t joins) const {
  const auto index = static_cast<std::size_t>(joins);
  return index < farthest_.size() ? farthest_[index] : Last();
}

void JoinWave::TakeReachesFromBounds() {
  reaches_.clear();
  for (std::size_t joins = 1; joins < farthest_.size(); ++joins)
    reaches_.push_back({farthest_[joins - 1], farthest_[joins]});
  reaches_.push_back({Last(), Last()});
}

void JoinWave::RefineBounds() {
  // Denser where lines are shorter; each gap is looked at a handful of times.
  constexpr std::int32_t density = 4;
  reaches_.clear();
  for (std::int32_t start = 0; start < Last();) {
    const std::int32_t to = FarthestFrom(start);
    reaches_.push_back({start, to});
    if (to == Last()) break;
    start += std::max((to - start) / density, 1);
  }
  reaches_.push_back({Last(), Last()});
}

std::int32_t JoinWave::ReachOf(std::int32_t start) const {
  return std::ranges::lower_bound(reaches_, start, {}, &Reach::from)->to;
}

void JoinWave::Start() {
  const std::size_t points = codes_.size();
  from_.assign(points, notReached);
  from_[0] = 0;
  next_.resize(points + 1);
  std::iota(next_.begin(), next_.end(), 0);
  next_[0] = 1;
  layer_.assign(1, 0);
  meeting_ = -1;
  progress_ = 0;
  starts_.resize(points, 0);
}

void JoinWave::SetReached(std::int32_t point, std::int32_t from) {
  from_[static_cast<std::size_t>(point)] = from;
  next_[static_cast<std::size_t>(point)] = point + 1;
  found_.push_back(point);
  if (other_->HasReached(Last() - point)) meeting_ = point;
}

std::int32_t JoinWave::NextUnreached(std::int32_t point) {
  std::int32_t end = point;
  while (next_[static_cast<std::size_t>(end)] != end) end = next_[static_cast<std::size_t>(end)];
  while (point != end) {
    const std::int32_t behind = next_[static_cast<std::size_t>(point)];
    next_[static_cast<std::size_t>(point)] = end;
    point = behind;
  }
  return end;
}

std::int32_t JoinWave::Narrow(Wedge& wedge, std::int32_t origin, std::int32_t first, std::int32_t end) {
  if (end - first > shortRun) {
    if (!hulls_.IsBuilt()) hulls_.Build(codes_);
    return hulls_.Narrow(wedge, origin, first, end);
  }
  std::int32_t outermost = origin;
  if (first > origin) {
    for (std::int32_t p = first; p < end && !wedge.IsEmpty(); ++p) {
      wedge.Narrow(p - origin, GapOf(CodeAt(p)));
      outermost = p;
    }
  } else {
    for (std::int32_t p = end - 1; p >= first && !wedge.IsEmpty(); --p) {
      wedge.Narrow(origin - p, GapOf(CodeAt(p)));
      outermost = p;
    }
  }
  return outermost;
}

void JoinWave::Push(std::int32_t start, std::int32_t nearest, std::int32_t farthest) {
  Wedge wedge(CodeAt(start));
  std::int32_t done = start + 1; // the gaps before are in the wedge
  for (std::int32_t point = NextUnreached(std::max(start + 1, nearest)); point <= farthest;) {
    Narrow(wedge, start, done, point);
    // Unreached points mostly come in rows.
    for (; point <= farthest && !HasReached(point); ++point) {
      if (wedge.IsEmpty()) return;
      if (wedge.Admits(point - start, CodeAt(point))) SetReached(point, start);
      wedge.Narrow(point - start, GapOf(CodeAt(point)));
    }
    done = point;
    if (point > farthest || wedge.IsEmpty() || meeting_ >= 0) return;
    point = NextUnreached(point);
  }
}

void JoinWave::Pull(std::int32_t point, std::size_t layerEnd) {
  std::int32_t& nearestStart = starts_[static_cast<std::size_t>(point)];
  Wedge wedge(CodeAt(point));
  std::int32_t done = point; // the gaps from here to the point are in the wedge
  for (std::size_t i = layerEnd; i-- > 0;) {
    const std::int32_t start = layer_[i];
    if (start < nearestStart) return;
    const std::int32_t outermost = Narrow(wedge, point, start + 1, done);
    if (wedge.IsEmpty()) {
      nearestStart = std::max(nearestStart, outermost);
      return;
    }
    if (wedge.Admits(point - start, CodeAt(start))) {
      SetReached(point, start);
      return;
    }
    done = start + 1;
  }
}

void JoinWave::PullAll(std::int32_t nearest, std::int32_t farthest) {
  auto reach = reaches_.begin();
  std::size_t layerEnd = 0;
  for (std::int32_t point = NextUnreached(nearest); point <= farthest && meeting_ < 0;
       point = NextUnreached(point + 1)) {
    // From the last start whose reach was too short, and from those before it, nothing comes so far.
    while (reach->to < point) ++reach;
    std::int32_t& nearestStart = starts_[static_cast<std::size_t>(point)];
    if (reach != reaches_.begin()) nearestStart = std::max(nearestStart, std::prev(reach)->from + 1);
    while (layerEnd < layer_.size() && layer_[layerEnd] < point) ++layerEnd;
    if (layerEnd > 0 && layer_[layerEnd - 1] >= nearestStart) Pull(point, layerEnd);
  }
}

void JoinWave::Step(std::int32_t nearest, std::int32_t farthest, const JoinWave& other) {
  if (reaches_.empty()) TakeReachesFromBounds();
  other_ = &other;
  found_.clear();
  nearest = std::max(nearest, layer_.front() + 1);
  farthest = std::min(farthest, ReachOf(layer_.back()));
  const auto starts = static_cast<std::int64_t>(layer_.size());
  const std::int64_t length = ReachOf(layer_.back()) - layer_.back();
  if (starts * length <= pullCost * (farthest - nearest + 1) || starts == 1) {
    // From the points nearest to the end, which go farthest: what they reach the others need not try.
    auto reach = reaches_.end();
    for (auto start = layer_.rbegin(); start != layer_.rend() && meeting_ < 0; ++start) {
      while (reach != reaches_.begin() && std::prev(reach)->from >= *start) --reach;
      Push(*start, nearest, std::min(farthest, reach->to));
    }
  } else {
    PullAll(nearest, farthest);
  }
  layer_.swap(found_);
  std::ranges::sort(layer_);
  if (!layer_.empty()) progress_ = std::max(progress_, layer_.back());
  other_ = nullptr;
}

} // namespace calder::wavelb
