#include "libs/sysinf32/LimitsReader.h"

#include "libs/sysinf32/OutputLimits.h"
#include "libs/sysinf32/TableReader.h"
#include "libs/sysinf32/sysinf32.h"

#include <algorithm>
#include <optional>

namespace calder {

namespace {

constexpr std::size_t kMaxList = 64;
constexpr std::size_t kMaxListName = 20;
constexpr std::size_t kMaxWarning = 500;
constexpr double kLargest = 1e12; // of every limit: the largest value that the boxes of the program can show
constexpr double kLowestFrequency = 1e-12;
constexpr std::array<std::string_view, 4> kLimitKeys = {"min", "max", "default", "resolution"};

// The finest step that the program's boxes take.
struct Resolution {
  static constexpr double kFrequency = 1e-8;
  static constexpr double kPeriod = 1e-13;
  static constexpr double kVolts = 1e-4;
};

Limits ReadLimits(const TableReader& reader, double resolution, FaultSink& faults) {
  const TomlNode& min = reader.Require("min");
  const TomlNode& max = reader.Require("max");
  const TomlNode& start = reader.Require("default");
  Limits limits;
  limits.Min = ReadNumber(min, faults);
  limits.Max = ReadNumber(max, faults);
  limits.Default = ReadNumber(start, faults);
  limits.Resolution = resolution;
  if (const TomlNode* step = reader.Find("resolution")) {
    limits.Resolution = ReadNumber(*step, faults);
    if (limits.Resolution <= 0) faults.Report(SYS_BAD_VALUE, step->line, "\"resolution\" must be above 0.");
  }
  if (limits.Min > limits.Max) faults.Report(SYS_BAD_VALUE, min.line, "\"min\" is above \"max\".");
  if (limits.Min < -kLargest) faults.Report(SYS_BAD_VALUE, min.line, "\"min\" is below -1e12.");
  if (limits.Max > kLargest) faults.Report(SYS_BAD_VALUE, max.line, "\"max\" is above 1e12.");
  if (!limits.Holds(limits.Default)) faults.Report(SYS_BAD_VALUE, start.line, "\"default\" is outside min to max.");
  return limits;
}

void ReadFrequency(const TomlNode& node, ModelChannel& channel, FaultSink& faults) {
  const TableReader reader(node, {"min", "max", "default", "resolution", "period_resolution"}, faults);
  channel.Frequency = ReadLimits(reader, Resolution::kFrequency, faults);
  if (channel.Frequency.Min < kLowestFrequency)
    faults.Report(SYS_BAD_VALUE, reader.Require("min").line, "The lowest frequency must be at least 1e-12 Hz.");
  channel.PeriodResolution = Resolution::kPeriod;
  if (const TomlNode* step = reader.Find("period_resolution")) {
    channel.PeriodResolution = ReadNumber(*step, faults);
    if (channel.PeriodResolution <= 0)
      faults.Report(SYS_BAD_VALUE, step->line, "\"period_resolution\" must be above 0.");
  }
}

AmplitudeRange ReadRange(const TomlNode& node, FaultSink& faults) {
  const TableReader reader(node, {"name", "amplitude", "offset"}, faults);
  AmplitudeRange range;
  range.Name = ReadName(reader.Require("name"), kMaxListName, faults);
  const TomlNode& amplitude = reader.Require("amplitude");
  range.Amplitude = ReadLimits(TableReader(amplitude, kLimitKeys, faults), Resolution::kVolts, faults);
  const TomlNode& offset = reader.Require("offset");
  range.Offset = ReadLimits(TableReader(offset, kLimitKeys, faults), Resolution::kVolts, faults);

  if (range.Amplitude.Min < 0)
    faults.Report(SYS_BAD_VALUE, amplitude.line, "The smallest amplitude must not be below 0.");
  if (range.Amplitude.Min > range.Amplitude.Max / 2)
    faults.Report(SYS_BAD_VALUE, amplitude.line, "The smallest amplitude is above half of the largest.");
  if (range.Amplitude.Max > range.Offset.Max - range.Offset.Min)
    faults.Report(SYS_BAD_VALUE, amplitude.line, "The largest amplitude is wider than the offset limits.");
  if (!FitsOutput(range, range.Amplitude.Default, range.Offset.Default, 0))
    faults.Report(SYS_BAD_VALUE, offset.line,
                  "The default amplitude around the default offset leaves the offset limits.");
  return range;
}

// Reports a name that stands twice in a list.
template <typename Item>
void CheckNames(const std::vector<Item>& items, std::span<const TomlNode> nodes, FaultSink& faults) {
  for (std::size_t i = 1; i < items.size(); ++i) {
    const bool twice = std::any_of(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(i),
                                   [&](const Item& earlier) { return earlier.Name == items[i].Name; });
    const TomlNode* name = nodes[i].Find("name");
    if (twice && name != nullptr)
      faults.Report(SYS_BAD_VALUE, name->line, "The name \"" + items[i].Name + "\" stands twice in the list.");
  }
}

std::vector<AmplitudeRange> ReadRanges(const TomlNode& node, FaultSink& faults) {
  std::vector<AmplitudeRange> ranges;
  const std::span<const TomlNode> items = ReadTables(node, kMaxList, faults);
  for (const TomlNode& item : items) ranges.push_back(ReadRange(item, faults));
  CheckNames(ranges, items, faults);
  return ranges;
}

// The channel's own table or the shared one.
const TomlNode& OwnOrShared(const TableReader& channel, std::string_view key, const TomlNode* shared) {
  return shared != nullptr && channel.Find(key) == nullptr ? *shared : channel.Require(key);
}

// The position of a name in a list of things with names.
template <typename Item>
std::int16_t ReadPosition(const TomlNode& node, const std::vector<Item>& items, FaultSink& faults) {
  std::vector<std::string_view> names;
  names.reserve(items.size());
  for (const Item& item : items) names.emplace_back(item.Name);
  return ReadChoice(node, names, faults);
}

FrequencyWarning ReadWarning(const TomlNode& node, const Model& model, FaultSink& faults) {
  const TableReader reader(node, {"above", "up_to", "channel", "japanese", "english"}, faults);
  FrequencyWarning warning;
  warning.Above = ReadNumber(reader.Require("above"), faults);
  warning.UpTo = ReadNumber(reader.Require("up_to"), faults);
  if (const TomlNode* channel = reader.Find("channel"))
    warning.Channel = ReadPosition(*channel, model.Channels, faults);
  warning.Japanese = ReadText(reader.Require("japanese"), kMaxWarning, faults);
  warning.English = ReadText(reader.Require("english"), kMaxWarning, faults);
  if (warning.Above >= warning.UpTo)
    faults.Report(SYS_BAD_VALUE, reader.Require("above").line, "\"above\" is not below \"up_to\".");
  for (std::size_t i = 0; i < model.Channels.size(); ++i) {
    if (warning.Channel >= 0 && static_cast<std::size_t>(warning.Channel) != i) continue;
    const Limits& limits = model.Channels[i].Frequency;
    if (warning.Above < limits.Max && warning.UpTo >= limits.Min) return warning;
  }
  faults.Report(SYS_BAD_VALUE, node.line, "No frequency that the model allows lies in this warning.");
  return warning;
}

// The keys that [defaults] and [start] share; what is missing stays empty.
struct GivenSettings {
  std::optional<std::int16_t> Channel, Range, Output, Polarity, OffsetOn;
  std::optional<double> Frequency, Amplitude, Offset;
};

void ReadGiven(const TomlNode& table, const Model& model, GivenSettings& given, FaultSink& faults) {
  static constexpr std::array<std::string_view, 3> kOutputs = {"on", "off", "keep"};
  static constexpr std::array<std::string_view, 6> kPolarities = {"Norm +/-FS", "Norm 0/+FS", "Norm -FS/0",
                                                                  "Inv +/-FS",  "Inv 0/+FS",  "Inv -FS/0"};
  const TableReader reader(
      table, {"channel", "range", "output", "polarity", "offset_on", "frequency", "amplitude", "offset"}, faults);
  if (const TomlNode* node = reader.Find("channel")) given.Channel = ReadPosition(*node, model.Channels, faults);
  if (const TomlNode* node = reader.Find("range"))
    given.Range =
        ReadPosition(*node, model.Channels[static_cast<std::size_t>(given.Channel.value_or(0))].Ranges, faults);
  if (const TomlNode* node = reader.Find("output")) given.Output = ReadChoice(*node, kOutputs, faults);
  if (const TomlNode* node = reader.Find("polarity")) given.Polarity = ReadChoice(*node, kPolarities, faults);
  if (const TomlNode* node = reader.Find("offset_on")) given.OffsetOn = ReadFlag(*node, faults) ? 1 : 0;
  if (const TomlNode* node = reader.Find("frequency")) given.Frequency = ReadNumber(*node, faults);
  if (const TomlNode* node = reader.Find("amplitude")) given.Amplitude = ReadNumber(*node, faults);
  if (const TomlNode* node = reader.Find("offset")) given.Offset = ReadNumber(*node, faults);
}

// The line of a key of a table that may be missing as the key may.
std::int32_t LineOf(const TomlNode* table, std::string_view key) {
  if (table == nullptr) return 0;
  const TomlNode* node = table->Find(key);
  return node == nullptr ? table->line : node->line;
}

// Completes what `table` and what it builds on gave; reports settings that do not fit together.
ModelSettings Settle(const GivenSettings& given, const Model& model, const TomlNode* table, FaultSink& faults) {
  ModelSettings settings;
  settings.Channel = given.Channel.value_or(0);
  const ModelChannel& channel = model.Channels[static_cast<std::size_t>(settings.Channel)];
  const std::int16_t lastRange = static_cast<std::int16_t>(channel.Ranges.size() - 1);
  settings.Range = std::min(given.Range.value_or(0), lastRange);
  const AmplitudeRange& range = channel.Ranges[static_cast<std::size_t>(settings.Range)];
  settings.Output = given.Output.value_or(settings.Output);
  settings.Polarity = given.Polarity.value_or(0);
  settings.OffsetOn = given.OffsetOn.value_or(0);
  settings.Frequency = given.Frequency.value_or(channel.Frequency.Default);
  settings.Amplitude = given.Amplitude.value_or(range.Amplitude.Default);
  settings.Offset = given.Offset.value_or(range.Offset.Default);
  if (!channel.Frequency.Holds(settings.Frequency))
    faults.Report(SYS_BAD_VALUE, LineOf(table, "frequency"), "The frequency is outside the limits of the channel.");
  if (!FitsOutput(range, settings.Amplitude, settings.Offset, settings.Polarity))
    faults.Report(SYS_BAD_VALUE, LineOf(table, given.Amplitude ? "amplitude" : "offset"),
                  "The amplitude around the offset is outside the limits of the range.");
  return settings;
}

} // namespace

void ReadChannels(const LimitsTables& tables, Model& model, FaultSink& faults) {
  if (tables.channels == nullptr) {
    faults.Report(SYS_BAD_VALUE, 0, "The key \"channel\" is missing.");
    return;
  }
  const std::span<const TomlNode> items = ReadTables(*tables.channels, kMaxList, faults);
  for (const TomlNode& item : items) {
    const TableReader reader(item, {"name", "frequency", "range"}, faults);
    ModelChannel& channel = model.Channels.emplace_back();
    channel.Name = ReadName(reader.Require("name"), kMaxListName, faults);
    ReadFrequency(OwnOrShared(reader, "frequency", tables.frequency), channel, faults);
    channel.Ranges = ReadRanges(OwnOrShared(reader, "range", tables.ranges), faults);
  }
  CheckNames(model.Channels, items, faults);
  if (tables.warnings == nullptr || faults.Any()) return;
  for (const TomlNode& item : ReadTables(*tables.warnings, kMaxList, faults))
    model.Warnings.push_back(ReadWarning(item, model, faults));
}

void ReadSettings(const TomlNode* defaults, const TomlNode* start, Model& model, FaultSink& faults) {
  if (faults.Any()) return;
  GivenSettings given;
  if (defaults != nullptr) ReadGiven(*defaults, model, given, faults);
  model.Defaults = Settle(given, model, defaults, faults);
  if (start != nullptr) ReadGiven(*start, model, given, faults);
  model.Start = Settle(given, model, start, faults);
}

} // namespace calder
