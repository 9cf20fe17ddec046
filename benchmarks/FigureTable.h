// Prints figures of the program beside peers that do the bare minimum, with the limit of their ratio.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace calder {

// The work and its peer take turns, so that both meet the same machine; each counts at its best time.
class FigureTable {
public:
  FigureTable() { std::printf("%-58s %10s %10s %7s %6s\n", "figure", "ours us", "peer us", "ratio", "limit"); }

  // Gives the ratio.
  double Row(const char* figure, double limit, int rounds, auto&& ours, auto&& peer) {
    double oursTime = 1e18;
    double peerTime = 1e18;
    for (int i = 0; i < rounds; ++i) {
      oursTime = std::min(oursTime, Microseconds(ours));
      peerTime = std::min(peerTime, Microseconds(peer));
    }
    return RatioRow(figure, limit, oursTime, peerTime);
  }

  // Two times that are known already. Gives the ratio.
  double RatioRow(const char* figure, double limit, double oursTime, double peerTime) {
    const double ratio = oursTime / peerTime;
    std::printf("%-58s %10.1f %10.1f %7.2f %6.2f %s\n", figure, oursTime, peerTime, ratio, limit,
                Verdict(ratio, limit));
    return ratio;
  }

  // A figure with a limit in microseconds instead of a peer.
  void TimeRow(const char* figure, double limit, int rounds, auto&& ours) {
    const double time = BestTime(rounds, ours);
    std::printf("%-58s %10.1f %10s %7s %6.0f %s\n", figure, time, "-", "-", limit, Verdict(time, limit));
  }

  // A ratio that is known already.
  void LimitRow(const char* figure, double limit, double ratio) {
    std::printf("%-58s %10s %10s %7.2f %6.2f %s\n", figure, "-", "-", ratio, limit, Verdict(ratio, limit));
  }

  [[nodiscard]] static double BestTime(int rounds, auto&& ours) {
    double time = 1e18;
    for (int i = 0; i < rounds; ++i) time = std::min(time, Microseconds(ours));
    return time;
  }

  [[nodiscard]] bool IsOver() const { return isOver_; }

private:
  static double Microseconds(auto&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
  }
  const char* Verdict(double value, double limit) {
    isOver_ = isOver_ || value > limit;
    return value > limit ? "OVER" : "ok";
  }

  bool isOver_ = false;
};

} // namespace calder
