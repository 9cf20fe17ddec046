#include "EvalPeers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace calder {

namespace {

constexpr double pi = std::numbers::pi;

void Run(std::span<std::int16_t> codes, auto value) {
  const double step = 1 / static_cast<double>(codes.size());
  double index = 0;
  for (std::int16_t& code : codes) {
    code = static_cast<std::int16_t>(std::lrint(std::clamp(value(index * step) * 32767, -32767.0, 32767.0)));
    ++index;
  }
}
void DampedSine(std::span<std::int16_t> codes) {
  Run(codes, [](double x) { return std::sin(2 * pi * 5 * x) * std::exp(-3 * x); });
}
void Cubic(std::span<std::int16_t> codes) {
  Run(codes, [](double x) { return 0.1 + x * 0.7 - 1.9 * (x * x) + 1.3 * (x * x * x); });
}
void FourSines(std::span<std::int16_t> codes) {
  Run(codes, [](double x) {
    return (std::sin(2 * pi * x) + std::sin(6 * pi * x) / 3 + std::sin(10 * pi * x) / 5 + std::sin(14 * pi * x) / 7) *
           0.9;
  });
}
void Saw(std::span<std::int16_t> codes) {
  Run(codes, [](double x) {
    const double saw = 2 * (5 * x - std::floor(5 * x + 0.5));
    return std::max(std::min(std::abs(saw), 0.8), std::floor(3 * saw) / 4);
  });
}
void RootAndLogarithm(std::span<std::int16_t> codes) {
  Run(codes, [](double x) { return std::sqrt(std::abs(x - 0.5)) * std::log(1 + 9 * x) * 0.5; });
}

} // namespace

PeerLoop PlainPeer(std::size_t expression) {
  constexpr PeerLoop loops[peerCount] = {&DampedSine, &Cubic, &FourSines, &Saw, &RootAndLogarithm};
  return loops[expression];
}

} // namespace calder
