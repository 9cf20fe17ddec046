#include "instrument/SystemSetup.h"

#include "app/EngValB.h"
#include "app/Program.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/AsciiText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calder {
namespace {

template <typename NameOf>
std::vector<std::string> ReadList(std::int32_t count, NameOf nameOf) {
  std::vector<std::string> list;
  list.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (std::int32_t i = 0; i < count; ++i) list.push_back(TrimBlanks(nameOf(i)));
  return list;
}

} // namespace

SystemSetup::SystemSetup(Program& program)
    : settings_(program.settings), models_(program.models), buffers_(program.buffers),
      controlPoints_(program.controlPoints), registry_(program.registry), interfaceKind_(program.interfaceKind),
      commandTables_(program.commandTables), commandRows_(program.commandRows) {}

int SystemSetup::InterfaceChoice() const {
  const auto found = std::find_if(interfaces_.begin(), interfaces_.end(),
                                  [&](const Interface& item) { return item.kind == interfaceKind_; });
  return found == interfaces_.end() ? -1 : static_cast<int>(found - interfaces_.begin());
}

std::int32_t SystemSetup::ShownMemorySize() const {
  if (memorySizeChoice_ < 0 || memorySizeChoice_ >= static_cast<int>(memorySizes_.size())) {
    return settings_.MemorySize;
  }
  const double points = LeadingNumber(memorySizes_[static_cast<std::size_t>(memorySizeChoice_)]);
  return static_cast<std::int32_t>(std::clamp(points, 1.0, static_cast<double>(W_MAX_POINTS)));
}

void SystemSetup::LoadModels() {
  modelNames_ = ReadList(models_.SysGetDeviceCnt(), [&](std::int32_t i) { return models_.SysGetDeviceName(i); });
}

void SystemSetup::RefillLists() {
  const ModelDatabase& database = models_;
  const std::int16_t model = settings_.ModelNo;
  const std::int16_t channel = settings_.Channel;
  modelChoice_ = model;
  memorySizes_ = ReadList(database.SysGetMemorySizeCnt(model),
                          [&](std::int32_t i) { return database.SysGetMemorySizeName(model, i); });
  channels_ =
      ReadList(database.SysGetChannelCnt(model), [&](std::int32_t i) { return database.SysGetChannelName(model, i); });
  ranges_ = ReadList(database.SysGetRangeCnt(model, channel),
                     [&](std::int32_t i) { return database.SysGetRangeName(model, channel, i); });
  memorySizeChoice_ = SizeIndexOf(settings_.MemorySize);
  RebuildInterfaces();
  RebuildTransferFormats();
}

void SystemSetup::ChooseModel(int model) {
  if (model < 0 || model >= static_cast<int>(modelNames_.size())) return;
  SystemInfo& settings = settings_;
  const std::int16_t channel = settings.Channel;
  const std::int16_t range = settings.RangeNo;
  if (models_.SysGetDeviceInfo(model, settings) < 0) return;
  settings.ModelNo = static_cast<std::int16_t>(model);
  const std::int32_t channelCount = models_.SysGetChannelCnt(model);
  if (channelCount > 0) {
    models_.SysChangeChannel(model, std::min<std::int32_t>(std::max<std::int16_t>(channel, 0), channelCount - 1),
                             settings);
  }
  const std::int32_t rangeCount = models_.SysGetRangeCnt(model, settings.Channel);
  if (rangeCount > 0) {
    models_.SysChangeRange(model, settings.Channel,
                           std::min<std::int32_t>(std::max<std::int16_t>(range, 0), rangeCount - 1), settings);
  }
  RefillLists();
  if (InterfaceChoice() < 0 && !interfaces_.empty()) interfaceKind_ = interfaces_.front().kind;
  models_.SysChangeInterface(model, interfaceKind_, settings);
  ShowRecord();
  LoadCommandTables();
}

void SystemSetup::ChooseChannel(int channel) {
  SystemInfo& settings = settings_;
  if (models_.SysChangeChannel(settings.ModelNo, channel, settings) != 0) return;
  ranges_ = ReadList(models_.SysGetRangeCnt(settings.ModelNo, channel),
                     [&](std::int32_t i) { return models_.SysGetRangeName(settings.ModelNo, channel, i); });
}

void SystemSetup::ChooseMemorySize(int index) {
  if (index < 0 || index >= static_cast<int>(memorySizes_.size())) return;
  memorySizeChoice_ = index;
  const double ratio = static_cast<double>(settings_.MemorySize) / ShownMemorySize();
  settings_.SizeRatio =
      static_cast<std::int16_t>(std::min<double>(std::nearbyint(ratio), std::numeric_limits<std::int16_t>::max()));
}

