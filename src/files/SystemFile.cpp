#include "files/SystemFile.h"

#include "files/SettingsBlock.h"
#include "files/WaveFiles.h"

#include <array>

namespace calder {

std::int32_t SystemFile::Write_SystemFile(const std::string& path) const {
  std::array<std::byte, WDB_SETTINGS_BYTES> block{};
  Pack_Settings(program_.settings, program_.interfaceKind, PageOf(program_.language), block);
  return program_.fileLibrary.SaveSystemFile(path, block);
}

std::int32_t SystemFile::Read_SystemFile(const std::string& path) {
  std::array<std::byte, WDB_SETTINGS_BYTES> block{};
  if (const std::int32_t result = program_.fileLibrary.ReadSystemFile(path, block); result != 0) return result;
  SystemInfo record = program_.settings;
  std::int32_t kind = program_.interfaceKind;
  Unpack_Settings(block, PageOf(program_.language), record, kind);
  if (!IsSound(record)) return kMsgReadFailed;
  waveFiles_.Resolve_Model(record);
  program_.settings = record;
  program_.interfaceKind = static_cast<std::int16_t>(kind);
  return 0;
}

} // namespace calder
