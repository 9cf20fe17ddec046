#include "libs/spline32/Request.h"

#include "libs/wavelb32/wavelb32.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <cmath>

namespace calder::spline {
namespace {

// Beyond these magnitudes nothing means a position or a code any more.
constexpr double kPositionLimit = 1e12;
constexpr double kValueLimit = 1e12;

bool AreControlPoints(std::span<const double> x, std::span<const double> y) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (!(std::abs(x[i]) <= kPositionLimit && std::abs(y[i]) <= kValueLimit)) return false;
    if (i > 0 && x[i] < x[i - 1]) return false;
  }
  return true;
}

} // namespace

Request::Request(std::int32_t handle, double rangeStart, double rangeEnd, const double* x, const double* y,
                 std::int32_t count, std::int32_t memorySize, std::int32_t codeLimit)
    : limit(codeLimit) {
  const std::span<std::int16_t> all = W_Lock(handle);
  if (all.empty()) {
    status = W_BAD_HANDLE;
  } else if (memorySize < 1 || static_cast<std::size_t>(memorySize) > all.size() ||
             !(rangeStart >= 0 && rangeStart <= rangeEnd && rangeEnd <= memorySize)) {
    status = W_BAD_RANGE;
  } else if (count < 1 || x == nullptr || y == nullptr || limit < 0 || limit > W_CODE_MAX) {
    status = W_BAD_VALUE;
  } else {
    codes = all.first(static_cast<std::size_t>(memorySize));
    xs = {x, static_cast<std::size_t>(count)};
    ys = {y, static_cast<std::size_t>(count)};
    if (!AreControlPoints(xs, ys)) status = W_BAD_VALUE;
    // Start and length are rounded up, as everywhere in the waveform library.
    first = static_cast<std::int64_t>(WholePoint(rangeStart));
    end = std::min<std::int64_t>(first + static_cast<std::int64_t>(WholePoint(rangeEnd - rangeStart)), memorySize);
    end = std::max(first, end);
  }
}

std::int64_t Request::PointFrom(double position) const {
  const auto whole = static_cast<std::int64_t>(position); // within 1e12
  return std::clamp(whole + (static_cast<double>(whole) < position ? 1 : 0), first, end);
}

void Request::Hold(std::int64_t from, std::int64_t to, double value) const {
  if (from >= to) return;
  std::ranges::fill(Points(from, to), static_cast<std::int16_t>(std::rint(std::clamp<double>(value, -limit, limit))));
}

} // namespace calder::spline
