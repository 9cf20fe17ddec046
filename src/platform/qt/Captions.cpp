#include "platform/qt/Captions.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QWidget>

namespace calder {
namespace {

QTabWidget* TabsOf(const QWidget* page) {
  for (QWidget* above = page->parentWidget(); above != nullptr; above = above->parentWidget()) {
    if (auto* tabs = qobject_cast<QTabWidget*>(above)) return tabs;
  }
  return nullptr;
}

bool SetText(QObject* control, const QString& text) {
  if (auto* label = qobject_cast<QLabel*>(control)) {
    label->setText(text);
  } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    button->setText(text);
  } else if (auto* action = qobject_cast<QAction*>(control)) {
    action->setText(text);
  } else if (auto* menu = qobject_cast<QMenu*>(control)) {
    menu->setTitle(text);
  } else if (auto* frame = qobject_cast<QGroupBox*>(control)) {
    frame->setTitle(text);
  } else if (auto* page = qobject_cast<QWidget*>(control)) {
    QTabWidget* tabs = TabsOf(page);
    if (tabs == nullptr) return false;
    tabs->setTabText(tabs->indexOf(page), text);
  } else {
    return false;
  }
  return true;
}

} // namespace

Captions::Captions(QWidget& form, bool english) : form_(form), english_(english) {
  for (QObject* object : form.findChildren<QObject*>()) {
    if (!object->objectName().isEmpty()) objects_.insert(object->objectName(), object);
  }
}

QString Captions::Pick(const Caption& caption) const {
  return QString::fromUtf8(english_ ? caption.english : caption.japanese);
}

void Captions::Title(const char* japanese, const char* english) const {
  form_.setWindowTitle(Pick({"", japanese, english}));
}

void Captions::Texts(std::span<const Caption> captions) const {
  for (const Caption& caption : captions) {
    const bool set = SetText(Find<QObject>(caption.control), Pick(caption));
    Q_ASSERT_X(set, "Captions", caption.control);
    static_cast<void>(set);
  }
}

void Captions::Tips(std::span<const Caption> captions) const {
  for (const Caption& caption : captions) {
    auto* control = Find<QWidget>(caption.control);
    Q_ASSERT_X(control != nullptr, "Captions", caption.control);
    if (control != nullptr) control->setToolTip(Pick(caption));
  }
}

void Captions::Names(std::span<const Caption> captions) const {
  for (const Caption& caption : captions) {
    auto* control = Find<QWidget>(caption.control);
    Q_ASSERT_X(control != nullptr, "Captions", caption.control);
    if (control != nullptr) control->setAccessibleName(Pick(caption));
  }
}

} // namespace calder
