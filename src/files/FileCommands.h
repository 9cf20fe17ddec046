// The two commands that every File menu ends in: they show the dialogs, test the extension as the kind's row says, and
// hand the path to the kind's reader or writer.
#pragma once

#include "files/FileKinds.h"
#include "platform/Desktop.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace calder {

class clsRegistry;
class ErrMsg;
class WaveFiles;
struct FileDialogAnswer;

// What reads and writes the files of one kind: 0, or the number of the message that says what failed. A kind that lacks
// one of them does nothing there.
struct FileFormat {
  std::function<std::int32_t(const std::string& path)> read;
  std::function<std::int32_t(const std::string& path)> write;
};

class FileCommands {
public:
  FileCommands(const Desktop& desktop, const ErrMsg& messages, clsRegistry& registry, RememberedNames& names,
               WaveFiles& waveFiles);

  // Gives a kind its reader and writer, in place of those that it had.
  void SetFormat(FileKind kind, FileFormat format) { formats_[kind] = std::move(format); }
  // The current file's name changed, so the title has to.
  void SetTitleChanged(std::function<void()> titleChanged) { titleChanged_ = std::move(titleChanged); }

  // Cancelling a dialog ends either command silently. True: the reader or writer did its work.
  bool Open_File(int kind);
  bool Save_File(int kind, bool asText);
  // Save: the current file, or the dialog when there is none.
  void SaveCurrent();

  // Opens a waveform file without a dialog (a command line, a dropped file). False: it was not opened; the
  // failure was reported.
  bool OpenWave(const std::string& path);

  // The folder of the path is offered from now on.
  void RememberFolder(const std::string& path);

  [[nodiscard]] std::string Get_DefaultFolder() const { return desktop_.folders.documents; }

private:
  bool Read(const FileKindRow& row, const std::string& path);
  bool Write(const FileKindRow& row, const std::string& path);
  // Shows the failure that the row names, remembers the path, lets the title follow.
  bool Finish(const FileKindRow& row, const std::string& path, std::int32_t result, int failure, bool remembers);
  // Whether the row's kind takes the file; shows the message that the row has for one that it does not take.
  [[nodiscard]] bool TakesFile(const FileKindRow& row, const std::string& path, int refusal) const;

  const Desktop& desktop_;
  const ErrMsg& messages_;
  clsRegistry& registry_;
  RememberedNames& names_;
  std::map<FileKind, FileFormat> formats_;
  std::function<void()> titleChanged_;
};

} // namespace calder
