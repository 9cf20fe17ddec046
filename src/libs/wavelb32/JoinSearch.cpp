#include "libs/wavelb32/JoinSearch.h"

#include "libs/wavelb32/JoinLoops.h"

#include <algorithm>
#include <array>

namespace calder::wavelb {

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

std::optional<std::vector<std::int32_t>> JoinSearch::Find(std::size_t limit) {
  if (!CutAtBends(limit)) return std::nullopt;
  // How many control points there may be beside the bends.
  auto spare = static_cast<std::int32_t>(limit - bends_.size());
  std::vector<std::int32_t> positions(1, 0);
  std::vector<std::int32_t> between;
  for (std::size_t i = 1; i < bends_.size(); ++i) {
    const std::int32_t first = bends_[i - 1];
    const std::int32_t last = bends_[i];
    if (last - first > 1 && !RoundsToCodes(Part(first, last))) {
      if (!solver_.Solve(Part(first, last), spare + 1, between)) return std::nullopt;
      spare -= static_cast<std::int32_t>(between.size());
      for (const std::int32_t point : between) positions.push_back(first + point);
    }
    positions.push_back(last);
  }
  return positions;
}

} // namespace calder::wavelb
