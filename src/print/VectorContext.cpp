#include "print/VectorContext.h"

#include <QPolygonF>

#include <algorithm>
#include <cstddef>

namespace calder {

VectorContext::VectorContext(QPainter& painter, int width, int height, double scale, bool shown)
    : painter_(painter), width_(width), height_(height), scale_(scale), shown_(shown) {
  painter_.save();
  painter_.setClipRect(QRectF(0, 0, width, height));
  painter_.setRenderHint(QPainter::Antialiasing);
  SetPen(0, 1);
}

VectorContext::~VectorContext() {
  painter_.restore();
}

void VectorContext::SetPen(Color color, int width) {
  color_ = QColor::fromRgb(color);
  QPen pen(color_, std::max(1, width));
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::RoundJoin);
  painter_.setPen(pen);
}

void VectorContext::Line(int x1, int y1, int x2, int y2) {
  if (shown_ && mode_ == DrawMode::CopyPen) painter_.drawLine(QLineF(x1, y1, x2, y2));
}

void VectorContext::Rectangle(int left, int top, int right, int bottom) {
  if (!shown_ || mode_ != DrawMode::CopyPen) return;
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRect(QRectF(QPointF(left, top), QPointF(right, bottom)));
}

void VectorContext::FillRectangle(int left, int top, int width, int height, Color color) {
  if (shown_) painter_.fillRect(QRectF(left, top, width, height), QColor::fromRgb(color));
}

void VectorContext::Polyline(std::span<const DevicePoint> points, int dot) {
  if (!shown_ || mode_ != DrawMode::CopyPen) return;
  QPolygonF line;
  line.reserve(static_cast<qsizetype>(points.size()));
  for (const DevicePoint& point : points) line.append(QPointF(point.x, point.y));
  painter_.drawPolyline(line);
  if (dot <= 0) return;
  const double half = dot / 2.0;
  for (const QPointF& point : line) painter_.fillRect(QRectF(point.x() - half, point.y() - half, dot, dot), color_);
}

// One outline for every run of columns: along the upper edges to the right and along the lower ones back.
void VectorContext::Columns(int x, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) {
  if (!shown_ || mode_ != DrawMode::CopyPen) return;
  painter_.save();
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(color_);
  // Viewers draw a very long outline slowly.
  constexpr std::size_t kLongest = 512;
  QPolygonF outline;
  for (std::size_t begin = 0; begin < tops.size();) {
    if (tops[begin] > bottoms[begin]) {
      ++begin;
      continue;
    }
    std::size_t end = begin;
    while (end < tops.size() && end - begin < kLongest && tops[end] <= bottoms[end]) ++end;
    outline.clear();
    const auto add = [&](std::size_t from, std::size_t to, double row) {
      const QPointF start(x + static_cast<double>(from), row);
      const QPointF target(x + static_cast<double>(to), row);
      const qsizetype count = outline.size();
      if (count >= 2 && outline[count - 1] == start && outline[count - 2].y() == row) {
        outline[count - 1] = target; // the edge goes on
        return;
      }
      if (count == 0 || outline[count - 1] != start) outline.append(start);
      outline.append(target);
    };
    for (std::size_t c = begin; c < end; ++c) add(c, c + 1, tops[c]);
    for (std::size_t c = end; c-- > begin;) add(c + 1, c, bottoms[c] + 1);
    painter_.drawPolygon(outline, Qt::WindingFill);
    // Two outlines share a column: between edges that only touch, viewers show the ground.
    begin = end - begin == kLongest && end < tops.size() ? end - 1 : end;
  }
  painter_.restore();
}

} // namespace calder
