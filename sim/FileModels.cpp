#include "sim/FileModels.h"

#include "libs/bus/VisaNames.h"
#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/ModelLoader.h"
#include "sim/Commands.h"

#include <algorithm>
#include <cctype>
#include <fstream>

namespace calder::sim {
namespace {

// Takes the command as it stands; a query answers the last argument.
void Accept(Instrument& instrument, Command& command, const Row& row) {
  if (command.query) return instrument.Answer(instrument.Get(row.setting));
  instrument.Put(row.setting, command.arguments.empty() ? "" : command.arguments.front());
}

void AnswerZero(Instrument& instrument, Command& /*command*/, const Row& /*row*/) {
  instrument.Answer("0");
}

void AnswerShape(Instrument& instrument, Command& command, const Row& /*row*/) {
  if (const auto channel = ChannelOf(instrument, command))
    instrument.Answer(instrument.Get("shape" + std::to_string(*channel)));
}

// A command's header, as the pattern that fits it: "SOUR#:FREQ" of ":SOUR$CH$:FREQ $NUMBER$".
std::string PatternOf(std::string_view command) {
  std::string pattern(command.substr(0, command.find_first_of(" ?")));
  if (pattern.starts_with(':')) pattern.erase(0, 1);
  constexpr std::string_view kChannel = "$CH$";
  for (std::size_t at = 0; (at = pattern.find(kChannel)) != std::string::npos;)
    pattern.replace(at, kChannel.size(), "#");
  for (char& c : pattern) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return pattern;
}

std::string ArgumentOf(std::string_view command) {
  const std::size_t blank = command.find(' ');
  return blank == std::string_view::npos ? std::string() : std::string(command.substr(blank + 1));
}

bool Holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

class RowBuilder {
public:
  explicit RowBuilder(const calder::Model& model) : model_(model) {}

  [[nodiscard]] std::vector<Row> Build() {
    for (const auto& table : model_.Commands) {
      for (const CommandRow& row : table) AddDefinition(row.Key, SplitCommandColumns(row.Value).front());
    }
    AddProtocol(model_.Protocol);
    return rows_;
  }

private:
  // The first row of a header is the one that counts.
  void Add(std::string_view command, Handler run, std::string setting = {}, std::string choices = {}, int first = 0) {
    if (command.empty() || command.front() == '*') return; // the common commands are everyone's
    std::string pattern = PatternOf(command);
    const auto same = [&](const Row& row) { return row.pattern == pattern; };
    if (std::any_of(rows_.begin(), rows_.end(), same)) return;
    if (setting.empty()) setting = "kept " + pattern;
    rows_.push_back({std::move(pattern), run, std::move(setting), std::move(choices), first});
  }
  // Several commands in one text.
  void AddEach(std::string_view commands) {
    while (!commands.empty()) {
      const std::size_t end = std::min(commands.find(';'), commands.size());
      Add(commands.substr(0, end), Accept);
      commands.remove_prefix(std::min(end + 1, commands.size()));
    }
  }
  void AddDefinition(std::string_view key, const std::string& command) {
    static constexpr std::pair<std::string_view, std::pair<Handler, const char*>> kHandlers[] = {
        {"freq", {SetFrequency, "frequency"}},   {"amp", {SetAmplitude, "amplitude"}},
        {"offset", {SetOffset, "offset"}},       {"amprng", {SetRange, "range"}},
        {"channel", {SelectChannel, "channel"}}, {"arbsize", {SetSize, "size"}},
        {"arbprecommand", {SetNumber, "memory"}}};
    if (key == "arbmask" || key == "errmask" || key == "arbbswap") return;
    if (key == "arbsend") return AddBlock(command);
    if (key == "arbname") return Add(command, SetName, "name");
    if (key == "outon" || key == "outoff") return AddOutput(command);
    for (const auto& [name, row] : kHandlers) {
      if (key == name) return Add(command, row.first, row.second);
    }
    AddEach(command);
  }
  void AddOutput(const std::string& command) {
    const std::string word = ArgumentOf(command);
    const bool isSwitch = MatchWord("ON", word) || MatchWord("OFF", word) || word == "0" || word == "1";
    isSwitch ? Add(command, SetOutput, "output") : Add(command, Accept);
  }
  void AddBlock(const std::string& command) {
    if (Holds(command, "ARB$ARBNUM$")) return Add(command, TakeArbArray);
    if (Holds(command, "$ARBNAME$")) return Add(command, TakeNamedArray);
    Holds(command, "$ARBNUM$") ? Add(command, TakeArray) : Add(command, TakeSelectedArray, "memory");
  }
  void AddProtocol(const Protocol& protocol) {
    if (protocol.Sequence) {
      Add(protocol.Sequence->State, SetSequence, "sequence");
      Add(protocol.Sequence->Condition, AskChannelCondition, "running");
      Add(protocol.Sequence->Stop, StopSequence, "running", ArgumentOf(protocol.Sequence->Stop));
    }
    if (protocol.Polarity) {
      Add(protocol.Polarity->Query, AnswerShape);
      AddEach(protocol.Polarity->Command);
    }
    AddSelection(protocol.Select, protocol.SelectOffset);
    if (protocol.BlockHeader) Add(protocol.BlockCommand, TraceData);
    Add(protocol.ReadInformation, AskTraceInfo);
    Add(protocol.ReadData, TraceData);
    if (protocol.PowerSource) AddPowerSource(*protocol.PowerSource);
    for (const std::string& command : protocol.Output) AddOutput(command);
    for (const std::string& command : protocol.Preparation) AddEach(command);
  }
  void AddSelection(std::string_view commands, int offset) {
    while (!commands.empty()) {
      const std::size_t end = std::min(commands.find(';'), commands.size());
      const std::string_view command = commands.substr(0, end);
      commands.remove_prefix(std::min(end + 1, commands.size()));
      const Handler choose = Holds(command, "ARB$NUMBER$") ? ChooseArb : ChooseMemory;
      Add(command, Holds(command, "$NUMBER$") ? choose : Accept, "user", {}, offset);
    }
  }
  void AddPowerSource(const PowerSourceProtocol& power) {
    Add(power.Amplitude, SetAmplitude, "amplitude");
    Add(power.Offset, SetOffset, "offset");
    Add(power.Frequency, SetFrequency, "frequency");
    for (const std::string& command : power.Output) AddOutput(command);
    AddOutput(power.ModeOutputOff);
    Add(power.ModeQuery, Accept);
    Add(power.RangeQuery, Accept);
    Add(power.SettlingQuery, AnswerZero);
  }

