// A drawing surface on the screen: its pixels are drawn to at any time and only copied when the window paints.
//
// The pixels are device pixels, so the picture is sharp at every scale.
#pragma once

#include "platform/PixelContext.h"

#include <QImage>
#include <QWidget>

#include <functional>
#include <utility>

namespace calder {

class WaveformCanvas final : public QWidget {
  Q_OBJECT

public:
  explicit WaveformCanvas(QWidget* parent = nullptr);

  // Draws into the picture; after it, Show or ShowColumns brings the pixels to the screen.
  [[nodiscard]] PixelContext Context();
  void Show() {
    if (!painting_) update();
  }
  // False until the picture is painted for the first time: it asks for its drawing then, and what is drawn before would
  // never be seen.
  [[nodiscard]] bool IsSeen() const { return painted_; }
  // Only the device columns from left to right (excluded) changed.
  void ShowColumns(int left, int right);
  [[nodiscard]] const QImage& Image() const { return image_; }
  // Size in device pixels; at least 1 by 1.
  [[nodiscard]] int PixelWidth() const { return image_.width(); }
  [[nodiscard]] int PixelHeight() const { return image_.height(); }
  [[nodiscard]] double Scale() const { return image_.devicePixelRatio(); }
  // A position in the widget as a device pixel.
  [[nodiscard]] QPoint ToPixel(const QPointF& position) const;

  // What a screen reader says of the picture, asked for when it wants to know.
  void SetSpoken(std::function<QString()> spoken) { spoken_ = std::move(spoken); }
  [[nodiscard]] QString Spoken() const { return spoken_ ? spoken_() : QString(); }
  // It says something else now.
  void SpokenChanged();

Q_SIGNALS:
  // The picture got a new size and is blank: it has to be drawn.
  void Resized();
  void Moved(QPoint pixel);
  void Pressed(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
  void Released(QPoint pixel, Qt::MouseButton button);
  void WheelTurned(QPoint pixel, int steps, Qt::KeyboardModifiers modifiers);
  void KeyPressed(int key, Qt::KeyboardModifiers modifiers);

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

private:
  void FitImage();

  QImage image_;
  std::function<QString()> spoken_;
  bool framed_ = false; // the focus came by a key: a frame shows it
  bool painted_ = false;
  bool painting_ = false; // what is drawn now is painted at once
  int wheelRest_ = 0;     // eighths of a degree that are not a whole step yet
};

} // namespace calder
