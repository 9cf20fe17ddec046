// What the interpolations are called with, looked at once for all of them.
#pragma once

#include <cstdint>
#include <span>

namespace calder::spline {

struct Point {
  double x = 0;
  double y = 0;
};

// REQUIRES: status is W_SUCCESS before anything else is used.
struct Request {
  Request(std::int32_t handle, double rangeStart, double rangeEnd, const double* x, const double* y, std::int32_t count,
          std::int32_t memorySize, std::int32_t codeLimit);

  std::int32_t status = 0;
  std::span<std::int16_t> codes; // the waveform's points
  std::int64_t first = 0;        // whole points of the range
  std::int64_t end = 0;
  std::span<const double> xs;
  std::span<const double> ys;
  std::int32_t limit = 0;

  // The first whole point of the range at or after a position.
  [[nodiscard]] std::int64_t PointFrom(double position) const;
  [[nodiscard]] std::span<std::int16_t> Points(std::int64_t from, std::int64_t to) const {
    return codes.subspan(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
  }
  // All points from `from` to `to` get the value, rounded and limited.
  void Hold(std::int64_t from, std::int64_t to, double value) const;
};

} // namespace calder::spline
