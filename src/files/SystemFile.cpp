#include "files/SystemFile.h"

#include "app/Messages.h"
#include "files/SettingsBlock.h"
#include "files/WaveFiles.h"
#include "libs/file32/file32.h"

#include <array>

namespace calder {

std::int32_t SystemFile::Write_SystemFile(const std::string& path) const {
  std::array<std::byte, WDB_SETTINGS_BYTES> block{};
  Pack_Settings(settings_, interfaceKind_, PageOf(messages_.GetLanguage()), block);
  return fileLibrary_.SaveSystemFile(path, block);
}

std::int32_t SystemFile::Read_SystemFile(const std::string& path) {
  std::array<std::byte, WDB_SETTINGS_BYTES> block{};
  if (const std::int32_t result = fileLibrary_.ReadSystemFile(path, block); result != 0) return result;
  SystemInfo record = settings_;
  std::int32_t kind = interfaceKind_;
  Unpack_Settings(block, PageOf(messages_.GetLanguage()), record, kind);
  if (!IsSound(record)) return kMsgReadFailed;
  waveFiles_.Resolve_Model(record);
  settings_ = record;
  interfaceKind_ = static_cast<std::int16_t>(kind);
  return 0;
}

} // namespace calder
