#include "libs/wavelb32/StretchSolver.h"

#include <algorithm>

namespace calder::wavelb {

std::int32_t StretchSolver::LeastJoins(std::span<const std::int16_t> codes, std::int32_t maximum) {
  fromStart_.SetCodes(codes);
  return fromStart_.LeastJoins(maximum);
}

bool StretchSolver::SolveWithin(std::int32_t joins, std::vector<std::int32_t>& between) {
  fromStart_.Start();
  fromEnd_.Start();
  const auto last = static_cast<std::int32_t>(reversed_.size()) - 1;
  std::int32_t done = 0; // joins from both ends together
  std::int32_t doneFromStart = 0;
  while (done < joins && !fromStart_.Layer().empty() && !fromEnd_.Layer().empty()) {
    const bool isStart = fromStart_.Layer().size() <= fromEnd_.Layer().size();
    JoinWave& wave = isStart ? fromStart_ : fromEnd_;
    const JoinWave& other = isStart ? fromEnd_ : fromStart_;
    doneFromStart += isStart ? 1 : 0;
    ++done;
    const std::int32_t depth = isStart ? doneFromStart : done - doneFromStart;
    wave.Step(last - other.Farthest(joins - depth), wave.Farthest(depth), other);
    if (wave.Meeting() < 0) continue;
    const std::int32_t meeting = isStart ? wave.Meeting() : last - wave.Meeting();
    for (std::int32_t p = meeting; p > 0; p = fromStart_.From(p)) between.push_back(p);
    for (std::int32_t p = fromEnd_.From(last - meeting); p > 0; p = fromEnd_.From(p)) between.push_back(last - p);
    std::erase(between, last);
    return true;
  }
  return false;
}

bool StretchSolver::Solve(std::span<const std::int16_t> codes, std::int32_t leastJoins, std::int32_t maximum,
                          std::vector<std::int32_t>& between) {
  between.clear();
  reversed_.assign(codes.rbegin(), codes.rend());
  if (!fromStart_.IsFor(codes) && LeastJoins(codes, maximum) > maximum) return false;
  fromEnd_.SetCodes(reversed_);
  if (fromEnd_.LeastJoins(maximum) > maximum) return false;
  // Where few joins are needed the bounds cut off little, and a limit that is too low is a search for nothing.
  constexpr std::int32_t fewJoins = 4;
  std::int32_t slack = leastJoins <= fewJoins ? 4 * fewJoins : 0;
  bool isRefined = false;
  for (;;) {
    if (slack > 0 && !isRefined) {
      fromStart_.RefineBounds();
      fromEnd_.RefineBounds();
      isRefined = true;
    }
    const std::int32_t joins = std::min(leastJoins + slack, maximum);
    if (SolveWithin(joins, between)) return true;
    if (joins == maximum) return false;
    // The part of the way on which the slack was used up tells how much the whole way may need.
    const double way = static_cast<double>(fromStart_.Progress()) + fromEnd_.Progress();
    const double needed = slack * std::min(static_cast<double>(codes.size()) / std::max(way, 1.0), 1e3) * 1.125;
    slack = std::max({1, 2 * slack, static_cast<std::int32_t>(needed)});
  }
}

} // namespace calder::wavelb
