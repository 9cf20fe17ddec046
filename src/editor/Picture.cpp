#include "editor/Picture.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace calder {
namespace {

constexpr int kWheelStep = 120; // eighths of a degree, as mouse wheels report one notch

} // namespace

Picture::Picture(QWidget* parent) : QWidget(parent), image_(1, 1, QImage::Format_RGB32) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  image_.fill(Qt::black);
}

PixelContext Picture::Context() {
  // The image is never shared, so its bits are its own.
  const auto stride = static_cast<std::size_t>(image_.bytesPerLine()) / sizeof(std::uint32_t);
  const std::span pixels(reinterpret_cast<std::uint32_t*>(image_.bits()),
                         stride * static_cast<std::size_t>(image_.height()));
  return {pixels, stride, image_.width(), image_.height(), image_.devicePixelRatio()};
}

void Picture::ShowColumns(int left, int right) {
  if (left >= right) return;
  const double scale = Scale();
  const int from = static_cast<int>(std::floor(left / scale));
  const int to = static_cast<int>(std::ceil(right / scale));
  update(from, 0, to - from, height());
}

QPoint Picture::ToPixel(const QPointF& position) const {
  return {static_cast<int>(std::floor(position.x() * Scale())), static_cast<int>(std::floor(position.y() * Scale()))};
}

void Picture::FitImage() {
  const double scale = devicePixelRatioF();
  const QSize wanted(std::max(1, static_cast<int>(std::lround(width() * scale))),
                     std::max(1, static_cast<int>(std::lround(height() * scale))));
  if (image_.size() == wanted && image_.devicePixelRatio() == scale) return;
  image_ = QImage(wanted, QImage::Format_RGB32);
  image_.setDevicePixelRatio(scale);
  image_.fill(Qt::black);
  Q_EMIT Resized();
}

void Picture::paintEvent(QPaintEvent* event) {
  FitImage(); // the window may have moved to a screen of another scale
  QPainter painter(this);
  const QRect area = event->rect();
  const double scale = Scale();
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(QRectF(area), image_,
                    QRectF(area.x() * scale, area.y() * scale, area.width() * scale, area.height() * scale));
}

void Picture::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitImage();
}

void Picture::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  FitImage();
}

void Picture::mouseMoveEvent(QMouseEvent* event) {
  Q_EMIT Moved(ToPixel(event->position()));
}

void Picture::mousePressEvent(QMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  Q_EMIT Pressed(ToPixel(event->position()), event->button(), event->modifiers());
}

void Picture::mouseReleaseEvent(QMouseEvent* event) {
  Q_EMIT Released(ToPixel(event->position()), event->button());
}

void Picture::wheelEvent(QWheelEvent* event) {
  // Shift turns the vertical wheel into a horizontal one on some desktops.
  const QPoint angle = event->angleDelta();
  wheelRest_ += angle.y() != 0 ? angle.y() : angle.x();
  const int steps = wheelRest_ / kWheelStep;
  wheelRest_ -= steps * kWheelStep;
  if (steps != 0) Q_EMIT WheelTurned(ToPixel(event->position()), steps, event->modifiers());
  event->accept();
}

void Picture::keyPressEvent(QKeyEvent* event) {
  Q_EMIT KeyPressed(event->key());
  QWidget::keyPressEvent(event);
}

} // namespace calder
