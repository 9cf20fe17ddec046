// How large a window may be on its screen.
#pragma once

#include <QScreen>
#include <QSize>
#include <QWidget>

namespace calder {

// `wanted`, both in logical pixels, cut to what the window's screen has room for beside its panels and a window's own
// frame: at a scale of 200 % a screen has half as many logical pixels.
[[nodiscard]] inline QSize FittingSize(const QWidget& window, QSize wanted) {
  constexpr QSize kWindowFrame(8, 40);
  const QScreen* screen = window.screen();
  return screen == nullptr ? wanted : wanted.boundedTo(screen->availableSize() - kWindowFrame);
}

} // namespace calder
