#include "files/FileCommands.h"

#include "app/Messages.h"
#include "app/Registry.h"
#include "files/FileNames.h"
#include "files/WaveFiles.h"
#include "platform/FileDialogs.h"

#include <filesystem>

namespace calder {
namespace {

constexpr const char* kFolderSection = "Files";
constexpr const char* kFolderKey = "LastFolder";

} // namespace

FileCommands::FileCommands(const Desktop& desktop, const ErrMsg& messages, clsRegistry& registry,
                           RememberedNames& names, WaveFiles& waveFiles)
    : desktop_(desktop), messages_(messages), registry_(registry), names_(names) {
  // Of waveforms the reader and writer show every failure themselves.
  const auto read = [&waveFiles](const std::string& path) {
    return waveFiles.Read_WaveFile(path) ? 0 : std::int32_t{kMsgReadFailed};
  };
  const auto readReals = [&waveFiles](const std::string& path) {
    return waveFiles.Read_RealText(path) ? 0 : std::int32_t{kMsgReadFailed};
  };
  const auto write = [&waveFiles](const std::string& path) {
    return waveFiles.Write_WaveFile(path) ? 0 : std::int32_t{kMsgWriteFailed};
  };
  SetFormat(Kind_Wave, {read, write});
  SetFormat(Kind_WaveText, {{}, write});
  SetFormat(Kind_RealText, {readReals, {}});
}

bool FileCommands::Open_File(int kind) {
  const FileKindRow& row = RowOf(kind);
  if (row.openFilter.english == nullptr) return Read(row, {});
  const DialogName name = Set_DialogFile(names_.*row.remembered, row.defaultExtension, Get_DefaultFolder());
  const int filter = name.defaultExt == row.defaultExtension ? 1 : row.otherFilter;
  const auto answer = desktop_.fileDialogs.Open(
      {"", messages_.Pick(row.openFilter.japanese, row.openFilter.english), filter, name.fileName, name.defaultExt});
  if (!answer || (row.emptyOpenIsCancelled && answer->path.empty())) return false;
  const bool asReals = row.realTextFilter != 0 && answer->filterIndex == row.realTextFilter;
  return Read(asReals ? RowOf(Kind_RealText) : row, answer->path);
}

bool FileCommands::Save_File(int kind, bool asText) {
  const FileKindRow& chosen = RowOf(kind);
  const FileKindRow& row = chosen.kind == Kind_Wave && asText ? RowOf(Kind_WaveText) : chosen;
  if (row.saveFilter.english == nullptr) return false;
  const std::string& remembered = names_.*row.remembered;
  DialogName name{SaveName(remembered, Get_DefaultFolder()), row.defaultExtension};
  switch (row.offer) {
  case FileKindRow::Offer::AsItIs: break;
  case FileKindRow::Offer::WithoutExtension:
    name = Set_DialogFile(remembered, row.defaultExtension, Get_DefaultFolder());
    break;
  case FileKindRow::Offer::WithDefaultExtension:
    name = WaveSaveName(remembered, row.defaultExtension, Get_DefaultFolder());
    break;
  }
  const auto answer = desktop_.fileDialogs.Save(
      {"", messages_.Pick(row.saveFilter.japanese, row.saveFilter.english), 1, name.fileName, name.defaultExt});
  if (!answer || (row.emptySaveIsCancelled && answer->path.empty())) return false;
  return Write(row, answer->path);
}

void FileCommands::SaveCurrent() {
  if (names_.CurrentWaveFile == kUntitled) {
    Save_File(Kind_Wave, false);
    return;
  }
  // A copy: the writer sets the name.
  const std::string path = names_.CurrentWaveFile;
  if (formats_[Kind_Wave].write(path) == 0 && titleChanged_) titleChanged_();
}

bool FileCommands::OpenWave(const std::string& path) {
  return Read(RowOf(Kind_Wave), path);
}

bool FileCommands::Read(const FileKindRow& row, const std::string& path) {
  const auto format = formats_.find(row.kind);
  if (!TakesFile(row, path, row.openRefusal) || format == formats_.end() || !format->second.read) return false;
  return Finish(row, path, format->second.read(path), row.readFailure, row.openRemembers);
}

bool FileCommands::Write(const FileKindRow& row, const std::string& path) {
  const auto format = formats_.find(row.kind);
  if (!TakesFile(row, path, row.saveRefusal) || format == formats_.end() || !format->second.write) return false;
  return Finish(row, path, format->second.write(path), row.writeFailure, row.saveRemembers);
}

bool FileCommands::Finish(const FileKindRow& row, const std::string& path, std::int32_t result, int failure,
                          bool remembers) {
  if (failure != 0 && result == failure) {
    messages_.ErrorBoxText("[" + path + "] " + messages_.MessageText(failure));
    return false;
  }
  if (remembers) names_.*row.remembered = path;
  if (row.isWaveform && result == 0) {
    if (!path.empty()) RememberFolder(path);
    if (titleChanged_) titleChanged_();
  }
  return result == 0;
}

bool FileCommands::TakesFile(const FileKindRow& row, const std::string& path, int refusal) const {
  if (Accepts(row, path)) return true;
  if (refusal != 0) messages_.ErrorBox(refusal);
  return false;
}

void FileCommands::RememberFolder(const std::string& path) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::absolute(path, error).parent_path();
  if (!error) registry_.SetSetting(kFolderSection, kFolderKey, folder.string());
}

} // namespace calder
