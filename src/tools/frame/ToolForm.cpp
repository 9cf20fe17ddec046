#include "tools/frame/ToolForm.h"

#include "app/FormPosition.h"
#include "platform/qt/EditedBox.h"
#include "platform/qt/Placement.h"
#include "tools/frame/WindowPosition.h"

#include <QAbstractButton>
#include <QAction>
#include <QLayout>
#include <QScreen>

#include <algorithm>

namespace calder {

ToolForm::ToolForm(clsRegistry& registry, const char* formName, QWidget* parent)
    : QDialog(parent), registry_(registry), formName_(formName) {
  setWindowModality(Qt::ApplicationModal); // whoever shows it beside its owner says otherwise
}

void ToolForm::Place(QSize size, FirstPlace first) {
  size = FittingSize(*this, size);
  resize(size);
  if (const auto at = StoredPosition(registry_, formName_)) {
    move(at->left, at->top);
  } else if (first == FirstPlace::Beside && parentWidget() != nullptr) {
    const QRect owner = parentWidget()->frameGeometry();
    const QRect room = parentWidget()->screen()->availableGeometry();
    const int left = std::min(owner.right() + 1, room.right() - size.width());
    move(std::max(left, room.left()), owner.top());
  }
}

void ToolForm::CommitFocus() {
  if (auto* box = dynamic_cast<EditedBox*>(focusWidget())) box->Commit();
}

void ToolForm::On(QAbstractButton* button, std::function<void()> handler) {
  connect(button, &QAbstractButton::clicked, this, [this, handler = std::move(handler)] {
    CommitFocus();
    handler();
  });
}

void ToolForm::On(QAction* entry, std::function<void()> handler) {
  connect(entry, &QAction::triggered, this, [this, handler = std::move(handler)] {
    CommitFocus();
    handler();
  });
}

QMenu* ToolForm::AddMenu(const char* name, const QString& title, std::initializer_list<QAction*> entries) {
  if (bar_ == nullptr) {
    bar_ = new QMenuBar(this); // NOLINT(cppcoreguidelines-owning-memory): the form owns it
    bar_->setObjectName(QLatin1String("MenuBar_") + QLatin1String(formName_));
    layout()->setMenuBar(bar_);
  }
  QMenu* menu = bar_->addMenu(title);
  menu->setObjectName(QLatin1String(name));
  menu->addActions(QList<QAction*>(entries));
  return menu;
}

void ToolForm::DisconnectControls() {
  for (QWidget* child : findChildren<QWidget*>()) child->disconnect(this);
}

void ToolForm::StorePosition() {
  StoreWindowPosition(registry_, formName_, *this);
}

void ToolForm::showEvent(QShowEvent* event) {
  closing_ = false;
  QDialog::showEvent(event);
}

void ToolForm::done(int result) {
  if (closing_) return;
  closing_ = true;
  CommitFocus();
  StorePosition();
  Closing();
  QDialog::done(result);
}

} // namespace calder
