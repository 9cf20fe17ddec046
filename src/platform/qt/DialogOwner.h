// Which window a message box or a file dialog belongs to.
#pragma once

#include <QApplication>
#include <QWidget>

namespace calder {

// The window in front; while none has the focus (the dialog before has just closed) the topmost modal one, else the
// main window, so that a dialog never stands alone. One that belongs to another window and is not modal, as the
// progress of a transfer, may go while a dialog is open, so its owner is taken. Null: no window is shown.
[[nodiscard]] inline QWidget* DialogOwner() {
  QWidget* window = QApplication::activeWindow();
  if (window == nullptr) window = QApplication::activeModalWidget();
  for (QWidget* shown : QApplication::topLevelWidgets()) {
    if (window != nullptr) break;
    if (shown->isVisible() && shown->windowType() == Qt::Window && shown->parentWidget() == nullptr) window = shown;
  }
  while (window != nullptr && !window->isModal() && window->parentWidget() != nullptr)
    window = window->parentWidget()->window();
  return window;
}

} // namespace calder
