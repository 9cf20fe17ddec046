#include "files/WaveFiles.h"

#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "app/RememberedNames.h"
#include "files/FileNames.h"
#include "files/ParseErrorTexts.h"
#include "files/SettingsBlock.h"
#include "instrument/SystemSetup.h"
#include "libs/file32/file32.h"
#include "platform/AsciiText.h"

#include <algorithm>
#include <array>

namespace calder {
namespace {

constexpr std::size_t kModelNameOffset = 2;
constexpr std::size_t kModelNameBytes = 16;

} // namespace

bool WaveFiles::Read_WaveFile(const std::string& path) {
  if (Is_FileExt(path, "wdb")) return ReadWdb(path);
  if (Is_FileExt(path, "txt")) return ReadIntegerText(path);
  messages_.ErrorBox(kMsgBadExtension);
  return false;
}

bool WaveFiles::ReadWdb(const std::string& path) {
  const std::span<const std::byte> file = fileLibrary_.LoadWdb(path);
  switch (Check_WdbModel(file)) {
  case ModelCheck::Unknown: messages_.ErrorBox(kMsgUnknownModel); return false;
  case ModelCheck::Unreadable: messages_.ErrorBox(kMsgReadFailed); return false;
  case ModelCheck::Known: break;
  }
  // The settings are looked at before any buffer is touched, so that a damaged file changes nothing.
  SystemInfo record = settings_;
  std::int32_t kind = interfaceKind_;
  const std::span<const std::byte> block = WdbSettings(file);
  bool sound = !block.empty();
  if (sound) {
    Unpack_Settings(block.first<WDB_SETTINGS_BYTES>(), PageOf(messages_.GetLanguage()), record, kind);
    sound = IsSound(record);
  }
  EditBuffers& buffers = buffers_;
  if (!sound || fileLibrary_.TakeWdb(file, buffers.Work()) != 0) {
    messages_.ErrorBox(kMsgReadFailed);
    return false;
  }
  Resolve_Model(record);
  buffers.TakeLoaded();
  settings_ = record;
  interfaceKind_ = static_cast<std::int16_t>(kind);
  setup_.RecordLoaded();
  setup_.Accept();
  RememberNames(path);
  return true;
}

bool WaveFiles::ReadIntegerText(const std::string& path) {
  EditBuffers& buffers = buffers_;
  std::int32_t points = 0;
  if (fileLibrary_.LoadWaveData(path, buffers.Work(), 0, settings_.MemorySize, points) != 0) {
    ReportReadFailure();
    return false;
  }
  TakeWork(points);
  RememberNames(path);
  return true;
}

bool WaveFiles::Read_RealText(const std::string& path) {
  if (!Is_FileExt(path, "txt")) {
    messages_.ErrorBox(kMsgBadExtension);
    return false;
  }
  EditBuffers& buffers = buffers_;
  std::vector<std::int16_t> codes;
  if (fileLibrary_.LoadRealData(path, settings_.MemorySize, codes) != 0) {
    ReportReadFailure();
    return false;
  }
  W_ClearMemory(buffers.Work(), 0, W_MAX_POINTS);
  std::copy(codes.begin(), codes.end(), W_Lock(buffers.Work()).begin());
  TakeWork(static_cast<std::int32_t>(codes.size()));
  RememberNames(path);
  return true;
}

void WaveFiles::TakeWork(std::int32_t points) {
  EditBuffers& buffers = buffers_;
  const std::int32_t size = settings_.MemorySize;
  buffers.Save_Undo();
  if (points == 1) {
    W_MakeDC(buffers.Work(), 0, size, W_GetWaveData(buffers.Work(), 0, 1));
  } else if (points < size) {
    W_CompWaveX(buffers.Work(), 0, points - 1, size, 0, size);
  }
  W_CopyMemory(buffers.Work(), buffers.Current(), 0, 0, size);
  setup_.ForgetControlPoints();
}

WaveFiles::ModelCheck WaveFiles::Check_WdbModel(std::span<const std::byte> file) const {
  if (file.size() < kModelNameOffset + kModelNameBytes) return ModelCheck::Unreadable;
  const std::string_view field(reinterpret_cast<const char*>(&file[kModelNameOffset]), kModelNameBytes);
  const std::string name = TrimBlanks(FromCodePageField(field, PageOf(messages_.GetLanguage())));
  for (const std::string& model : setup_.Models()) {
    if (model.substr(0, name.size()) == name) return ModelCheck::Known;
  }
  return ModelCheck::Unknown;
}

void WaveFiles::Resolve_Model(SystemInfo& record) const {
  const std::vector<std::string>& models = setup_.Models();
  const std::string name = TrimBlanks(record.ModelName);
  const auto found = std::find(models.begin(), models.end(), name);
  record.ModelNo = static_cast<std::int16_t>(found == models.end() ? 0 : found - models.begin());
  if (found == models.end() && !models.empty()) record.ModelName = models.front();
}

bool WaveFiles::Write_WaveFile(const std::string& path) {
  setup_.ApplyMemorySize();
  const bool binary = Is_FileExt(path, "wdb");
  if (!binary && !Is_FileExt(path, "txt")) {
    messages_.ErrorBox(kMsgBadExtension);
    return false;
  }
  const std::int32_t result =
      binary ? Write_Wdb(path) : fileLibrary_.SaveWaveData(path, buffers_.Current(), 0, settings_.MemorySize);
  if (result != 0) {
    messages_.ErrorBox(kMsgWriteFailed);
    return false;
  }
  RememberNames(path);
  return true;
}

std::int32_t WaveFiles::Write_Wdb(const std::string& path) {
  setup_.RefreshControlPoints();
  std::array<std::byte, WDB_SETTINGS_BYTES> block{};
  Pack_Settings(settings_, interfaceKind_, PageOf(messages_.GetLanguage()), block);
  const auto entries = static_cast<std::size_t>(settings_.ControlPointCount);
  const std::span<const std::int32_t> positions = W_Lock32(buffers_.Block32());
  const std::span<const std::int16_t> values = W_Lock(buffers_.Block16());
  std::vector<std::byte> table(entries * WDB_TABLE_ENTRY_BYTES);
  for (std::size_t i = 0; i < entries; ++i) {
    std::byte* entry = &table[i * WDB_TABLE_ENTRY_BYTES];
    const auto position = static_cast<std::uint32_t>(positions[i]);
    const auto value = static_cast<std::uint16_t>(values[i]);
    for (unsigned byte = 0; byte < 4; ++byte) entry[byte] = static_cast<std::byte>(position >> (8 * byte));
    for (unsigned byte = 0; byte < 2; ++byte) entry[4 + byte] = static_cast<std::byte>(value >> (8 * byte));
  }
  return fileLibrary_.Save4410File(path, block, buffers_.Current(), table);
}

void WaveFiles::ReportReadFailure() const {
  const TextFault& fault = fileLibrary_.LastFault();
  std::string text = messages_.MessageText(kMsgReadFailed);
  if (fault.line > 0) text += messages_.Pick("行 ", "Line ") + std::to_string(fault.line) + ": ";
  messages_.ErrorBoxText(text + ReasonText(fault.reason, messages_.GetLanguage()));
}

void WaveFiles::RememberNames(const std::string& path) {
  RememberedNames& names = names_;
  names.CurrentWaveFile = path;
  names.LastListFile = WithoutExtension(path);
  names.LastSystemFile = names.LastListFile;
  names.LastTableFile = names.LastListFile;
}

} // namespace calder
