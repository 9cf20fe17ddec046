// The desktop that the program really runs on: Qt's dialogs, the user's configuration folder, the X server.
#pragma once

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/posix/DlBusLibraries.h"
#include "platform/posix/IniSettings.h"
#include "platform/posix/PosixInstances.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtWorker.h"
#include "platform/qt/XcbWindowList.h"

namespace calder {

class QtClock final : public Clock {
public:
  [[nodiscard]] double SecondsOfDay() const override;
  void Wait(double seconds, bool processEvents) override;
};

class LocaleLanguage final : public SystemLanguage {
public:
  [[nodiscard]] int DefaultLangID() const override;
};

class QtDesktop {
public:
  // REQUIRES: a QApplication.
  QtDesktop();

  [[nodiscard]] Desktop Services();

private:
  IniSettings settings_;
  PosixInstances instances_;
  QtMessageBoxes messageBoxes_;
  QtFileDialogs fileDialogs_{settings_};
  QtClock clock_;
  QtClipboard clipboard_;
  XcbWindowList windows_;
  LocaleLanguage language_;
  ProgramFolders folders_;
  DlBusLibraries libraries_;
  QtWorker worker_;
};

} // namespace calder
