#include "Application.h"
#include "platform/posix/BigPages.h"
#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QFileInfo>

int main(int argc, char** argv) {
  calder::UseBigPagesForHeap();
  QApplication qtApplication(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Calder"));
  QApplication::setDesktopFileName(QStringLiteral("calder"));

  // The whole command line is the name of one file, blanks included.
  QString file = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
  if (!file.isEmpty()) file = QFileInfo(file).absoluteFilePath();

  calder::QtDesktop desktop;
  calder::Application application(desktop.Services());
  if (!application.Start(file.toStdString())) return 1;
  return QApplication::exec();
}
