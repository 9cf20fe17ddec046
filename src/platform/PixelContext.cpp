#include "platform/PixelContext.h"

#include "platform/PixelColumns.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace calder {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr std::uint32_t kInvertMask = 0x00FFFFFF;
// Coordinates are limited to this magnitude: products of two of their differences then fit 64 bits.
constexpr std::int64_t kCoordinateLimit = std::int64_t{1} << 29;
constexpr int kPenWidthLimit = 1024;

std::int64_t LimitCoordinate(double value) {
  if (!(value > static_cast<double>(-kCoordinateLimit))) return -kCoordinateLimit; // a NaN too
  if (value > static_cast<double>(kCoordinateLimit)) return kCoordinateLimit;
  return std::llround(value);
}

std::int64_t LimitCoordinate(int value) {
  return std::clamp<std::int64_t>(value, -kCoordinateLimit, kCoordinateLimit);
}

// numerator / denominator rounded to the nearest, halves up. REQUIRES: denominator > 0.
std::int64_t RoundedQuotient(std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t doubled = 2 * numerator + denominator;
  const std::int64_t quotient = doubled / (2 * denominator);
  return doubled % (2 * denominator) < 0 ? quotient - 1 : quotient;
}

CALDER_VECTOR void FillRun(std::uint32_t* pixels, std::size_t count, std::uint32_t color) {
  for (std::size_t i = 0; i < count; ++i) pixels[i] = color;
}

CALDER_VECTOR void OpaqueRow(std::uint32_t* pixels, const Color* colors, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) pixels[i] = colors[i] | kOpaque;
}

std::uint32_t OpaqueOf(Color color) {
  return kOpaque | (color & kInvertMask);
}

} // namespace

struct PixelContext::Segment {
  std::int64_t x1;
  std::int64_t y1;
  std::int64_t x2;
  std::int64_t y2;
};

PixelContext::PixelContext(std::span<std::uint32_t> pixels, std::size_t stride, int width, int height, double scale)
    : pixels_(pixels), stride_(stride), scale_(scale >= 1 && scale <= 64 ? scale : 1) {
  if (width < 1 || height < 1 || stride < static_cast<std::size_t>(width)) return;
  const std::size_t rowsBefore = static_cast<std::size_t>(height) - 1;
  if (pixels.size() < static_cast<std::size_t>(width)) return;
  if (rowsBefore > (pixels.size() - static_cast<std::size_t>(width)) / stride) return;
  width_ = width;
  height_ = height;
}

void PixelContext::SetPen(Color color, int width) {
  pen_ = OpaqueOf(color);
  penWidth_ = std::clamp(width, 1, kPenWidthLimit);
}

void PixelContext::Paint(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom) {
  const auto firstColumn = std::max<std::int64_t>(left, 0);
  const auto lastColumn = std::min<std::int64_t>(right, width_ - 1);
  const auto lastRow = std::min<std::int64_t>(bottom, height_ - 1);
  if (firstColumn > lastColumn) return;
  for (std::int64_t y = std::max<std::int64_t>(top, 0); y <= lastRow; ++y) {
    const std::span<std::uint32_t> run(Row(static_cast<int>(y)) + firstColumn,
                                       static_cast<std::size_t>(lastColumn - firstColumn + 1));
    if (mode_ == DrawMode::CopyPen) {
      FillRun(run.data(), run.size(), pen_);
    } else {
      for (std::uint32_t& pixel : run) pixel ^= kInvertMask;
    }
  }
}

void PixelContext::DrawSegment(const Segment& segment, bool skipFirst) {
  const std::int64_t before = (penWidth_ - 1) / 2;
  const std::int64_t after = penWidth_ - 1 - before;
  const std::int64_t dx = segment.x2 - segment.x1;
  const std::int64_t dy = segment.y2 - segment.y1;
  const bool isFlat = std::abs(dx) >= std::abs(dy);
  const std::int64_t length = isFlat ? std::abs(dx) : std::abs(dy);
  const std::int64_t start = isFlat ? segment.x1 : segment.y1;
  const std::int64_t step = (isFlat ? dx : dy) < 0 ? -1 : 1;
  const std::int64_t across = isFlat ? segment.y1 : segment.x1;
  const std::int64_t acrossDelta = isFlat ? dy : dx;
  const std::int64_t limit = isFlat ? width_ : height_;

  // Only the steps that fall on the surface.
  std::int64_t first = step > 0 ? -start : start - (limit - 1);
  std::int64_t last = step > 0 ? limit - 1 - start : start;
  first = std::max<std::int64_t>(first, skipFirst ? 1 : 0);
  last = std::min(last, length);
  if (acrossDelta == 0 && first <= last) {
    const std::int64_t a = start + step * first;
    const std::int64_t b = start + step * last;
    if (isFlat)
      Paint(std::min(a, b), across - before, std::max(a, b), across + after);
    else
      Paint(across - before, std::min(a, b), across + after, std::max(a, b));
    return;
  }
  for (std::int64_t i = first; i <= last; ++i) {
    const std::int64_t along = start + step * i;
    const std::int64_t middle = across + (length == 0 ? 0 : RoundedQuotient(acrossDelta * i, length));
    if (isFlat)
      Paint(along, middle - before, along, middle + after);
    else
      Paint(middle - before, along, middle + after, along);
  }
}

