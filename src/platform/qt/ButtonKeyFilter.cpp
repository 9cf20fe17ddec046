#include "platform/qt/ButtonKeyFilter.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace calder {

bool ButtonKeyFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
  if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  auto* button = qobject_cast<QAbstractButton*>(watched);
  // A marked option or box is no button: Enter there means the form's default.
  if (qobject_cast<QPushButton*>(button) == nullptr && qobject_cast<QToolButton*>(button) == nullptr) return false;
  if (!key.isAutoRepeat()) button->click();
  return true;
}

} // namespace calder
