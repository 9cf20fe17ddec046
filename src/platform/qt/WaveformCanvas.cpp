#include "platform/qt/WaveformCanvas.h"

#include "platform/posix/BigPages.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>
#include <memory>

namespace calder {
namespace {

constexpr int kWheelStep = 120; // eighths of a degree, as mouse wheels report one notch

// An image on memory of its own: in big pages, so that a new size does not cost a trip into the system for every page.
QImage NewImage(QSize size) {
  const auto stride = static_cast<std::size_t>(size.width()) * sizeof(QRgb);
  auto memory =
      std::make_unique<std::shared_ptr<std::byte>>(AllocateZeros(stride * static_cast<std::size_t>(size.height())));
  if (*memory == nullptr) return {size, QImage::Format_RGB32};
  auto* pixels = reinterpret_cast<uchar*>(memory->get());
  return {pixels,
          size.width(),
          size.height(),
          static_cast<qsizetype>(stride),
          QImage::Format_RGB32,
          [](void* owner) { delete static_cast<std::shared_ptr<std::byte>*>(owner); }, // NOLINT: as Qt hands it over
          memory.release()};
}

} // namespace

WaveformCanvas::WaveformCanvas(QWidget* parent) : QWidget(parent), image_(1, 1, QImage::Format_RGB32) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  image_.fill(Qt::black);
}

PixelContext WaveformCanvas::Context() {
  // The image is never shared, so its bits are its own.
  const auto stride = static_cast<std::size_t>(image_.bytesPerLine()) / sizeof(std::uint32_t);
  const std::span pixels(reinterpret_cast<std::uint32_t*>(image_.bits()),
                         stride * static_cast<std::size_t>(image_.height()));
  return {pixels, stride, image_.width(), image_.height(), image_.devicePixelRatio()};
}

void WaveformCanvas::ShowColumns(int left, int right) {
  if (left >= right) return;
  const double scale = Scale();
  const int from = static_cast<int>(std::floor(left / scale));
  const int to = static_cast<int>(std::ceil(right / scale));
  update(from, 0, to - from, height());
}

QPoint WaveformCanvas::ToPixel(const QPointF& position) const {
  return {static_cast<int>(std::floor(position.x() * Scale())), static_cast<int>(std::floor(position.y() * Scale()))};
}

void WaveformCanvas::FitImage() {
  const double scale = devicePixelRatioF();
  const QSize wanted(std::max(1, static_cast<int>(std::lround(width() * scale))),
                     std::max(1, static_cast<int>(std::lround(height() * scale))));
  if (image_.size() == wanted && image_.devicePixelRatio() == scale) return;
  image_ = NewImage(wanted);
  image_.setDevicePixelRatio(scale);
  image_.fill(Qt::black);
  Q_EMIT Resized();
}

void WaveformCanvas::paintEvent(QPaintEvent* event) {
  painted_ = true;
  painting_ = true;
  FitImage(); // the first time, or the window has moved to a screen of another scale
  painting_ = false;
  QPainter painter(this);
  const QRect area = event->rect();
  const double scale = Scale();
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(QRectF(area), image_,
                    QRectF(area.x() * scale, area.y() * scale, area.width() * scale, area.height() * scale));
  if (!framed_) return;
  painter.setPen(palette().color(QPalette::Link));
  painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void WaveformCanvas::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (painted_) FitImage();
}

void WaveformCanvas::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT Moved(ToPixel(event->position()));
}

void WaveformCanvas::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  Q_EMIT Pressed(ToPixel(event->position()), event->button(), event->modifiers());
}

void WaveformCanvas::mouseReleaseEvent(QMouseEvent* event) {
  Q_EMIT Released(ToPixel(event->position()), event->button());
}

void WaveformCanvas::wheelEvent(QWheelEvent* event) {
  // Shift turns the vertical wheel into a horizontal one on some desktops.
  const QPoint angle = event->angleDelta();
  wheelRest_ += angle.y() != 0 ? angle.y() : angle.x();
  const int steps = wheelRest_ / kWheelStep;
  wheelRest_ -= steps * kWheelStep;
  if (steps != 0) Q_EMIT WheelTurned(ToPixel(event->position()), steps, event->modifiers());
  event->accept();
}

void WaveformCanvas::keyPressEvent(QKeyEvent* event) {
  Q_EMIT KeyPressed(event->key(), event->modifiers());
  QWidget::keyPressEvent(event);
}

void WaveformCanvas::focusInEvent(QFocusEvent* event) {
  framed_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
            event->reason() == Qt::ShortcutFocusReason;
  QWidget::focusInEvent(event);
  update();
}

void WaveformCanvas::focusOutEvent(QFocusEvent* event) {
  framed_ = false;
  QWidget::focusOutEvent(event);
  update();
}

void WaveformCanvas::SpokenChanged() {
  if (!QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(this, Spoken());
  QAccessible::updateAccessibility(&event);
}

} // namespace calder