void PixelContext::Line(int x1, int y1, int x2, int y2) {
  DrawSegment({LimitCoordinate(x1), LimitCoordinate(y1), LimitCoordinate(x2), LimitCoordinate(y2)}, false);
}

void PixelContext::Rectangle(int left, int top, int right, int bottom) {
  const auto [x1, x2] = std::minmax(left, right);
  const auto [y1, y2] = std::minmax(top, bottom);
  const std::int64_t before = (penWidth_ - 1) / 2;
  const std::int64_t after = penWidth_ - 1 - before;
  const std::int64_t outerLeft = x1 - before;
  const std::int64_t innerLeft = x1 + after + 1;
  const std::int64_t innerRight = std::max<std::int64_t>(x2 - before, innerLeft) - 1;
  const std::int64_t outerRight = x2 + after;
  const std::int64_t innerTop = y1 + after + 1;
  const std::int64_t innerBottom = std::max<std::int64_t>(y2 - before, innerTop) - 1;
  // Four boxes that do not overlap, so that inverting works.
  Paint(outerLeft, y1 - before, outerRight, y1 + after);
  Paint(outerLeft, innerBottom + 1, outerRight, y2 + after);
  Paint(outerLeft, innerTop, innerLeft - 1, innerBottom);
  Paint(innerRight + 1, innerTop, outerRight, innerBottom);
}

void PixelContext::FillRectangle(int left, int top, int width, int height, Color color) {
  const std::uint32_t pen = pen_;
  const DrawMode mode = mode_;
  pen_ = OpaqueOf(color);
  mode_ = DrawMode::CopyPen;
  Paint(left, top, std::int64_t{left} + width - 1, std::int64_t{top} + height - 1);
  pen_ = pen;
  mode_ = mode;
}

void PixelContext::Polyline(std::span<const DevicePoint> points, int dot) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    const std::int64_t x = LimitCoordinate(points[i].x);
    const std::int64_t y = LimitCoordinate(points[i].y);
    if (i > 0)
      DrawSegment({LimitCoordinate(points[i - 1].x), LimitCoordinate(points[i - 1].y), x, y}, i > 1);
    else if (points.size() == 1)
      DrawSegment({x, y, x, y}, false);
  }
  if (dot <= 0) return;
  const std::int64_t size = std::min(dot, kPenWidthLimit);
  for (const DevicePoint& point : points) {
    const std::int64_t left = LimitCoordinate(point.x) - (size - 1) / 2;
    const std::int64_t top = LimitCoordinate(point.y) - (size - 1) / 2;
    Paint(left, top, left + size - 1, top + size - 1);
  }
}

void PixelContext::Columns(int x, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) {
  const std::int64_t end = std::min<std::int64_t>(std::int64_t{x} + static_cast<std::int64_t>(tops.size()), width_);
  const std::int64_t first = std::max(x, 0);
  if (first >= end || tops.size() != bottoms.size()) return;
  const auto offset = static_cast<std::size_t>(first - x);
  const auto count = static_cast<std::size_t>(end - first);
  const ColumnPaint paint{pixels_.data() + first, stride_, height_, pen_, mode_ == DrawMode::Invert ? kInvertMask : 0};
  PaintColumns(paint, tops.subspan(offset, count), bottoms.subspan(offset, count));
}

void PixelContext::Rows(int top, int bottom, std::span<const Color> colors) {
  const std::size_t count = std::min(colors.size(), static_cast<std::size_t>(width_));
  const int first = std::max(top, 0);
  const int last = std::min(bottom, height_);
  if (first >= last || count == 0) return;
  // A row of one colour is not read again for the next one.
  if (std::equal(colors.begin() + 1, colors.begin() + static_cast<std::ptrdiff_t>(count), colors.begin())) {
    for (int y = first; y < last; ++y) FillRun(Row(y), count, OpaqueOf(colors[0]));
    return;
  }
  OpaqueRow(Row(first), colors.data(), count);
  for (int y = first + 1; y < last; ++y) std::memcpy(Row(y), Row(first), count * sizeof(std::uint32_t));
}

void PixelContext::Clear(Color color) {
  FillRectangle(0, 0, width_, height_, color);
}

} // namespace calder
