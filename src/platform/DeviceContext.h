// Where a drawing goes: a picture's pixels, a printer, or a recorder in a test.
//
// Coordinates are device pixels, x to the right and y down, (0, 0) the top left pixel. Drawing outside the surface is
// cut off, never an error. A context keeps one pen (colour and width) and one draw mode.
#pragma once

#include <cstdint>
#include <span>

namespace calder {

// 0xRRGGBB.
using Color = std::uint32_t;

enum class DrawMode {
  CopyPen, // the pen's colour replaces the pixel
  Invert,  // the pixel becomes its complement (the pen's colour is not used), so drawing twice restores it
};

struct DevicePoint {
  double x = 0;
  double y = 0;
};

class DeviceContext {
public:
  virtual ~DeviceContext() = default;

  [[nodiscard]] virtual int Width() const = 0;
  [[nodiscard]] virtual int Height() const = 0;
  // Device pixels per logical pixel (1 on an ordinary screen): pens, dots and flags are this much larger.
  [[nodiscard]] virtual double Scale() const = 0;

  // width in device pixels, at least 1.
  virtual void SetPen(Color color, int width = 1) = 0;
  virtual void SetDrawMode(DrawMode mode) = 0;
  [[nodiscard]] virtual DrawMode GetDrawMode() const = 0;

  // Both ends are drawn.
  virtual void Line(int x1, int y1, int x2, int y2) = 0;
  // The outline of the rectangle whose corner pixels are given.
  virtual void Rectangle(int left, int top, int right, int bottom) = 0;
  virtual void FillRectangle(int left, int top, int width, int height, Color color) = 0;
  // Straight joins through all points, with a filled square of `dot` device pixels on each when dot > 0.
  virtual void Polyline(std::span<const DevicePoint> points, int dot) = 0;

  // The bulk of a dense waveform: column i stands at x + i and covers the rows tops[i] to bottoms[i], both included;
  // tops[i] > bottoms[i] is an empty column. Both spans have the same length.
  virtual void Columns(int x, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) = 0;

  // Rows top to bottom, excluded, all alike: column i of each is colors[i]. Whatever the draw mode. Where nobody does
  // better, a rectangle for each run of one colour.
  virtual void Rows(int top, int bottom, std::span<const Color> colors);
};

} // namespace calder
