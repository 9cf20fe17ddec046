#include "platform/qt/QtMessageBoxes.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace calder {
namespace {

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
  case BoxIcon::Information: return QMessageBox::Information;
  case BoxIcon::Question: return QMessageBox::Question;
  case BoxIcon::Critical: return QMessageBox::Critical;
  case BoxIcon::None: break;
  }
  return QMessageBox::NoIcon;
}

// Carriage returns, alone or with a line feed, break lines; trailing ones do not make the box taller.
QString Lines(const std::string& text) {
  QString lines = QString::fromStdString(text);
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  while (lines.endsWith(QLatin1Char('\n'))) lines.chop(1);
  return lines;
}

// A box lies on the stack, so it belongs to a window that outlives it: a window that belongs to another one and is not
// modal, as the progress of a transfer, may go while the box is open.
QWidget* Owner() {
  QWidget* window = QApplication::activeWindow();
  while (window != nullptr && !window->isModal() && window->parentWidget() != nullptr)
    window = window->parentWidget()->window();
  return window;
}

} // namespace

BoxAnswer QtMessageBoxes::Show(const std::string& title, const std::string& text, BoxButtons buttons, BoxIcon icon) {
  QMessageBox box(Owner());
  box.setObjectName(QStringLiteral("MessageBox"));
  box.setWindowModality(Qt::ApplicationModal);
  box.setWindowTitle(QString::fromStdString(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(Lines(text));
  box.setIcon(IconOf(icon));
  if (buttons == BoxButtons::Ok) {
    box.setStandardButtons(QMessageBox::Ok);
  } else {
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
  }
  const int pressed = box.exec();
  if (buttons == BoxButtons::Ok) return BoxAnswer::Ok;
  return pressed == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

std::string QtMessageBoxes::Input(const std::string& title, const std::string& prompt) {
  return QInputDialog::getText(Owner(), QString::fromStdString(title), Lines(prompt)).toStdString();
}

} // namespace calder
