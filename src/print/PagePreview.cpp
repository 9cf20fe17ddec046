#include "print/PagePreview.h"

#include "print/PrintJob.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace calder {
namespace {

constexpr int kEdge = 8; // logical pixels around the page
constexpr QSize kSmallest(220, 260);

} // namespace

PagePreview::PagePreview(QWidget* parent) : QWidget(parent) {
  setMinimumSize(kSmallest);
}

void PagePreview::ShowPages(const QPageLayout& layout, std::deque<QPicture> pages) {
  layout_ = layout;
  pages_ = std::move(pages);
  sentence_.clear();
  GoTo(current_);
}

void PagePreview::ShowSentence(const QString& sentence) {
  sentence_ = sentence;
  update();
}

void PagePreview::GoTo(int page) {
  current_ = std::clamp(page, 0, std::max(0, Pages() - 1));
  update();
}

void PagePreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF paper = layout_.fullRect(QPageLayout::Millimeter);
  if (paper.isEmpty()) return;
  const QRectF room = QRectF(rect()).adjusted(kEdge, kEdge, -kEdge, -kEdge);
  const double scale = std::min(room.width() / paper.width(), room.height() / paper.height());
  const QSizeF size = paper.size() * scale;
  const QRectF page(room.center() - QPointF(size.width(), size.height()) / 2, size);
  painter.fillRect(page.translated(2, 2), QColor(0, 0, 0, 90));
  painter.fillRect(page, Qt::white);
  if (!sentence_.isEmpty()) {
    painter.setPen(Qt::black);
    painter.drawText(page.adjusted(kEdge, kEdge, -kEdge, -kEdge), Qt::AlignCenter | Qt::TextWordWrap, sentence_);
    return;
  }
  if (pages_.empty()) return;
  painter.setClipRect(page);
  const QRectF paint = layout_.paintRect(QPageLayout::Millimeter);
  painter.translate(page.topLeft() + paint.topLeft() * scale);
  painter.scale(scale / kPreviewResolution, scale / kPreviewResolution);
  painter.setPen(Qt::black); // what a recorded page begins with
  painter.drawPicture(0, 0, pages_[static_cast<std::size_t>(current_)]);
}

} // namespace calder