void SystemSetup::KeepMemorySize(std::int32_t points) {
  const int index = SizeIndexOf(points);
  if (index < 0 || models_.SysChangeMemorySize(settings_.ModelNo, index, settings_) != 0) return;
  RefillLists();
}

void SystemSetup::ApplyMemorySize() {
  SystemInfo& settings = settings_;
  const std::int32_t oldSize = settings.MemorySize;
  if (memorySizeChoice_ < 0) return;
  if (models_.SysChangeMemorySize(settings.ModelNo, memorySizeChoice_, settings) != 0) return;
  if (settings.MemorySize == oldSize) return;
  buffers_.ClearGrownPoints(oldSize);
  if (hooks_.memorySizeChanged) hooks_.memorySizeChanged();
}

void SystemSetup::ChooseInterface(std::int16_t kind) {
  interfaceKind_ = kind;
  models_.SysChangeInterface(settings_.ModelNo, kind, settings_);
}

void SystemSetup::FitInterface() {
  const std::int16_t kind = interfaceKind_;
  const bool listed = kind == kNiGpib || kind == kKiGpib || kind == kUsbTmc;
  if (listed && InterfaceChoice() < 0 && !interfaces_.empty()) ChooseInterface(interfaces_.front().kind);
}

void SystemSetup::FitChannel() {
  SystemInfo& settings = settings_;
  const ModelDatabase& models = models_;
  const std::int32_t channels = models.SysGetChannelCnt(settings.ModelNo);
  if (channels > 0 && (settings.Channel < 0 || settings.Channel >= channels))
    models.SysChangeChannel(settings.ModelNo, channels - 1, settings);
  const std::int32_t ranges = models.SysGetRangeCnt(settings.ModelNo, settings.Channel);
  if (ranges > 0 && (settings.RangeNo < 0 || settings.RangeNo >= ranges))
    models.SysChangeRange(settings.ModelNo, settings.Channel, ranges - 1, settings);
}

void SystemSetup::LoadCommandTables() {
  for (int table = 0; table < 4; ++table) {
    const auto i = static_cast<std::size_t>(table);
    commandTables_[i] = {};
    commandRows_[i] = std::max(0, models_.SysGetGPIBInfo(settings_.ModelNo, table, commandTables_[i]));
  }
}

void SystemSetup::RefreshControlPoints() {
  SystemInfo& settings = settings_;
  std::int32_t count = 0;
  const EditBuffers& buffers = buffers_;
  const bool possible =
      controlPoints_.Find(buffers.Points(), W_Lock32(buffers.Block32()), W_Lock(buffers.Block16()), count) == W_SUCCESS;
  settings.TransferFormat = possible ? 1 : 0;
  settings.ControlPointCount = possible ? count : 0;
  RebuildTransferFormats();
}

void SystemSetup::ForgetControlPoints() {
  settings_.TransferFormat = 0;
  settings_.ControlPointCount = 0;
  RebuildTransferFormats();
}

void SystemSetup::ChooseTransferFormat(int format) {
  transferFormatChoice_ = format == 1 && ControlPointsAvailable() ? 1 : 0;
}

void SystemSetup::RecordLoaded() {
  FitChannel();
  RefillLists();
  if (interfaceKind_ < kNiGpib || interfaceKind_ > kSimulated) interfaceKind_ = kUsbTmc;
  FitInterface();
  LoadCommandTables();
  ShowRecord();
}

void SystemSetup::Accept() {
  registry_.SetGpibBoard(interfaceKind_);
  ApplyMemorySize();
  ShowRecord();
  buffers_.Reset_Undo();
  if (hooks_.accepted) hooks_.accepted();
}

void SystemSetup::ShowRecord() const {
  if (hooks_.recordShown) hooks_.recordShown();
}

void SystemSetup::RebuildInterfaces() {
  const std::int32_t usable = models_.SysGetInterfaceInfo(settings_.ModelNo);
  interfaces_.clear();
  if ((usable & SYS_INTERFACE_USBTMC) != 0) interfaces_.push_back({kUsbTmc, "USB(TMC)"});
  if ((usable & (SYS_INTERFACE_NI_GPIB | SYS_INTERFACE_NI_GPIB_2)) != 0) interfaces_.push_back({kNiGpib, "NI GPIB"});
  if ((usable & SYS_INTERFACE_KI_GPIB) != 0) interfaces_.push_back({kKiGpib, "KI GPIB"});
}

void SystemSetup::RebuildTransferFormats() {
  transferFormatChoice_ = ControlPointsAvailable() ? 1 : 0;
}

int SystemSetup::SizeIndexOf(std::int32_t points) const {
  for (std::size_t i = 0; i < memorySizes_.size(); ++i) {
    if (std::fabs(LeadingNumber(memorySizes_[i]) - points) < 0.5) return static_cast<int>(i);
  }
  return -1;
}

} // namespace calder
