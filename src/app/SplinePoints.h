// The control points of the Interpolate dialog. They live as long as the program; table files read and write them.
//
// 1. X ascends strictly, from 0 at the first point to the memory size at the last one.
// 2. The first and the last point have the same Y: the waveform is periodic.
// An empty list is allowed until the dialog opens.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace calder {

struct SplinePoint {
  double x = 0; // points
  double y = 0; // code
};

class SplinePoints {
public:
  static constexpr int kRoom = 10004;
  static constexpr int kMost = 10001; // as many as the grid has rows

  std::array<double, kRoom> SplineX{};
  std::array<double, kRoom> SplineY{};
  std::int16_t SplineCount = 0;

  [[nodiscard]] std::span<const double> Xs() const { return {SplineX.data(), static_cast<std::size_t>(SplineCount)}; }
  [[nodiscard]] std::span<const double> Ys() const { return {SplineY.data(), static_cast<std::size_t>(SplineCount)}; }
  // 0 <= i < kRoom
  [[nodiscard]] SplinePoint At(int i) const {
    return {SplineX[static_cast<std::size_t>(i)], SplineY[static_cast<std::size_t>(i)]};
  }
  void Set(int i, const SplinePoint& point) {
    SplineX[static_cast<std::size_t>(i)] = point.x;
    SplineY[static_cast<std::size_t>(i)] = point.y;
  }
  // The index of the point with exactly that X.
  [[nodiscard]] std::optional<int> Find(double x) const;
  [[nodiscard]] bool HasBothEnds(double memorySize) const;

  void Clear() { SplineCount = 0; }
  // (0, 0), (memorySize / 2, 0), (memorySize, 0).
  void InitSplineData(double memorySize);
  // Points at or beyond the end go, and the closing point at the end gets the Y of the first one. Nothing for an empty
  // list.
  void Close(double memorySize);
  // Inserts the point in its place; one on the same X gets its Y. False: there are kMost already.
  [[nodiscard]] bool Insert(const SplinePoint& point);
  void Remove(int index);
  // The list becomes these points, in any order, and is closed at both ends: of points on one X the last counts, a list
  // that does not begin at 0 gets a point there with the first point's Y, and the end takes the first point's Y.
  // Returns how many of the points were taken: the first ones, up to the limit.
  std::size_t Replace(std::span<const SplinePoint> points, double memorySize);
};

} // namespace calder
