#include "libs/sysinf32/ProtocolReader.h"

#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/TableReader.h"
#include "libs/sysinf32/sysinf32.h"

namespace calder {

namespace {

constexpr std::size_t kMaxCommandText = 128;
constexpr std::size_t kMaxCommands = 64;
constexpr std::int32_t kMaxNumber = 32000;
constexpr std::int32_t kMaxSeconds = 600;
constexpr std::int32_t kMaxBits = 0xFFFF;

using Names = std::initializer_list<std::string_view>;

std::string ReadCommand(const TomlNode& node, Names placeholders, FaultSink& faults) {
  std::string text = ReadName(node, kMaxCommandText, faults);
  if (!HasOnlyPlaceholders(text, placeholders)) {
    std::string known;
    for (const std::string_view name : placeholders) (known += known.empty() ? "$" : ", $").append(name) += '$';
    faults.Report(SYS_BAD_VALUE, node.line,
                  "\"" + node.key + "\" may hold no placeholder" + (known.empty() ? "." : " but " + known + "."));
  }
  return text;
}

// What a key gives; empty when it is left out.
std::string Optional(const TableReader& table, std::string_view key, Names placeholders, FaultSink& faults) {
  const TomlNode* node = table.Find(key);
  return node == nullptr ? std::string() : ReadCommand(*node, placeholders, faults);
}

std::vector<std::string> ReadTexts(const TomlNode& node, FaultSink& faults) {
  std::vector<std::string> commands;
  for (const TomlNode& item : ReadItems(node, kMaxCommands, faults)) commands.push_back(ReadCommand(item, {}, faults));
  return commands;
}

// One text for each of `count` things of the model.
std::vector<std::string> ReadForEach(const TomlNode& node, std::size_t count, const char* things, FaultSink& faults) {
  std::vector<std::string> texts = ReadTexts(node, faults);
  if (texts.size() != count)
    faults.Report(SYS_BAD_VALUE, node.line,
                  "\"" + node.key + "\" must have as many items as there are " + things + ": " + std::to_string(count) +
                      ".");
  return texts;
}

std::array<std::string, 3> ReadOutput(const TableReader& table, FaultSink& faults) {
  return {Optional(table, "output_on", {}, faults), Optional(table, "output_off", {}, faults),
          Optional(table, "output_keep", {}, faults)};
}

std::uint32_t ReadBits(const TomlNode& node, FaultSink& faults) {
  return static_cast<std::uint32_t>(ReadInteger(node, 1, kMaxBits, faults));
}

SequenceProtocol ReadSequence(const TomlNode& node, FaultSink& faults) {
  const TableReader table(node, {"state", "condition", "running", "stop", "end"}, faults);
  SequenceProtocol sequence;
  sequence.State = ReadCommand(table.Require("state"), {}, faults);
  sequence.Condition = ReadCommand(table.Require("condition"), {}, faults);
  sequence.Running = ReadBits(table.Require("running"), faults);
  sequence.Stop = ReadCommand(table.Require("stop"), {}, faults);
  sequence.End = ReadCommand(table.Require("end"), {}, faults);
  return sequence;
}

PolarityProtocol ReadPolarity(const TomlNode& node, FaultSink& faults) {
  const TableReader table(node, {"query", "command", "normal", "inverted", "scales"}, faults);
  PolarityProtocol polarity;
  polarity.Query = ReadCommand(table.Require("query"), {"CH"}, faults);
  polarity.Command = ReadCommand(table.Require("command"), {"CH", "SHAPE", "POLARITY", "SCALE"}, faults);
  polarity.Normal = ReadCommand(table.Require("normal"), {}, faults);
  polarity.Inverted = ReadCommand(table.Require("inverted"), {}, faults);
  const std::vector<std::string> scales =
      ReadForEach(table.Require("scales"), polarity.Scales.size(), "scales", faults);
  if (scales.size() == polarity.Scales.size()) std::copy(scales.begin(), scales.end(), polarity.Scales.begin());
  return polarity;
}

PowerSourceProtocol ReadPowerSource(const TomlNode& node, const Model& model, FaultSink& faults) {
  const TableReader table(node,
                          {"clear", "mode_query", "mode_replies", "mode_commands", "mode_output_off", "range_query",
                           "range_replies", "range_commands", "amplitude", "offset", "frequency", "output_on",
                           "output_off", "output_keep", "settling_query", "settling_bits"},
                          faults);
  const std::size_t channels = model.Channels.size();
  const std::size_t ranges = channels == 0 ? 0 : model.Channels.front().Ranges.size();
  PowerSourceProtocol power;
  power.Clear = Optional(table, "clear", {}, faults);
  if (table.Find("mode_query") != nullptr) {
    power.ModeQuery = ReadCommand(table.Require("mode_query"), {}, faults);
    power.ModeReplies = ReadForEach(table.Require("mode_replies"), channels, "channels", faults);
    power.ModeCommands = ReadForEach(table.Require("mode_commands"), channels, "channels", faults);
    power.ModeOutputOff = Optional(table, "mode_output_off", {}, faults);
  }
  if (table.Find("range_query") != nullptr) {
    power.RangeQuery = ReadCommand(table.Require("range_query"), {}, faults);
    power.RangeReplies = ReadForEach(table.Require("range_replies"), ranges, "ranges", faults);
    power.RangeCommands = ReadForEach(table.Require("range_commands"), ranges, "ranges", faults);
  }
  power.Amplitude = ReadCommand(table.Require("amplitude"), {}, faults);
  power.Offset = ReadCommand(table.Require("offset"), {}, faults);
  power.Frequency = ReadCommand(table.Require("frequency"), {}, faults);
  power.Output = ReadOutput(table, faults);
  if (table.Find("settling_query") != nullptr) {
    power.SettlingQuery = ReadCommand(table.Require("settling_query"), {}, faults);
    power.SettlingBits = ReadBits(table.Require("settling_bits"), faults);
  }
  return power;
}

void ReadBlock(const TableReader& table, const Model& model, Protocol& protocol, FaultSink& faults) {
  static constexpr std::array<std::string_view, 2> kForms = {"plain", "header"};
  if (const TomlNode* form = table.Find("block")) protocol.BlockHeader = ReadChoice(*form, kForms, faults) == 1;
  const TomlNode* command = table.Find("block_command");
  if (command != nullptr) {
    protocol.BlockCommand = ReadCommand(*command, {"CH", "NUMBER", "NAME"}, faults);
    if (!protocol.BlockHeader)
      faults.Report(SYS_BAD_VALUE, command->line, "\"block_command\" is for a block with a header only.");
  } else if (protocol.BlockHeader && (model.Interfaces & SYS_INTERFACE_USBTMC) != 0) {
    static_cast<void>(table.Require("block_command"));
  }
}

} // namespace

void ReadProtocol(const TomlNode& node, Model& model, FaultSink& faults) {
  const TableReader table(node,
                          {"block", "block_command", "select", "select_offset", "output_on", "output_off",
                           "output_keep", "load_seconds", "peak_suffix", "preparation", "read_information", "read_data",
                           "sequence", "polarity", "power_source"},
                          faults);
  Protocol& protocol = model.Protocol;
  ReadBlock(table, model, protocol, faults);
  protocol.Select = Optional(table, "select", {"CH", "NUMBER", "NAME"}, faults);
  if (const TomlNode* offset = table.Find("select_offset"))
    protocol.SelectOffset = ReadInteger(*offset, -kMaxNumber, kMaxNumber, faults);
  protocol.Output = ReadOutput(table, faults);
  if (const TomlNode* seconds = table.Find("load_seconds"))
    protocol.LoadSeconds = ReadInteger(*seconds, 0, kMaxSeconds, faults);
  if (const TomlNode* suffix = table.Find("peak_suffix")) protocol.PeakSuffix = ReadFlag(*suffix, faults);
  if (const TomlNode* commands = table.Find("preparation")) protocol.Preparation = ReadTexts(*commands, faults);
  if (const TomlNode* command = table.Find("read_information"))
    protocol.ReadInformation = ReadCommand(*command, {"NUMBER"}, faults);
  if (const TomlNode* command = table.Find("read_data")) protocol.ReadData = ReadCommand(*command, {"NUMBER"}, faults);
  if (const TomlNode* part = table.Find("sequence")) protocol.Sequence = ReadSequence(*part, faults);
  if (const TomlNode* part = table.Find("polarity")) protocol.Polarity = ReadPolarity(*part, faults);
  if (const TomlNode* part = table.Find("power_source")) protocol.PowerSource = ReadPowerSource(*part, model, faults);
}

} // namespace calder
