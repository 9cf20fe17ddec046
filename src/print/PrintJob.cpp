#include "print/PrintJob.h"

#include "print/QtPaper.h"
#include "print/WriteBuffer.h"

#include <QBuffer>
#include <QLocale>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace calder {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kPaperEdge = 5; // millimetres that a printer cannot reach
constexpr int kPdfResolution = 1200;

QtPaper::Page PageOf(const QPageLayout& layout, double pixelsPerMillimetre) {
  const QSizeF size = layout.paintRect(QPageLayout::Millimeter).size();
  return {size.width(), size.height(), pixelsPerMillimetre};
}

} // namespace

bool PrintOn(QPagedPaintDevice& device, const PrintDesk& desk) {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  QtPaper paper(painter, PageOf(device.pageLayout(), device.logicalDpiX() / kMillimetresPerInch), desk.Font(),
                [&] { return device.newPage(); });
  desk.Print(paper);
  return true;
}

std::deque<QPicture> PreviewPages(const QPageLayout& layout, const PrintDesk& desk) {
  std::deque<QPicture> pages(1); // pages keep their place while more come
  QPainter painter(&pages.back());
  {
    QtPaper paper(painter, PageOf(layout, kPreviewResolution), desk.Font(), [&] {
      painter.end();
      return painter.begin(&pages.emplace_back());
    });
    desk.Print(paper);
  }
  painter.end();
  return pages;
}

QPageLayout DefaultLayout() {
  const bool metric = QLocale::system().measurementSystem() != QLocale::ImperialUSSystem;
  return {QPageSize(metric ? QPageSize::A4 : QPageSize::Letter), QPageLayout::Portrait,
          QMarginsF(kPaperEdge, kPaperEdge, kPaperEdge, kPaperEdge), QPageLayout::Millimeter};
}

bool WritePdf(const std::string& path, const QPageLayout& layout, const QString& title, const PrintDesk& desk) {
  QBuffer content;
  content.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&content);
    writer.setResolution(kPdfResolution);
    writer.setPageLayout(layout);
    writer.setTitle(title);
    if (!PrintOn(writer, desk)) return false;
  }
  return WriteBuffer(path, content);
}

} // namespace calder
