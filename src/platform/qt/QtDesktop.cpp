#include "platform/qt/QtDesktop.h"

#include "platform/posix/LinuxUsbtmc.h"
#include "platform/posix/ReadFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLocale>
#include <QStandardPaths>
#include <QThread>
#include <QTime>

#include <algorithm>

namespace calder {
namespace {

constexpr const char* kFolderName = "/calder";

std::string Location(QStandardPaths::StandardLocation location) {
  return QStandardPaths::writableLocation(location).toStdString();
}

std::string StateFolder() {
  const QByteArray stated = qgetenv("XDG_STATE_HOME");
  const std::string base = stated.isEmpty() ? QDir::homePath().toStdString() + "/.local/state" : stated.toStdString();
  return base + kFolderName;
}

ProgramFolders Folders() {
  ProgramFolders folders;
  folders.read = ReadFolders();
  folders.modules = ModuleFolders();
  folders.state = StateFolder();
  folders.documents = Location(QStandardPaths::DocumentsLocation);
  if (!QDir(QString::fromStdString(folders.documents)).exists()) folders.documents = QDir::homePath().toStdString();
  folders.bus = qgetenv("CALDER_BUS_PATH").toStdString();
  folders.plugins = PluginFolders();
  return folders;
}

} // namespace

double QtClock::SecondsOfDay() const {
  return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void QtClock::Wait(double seconds, bool processEvents) {
  QElapsedTimer timer;
  timer.start();
  const auto milliseconds = static_cast<qint64>(std::max(seconds, 0.0) * 1000);
  if (processEvents) QCoreApplication::processEvents();
  while (true) {
    const qint64 left = milliseconds - timer.elapsed();
    if (left <= 0) return;
    if (processEvents)
      QCoreApplication::processEvents(QEventLoop::AllEvents, static_cast<int>(std::min<qint64>(left, 50)));
    QThread::msleep(static_cast<unsigned long>(std::clamp<qint64>(milliseconds - timer.elapsed(), 0, 5)));
  }
}

int LocaleLanguage::DefaultLangID() const {
  return QLocale::system().language() == QLocale::Japanese ? kJapanese : kEnglish;
}

QtDesktop::QtDesktop()
    : settings_(Location(QStandardPaths::GenericConfigLocation) + kFolderName + "/Calder.ini"),
      instances_(Location(QStandardPaths::GenericConfigLocation) + kFolderName + "/Calder.instances",
                 QCoreApplication::applicationFilePath().toStdString()),
      folders_(Folders()), libraries_(folders_.bus) {}

Desktop QtDesktop::Services() {
  return {messageBoxes_, fileDialogs_, settings_,  clock_,  clipboard_, windows_,
          instances_,    language_,    libraries_, worker_, folders_,   [] { return std::make_unique<LinuxUsbtmc>(); }};
}

} // namespace calder
