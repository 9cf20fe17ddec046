#include "libs/wavelb32/GapHulls.h"

#include <cstdlib>

namespace calder::wavelb {

namespace {

// Adds a point to a chain that began at `begin`; end(point) is its value, and the chain turns to the left when sign is
// 1, to the right when it is -1.
template <class End>
void Extend(std::vector<std::int32_t>& chain, std::size_t begin, std::int32_t point, std::int64_t sign, End end) {
  while (chain.size() >= begin + 2) {
    const std::int32_t a = chain[chain.size() - 2];
    const std::int32_t b = chain.back();
    const std::int64_t turn = (b - a) * (end(point) - end(a)) - (end(b) - end(a)) * (point - a);
    if (sign * turn > 0) break;
    chain.pop_back();
  }
  chain.push_back(point);
}

// The chain's point with the least steep slope when sign is 1, the steepest when it is -1. Slopes along a convex chain
// fall to it and rise behind it.
template <class SlopeTo>
Slope Tangent(std::span<const std::int32_t> chain, std::int64_t sign, SlopeTo slopeTo) {
  std::size_t low = 0;
  std::size_t high = chain.size() - 1;
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    const Slope here = slopeTo(chain[middle]);
    const Slope next = slopeTo(chain[middle + 1]);
    const bool isBetterAhead = sign > 0 ? IsSteeper(here, next) : IsSteeper(next, here);
    if (isBetterAhead)
      low = middle + 1;
    else
      high = middle;
  }
  return slopeTo(chain[low]);
}

std::span<const std::int32_t> Part(const std::vector<std::int32_t>& points, const std::vector<std::int32_t>& starts,
                                   std::int32_t block) {
  const auto first = static_cast<std::size_t>(starts[static_cast<std::size_t>(block)]);
  const auto end = static_cast<std::size_t>(starts[static_cast<std::size_t>(block) + 1]);
  return std::span(points).subspan(first, end - first);
}

} // namespace

void GapHulls::BuildLevel(std::int32_t blockSize) {
  const Level* below = levels_.empty() ? nullptr : &levels_.back();
  Level level;
  level.blockSize = blockSize;
  const auto blocks = static_cast<std::int32_t>(codes_.size()) / blockSize;
  level.upperStarts.assign(1, 0);
  level.lowerStarts.assign(1, 0);
  const auto upper = [this](std::int32_t point) { return Upper(point); };
  const auto lower = [this](std::int32_t point) { return Lower(point); };
  for (std::int32_t block = 0; block < blocks; ++block) {
    const std::size_t upperBegin = level.uppers.size();
    const std::size_t lowerBegin = level.lowers.size();
    for (std::int32_t part = block * fanOut; part < (block + 1) * fanOut; ++part) {
      if (below == nullptr) {
        Extend(level.uppers, upperBegin, part, 1, upper);
        Extend(level.lowers, lowerBegin, part, -1, lower);
        continue;
      }
      for (const std::int32_t point : Part(below->uppers, below->upperStarts, part))
        Extend(level.uppers, upperBegin, point, 1, upper);
      for (const std::int32_t point : Part(below->lowers, below->lowerStarts, part))
        Extend(level.lowers, lowerBegin, point, -1, lower);
    }
    level.upperStarts.push_back(static_cast<std::int32_t>(level.uppers.size()));
    level.lowerStarts.push_back(static_cast<std::int32_t>(level.lowers.size()));
  }
  levels_.push_back(std::move(level));
}

void GapHulls::Build(std::span<const std::int16_t> codes) {
  codes_ = codes;
  levels_.clear();
  const auto points = static_cast<std::int64_t>(codes.size());
  for (std::int64_t size = fanOut; size <= points || levels_.empty(); size *= fanOut)
    BuildLevel(static_cast<std::int32_t>(size));
}

void GapHulls::NarrowByPoint(Wedge& wedge, std::int32_t origin, std::int32_t point) const {
  wedge.Narrow(std::abs(point - origin), GapOf(codes_[static_cast<std::size_t>(point)]));
}

void GapHulls::NarrowByBlock(Wedge& wedge, std::int32_t origin, const Level& level, std::int32_t block) const {
  const auto toUpper = [&](std::int32_t point) { return wedge.SlopeTo(std::abs(point - origin), Upper(point)); };
  const auto toLower = [&](std::int32_t point) { return wedge.SlopeTo(std::abs(point - origin), Lower(point)); };
  const Slope high = Tangent(Part(level.uppers, level.upperStarts, block), 1, toUpper);
  const Slope low = Tangent(Part(level.lowers, level.lowerStarts, block), -1, toLower);
  wedge.Narrow(low, high);
}

std::int32_t GapHulls::Narrow(Wedge& wedge, std::int32_t origin, std::int32_t first, std::int32_t end) const {
  // In the largest whole blocks that fit.
  const bool isRight = first > origin;
  while (first < end && !wedge.IsEmpty()) {
    const std::int32_t border = isRight ? first : end;
    const Level* fit = nullptr;
    for (const Level& level : levels_) {
      if (border % level.blockSize != 0 || level.blockSize > end - first) break;
      fit = &level;
    }
    if (fit == nullptr) {
      NarrowByPoint(wedge, origin, isRight ? first : end - 1);
      isRight ? ++first : --end;
      continue;
    }
    NarrowByBlock(wedge, origin, *fit, (isRight ? border : border - fit->blockSize) / fit->blockSize);
    isRight ? first += fit->blockSize : end -= fit->blockSize;
  }
  return isRight ? first - 1 : end;
}

} // namespace calder::wavelb
