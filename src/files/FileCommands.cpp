#include "files/FileCommands.h"

#include "files/FileNames.h"
#include "files/WaveFiles.h"
#include "platform/FileDialogs.h"

#include <filesystem>

namespace calder {
namespace {

constexpr const char* kFolderSection = "Files";
constexpr const char* kFolderKey = "LastFolder";
constexpr int kRealTextFilter = 3;

} // namespace

bool FileCommands::Open_File(int kind) {
  switch (kind) {
  case Kind_List: OpenList(); return false;
  case Kind_Table: OpenTable(); return false;
  case Kind_Pwf: OpenPwf(); return false;
  case Kind_System: OpenSystem(); return false;
  case Kind_Import: return OpenImport();
  default: return OpenWaveDialog();
  }
}

void FileCommands::Save_File(int kind, bool asText) {
  switch (kind) {
  case Kind_List: return SaveList();
  case Kind_Table: return SaveTable();
  case Kind_Pwf: return SavePwf();
  case Kind_System: return SaveSystem();
  default: return SaveWave(asText);
  }
}

void FileCommands::SaveCurrent() {
  if (program_.names.CurrentWaveFile == kUntitled) {
    Save_File(Kind_Wave, false);
    return;
  }
  waveFiles_.Write_WaveFile(program_.names.CurrentWaveFile);
  TitleChanged();
}

bool FileCommands::OpenWave(const std::string& path) {
  const bool opened = waveFiles_.Read_WaveFile(path);
  if (opened) RememberFolder(path);
  TitleChanged();
  return opened;
}

void FileCommands::OpenList() {
  const DialogName name = Set_DialogFile(program_.names.LastListFile, "wfn", Get_DefaultFolder());
  const auto answer =
      program_.desktop.fileDialogs.Open({"",
                                         program_.messages.Pick("ﾃｷｽﾄ独自形式(*.wfn)|*.wfn|全てのﾌｧｲﾙ(*.*)|*.*",
                                                                "Expression files(*.wfn)|*.wfn|All files(*.*)|*.*"),
                                         1, name.fileName, name.defaultExt});
  if (!answer || !Is_FileExt(answer->path, "wfn") || !handlers_.readList) return;
  handlers_.readList(answer->path);
}

void FileCommands::OpenTable() {
  const DialogName name = Set_DialogFile(program_.names.LastTableFile, "prn", Get_DefaultFolder());
  const auto answer =
      program_.desktop.fileDialogs.Open({"",
                                         program_.messages.Pick("ﾃｷｽﾄﾌｧｲﾙ(*.prn)|*.prn|全てのﾌｧｲﾙ(*.*)|*.*",
                                                                "Text files(*.prn)|*.prn|All files(*.*)|*.*"),
                                         1, name.fileName, name.defaultExt});
  if (!answer || answer->path.empty()) return;
  if (!Is_FileExt(answer->path, "csv") && !Is_FileExt(answer->path, "tsv") && !Is_FileExt(answer->path, "prn")) {
    program_.messages.ErrorBox(kMsgBadExtension);
    return;
  }
  if (!handlers_.readTable) return;
  handlers_.readTable(answer->path);
  program_.names.LastTableFile = answer->path;
}

void FileCommands::OpenPwf() {
  const DialogName name = Set_DialogFile(program_.names.LastPwfFile, "pwf", Get_DefaultFolder());
  const auto answer = program_.desktop.fileDialogs.Open(
      {"", program_.messages.Pick("ﾃｷｽﾄ独自形式(*.pwf)|*.pwf", "PWF Parameter files(*.pwf)|*.pwf"), 1, name.fileName,
       name.defaultExt});
  if (!answer) return;
  if (!Is_FileExt(answer->path, "pwf")) {
    program_.messages.ErrorBox(kMsgBadFileName);
    return;
  }
  if (handlers_.readPwf && handlers_.readPwf(answer->path) == kMsgReadFailed)
    ReportFailure(answer->path, kMsgReadFailed);
}

void FileCommands::OpenSystem() {
  const DialogName name = Set_DialogFile(program_.names.LastSystemFile, "ocb", Get_DefaultFolder());
  const auto answer =
      program_.desktop.fileDialogs.Open({"",
                                         program_.messages.Pick("ｼｽﾃﾑﾌｧｲﾙ(*.ocb)|*.ocb|全てのﾌｧｲﾙ(*.*)|*.*",
                                                                "System files(*.ocb)|*.ocb|All files(*.*)|*.*"),
                                         1, name.fileName, name.defaultExt});
  if (!answer || !Is_FileExt(answer->path, "ocb") || !handlers_.readSystem) return;
  if (handlers_.readSystem(answer->path) == kMsgReadFailed) {
    ReportFailure(answer->path, kMsgReadFailed);
    return;
  }
  if (handlers_.systemRead) handlers_.systemRead();
  program_.names.LastSystemFile = answer->path;
}

bool FileCommands::OpenWaveDialog() {
  DialogName name = Set_DialogFile(program_.names.CurrentWaveFile, "wdb", Get_DefaultFolder());
  const int filter = name.defaultExt == "wdb" ? 1 : 2;
  const auto answer = program_.desktop.fileDialogs.Open(
      {"",
       program_.messages.Pick("ﾊﾞｲﾅﾘ独自形式(*.wdb)|*.wdb|ﾃｷｽﾄ 整数形式(*.txt)|*.txt|ﾃｷｽﾄ "
                              "実数形式(*.txt)|*.txt|全てのﾌｧｲﾙ(*.*)|*.*",
                              "Binary files(*.wdb)|*.wdb|Text Integer data files(*.txt)|*.txt|Text Real data "
                              "files(*.txt)|*.txt|All files(*.*)|*.*"),
       filter, name.fileName, name.defaultExt});
  if (!answer || answer->path.empty()) return false;
  const bool opened = answer->filterIndex == kRealTextFilter ? waveFiles_.Read_RealText(answer->path)
                                                             : waveFiles_.Read_WaveFile(answer->path);
  if (opened) RememberFolder(answer->path);
  TitleChanged();
  return opened;
}

bool FileCommands::OpenImport() {
  const bool imported = handlers_.import && handlers_.import() == 0;
  if (imported) TitleChanged();
  return imported;
}

void FileCommands::SaveList() {
  const auto answer = program_.desktop.fileDialogs.Save(
      {"", program_.messages.Pick("ﾃｷｽﾄ独自形式(*.wfn)|*.wfn", "Expression files(*.wfn)|*.wfn"), 1,
       SaveName(program_.names.LastListFile, Get_DefaultFolder()), "wfn"});
  if (!answer) return;
  if (!Is_FileExt(answer->path, "wfn")) {
    program_.messages.ErrorBox(kMsgBadFileName);
    return;
  }
  if (!handlers_.writeList) return;
  handlers_.writeList(answer->path);
  program_.names.LastListFile = answer->path;
}

void FileCommands::SaveTable() {
  const DialogName name = Set_DialogFile(program_.names.LastTableFile, "prn", Get_DefaultFolder());
  const auto answer = program_.desktop.fileDialogs.Save(
      {"", program_.messages.Pick("ﾃｷｽﾄﾌｧｲﾙ（ｽﾍﾟｰｽ区切り）(*.prn)|*.prn", "Text files(Space delimited)(*.prn)|*.prn"),
       1, name.fileName, name.defaultExt});
  if (!answer) return;
  if (!Is_FileExt(answer->path, "csv") && !Is_FileExt(answer->path, "tsv") && !Is_FileExt(answer->path, "prn")) {
    program_.messages.ErrorBox(kMsgBadFileName);
    return;
  }
  if (!handlers_.writeTable) return;
  handlers_.writeTable(answer->path);
  program_.names.LastTableFile = answer->path;
}

void FileCommands::SavePwf() {
  const auto answer = program_.desktop.fileDialogs.Save(
      {"", program_.messages.Pick("ﾃｷｽﾄ独自形式(*.pwf)|*.pwf", "PWF Parameter files(*.pwf)|*.pwf"), 1,
       SaveName(program_.names.LastPwfFile, Get_DefaultFolder()), "pwf"});
  if (!answer) return;
  if (!Is_FileExt(answer->path, "pwf")) {
    program_.messages.ErrorBox(kMsgBadFileName);
    return;
  }
  if (!handlers_.writePwf) return;
  if (handlers_.writePwf(answer->path) == kMsgWriteFailed) {
    ReportFailure(answer->path, kMsgWriteFailed);
    return;
  }
  program_.names.LastPwfFile = answer->path;
}

void FileCommands::SaveSystem() {
  const auto answer = program_.desktop.fileDialogs.Save(
      {"", program_.messages.Pick("ｼｽﾃﾑﾌｧｲﾙ(*.ocb)|*.ocb", "System files(*.ocb)|*.ocb"), 1,
       SaveName(program_.names.LastSystemFile, Get_DefaultFolder()), "ocb"});
  if (!answer) return;
  if (!Is_FileExt(answer->path, "ocb")) {
    program_.messages.ErrorBox(kMsgBadFileName);
    return;
  }
  if (!handlers_.writeSystem) return;
  if (handlers_.writeSystem(answer->path) == kMsgWriteFailed) {
    ReportFailure(answer->path, kMsgWriteFailed);
    return;
  }
  program_.names.LastSystemFile = answer->path;
}

void FileCommands::SaveWave(bool asText) {
  const DialogName name = WaveSaveName(program_.names.CurrentWaveFile, asText ? "txt" : "wdb", Get_DefaultFolder());
  const char* filter = asText ? program_.messages.Pick("ﾃｷｽﾄ形式(*.txt)|*.txt", "Text files(*.txt)|*.txt")
                              : program_.messages.Pick("ﾊﾞｲﾅﾘ独自形式(*.wdb)|*.wdb", "Binary files(*.wdb)|*.wdb");
  const auto answer = program_.desktop.fileDialogs.Save({"", filter, 1, name.fileName, name.defaultExt});
  if (!answer || answer->path.empty()) return;
  if (waveFiles_.Write_WaveFile(answer->path)) RememberFolder(answer->path);
  TitleChanged();
}

void FileCommands::ReportFailure(const std::string& path, int message) const {
  program_.messages.ErrorBoxText("[" + path + "] " + program_.messages.MessageText(message));
}

void FileCommands::TitleChanged() const {
  if (titleChanged_) titleChanged_();
}

void FileCommands::RememberFolder(const std::string& path) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::absolute(path, error).parent_path();
  if (!error) program_.registry.SetSetting(kFolderSection, kFolderKey, folder.string());
}

} // namespace calder
