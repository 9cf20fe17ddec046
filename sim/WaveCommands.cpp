#include "sim/Commands.h"

namespace calder::sim {
namespace {

// The number of a memory, or nothing with the error in the queue.
std::optional<int> MemoryNumber(Instrument& instrument, std::string_view text) {
  const auto number = ToInteger(text);
  if (number && instrument.HasMemory(*number)) return number;
  instrument.Error(number ? -222 : -104);
  return std::nullopt;
}

// What comes after the command that announces a waveform: a block in the command, or a raw block after it.
void TakeBlock(Instrument& instrument, const Command& command, int number, std::string_view name) {
  if (!command.block) return instrument.ExpectBlock(number, name);
  if (instrument.Kind().formatted) return instrument.StoreFormatted(number, name, *command.block);
  instrument.StoreArray(number, name, *command.block);
}

// The arguments before the data, which stand after a comma: "3,USER1,". False: they are not `wanted` in number.
bool HasArguments(Instrument& instrument, const Command& command, std::size_t wanted) {
  if (command.query) {
    instrument.Error(-113);
    return false;
  }
  if (command.arguments.size() == wanted + 1 && command.arguments.back().empty()) return true;
  instrument.Error(command.arguments.size() <= wanted ? -109 : -108);
  return false;
}

// The banks of a QN40 or UB count from another number than its memories; a bank that was set must be that of the
// memory.
bool BankFits(Instrument& instrument, int number) {
  const std::string bank = instrument.Get("bank");
  const bool zeroBased = instrument.Kind().family == Family::Qn40;
  return bank.empty() || ToInteger(bank) == (zeroBased ? number - 1 : number + 1);
}

void ChooseNumber(Instrument& instrument, int channel, int number) {
  instrument.StoreKeptBlock(number);
  instrument.Put("user" + std::to_string(channel), std::to_string(number));
  instrument.Put("shape" + std::to_string(channel), "USER");
}

} // namespace

void SetSize(Instrument& instrument, Command& command, const Row& row) {
  if (command.query) return instrument.Answer(instrument.Get(row.setting));
  const auto size = OneInteger(instrument, command, 1, instrument.Kind().sizeMax);
  if (!size) return;
  if (!instrument.Kind().HasSize(*size)) return instrument.Error(-222);
  instrument.Put(row.setting, std::to_string(*size));
}

// A bank, a start address or the memory for the next block.
void SetNumber(Instrument& instrument, Command& command, const Row& row) {
  if (command.query) return instrument.Error(-113);
  const int memories = instrument.Kind().memoryMax - instrument.Kind().memoryMin;
  const bool start = row.setting == "start";
  const auto number = OneInteger(instrument, command, row.first, start ? 0 : row.first + memories);
  if (number) instrument.Put(row.setting, std::to_string(*number));
}

void SetName(Instrument& instrument, Command& command, const Row& row) {
  if (command.query || command.arguments.size() != 1) return instrument.Error(command.query ? -113 : -109);
  instrument.Put(row.setting, Unquote(command.arguments[0]));
}

void TakeArray(Instrument& instrument, Command& command, const Row& /*row*/) {
  if (!HasArguments(instrument, command, 1)) return;
  const auto number = MemoryNumber(instrument, command.arguments[0]);
  if (!number) return;
  if (!BankFits(instrument, *number)) return instrument.Error(-221);
  TakeBlock(instrument, command, *number, instrument.Get("name"));
  instrument.Put("name", "");
  instrument.Put("bank", "");
}

void TakeNamedArray(Instrument& instrument, Command& command, const Row& /*row*/) {
  if (!HasArguments(instrument, command, 2)) return;
  const auto number = MemoryNumber(instrument, command.arguments[0]);
  if (number) TakeBlock(instrument, command, *number, Unquote(command.arguments[1]));
}

// The memory was chosen by a command of its own.
void TakeSelectedArray(Instrument& instrument, Command& command, const Row& row) {
  if (command.query || !(command.arguments.empty() || command.block))
    return instrument.Error(command.query ? -113 : -108);
  TakeBlock(instrument, command, ToInteger(instrument.Get(row.setting)).value_or(0), "");
}

// "ARB3,": the memory's number with its word.
void TakeArbArray(Instrument& instrument, Command& command, const Row& /*row*/) {
  if (!HasArguments(instrument, command, 1)) return;
  const std::string_view word = command.arguments[0];
  if (word.size() < 4 || !MatchWord("ARB", word.substr(0, 3))) return instrument.Error(-224);
  const auto number = MemoryNumber(instrument, word.substr(3));
  if (number) TakeBlock(instrument, command, *number, "");
}

// ":TRAC:DATA 1,"ARB1",#..." stores, ":TRAC:DATA? 1" answers `"ARB1",#...`.
void TraceData(Instrument& instrument, Command& command, const Row& row) {
  if (!command.query) {
    if (instrument.IsOn("sequence")) return instrument.Error(-221);
    return TakeNamedArray(instrument, command, row);
  }
  if (command.arguments.size() != 1) return instrument.Error(command.arguments.empty() ? -109 : -108);
  const auto number = MemoryNumber(instrument, command.arguments[0]);
  if (!number) return;
  const Waveform* waveform = instrument.Stored(*number);
  if (waveform == nullptr) return instrument.Error(-230);
  const std::string block = instrument.FormattedBlock(*waveform);
  const std::string count = std::to_string(block.size());
  instrument.Answer('"' + waveform->name + "\",#" + std::to_string(count.size()) + count + block);
}

void AskTraceInfo(Instrument& instrument, Command& command, const Row& /*row*/) {
  if (!command.query) return instrument.Error(-113);
  if (command.arguments.size() != 1) return instrument.Error(command.arguments.empty() ? -109 : -108);
  const auto number = MemoryNumber(instrument, command.arguments[0]);
  if (!number) return;
  const Waveform* waveform = instrument.Stored(*number);
  if (waveform == nullptr) return instrument.Answer("\"\",0,0");
  const std::size_t points = waveform->format == 0 ? waveform->codes.size() : waveform->controls.size();
  instrument.Answer('"' + waveform->name + "\"," + std::to_string(waveform->format) + "," + std::to_string(points));
}

// By a number that may begin after the built-in functions, which the smaller numbers choose.
void ChooseMemory(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel) return;
  if (command.query) return instrument.Answer(instrument.Get("user" + std::to_string(*channel)));
  if (instrument.IsOn("sequence")) return instrument.Error(-221);
  const auto number = OneInteger(instrument, command, 0, row.first + instrument.Kind().memoryMax);
  if (!number) return;
  const int memory = *number - row.first;
  if (instrument.HasMemory(memory)) return ChooseNumber(instrument, *channel, memory);
  if (row.first == 0) return instrument.Error(-222);
  instrument.Put("shape" + std::to_string(*channel), "FUNC" + std::to_string(*number));
}

void ChooseArb(Instrument& instrument, Command& command, const Row& /*row*/) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel) return;
  if (command.query || command.arguments.size() != 1) return instrument.Error(command.query ? -113 : -109);
  const std::string_view word = command.arguments[0];
  if (MatchWord("SINusoid", word)) return instrument.Put("shape" + std::to_string(*channel), "SIN");
  if (word.size() < 4 || !MatchWord("ARB", word.substr(0, 3))) return instrument.Error(-224);
  const auto number = MemoryNumber(instrument, word.substr(3));
  if (number) ChooseNumber(instrument, *channel, *number);
}

} // namespace calder::sim
