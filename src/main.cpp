#include "Application.h"
#include "instrument/Initialise.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/posix/BigPages.h"
#include "platform/posix/ReadFolders.h"
#include "platform/qt/OutsideEnd.h"
#include "platform/qt/QtDesktop.h"

#include <QApplication>
#include <QFileInfo>

int main(int argc, char** argv) {
  calder::UseBigPagesForHeap();
  calder::ModelDatabase models; // read while the toolkit starts
  models.Prefetch(calder::FindProgramFile(calder::ReadFolders(), calder::kModelFolder));
  QApplication qtApplication(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Calder"));
  QApplication::setDesktopFileName(QStringLiteral("calder"));

  // The whole command line is the name of one file, blanks included.
  QString file = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
  if (!file.isEmpty()) file = QFileInfo(file).absoluteFilePath();

  calder::QtDesktop desktop;
  calder::Application application(desktop.Services(), std::move(models));
  if (!application.Start(file.toStdString())) return 1;
  const calder::OutsideEnd outside([&application] { application.End(); },
                                   [&application] { application.StoreAtExit(); });
  return QApplication::exec();
}
