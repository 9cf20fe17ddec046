#include "libs/sysinf32/ModelParser.h"

#include "libs/sysinf32/CommandRules.h"
#include "libs/sysinf32/LimitsReader.h"
#include "libs/sysinf32/ProtocolReader.h"
#include "libs/sysinf32/TableReader.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/WaveLimits.h"

#include <algorithm>

namespace calder {

namespace {

constexpr std::size_t kMaxModelName = 16;
constexpr std::size_t kMaxArbCommand = 64;
constexpr std::size_t kMaxModels = 256;
constexpr std::size_t kMaxSizes = 64;
constexpr std::int32_t kMinPoints = 2;
constexpr std::int32_t kMaxMemoryNo = 32000;

std::int32_t ReadInterfaces(const TomlNode& node, FaultSink& faults) {
  static constexpr std::array<std::string_view, 4> kNames = {"NI GPIB", "KI GPIB", "NI GPIB 2", "USBTMC"};
  static constexpr std::array<std::int32_t, 4> kBits = {SYS_INTERFACE_NI_GPIB, SYS_INTERFACE_KI_GPIB,
                                                        SYS_INTERFACE_NI_GPIB_2, SYS_INTERFACE_USBTMC};
  std::int32_t interfaces = 0;
  for (const TomlNode& item : ReadItems(node, kNames.size(), faults)) {
    const std::int32_t bit = kBits[static_cast<std::size_t>(ReadChoice(item, kNames, faults))];
    if ((interfaces & bit) != 0) faults.Report(SYS_BAD_VALUE, item.line, "The interface stands twice in the list.");
    interfaces |= bit;
  }
  return interfaces;
}

void ReadAddress(const TomlNode& node, Model& model, FaultSink& faults) {
  constexpr std::int32_t kMaxBusAddress = 30;
  constexpr std::int32_t kMaxDeviceId = 127;
  static constexpr std::array<std::string_view, Model::kInterfaceKinds> kKeys = {"ni_gpib", "ki_gpib", "usb488",
                                                                                 "usbtmc", "simulated"};
  const TableReader reader(node, {"default", "ni_gpib", "ki_gpib", "usb488", "usbtmc", "simulated"}, faults);
  for (std::size_t kind = 0; kind < kKeys.size(); ++kind) {
    const TomlNode* range = reader.Find(kKeys[kind]);
    if (range == nullptr) continue;
    const std::span<const TomlNode> ends = ReadItems(*range, 2, faults);
    if (ends.size() != 2) {
      faults.Report(SYS_BAD_VALUE, range->line,
                    "\"" + range->key + "\" must be a list of the least and the largest address.");
      return;
    }
    const std::int32_t most = kKeys[kind] == "usb488" ? kMaxDeviceId : kMaxBusAddress;
    const std::int32_t least = ReadInteger(ends[0], 0, most, faults);
    model.Addresses[kind] = AddressRange{static_cast<std::int16_t>(least),
                                         static_cast<std::int16_t>(ReadInteger(ends[1], least, most, faults))};
  }
  if (const TomlNode* address = reader.Find("default"))
    model.Address = static_cast<std::int16_t>(ReadInteger(*address, 0, kMaxBusAddress, faults));
  for (const AddressRange& range : model.Addresses)
    if (model.Address < range.Min || model.Address > range.Max)
      faults.Report(SYS_BAD_VALUE, node.line, "The default address lies outside the range of an interface.");
}

void ReadSizes(const TomlNode& node, Model& model, FaultSink& faults) {
  for (const TomlNode& item : ReadItems(node, kMaxSizes, faults)) {
    const std::int32_t points = ReadInteger(item, kMinPoints, W_MAX_POINTS, faults);
    if (std::find(model.MemorySizes.begin(), model.MemorySizes.end(), points) != model.MemorySizes.end())
      faults.Report(SYS_BAD_VALUE, item.line, "The memory size stands twice in the list.");
    model.MemorySizes.push_back(points);
  }
  if (model.MemorySizes.empty()) return;
  // The record keeps the ratio of two sizes in 16 bits.
  const auto [least, most] = std::minmax_element(model.MemorySizes.begin(), model.MemorySizes.end());
  if (*most / *least >= INT16_MAX) faults.Report(SYS_BAD_VALUE, node.line, "The memory sizes are too far apart.");
}

void ReadMemoryNumber(const TomlNode& node, Model& model, FaultSink& faults) {
  const TableReader reader(node, {"selectable", "min", "max", "default"}, faults);
  const std::int32_t min = ReadInteger(reader.Require("min"), 0, kMaxMemoryNo, faults);
  const std::int32_t max = ReadInteger(reader.Require("max"), min, kMaxMemoryNo, faults);
  model.MemoryNoMin = static_cast<std::int16_t>(min);
  model.MemoryNoMax = static_cast<std::int16_t>(max);
  model.MemoryNo = static_cast<std::int16_t>(ReadInteger(reader.Require("default"), min, max, faults));
  model.MemoryNoSelectable = min != max;
  if (const TomlNode* flag = reader.Find("selectable")) model.MemoryNoSelectable = ReadFlag(*flag, faults);
}

void ReadMemoryName(const TomlNode& node, Model& model, FaultSink& faults) {
  const TableReader reader(node, {"selectable", "default"}, faults);
  const TomlNode& name = reader.Require("default");
  model.MemoryName = ReadName(name, Model::kMaxMemoryName, faults);
  if (model.MemoryName.find('"') != std::string::npos)
    faults.Report(SYS_BAD_VALUE, name.line, "A memory name must not hold a double quote.");
  model.MemoryNameSelectable = true;
  if (const TomlNode* flag = reader.Find("selectable")) model.MemoryNameSelectable = ReadFlag(*flag, faults);
}

void ReadMemory(const TomlNode& node, Model& model, FaultSink& faults) {
  const TableReader reader(node, {"sizes", "number", "name"}, faults);
  ReadSizes(reader.Require("sizes"), model, faults);
  if (const TomlNode* number = reader.Find("number")) ReadMemoryNumber(*number, model, faults);
  if (const TomlNode* name = reader.Find("name")) ReadMemoryName(*name, model, faults);
}

std::string ReadModelName(const TomlNode& node, FaultSink& faults) {
  std::string name = ReadName(node, kMaxModelName, faults);
  // The list of USB identifiers separates at commas.
  if (name.find_first_of(",\"") != std::string::npos)
    faults.Report(SYS_BAD_VALUE, node.line, "A model name must not hold a comma or a double quote.");
  return name;
}

} // namespace

std::optional<ModelFault> ParseModel(std::string_view text, const std::string& fileName, Model& model) {
  FaultSink faults(fileName);
  TomlNode root;
  ParseToml(text, root, faults);
  if (faults.Any()) return faults.Fault();

  model = Model();
  model.Addresses[2] = AddressRange{0, 127};
  const TableReader reader(root,
                           {"name", "interfaces", "data_bits", "offset_switch", "channel_selectable",
                            "default_arb_command", "address", "memory", "channel", "frequency", "range",
                            "frequency_warning", "defaults", "start", "protocol", "commands"},
                           faults);
  const TomlNode& name = reader.Require("name");
  model.Name = ReadModelName(name, faults);
  model.NameLine = name.line;
  model.Interfaces = ReadInterfaces(reader.Require("interfaces"), faults);
  model.DataBits = ReadInteger(reader.Require("data_bits"), 1, 16, faults);
  if (const TomlNode* flag = reader.Find("offset_switch")) model.OffsetSwitch = ReadFlag(*flag, faults);
  if (const TomlNode* command = reader.Find("default_arb_command"))
    model.DefaultArbCommand = ReadName(*command, kMaxArbCommand, faults);
  if (const TomlNode* address = reader.Find("address")) ReadAddress(*address, model, faults);
  ReadMemory(reader.Require("memory"), model, faults);
  ReadChannels(
      {reader.Find("channel"), reader.Find("frequency"), reader.Find("range"), reader.Find("frequency_warning")}, model,
      faults);
  model.ChannelSelectable = model.Channels.size() > 1;
  if (const TomlNode* flag = reader.Find("channel_selectable")) model.ChannelSelectable = ReadFlag(*flag, faults);
  ReadSettings(reader.Find("defaults"), reader.Find("start"), model, faults);
  if (const TomlNode* protocol = reader.Find("protocol")) ReadProtocol(*protocol, model, faults);
  ReadCommands(reader.Require("commands"), model, faults);
  return faults.Fault();
}

std::optional<ModelFault> ParseIndex(std::string_view text, const std::string& fileName,
                                     std::vector<IndexEntry>& entries) {
  FaultSink faults(fileName);
  entries.clear();
  TomlNode root;
  ParseToml(text, root, faults);
  if (faults.Any()) return faults.Fault();
  const TableReader reader(root, {"models"}, faults);
  for (const TomlNode& item : ReadItems(reader.Require("models"), kMaxModels, faults)) {
    constexpr std::size_t kMaxFileName = 64;
    std::string file = ReadName(item, kMaxFileName, faults);
    if (!file.ends_with(".toml") || file.starts_with('.') || file.find_first_of("/\\") != std::string::npos)
      faults.Report(SYS_BAD_VALUE, item.line, "\"" + file + "\" is not the name of a model file in this folder.");
    if (std::any_of(entries.begin(), entries.end(), [&](const IndexEntry& earlier) { return earlier.file == file; }))
      faults.Report(SYS_BAD_VALUE, item.line, "\"" + file + "\" stands twice in the list.");
    entries.push_back(IndexEntry{std::move(file), item.line});
  }
  return faults.Fault();
}

} // namespace calder