  const calder::Model& model_;
  std::vector<Row> rows_;
};

bool HasFlag(const calder::Model& model, std::string_view key) {
  return std::any_of(model.Commands.begin(), model.Commands.end(), [&](const std::vector<CommandRow>& table) {
    return std::any_of(table.begin(), table.end(), [&](const CommandRow& row) { return row.Key == key; });
  });
}

Model FromFile(const calder::Model& model) {
  Model made;
  made.name = model.Name;
  made.family = Family::File;
  made.channels = static_cast<int>(model.Channels.size());
  made.dataBits = model.DataBits;
  made.memoryMin = model.MemoryNoMin;
  made.memoryMax = model.MemoryNoMax;
  made.sizes.assign(model.MemorySizes.begin(), model.MemorySizes.end());
  made.sizeMax = *std::max_element(made.sizes.begin(), made.sizes.end());
  made.sizeMin = *std::min_element(made.sizes.begin(), made.sizes.end());
  made.frequencyMin = model.Channels.front().Frequency.Min;
  made.frequencyMax = model.Channels.front().Frequency.Max;
  for (const ModelChannel& channel : model.Channels) {
    made.frequencyMin = std::min(made.frequencyMin, channel.Frequency.Min);
    made.frequencyMax = std::max(made.frequencyMax, channel.Frequency.Max);
  }
  for (const AmplitudeRange& range : model.Channels.front().Ranges)
    made.ranges.push_back({range.Amplitude.Max, range.Offset.Min, range.Offset.Max});
  made.formatted = model.Protocol.BlockHeader;
  made.lowByteFirst = HasFlag(model, "arbbswap");
  made.rows = std::make_shared<const std::vector<Row>>(RowBuilder(model).Build());
  return made;
}

} // namespace

std::vector<Model> ReadModels(const std::string& folder, const std::string& usbIds, std::string& fault) {
  std::vector<calder::Model> read;
  std::vector<Model> models;
  if (const std::optional<ModelFault> failed = LoadModels(folder, read)) {
    fault = failed->file + ":" + std::to_string(failed->line) + ": " + failed->text;
    return models;
  }
  for (const calder::Model& model : read) models.push_back(FromFile(model));
  std::ifstream ids(usbIds);
  for (std::string line; std::getline(ids, line);) {
    const std::size_t comma = std::min(line.find(','), line.size());
    const auto usb = ParseUsbName(line.substr(std::min(comma + 1, line.size())) + "1");
    for (Model& model : models) {
      if (!usb || model.name != line.substr(0, comma)) continue;
      model.usbVendor = usb->vendor;
      model.usbProduct = usb->product;
    }
  }
  return models;
}

} // namespace calder::sim
