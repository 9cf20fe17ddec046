#include "print/PictureFile.h"

#include "print/QtPaper.h"
#include "print/WriteBuffer.h"

#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>

namespace calder {
namespace {

constexpr double kWidth = 170; // millimetres: the text width of an A4 page
constexpr double kPerInch = 25.4;
constexpr int kVectorResolution = 600; // dots an inch
constexpr int kPixelResolution = 300;

enum class Format { None, Pdf, Svg, Png };

Format FormatOf(const std::string& path) {
  const QString name = QString::fromStdString(path).toLower();
  if (name.endsWith(QLatin1String(".pdf"))) return Format::Pdf;
  if (name.endsWith(QLatin1String(".svg"))) return Format::Svg;
  if (name.endsWith(QLatin1String(".png"))) return Format::Png;
  return Format::None;
}

// The picture with a line of labels below it, in millimetres.
QSizeF SizeOf(const PrintFont& font) {
  constexpr double kDots = kVectorResolution / kPerInch;
  const double line = QFontMetricsF(ReportFont(font, kDots)).height() / kDots;
  return {kWidth, WavePictureSize(kWidth * kDots).height / kDots + line + 1};
}

void Draw(QPainter& painter, const QSizeF& size, int resolution, const WaveReport& report, const PrintFont& font) {
  QtPaper paper(painter, {size.width(), size.height(), resolution / kPerInch}, font, [] { return false; });
  Print_Wave(paper, report);
}

bool MakePdf(QBuffer& content, const QString& title, const QSizeF& size, const WaveReport& report,
             const PrintFont& font) {
  QPdfWriter writer(&content);
  writer.setResolution(kVectorResolution);
  writer.setPageLayout(QPageLayout(QPageSize(size, QPageSize::Millimeter, {}, QPageSize::ExactMatch),
                                   QPageLayout::Portrait, QMarginsF()));
  writer.setTitle(title);
  QPainter painter;
  if (!painter.begin(&writer)) return false;
  Draw(painter, size, kVectorResolution, report, font);
  return painter.end();
}

bool MakeSvg(QBuffer& content, const QString& title, const QSizeF& size, const WaveReport& report,
             const PrintFont& font) {
  const QSize dots = (size * (kVectorResolution / kPerInch)).toSize();
  QSvgGenerator generator;
  generator.setOutputDevice(&content);
  generator.setResolution(kVectorResolution);
  generator.setSize(dots);
  generator.setViewBox(QRect(QPoint(), dots));
  generator.setTitle(title);
  QPainter painter;
  if (!painter.begin(&generator)) return false;
  Draw(painter, size, kVectorResolution, report, font);
  return painter.end();
}

bool MakePng(QBuffer& content, const QSizeF& size, const WaveReport& report, const PrintFont& font) {
  QImage image((size * (kPixelResolution / kPerInch)).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  image.setDotsPerMeterX(static_cast<int>(std::lround(kPixelResolution / kPerInch * 1000)));
  image.setDotsPerMeterY(image.dotsPerMeterX());
  QPainter painter(&image);
  Draw(painter, size, kPixelResolution, report, font);
  painter.end();
  return image.save(&content, "PNG");
}

} // namespace

bool IsPictureName(const std::string& path) {
  return FormatOf(path) != Format::None;
}

bool WritePicture(const std::string& path, const QString& title, const WaveReport& report, const PrintFont& font) {
  QBuffer content;
  content.open(QIODevice::WriteOnly);
  const QSizeF size = SizeOf(font);
  bool made = false;
  switch (FormatOf(path)) {
  case Format::Pdf: made = MakePdf(content, title, size, report, font); break;
  case Format::Svg: made = MakeSvg(content, title, size, report, font); break;
  case Format::Png: made = MakePng(content, size, report, font); break;
  case Format::None: break;
  }
  return made && WriteBuffer(path, content);
}

} // namespace calder
