#include "libs/spline32/spline32.h"
#include "libs/wavelb32/ExactLine.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace calder {

namespace {

struct ControlPoint {
  double x;
  double y;
};

// Beyond these magnitudes nothing means a position or a code any more.
constexpr double positionLimit = 1e12;
constexpr double valueLimit = 1e12;
// Whole numbers up to here keep the exact line within 62 bits.
constexpr double exactLimit = 1 << 30;

bool AreControlPoints(std::span<const double> x, std::span<const double> y) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (!(std::abs(x[i]) <= positionLimit && std::abs(y[i]) <= valueLimit)) return false;
    if (i > 0 && x[i] < x[i - 1]) return false;
  }
  return true;
}

bool IsExact(double value) {
  return std::abs(value) <= exactLimit && std::floor(value) == value;
}

// The whole points first to last on the line from a to b.
class LineFiller {
public:
  LineFiller(std::span<std::int16_t> codes, std::int32_t limit) : codes_(codes), limit_(limit) {}

  void Hold(std::int64_t first, std::int64_t end, double value) {
    for (std::int64_t p = first; p < end; ++p) At(p) = Limited(std::rint(value));
  }

  void Join(std::int64_t first, std::int64_t end, const ControlPoint& a, const ControlPoint& b) {
    if (first >= end) return;
    if (IsExact(a.x) && IsExact(a.y) && IsExact(b.x) && IsExact(b.y)) {
      const auto left = static_cast<std::int64_t>(a.x);
      wavelb::ExactLine line(static_cast<std::int64_t>(a.y), static_cast<std::int64_t>(b.y),
                             static_cast<std::int64_t>(b.x) - left, first - left);
      for (std::int64_t p = first; p < end; ++p, line.Step())
        At(p) = static_cast<std::int16_t>(std::clamp<std::int64_t>(line.Rounded(), -limit_, limit_));
      return;
    }
    for (std::int64_t p = first; p < end; ++p) {
      const double along = static_cast<double>(p) - a.x;
      At(p) = Limited(std::rint(a.y + (b.y - a.y) * along / (b.x - a.x)));
    }
  }

private:
  std::int16_t& At(std::int64_t p) { return codes_[static_cast<std::size_t>(p)]; }
  [[nodiscard]] std::int16_t Limited(double value) const {
    return static_cast<std::int16_t>(std::clamp<double>(value, -limit_, limit_));
  }

  std::span<std::int16_t> codes_;
  std::int32_t limit_;
};

} // namespace

std::int32_t Spline_Hokan_Line(WaveHandle handle, double rangeStart, double rangeEnd, const double* x, const double* y,
                               std::int32_t count, std::int32_t memorySize, std::int32_t limit) {
  const std::span<std::int16_t> all = W_Lock(handle);
  if (all.empty()) return W_BAD_HANDLE;
  if (memorySize < 1 || static_cast<std::size_t>(memorySize) > all.size()) return W_BAD_RANGE;
  if (!(rangeStart >= 0 && rangeStart <= rangeEnd && rangeEnd <= memorySize)) return W_BAD_RANGE;
  if (count < 1 || x == nullptr || y == nullptr || limit < 0 || limit > W_CODE_MAX) return W_BAD_VALUE;
  const std::span<const double> xs(x, static_cast<std::size_t>(count));
  const std::span<const double> ys(y, static_cast<std::size_t>(count));
  if (!AreControlPoints(xs, ys)) return W_BAD_VALUE;

  // Start and length are rounded up, as everywhere in the waveform library.
  const auto first = static_cast<std::int64_t>(WholePoint(rangeStart));
  const auto end =
      std::min<std::int64_t>(first + static_cast<std::int64_t>(WholePoint(rangeEnd - rangeStart)), memorySize);
  // The first whole point at or behind a control point.
  const auto pointFrom = [&](double position) {
    return static_cast<std::int64_t>(
        std::clamp(std::ceil(position), static_cast<double>(first), static_cast<double>(std::max(first, end))));
  };
  LineFiller filler(all, limit);
  filler.Hold(first, pointFrom(xs.front()), ys.front());
  for (std::size_t i = 1; i < xs.size(); ++i)
    filler.Join(pointFrom(xs[i - 1]), pointFrom(xs[i]), {xs[i - 1], ys[i - 1]}, {xs[i], ys[i]});
  filler.Hold(pointFrom(xs.back()), end, ys.back());
  return W_SUCCESS;
}

} // namespace calder
