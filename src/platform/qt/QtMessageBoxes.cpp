#include "platform/qt/QtMessageBoxes.h"

#include "platform/qt/DialogOwner.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QSpacerItem>

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

// A box is as wide as its text; a window manager cuts the title where it does not fit beside the window's buttons.
void MakeRoomForTitle(QMessageBox& box) {
  auto* layout = qobject_cast<QGridLayout*>(box.layout());
  if (layout == nullptr) return;
  const QFontMetrics metrics = box.fontMetrics();
  const int buttons = 12 * metrics.height(); // with the window's icon and a title in a bolder font
  const int width = metrics.horizontalAdvance(box.windowTitle()) + buttons;
  layout->addItem(new QSpacerItem(width, 0), layout->rowCount(), 0, 1, layout->columnCount());
}

} // namespace

BoxAnswer QtMessageBoxes::Show(const std::string& title, const std::string& text, BoxButtons buttons, BoxIcon icon) {
  QMessageBox box(DialogOwner());
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
  MakeRoomForTitle(box);
  const int pressed = box.exec();
  if (buttons == BoxButtons::Ok) return BoxAnswer::Ok;
  return pressed == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

std::string QtMessageBoxes::Input(const std::string& title, const std::string& prompt) {
  return QInputDialog::getText(DialogOwner(), QString::fromStdString(title), Lines(prompt)).toStdString();
}

} // namespace calder
