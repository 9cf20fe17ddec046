#include "libs/sysinf32/ModelRecord.h"

#include "libs/sysinf32/OutputLimits.h"
#include "libs/sysinf32/sysinf32.h"

#include <algorithm>
#include <cmath>

namespace calder {

namespace {

std::int16_t InKilo(std::int32_t points) {
  constexpr std::int32_t kKilo = 1024;
  return static_cast<std::int16_t>((points + kKilo - 1) / kKilo);
}

// The kind whose address range a fresh record has: the bus, when the model has one.
std::size_t FirstInterfaceKind(const Model& model) {
  if ((model.Interfaces & (SYS_INTERFACE_NI_GPIB | SYS_INTERFACE_NI_GPIB_2)) != 0) return 0;
  return (model.Interfaces & SYS_INTERFACE_KI_GPIB) != 0 ? 1 : 3;
}

void SetFrequencyLimits(const ModelChannel& channel, SystemInfo& record) {
  record.FrequencyMin = channel.Frequency.Min;
  record.FrequencyMax = channel.Frequency.Max;
  record.Field23 = channel.Frequency.Resolution;
  record.Field25 = 1 / channel.Frequency.Max;
  record.Field26 = 1 / channel.Frequency.Min;
  record.Field27 = channel.PeriodResolution;
  record.Field46 = static_cast<std::int16_t>(channel.Ranges.size());
}

} // namespace

void SetAddressRange(const AddressRange& range, SystemInfo& record) {
  record.AddressMin = range.Min;
  record.AddressMax = range.Max;
  if (record.Address < range.Min || record.Address > range.Max) record.Address = range.Min;
}

void SetMemorySize(const Model& model, std::int16_t index, SystemInfo& record) {
  record.MemorySizeNo = index;
  record.MemorySize = model.MemorySizes[static_cast<std::size_t>(index)];
  record.SizeRatio = 1;
}

void SetFrequency(double frequency, SystemInfo& record) {
  record.Frequency = frequency;
  record.Period = 1 / frequency;
}

void SetRange(const ModelChannel& channel, std::int16_t range, SystemInfo& record) {
  const AmplitudeRange& limits = channel.Ranges[static_cast<std::size_t>(range)];
  record.RangeNo = range;
  record.AmplitudeMin = limits.Amplitude.Min;
  record.AmplitudeMax = limits.Amplitude.Max;
  record.Field31 = limits.Amplitude.Resolution;
  record.OffsetMin = limits.Offset.Min;
  record.OffsetMax = limits.Offset.Max;
  record.Field35 = limits.Offset.Resolution;
  ClampOutput(limits, record.Polarity, record.Amplitude, record.Offset);
}

void SetChannel(const Model& model, std::int16_t channel, SystemInfo& record) {
  const ModelChannel& to = model.Channels[static_cast<std::size_t>(channel)];
  const std::int16_t last = static_cast<std::int16_t>(to.Ranges.size() - 1);
  record.Channel = channel;
  SetFrequencyLimits(to, record);
  const double frequency = std::isfinite(record.Frequency) ? record.Frequency : to.Frequency.Default;
  SetFrequency(std::clamp(frequency, to.Frequency.Min, to.Frequency.Max), record);
  SetRange(to, record.RangeNo < 0 || record.RangeNo > last ? last : record.RangeNo, record);
}

void FillRecord(const Model& model, std::int16_t modelNo, const ModelSettings& settings, SystemInfo& record) {
  record = SystemInfo();
  record.ModelName = model.Name;
  record.ModelNo = modelNo;
  record.Address = model.Address;
  SetAddressRange(model.Addresses[FirstInterfaceKind(model)], record);
  record.DefaultArbCommand = model.DefaultArbCommand;
  record.MemoryName = model.MemoryName;
  const auto [least, most] = std::minmax_element(model.MemorySizes.begin(), model.MemorySizes.end());
  record.Field9 = InKilo(*least);
  record.Field10 = InKilo(*most);
  record.DataBits = model.DataBits;
  record.MemoryNoSelectable = model.MemoryNoSelectable ? 1 : 0;
  record.MemoryNo = model.MemoryNo;
  record.MemoryNoMin = model.MemoryNoMin;
  record.MemoryNoMax = model.MemoryNoMax;
  record.MemoryNameSelectable = model.MemoryNameSelectable ? 1 : 0;
  SetMemorySize(model, 0, record);
  record.ChannelSelectable = model.ChannelSelectable ? 1 : 0;
  record.OffsetSwitch = model.OffsetSwitch ? 1 : 0;
  record.OffsetOn = settings.OffsetOn;
  record.Output = settings.Output;
  record.Polarity = settings.Polarity;
  record.XUnit = kXUser;
  record.YUnit = kYUser;
  record.Frequency = settings.Frequency;
  record.Amplitude = settings.Amplitude;
  record.Offset = settings.Offset;
  record.RangeNo = settings.Range;
  SetChannel(model, settings.Channel, record);
}

} // namespace calder
