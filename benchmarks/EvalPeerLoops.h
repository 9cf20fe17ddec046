// The hand-written loops, for vectors L of any width. Included by the file of each processor.
#pragma once

#include "EvalPeers.h"

#include <numbers>

namespace calder {

template <class L>
struct PeerLoops {
  using V = typename L::V;
  static constexpr double pi = std::numbers::pi;
  static V K(double value) { return L::Set(value); }

  static void Run(std::span<std::int16_t> codes, auto value) {
    const V step = K(1 / static_cast<double>(codes.size()));
    const V full = K(32767);
    V index = L::Ramp();
    std::int16_t* to = codes.data();
    for (std::int16_t* const end = to + codes.size(); to < end; to += 8) {
      V values[8 / L::width];
      for (V& v : values) {
        v = L::Max(L::Min(value(index * step) * full, full), -full);
        index = index + K(L::width);
      }
      L::StoreCodes(to, values);
    }
  }
  static void DampedSine(std::span<std::int16_t> codes) {
    Run(codes, [](V x) { return L::Sin(x * K(2 * pi * 5)) * L::Exp(x * K(-3)); });
  }
  static void Cubic(std::span<std::int16_t> codes) {
    Run(codes, [](V x) { return L::Fma(L::Fma(L::Fma(K(1.3), x, K(-1.9)), x, K(0.7)), x, K(0.1)); });
  }
  static void FourSines(std::span<std::int16_t> codes) {
    Run(codes, [](V x) {
      const V sum = L::Sin(x * K(2 * pi)) + L::Sin(x * K(6 * pi)) * K(1.0 / 3) + L::Sin(x * K(10 * pi)) * K(1.0 / 5) +
                    L::Sin(x * K(14 * pi)) * K(1.0 / 7);
      return sum * K(0.9);
    });
  }
  static void Saw(std::span<std::int16_t> codes) {
    Run(codes, [](V x) {
      const V turns = x * K(5);
      const V saw = (turns - L::Floor(turns + K(0.5))) * K(2);
      return L::Max(L::Min(L::Abs(saw), K(0.8)), L::Floor(saw * K(3)) * K(0.25));
    });
  }
  static void RootAndLogarithm(std::span<std::int16_t> codes) {
    Run(codes, [](V x) { return L::Sqrt(L::Abs(x - K(0.5))) * L::Log(L::Fma(x, K(9), K(1))) * K(0.5); });
  }
  static PeerLoop At(std::size_t expression) {
    constexpr PeerLoop loops[peerCount] = {&DampedSine, &Cubic, &FourSines, &Saw, &RootAndLogarithm};
    return loops[expression];
  }
};

} // namespace calder
