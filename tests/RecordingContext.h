// A DeviceContext that writes down what is drawn on it, one line of text a call.
#pragma once

#include "Testing.h"
#include "platform/DeviceContext.h"

namespace calder {

class RecordingContext final : public DeviceContext {
public:
  RecordingContext(int width, int height, double scale = 1) : width_(width), height_(height), scale_(scale) {}

  [[nodiscard]] int Width() const override { return width_; }
  [[nodiscard]] int Height() const override { return height_; }
  [[nodiscard]] double Scale() const override { return scale_; }

  void SetPen(Color color, int width) override { Record("pen", static_cast<int>(color), width); }
  void SetDrawMode(DrawMode mode) override {
    mode_ = mode;
    calls.emplace_back(mode == DrawMode::Invert ? "mode invert" : "mode copy");
  }
  [[nodiscard]] DrawMode GetDrawMode() const override { return mode_; }

  void Line(int x1, int y1, int x2, int y2) override { Record("line", x1, y1, x2, y2); }
  void Rectangle(int left, int top, int right, int bottom) override { Record("rectangle", left, top, right, bottom); }
  void FillRectangle(int left, int top, int width, int height, Color color) override {
    Record("fill", left, top, width, height, static_cast<int>(color));
  }
  void Polyline(std::span<const DevicePoint> points, int dot) override {
    std::string text = "polyline dot ";
    text.append(std::to_string(dot));
    for (const DevicePoint& point : points) {
      text.append(1, ' ').append(std::to_string(static_cast<int>(point.x)));
      text.append(1, ',').append(std::to_string(static_cast<int>(point.y)));
    }
    calls.push_back(std::move(text));
  }
  void Columns(int x, std::span<const std::int16_t> tops, std::span<const std::int16_t> bottoms) override {
    std::string text = "columns ";
    text.append(std::to_string(x));
    for (std::size_t i = 0; i < tops.size(); ++i) {
      text.append(1, ' ');
      if (tops[i] > bottoms[i])
        text.append(1, '-');
      else
        text.append(std::to_string(tops[i])).append("..").append(std::to_string(bottoms[i]));
    }
    calls.push_back(std::move(text));
  }

  std::vector<std::string> calls;

private:
  template <class... Numbers>
  void Record(std::string text, Numbers... numbers) {
    (text.append(1, ' ').append(std::to_string(numbers)), ...);
    calls.push_back(std::move(text));
  }

  int width_;
  int height_;
  double scale_;
  DrawMode mode_ = DrawMode::CopyPen;
};

} // namespace calder
