// A DeviceContext on pixels in memory: an image of 32-bit pixels 0xAARRGGBB that somebody else owns. Drawing writes
// opaque pixels (alpha 0xFF); DrawMode::Invert complements red, green and blue and leaves the alpha.
//
// The pixels must stay valid while the object lives. Nothing outside of them is touched, whatever is drawn.
#pragma once

#include "platform/DeviceContext.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace calder {

class PixelContext final : public DeviceContext {
public:
  // Row y begins at pixels[y * stride]; stride, in pixels, is at least width. The surface is empty when that does not
  // hold or the pixels are fewer than it takes.
  PixelContext(std::span<std::uint32_t> pixels, std::size_t stride, int width, int height, double scale = 1);

  [[nodiscard]] int Width() const override { return width_; }
  [[nodiscard]] int Height() const override { return height_; }
  [[nodiscard]] double Scale() const override { return scale_; }

  void SetPen(Color color, int width = 1) override;
  void SetDrawMode(DrawMode mode) override { mode_ = mode; }
  [[nodiscard]] DrawMode GetDrawMode() const override { return mode_; }

  // A line of width w covers, at each step along its longer side, w pixels across.
  void Line(int x1, int y1, int x2, int y2) override;
  void Rectangle(int left, int top, int right, int bottom) override;
  // Always in its own colour, whatever the draw mode.
  void FillRectangle(int left, int top, int width, int height, Color color) override;
  void Polyline(std::span<const DevicePoint> points, int dot) override;
  // Every pixel is looked at once, row by row; what is wholly covered or wholly free is not compared.
  void Columns(int x, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) override;

  void Rows(int top, int bottom, std::span<const Color> colors) override;

  // The whole surface in one colour.
  void Clear(Color color);

private:
  struct Segment;

  [[nodiscard]] std::uint32_t* Row(int y) { return pixels_.data() + static_cast<std::size_t>(y) * stride_; }
  void DrawSegment(const Segment& segment, bool skipFirst);
  // The pixels of the box that lie on the surface, with the pen.
  void Paint(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom);

  std::span<std::uint32_t> pixels_;
  std::size_t stride_ = 0;
  int width_ = 0;
  int height_ = 0;
  double scale_ = 1;
  std::uint32_t pen_ = 0xFF000000;
  int penWidth_ = 1;
  DrawMode mode_ = DrawMode::CopyPen;
};

} // namespace calder
