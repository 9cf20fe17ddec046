#include "WavePeers.h"

#include <cmath>

namespace calder {

void PeerLinearWalk(std::span<const std::int16_t> curve, std::span<std::int16_t> result) {
  const double step = static_cast<double>(curve.size()) / static_cast<double>(result.size());
  for (std::size_t i = 0; i < result.size(); ++i) {
    const double place = static_cast<double>(i) * step;
    const auto left = static_cast<std::size_t>(place);
    const std::size_t right = left + 1 < curve.size() ? left + 1 : left;
    const double rest = place - static_cast<double>(left);
    result[i] = static_cast<std::int16_t>(std::lrint(curve[left] + (curve[right] - curve[left]) * rest));
  }
}

} // namespace calder
