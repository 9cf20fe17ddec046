#include "libs/sysinf32/sysinf32.h"

#include "libs/sysinf32/ModelLoader.h"
#include "libs/sysinf32/ModelRecord.h"

#include <algorithm>
#include <future>
#include <new>
#include <system_error>

namespace calder {

namespace {

template <typename Item>
const Item* At(const std::vector<Item>& items, std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= items.size()) return nullptr;
  return &items[static_cast<std::size_t>(index)];
}

template <typename Item>
std::int32_t Count(const std::vector<Item>& items) {
  return static_cast<std::int32_t>(items.size());
}

} // namespace

struct ModelDatabase::Impl {
  struct Loaded {
    std::vector<Model> models;
    ModelFault fault;
  };
  static Loaded Load(const std::string& folder) {
    Loaded loaded;
    try {
      if (std::optional<ModelFault> fault = LoadModels(folder, loaded.models)) loaded.fault = std::move(*fault);
    } catch (const std::bad_alloc&) {
      loaded.models.clear();
      loaded.fault.status = SYS_NO_MEMORY;
    }
    return loaded;
  }

  std::vector<Model> models;
  ModelFault fault;
  std::future<Loaded> ahead;
  std::string aheadFolder;

  [[nodiscard]] const Model* At(std::int32_t model) const { return calder::At(models, model); }
  [[nodiscard]] const ModelChannel* At(std::int32_t model, std::int32_t channel) const {
    const Model* found = At(model);
    return found == nullptr ? nullptr : calder::At(found->Channels, channel);
  }
  [[nodiscard]] const AmplitudeRange* At(std::int32_t model, std::int32_t channel, std::int32_t range) const {
    const ModelChannel* found = At(model, channel);
    return found == nullptr ? nullptr : calder::At(found->Ranges, range);
  }
};

ModelDatabase::ModelDatabase() : impl_(std::make_unique<Impl>()) {}
ModelDatabase::~ModelDatabase() = default;
ModelDatabase::ModelDatabase(ModelDatabase&&) noexcept = default;
ModelDatabase& ModelDatabase::operator=(ModelDatabase&&) noexcept = default;

void ModelDatabase::Prefetch(const std::string& folder) {
  impl_->aheadFolder = folder;
  try {
    impl_->ahead = std::async(std::launch::async, Impl::Load, folder);
  } catch (const std::system_error&) {
    impl_->ahead = {}; // no thread: the files are read when they are wanted
  }
}

std::int32_t ModelDatabase::SysInitDeviceInfo(const std::string& folder) {
  const bool isAhead = impl_->ahead.valid() && impl_->aheadFolder == folder;
  Impl::Loaded loaded = isAhead ? impl_->ahead.get() : Impl::Load(folder);
  impl_->ahead = {};
  impl_->models = std::move(loaded.models);
  impl_->fault = std::move(loaded.fault);
  return impl_->fault.status;
}

std::int32_t ModelDatabase::SysGetSysErrorLineNo() const {
  return impl_->fault.line;
}
std::string ModelDatabase::SysGetSysErrorFileName() const {
  return impl_->fault.file;
}
std::string ModelDatabase::SysGetSysErrorText() const {
  return impl_->fault.text;
}

std::int32_t ModelDatabase::SysGetDeviceCnt() const {
  return Count(impl_->models);
}

std::string ModelDatabase::SysGetDeviceName(std::int32_t model) const {
  const Model* found = impl_->At(model);
  return found == nullptr ? std::string() : found->Name;
}

std::int32_t ModelDatabase::SysGetDeviceInfo(std::int32_t model, SystemInfo& record) const {
  const Model* found = impl_->At(model);
  if (found == nullptr) return SYS_REFUSED;
  const SystemInfo before = record;
  FillRecord(*found, static_cast<std::int16_t>(model), found->Defaults, record);
  if (before.Address >= record.AddressMin && before.Address <= record.AddressMax) record.Address = before.Address;
  const auto size = std::find(found->MemorySizes.begin(), found->MemorySizes.end(), before.MemorySize);
  if (size != found->MemorySizes.end())
    SetMemorySize(*found, static_cast<std::int16_t>(size - found->MemorySizes.begin()), record);
  record.XUnit = before.XUnit;
  record.YUnit = before.YUnit;
  record.XUserMin = before.XUserMin;
  record.XUserMax = before.XUserMax;
  record.YUserMin = before.YUserMin;
  record.YUserMax = before.YUserMax;
  record.XUserName = before.XUserName;
  record.YUserName = before.YUserName;
  record.TransferFormat = before.TransferFormat;
  record.ControlPointCount = before.ControlPointCount;
  return 0;
}

std::int32_t ModelDatabase::SysGetInitDeviceInfo(std::int32_t model, SystemInfo& record) const {
  const Model* found = impl_->At(model);
  if (found == nullptr) return SYS_REFUSED;
  FillRecord(*found, static_cast<std::int16_t>(model), found->Start, record);
  return 0;
}

std::int32_t ModelDatabase::SysGetInterfaceInfo(std::int32_t model) const {
  const Model* found = impl_->At(model);
  return found == nullptr ? 0 : found->Interfaces;
}

