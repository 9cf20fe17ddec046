// Paper that writes down what is printed on it: "page x y text", and the picture's calls.
#pragma once

#include "RecordingContext.h"
#include "print/Paper.h"

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace calder {

class RecordingPaper final : public Paper {
public:
  RecordingPaper(double width, double height) : width_(width), height_(height) {}

  [[nodiscard]] double PrintableWidth() const override { return width_; }
  [[nodiscard]] double PrintableHeight() const override { return height_; }
  [[nodiscard]] double PixelsPerMillimetre() const override { return 10; }
  [[nodiscard]] double LineHeight() const override { return 4; }
  [[nodiscard]] double TextWidth(const std::string& text) const override { return static_cast<double>(text.size()); }
  void Text(double x, double y, const std::string& text) override {
    std::ostringstream line;
    line << page << ' ' << x << ' ' << y << ' ' << text;
    texts.push_back(line.str());
  }
  void NewPage() override { ++page; }
  [[nodiscard]] DeviceContext& Picture(int width, int height) override {
    picture = std::make_unique<RecordingContext>(width, height);
    return *picture;
  }

  int page = 1;
  std::vector<std::string> texts;
  std::unique_ptr<RecordingContext> picture;

private:
  double width_;
  double height_;
};

} // namespace calder
