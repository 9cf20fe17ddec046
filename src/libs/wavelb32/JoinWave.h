// The points of a stretch that a number of valid joins reach from its first point, step by step. Inside the library
// only; JoinSearch.h says what a valid join is.
#pragma once

#include "libs/wavelb32/GapHulls.h"
#include "libs/wavelb32/LineStabber.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace calder::wavelb {

class JoinWave {
public:
  // REQUIRES: at least two codes; they stay where they are while the object is used for them.
  void SetCodes(std::span<const std::int16_t> codes);

  // No solution is farther than farthest(d) after d joins: the longest lines that need not pass through the codes at
  // their ends. The number of joins after which the last point can be reached at the soonest, or maximum + 1 when that
  // is exceeded. REQUIRES: called before all that follows, with a maximum that is not exceeded.
  [[nodiscard]] std::int32_t LeastJoins(std::int32_t maximum);
  [[nodiscard]] std::int32_t Farthest(std::int32_t joins) const;

  // Whether SetCodes and LeastJoins were last called for these very codes.
  [[nodiscard]] bool IsFor(std::span<const std::int16_t> codes) const {
    return codes.data() == codes_.data() && codes.size() == codes_.size() && farthest_.back() == Last();
  }

  // Spends time on closer bounds, which pays when the search is wide.
  void RefineBounds();

  // Begins anew at the first point.
  void Start();
  // One join more: from the points of the last step to the points from nearest to farthest that no step has reached.
  // Stops at the first of them that the wave from the other end has reached too (other runs over the reversed codes).
  void Step(std::int32_t nearest, std::int32_t farthest, const JoinWave& other);

  // How much of the stretch lies behind the wave, in points.
  [[nodiscard]] std::int32_t Progress() const { return progress_; }
  // The points of the last step, ascending.
  [[nodiscard]] std::span<const std::int32_t> Layer() const { return layer_; }
  // The point at which the waves have met, counted from this end; -1 when they have not.
  [[nodiscard]] std::int32_t Meeting() const { return meeting_; }
  [[nodiscard]] bool HasReached(std::int32_t point) const {
    return from_[static_cast<std::size_t>(point)] != notReached;
  }
  // The point from which the point was reached; the first point gives itself.
  [[nodiscard]] std::int32_t From(std::int32_t point) const { return from_[static_cast<std::size_t>(point)]; }

private:
  // How far a line that starts at or before `from` can go at the most. Both ascend.
  struct Reach {
    std::int32_t from;
    std::int32_t to;
  };
  static constexpr std::int32_t notReached = -1;

  [[nodiscard]] std::int32_t FarthestFrom(std::int32_t start);
  void TakeReachesFromBounds();
  [[nodiscard]] std::int32_t ReachOf(std::int32_t start) const;
  void Push(std::int32_t start, std::int32_t nearest, std::int32_t farthest);
  void PullAll(std::int32_t nearest, std::int32_t farthest);
  // From the points of the layer before layerEnd, the last one first.
  void Pull(std::int32_t point, std::size_t layerEnd);
  // As GapHulls::Narrow.
  std::int32_t Narrow(Wedge& wedge, std::int32_t origin, std::int32_t first, std::int32_t end);
  void SetReached(std::int32_t point, std::int32_t from);
  // The first point at or behind `point` that is not reached; the number of points when there is none.
  [[nodiscard]] std::int32_t NextUnreached(std::int32_t point);
  [[nodiscard]] std::int32_t Last() const { return static_cast<std::int32_t>(codes_.size()) - 1; }
  [[nodiscard]] std::int64_t CodeAt(std::int32_t point) const { return codes_[static_cast<std::size_t>(point)]; }

  std::span<const std::int16_t> codes_;
  LineStabber stabber_;
  GapHulls hulls_;
  std::vector<std::int32_t> farthest_{-1}; // by joins
  std::vector<Reach> reaches_;
  std::vector<std::int32_t> from_;   // by point
  std::vector<std::int32_t> next_;   // by point: a point at or behind it, all before which are reached
  std::vector<std::int32_t> starts_; // by point: no valid join to it starts before that, as far as is known
  std::vector<std::int32_t> layer_;
  std::vector<std::int32_t> found_; // what the current step has reached
  const JoinWave* other_ = nullptr; // during a step
  std::int32_t meeting_ = -1;
  std::int32_t progress_ = 0;
};

} // namespace calder::wavelb
