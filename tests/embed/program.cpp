// The whole program on services of the embedding one: here the desktop's own, without a file, until its window stands.
#include "Application.h"
#include "editor/MainWindow.h"
#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QTimer>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  calder::QtDesktop desktop;
  calder::Application calder(desktop.Services());
  if (!calder.Start({})) return 1;
  const bool found = calder.Window().findChild<QWidget*>(QStringLiteral("Txt_Start_X")) != nullptr;
  QTimer::singleShot(0, &application, [found] { QCoreApplication::exit(found ? 0 : 1); });
  return QApplication::exec();
}
