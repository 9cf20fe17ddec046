// A straight line between whole points with whole values, rounded to the nearest, halves to even, without an error: the
// one rounding that interpolation and control points share.
#pragma once

#include <cstdint>

namespace calder::wavelb {

// The line's value at whole steps from its left end, one after the other. The value is floor_ + rest_ / length_ with
// 0 <= rest_ < length_.
class ExactLine {
public:
  // The line from `from` to `to` over length steps, at first `step` steps from the left end.
  // REQUIRES: length >= 1; step * (to - from) fits 62 bits.
  ExactLine(std::int64_t from, std::int64_t to, std::int64_t length, std::int64_t step) : length_(length) {
    const auto [slopeFloor, slopeRest] = Divide(to - from, length);
    slopeFloor_ = slopeFloor;
    slopeRest_ = slopeRest;
    const auto [valueFloor, valueRest] = Divide((to - from) * step, length);
    floor_ = from + valueFloor;
    rest_ = valueRest;
  }

  [[nodiscard]] std::int64_t Rounded() const {
    const std::int64_t twice = 2 * rest_;
    const bool isUp = twice > length_ || (twice == length_ && floor_ % 2 != 0);
    return isUp ? floor_ + 1 : floor_;
  }

  void Step() {
    floor_ += slopeFloor_;
    rest_ += slopeRest_;
    if (rest_ >= length_) {
      rest_ -= length_;
      ++floor_;
    }
  }

private:
  struct Parts {
    std::int64_t floor;
    std::int64_t rest;
  };
  static Parts Divide(std::int64_t numerator, std::int64_t denominator) {
    const std::int64_t quotient = numerator / denominator;
    const std::int64_t rest = numerator % denominator;
    return rest < 0 ? Parts{quotient - 1, rest + denominator} : Parts{quotient, rest};
  }

  std::int64_t length_;
  std::int64_t slopeFloor_ = 0;
  std::int64_t slopeRest_ = 0;
  std::int64_t floor_ = 0;
  std::int64_t rest_ = 0;
};

} // namespace calder::wavelb
