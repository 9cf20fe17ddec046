#include "editor/LaneGutter.h"

#include "libs/wavelb32/wavelb32.h"
#include "platform/WaveformTheme.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace calder {

LaneGutter::LaneGutter(QWidget* parent) : QWidget(parent) {
  FitWidth();
}

void LaneGutter::FitWidth() {
  setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00")) + 2);
}

void LaneGutter::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitWidth();
}

void LaneGutter::ShowLanes(std::uint16_t selectedBits, int bitCount, int pictureHeight) {
  if (selectedBits == selectedBits_ && bitCount == bitCount_ && pictureHeight == pictureHeight_) return;
  selectedBits_ = selectedBits;
  bitCount_ = bitCount;
  pictureHeight_ = pictureHeight;
  update();
}

void LaneGutter::paintEvent(QPaintEvent* /*event*/) {
  const double scale = devicePixelRatioF();
  const int laneHeight = W_RowsOfLane(1, pictureHeight_).bottom - W_RowsOfLane(1, pictureHeight_).top;
  if (laneHeight < 1) return;
  QPainter painter(this);
  // Where the lanes are too low for all numbers, every second or fourth stands there.
  const int textHeight = fontMetrics().ascent();
  int step = 1;
  while (step < W_LANES && step * laneHeight < textHeight * scale) step *= 2;
  for (int lane = 0; lane < W_LANES; lane += step) {
    const int bit = W_LANES - 1 - lane;
    const LaneRows rows = W_RowsOfLane(lane, pictureHeight_);
    const QColor normal = palette().color(QPalette::WindowText);
    const QColor dim = palette().color(QPalette::Disabled, QPalette::WindowText);
    const bool selected = ((selectedBits_ >> bit) & 1U) != 0;
    painter.setPen(selected ? QColor(QRgb(theme::kBitSelected)) : lane < bitCount_ ? normal : dim);
    const double middle = (rows.top + rows.bottom) / (2 * scale);
    const QRectF place(0, middle - fontMetrics().height(), width(), 2 * fontMetrics().height());
    painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(bit));
  }
}

} // namespace calder
