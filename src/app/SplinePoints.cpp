#include "app/SplinePoints.h"

#include <algorithm>
#include <vector>

namespace calder {

std::optional<int> SplinePoints::Find(double x) const {
  const std::span<const double> xs = Xs();
  const auto found = std::ranges::lower_bound(xs, x);
  if (found == xs.end() || *found != x) return std::nullopt;
  return static_cast<int>(found - xs.begin());
}

bool SplinePoints::HasBothEnds(double memorySize) const {
  return SplineCount > 1 && SplineX[0] == 0 && Xs().back() == memorySize;
}

void SplinePoints::InitSplineData(double memorySize) {
  SplineCount = 3;
  Set(0, {0, 0});
  Set(1, {memorySize / 2, 0});
  Set(2, {memorySize, 0});
}

void SplinePoints::Close(double memorySize) {
  if (SplineCount == 0) return;
  while (SplineCount > 1 && Xs().back() >= memorySize) --SplineCount;
  SplineCount = std::min<std::int16_t>(SplineCount, kMost - 1);
  Set(SplineCount++, {memorySize, SplineY[0]});
}

bool SplinePoints::Insert(const SplinePoint& point) {
  if (const std::optional<int> same = Find(point.x)) {
    SplineY[static_cast<std::size_t>(*same)] = point.y;
    return true;
  }
  if (SplineCount >= kMost) return false;
  const auto at = static_cast<std::size_t>(std::ranges::upper_bound(Xs(), point.x) - Xs().begin());
  const auto count = static_cast<std::size_t>(SplineCount);
  std::copy_backward(&SplineX[at], &SplineX[count], &SplineX[count + 1]);
  std::copy_backward(&SplineY[at], &SplineY[count], &SplineY[count + 1]);
  Set(static_cast<int>(at), point);
  ++SplineCount;
  return true;
}

void SplinePoints::Remove(int index) {
  const auto at = static_cast<std::size_t>(index);
  const auto count = static_cast<std::size_t>(SplineCount);
  std::copy(&SplineX[at + 1], &SplineX[count], &SplineX[at]);
  std::copy(&SplineY[at + 1], &SplineY[count], &SplineY[at]);
  --SplineCount;
}

std::size_t SplinePoints::Replace(std::span<const SplinePoint> points, double memorySize) {
  Clear();
  // Both ends may have to be added.
  constexpr std::size_t kTaken = kMost - 2;
  std::vector<SplinePoint> sorted;
  std::size_t taken = 0;
  for (; taken < points.size() && taken < kTaken; ++taken) sorted.push_back(points[taken]);
  std::ranges::stable_sort(sorted, {}, &SplinePoint::x);
  const auto add = [this](const SplinePoint& point) {
    if (SplineCount > 0 && Xs().back() == point.x) --SplineCount;
    Set(SplineCount++, point);
  };
  for (const SplinePoint& point : sorted) add(point);
  if (SplineCount == 0) return 0;
  const double first = SplineY[0];
  if (SplineX[0] > 0) static_cast<void>(Insert({0, first}));
  Close(memorySize);
  return taken;
}

} // namespace calder
