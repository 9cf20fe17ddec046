#include "print/QtPaper.h"

#include "platform/qt/Text.h"
#include "print/VectorContext.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <utility>

namespace calder {
namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
constexpr double kMillimetresPerPixel = 25.4 / 96; // of a screen without scaling

} // namespace

QFont ReportFont(const PrintFont& font, double pixelsPerMillimetre) {
  // The further names are what free desktops have in place of the first fonts of the two languages.
  const QString name = Text(font.name);
  const bool latin = std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x100; });
  const QStringList further{QStringLiteral("Liberation Sans"), QStringLiteral("IPAGothic")};
  QFont made(QStringList{name, further[latin ? 0 : 1], further[latin ? 1 : 0]});
  made.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size * kMillimetresPerPoint * pixelsPerMillimetre))));
  made.setBold(font.bold);
  made.setItalic(font.italic);
  made.setStrikeOut(font.strikethrough);
  made.setUnderline(font.underline);
  return made;
}

QtPaper::QtPaper(QPainter& painter, const Page& page, const PrintFont& font, std::function<bool()> newPage)
    : painter_(painter), page_(page), font_(ReportFont(font, page.pixelsPerMillimetre)), newPage_(std::move(newPage)) {}

QtPaper::~QtPaper() = default;

double QtPaper::LineHeight() const {
  return QFontMetricsF(font_).height() / page_.pixelsPerMillimetre;
}

double QtPaper::TextWidth(const std::string& text) const {
  return QFontMetricsF(font_).horizontalAdvance(calder::Text(text)) / page_.pixelsPerMillimetre;
}

void QtPaper::Text(double x, double y, const std::string& text) {
  if (failed_) return;
  picture_.reset();
  painter_.setFont(font_);
  painter_.setPen(Qt::black);
  const double dots = page_.pixelsPerMillimetre;
  painter_.drawText(QPointF(x * dots, y * dots + QFontMetricsF(font_).ascent()), calder::Text(text));
}

void QtPaper::NewPage() {
  picture_.reset();
  failed_ = failed_ || !newPage_();
}

DeviceContext& QtPaper::Picture(int width, int height) {
  picture_.reset();
  picture_ = std::make_unique<VectorContext>(painter_, width, height, page_.pixelsPerMillimetre * kMillimetresPerPixel,
                                             !failed_);
  return *picture_;
}

} // namespace calder
