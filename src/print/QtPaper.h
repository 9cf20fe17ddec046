// Paper on the toolkit's painter: a printer's page, a PDF's, or a picture.
//
// All measures are taken at the device's resolution, and fonts by their size in its pixels, so that the same report has
// the same lines on every device.
#pragma once

#include "print/Paper.h"
#include "print/PrintSettings.h"

#include <QFont>
#include <QPainter>

#include <functional>
#include <memory>

namespace calder {

// The print font at that resolution, with what this desktop has in place of a font that it lacks.
[[nodiscard]] QFont ReportFont(const PrintFont& font, double pixelsPerMillimetre);

class QtPaper final : public Paper {
public:
  struct Page {
    double width = 0; // of the printable area, millimetres
    double height = 0;
    double pixelsPerMillimetre = 1;
  };
  // painter: active on the first page, its origin at the printable area's corner; it must outlive this object.
  // newPage: goes on to the next page with the same painter; false: the device failed.
  QtPaper(QPainter& painter, const Page& page, const PrintFont& font, std::function<bool()> newPage);
  ~QtPaper() override;

  [[nodiscard]] double PrintableWidth() const override { return page_.width; }
  [[nodiscard]] double PrintableHeight() const override { return page_.height; }
  [[nodiscard]] double PixelsPerMillimetre() const override { return page_.pixelsPerMillimetre; }
  [[nodiscard]] double LineHeight() const override;
  [[nodiscard]] double TextWidth(const std::string& text) const override;
  void Text(double x, double y, const std::string& text) override;
  void NewPage() override;
  [[nodiscard]] DeviceContext& Picture(int width, int height) override;

private:
  QPainter& painter_;
  const Page page_;
  const QFont font_;
  const std::function<bool()> newPage_;
  std::unique_ptr<DeviceContext> picture_;
  bool failed_ = false;
};

} // namespace calder