std::int16_t ModelDatabase::SysChangeInterface(std::int32_t model, std::int32_t interfaceIndex,
                                               SystemInfo& record) const {
  const Model* found = impl_->At(model);
  if (found == nullptr || interfaceIndex < 0 || static_cast<std::size_t>(interfaceIndex) >= Model::kInterfaceKinds)
    return SYS_REFUSED;
  SetAddressRange(found->Addresses[static_cast<std::size_t>(interfaceIndex)], record);
  return 0;
}

std::int32_t ModelDatabase::SysGetMemorySizeCnt(std::int32_t model) const {
  const Model* found = impl_->At(model);
  return found == nullptr ? 0 : Count(found->MemorySizes);
}

std::string ModelDatabase::SysGetMemorySizeName(std::int32_t model, std::int32_t index) const {
  const Model* found = impl_->At(model);
  const std::int32_t* points = found == nullptr ? nullptr : At(found->MemorySizes, index);
  return points == nullptr ? std::string() : std::to_string(*points);
}

std::int16_t ModelDatabase::SysChangeMemorySize(std::int32_t model, std::int32_t index, SystemInfo& record) const {
  const Model* found = impl_->At(model);
  if (found == nullptr || At(found->MemorySizes, index) == nullptr) return SYS_REFUSED;
  SetMemorySize(*found, static_cast<std::int16_t>(index), record);
  return 0;
}

std::int32_t ModelDatabase::SysGetChannelCnt(std::int32_t model) const {
  const Model* found = impl_->At(model);
  return found == nullptr ? 0 : Count(found->Channels);
}

std::string ModelDatabase::SysGetChannelName(std::int32_t model, std::int32_t index) const {
  const ModelChannel* channel = impl_->At(model, index);
  return channel == nullptr ? std::string() : channel->Name;
}

std::int16_t ModelDatabase::SysChangeChannel(std::int32_t model, std::int32_t channel, SystemInfo& record) const {
  if (impl_->At(model, channel) == nullptr) return SYS_REFUSED;
  SetChannel(*impl_->At(model), static_cast<std::int16_t>(channel), record);
  return 0;
}

std::int32_t ModelDatabase::SysGetRangeCnt(std::int32_t model, std::int32_t channel) const {
  const ModelChannel* found = impl_->At(model, channel);
  return found == nullptr ? 0 : Count(found->Ranges);
}

std::string ModelDatabase::SysGetRangeName(std::int32_t model, std::int32_t channel, std::int32_t index) const {
  const AmplitudeRange* range = impl_->At(model, channel, index);
  return range == nullptr ? std::string() : range->Name;
}

std::int16_t ModelDatabase::SysChangeRange(std::int32_t model, std::int32_t channel, std::int32_t range,
                                           SystemInfo& record) const {
  if (impl_->At(model, channel, range) == nullptr) return SYS_REFUSED;
  SetRange(*impl_->At(model, channel), static_cast<std::int16_t>(range), record);
  return 0;
}

std::int16_t ModelDatabase::SysCheckFrequency(std::int32_t model, std::int32_t channel, std::int32_t language,
                                              double frequency, std::string& warning) const {
  if (impl_->At(model, channel) == nullptr) return SYS_REFUSED;
  for (const FrequencyWarning& entry : impl_->At(model)->Warnings) {
    if (entry.Channel >= 0 && entry.Channel != channel) continue;
    if (!(frequency > entry.Above && frequency <= entry.UpTo)) continue;
    warning = language == 0 ? entry.Japanese : entry.English;
    return 1;
  }
  return 0;
}

std::int16_t ModelDatabase::SysChangeFrequency(std::int32_t model, std::int32_t channel, double frequency,
                                               SystemInfo& record) const {
  const ModelChannel* found = impl_->At(model, channel);
  if (found == nullptr || !found->Frequency.Holds(frequency)) return SYS_REFUSED;
  SetFrequency(frequency, record);
  return 0;
}

std::int16_t ModelDatabase::SysChangeAmplitude(std::int32_t model, std::int32_t channel, std::int32_t range,
                                               double amplitude, SystemInfo& record) const {
  const AmplitudeRange* found = impl_->At(model, channel, range);
  if (found == nullptr || !found->Amplitude.Holds(amplitude)) return SYS_REFUSED;
  record.Amplitude = amplitude;
  return 0;
}

std::int16_t ModelDatabase::SysChangeOffset(std::int32_t model, std::int32_t channel, std::int32_t range, double offset,
                                            SystemInfo& record) const {
  const AmplitudeRange* found = impl_->At(model, channel, range);
  if (found == nullptr || !found->Offset.Holds(offset)) return SYS_REFUSED;
  record.Offset = offset;
  return 0;
}

std::int32_t ModelDatabase::SysGetGPIBInfo(std::int32_t model, std::int32_t tableNumber, CommandTable& table) const {
  const Model* found = impl_->At(model);
  if (found == nullptr || tableNumber < 0 || static_cast<std::size_t>(tableNumber) >= Model::kTables)
    return SYS_REFUSED;
  const std::vector<CommandRow>& rows = found->Commands[static_cast<std::size_t>(tableNumber)];
  table = CommandTable();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    table.Key[i] = rows[i].Key;
    table.Value[i] = rows[i].Value;
  }
  return Count(rows);
}

const Protocol& ModelDatabase::SysGetProtocol(std::int32_t model) const {
  static const Protocol kPlain;
  const Model* found = impl_->At(model);
  return found == nullptr ? kPlain : found->Protocol;
}

} // namespace calder
