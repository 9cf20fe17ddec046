#include "platform/qt/ComboBoxKeyFilter.h"

#include <QComboBox>
#include <QKeyEvent>

namespace calder {

bool ComboBoxKeyFilter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || qobject_cast<QComboBox*>(watched) == nullptr) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (!key.modifiers().testFlag(Qt::AltModifier) || key.text().isEmpty()) return false;
  event->ignore();
  return true;
}

} // namespace calder
