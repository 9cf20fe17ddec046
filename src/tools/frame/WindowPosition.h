// Keeping a window's position in the session state.
#pragma once

#include "app/FormPosition.h"

#include <QGuiApplication>
#include <QWidget>

namespace calder {

// Nothing is stored where the window covers the screen or is hidden in the task bar, nor where the window system gives
// no positions (Wayland): a good one from another session stays.
inline void StoreWindowPosition(clsRegistry& registry, const char* form, const QWidget& window) {
  if (window.isMinimized() || window.isMaximized() || window.isFullScreen()) return;
  if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) return;
  StorePosition(registry, form, {window.pos().x(), window.pos().y()});
}

} // namespace calder
