// Drawing as shapes instead of pixels, for paper and picture files: a dense waveform becomes outlines of its columns,
// not one line a point, so its size depends on the picture's width alone.
#pragma once

#include "platform/DeviceContext.h"

#include <QPainter>

namespace calder {

class VectorContext final : public DeviceContext {
public:
  // Draws with that painter into the rectangle of that size at its origin; what is outside is cut off. The painter's
  // state is restored at the end. shown: false: nothing is drawn at all.
  VectorContext(QPainter& painter, int width, int height, double scale, bool shown = true);
  ~VectorContext() override;
  VectorContext(const VectorContext&) = delete;
  VectorContext& operator=(const VectorContext&) = delete;

  [[nodiscard]] int Width() const override { return width_; }
  [[nodiscard]] int Height() const override { return height_; }
  [[nodiscard]] double Scale() const override { return scale_; }

  void SetPen(Color color, int width) override;
  // Shapes cannot be inverted: only CopyPen draws.
  void SetDrawMode(DrawMode mode) override { mode_ = mode; }
  [[nodiscard]] DrawMode GetDrawMode() const override { return mode_; }
  void Line(int x1, int y1, int x2, int y2) override;
  void Rectangle(int left, int top, int right, int bottom) override;
  void FillRectangle(int left, int top, int width, int height, Color color) override;
  void Polyline(std::span<const DevicePoint> points, int dot) override;
  void Columns(int x, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) override;

private:
  QPainter& painter_;
  const int width_;
  const int height_;
  const double scale_;
  const bool shown_;
  DrawMode mode_ = DrawMode::CopyPen;
  QColor color_ = Qt::black;
};

} // namespace calder
