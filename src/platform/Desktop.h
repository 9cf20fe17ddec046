// What the program asks of the desktop it runs on, as one bundle that main() puts together and a test replaces.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace calder {

class BusLibraries;
class Clipboard;
class Clock;
class FileDialogs;
class MessageBoxes;
class SettingsStore;
class UsbtmcPort;
class Worker;

class WindowList {
public:
  virtual ~WindowList() = default;
  // Captions of all visible top-level windows of all programs, UTF-8.
  [[nodiscard]] virtual std::vector<std::string> Captions() const = 0;
};

class Instances {
public:
  virtual ~Instances() = default;
  // True when another copy of the program was running when this object was made; a copy that crashed does not count.
  [[nodiscard]] virtual bool OthersRunning() const = 0;
  // What a first copy has to put in order is in order: copies that start meanwhile go on from here.
  virtual void StartupFinished() = 0;
  // Starts another copy of the program, from the program's own folder, with that file (an absolute path; empty: none).
  // False: it could not be started.
  virtual bool StartCopy(const std::string& file) = 0;
};

class SystemLanguage {
public:
  virtual ~SystemLanguage() = default;
  static constexpr int kJapanese = 1041;
  static constexpr int kEnglish = 1033;
  // The number of the system's default language; 1041 is Japanese.
  [[nodiscard]] virtual int DefaultLangID() const = 0;
};

// Where the program finds and puts its own files. Folders are without a trailing separator.
struct ProgramFolders {
  std::vector<std::string> read;      // looked through in this order for what the program only reads
  std::string state;                  // what the program writes for itself
  std::string documents;              // offered for an "Untitled" name
  std::string bus;                    // bus libraries are looked for here first; empty: only where the system looks
  std::vector<std::string> modules{}; // looked through for its own libraries and programs, loaded when first used
  std::vector<std::string> plugins{}; // import plug-ins, looked through in this order
};

struct Desktop {
  MessageBoxes& messageBoxes;
  FileDialogs& fileDialogs;
  SettingsStore& settings;
  Clock& clock;
  Clipboard& clipboard;
  WindowList& windows;
  Instances& instances;
  SystemLanguage& language;
  BusLibraries& busLibraries;
  Worker& worker;
  ProgramFolders folders;
  std::function<std::unique_ptr<UsbtmcPort>()> usbtmc; // the system's USBTMC devices; empty when it has none
};

// The first existing `name` (a file or a folder) in these folders; empty when there is none.
[[nodiscard]] std::string FindProgramFile(const std::vector<std::string>& folders, const std::string& name);

} // namespace calder
