// The two commands that every File menu ends in: they own the dialogs, filters, initial names and the extension test,
// and hand the path to the format's reader or writer.
#pragma once

#include "app/Program.h"

#include <cstdint>
#include <functional>
#include <string>

namespace calder {

class WaveFiles;

// File kinds; any other number counts as Kind_Wave.
enum FileKind : int {
  Kind_List = 0,
  Kind_Table = 2,
  Kind_Pwf = 4,
  Kind_System = 5,
  Kind_Wave = 6,
  Kind_Import = 7,
};

// The readers and writers of the kinds beside the waveform. A kind that has none does nothing.
struct FormatHandlers {
  std::function<void(const std::string&)> readList;
  std::function<void(const std::string&)> writeList;
  std::function<void(const std::string&)> readTable;
  std::function<void(const std::string&)> writeTable;
  std::function<std::int32_t(const std::string&)> readPwf; // 0, 71 or 72
  std::function<std::int32_t(const std::string&)> writePwf;
  std::function<std::int32_t(const std::string&)> readSystem;
  std::function<std::int32_t(const std::string&)> writeSystem;
  std::function<void()> systemRead;     // the setup dialog follows the record
  std::function<std::int32_t()> import; // 0 when data came in
};

class FileCommands {
public:
  FileCommands(Program& program, WaveFiles& waveFiles) : program_(program), waveFiles_(waveFiles) {}

  void SetHandlers(FormatHandlers handlers) { handlers_ = std::move(handlers); }
  // For a unit that takes the handlers of its own kind.
  [[nodiscard]] FormatHandlers& Handlers() { return handlers_; }
  // The current file's name changed, so the title has to.
  void SetTitleChanged(std::function<void()> titleChanged) { titleChanged_ = std::move(titleChanged); }

  // Cancelling a dialog ends either command silently. True: a waveform was read.
  bool Open_File(int kind);
  void Save_File(int kind, bool asText);
  // Save: the current file, or the dialog when there is none.
  void SaveCurrent();

  // Opens a waveform file without a dialog (a command line, a dropped file). False: it was not opened; the user was
  // told.
  bool OpenWave(const std::string& path);

  [[nodiscard]] std::string Get_DefaultFolder() const { return program_.desktop.folders.documents; }

private:
  void OpenList();
  void OpenTable();
  void OpenPwf();
  void OpenSystem();
  [[nodiscard]] bool OpenWaveDialog();
  [[nodiscard]] bool OpenImport();
  void SaveList();
  void SaveTable();
  void SavePwf();
  void SaveSystem();
  void SaveWave(bool asText);
  void ReportFailure(const std::string& path, int message) const;
  void TitleChanged() const;
  void RememberFolder(const std::string& path);

  Program& program_;
  WaveFiles& waveFiles_;
  FormatHandlers handlers_;
  std::function<void()> titleChanged_;
};

} // namespace calder
