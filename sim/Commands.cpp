#include "sim/Commands.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace calder::sim {
namespace {

constexpr int kSettlingPolls = 2;

void CommonCommand(Instrument& instrument, const Command& command) {
  const auto is = [&](std::string_view word, bool query) {
    return command.query == query && MatchWord(word, command.header);
  };
  if (!command.arguments.empty()) return instrument.Error(is("*IDN", true) ? -108 : -113);
  if (is("*IDN", true)) {
    instrument.Answer("ORVO," + std::string(instrument.Kind().name) + "," + instrument.Get("serial") + ",1.00");
  } else if (is("*ESR", true)) {
    instrument.Answer(std::to_string(instrument.TakeEventStatus()));
  } else if (is("*STB", true)) {
    instrument.Answer(std::to_string(instrument.StatusByte()));
  } else if (is("*OPC", true)) {
    instrument.Answer("1");
  } else if (is("*TST", true)) {
    instrument.Answer("0");
  } else if (is("*OPC", false)) {
    instrument.CompleteOperation();
  } else if (is("*CLS", false)) {
    instrument.ClearStatus();
  } else if (is("*RST", false)) {
    instrument.ResetSettings();
  } else if (!is("*WAI", false)) {
    instrument.Error(-113);
  }
}

// One argument, no more and no less.
bool HasOne(Instrument& instrument, const Command& command) {
  if (command.arguments.size() == 1 && !command.block) return true;
  instrument.Error(command.arguments.empty() ? -109 : -108);
  return false;
}

// A query of the setting is answered. False: it was no query.
bool Answered(Instrument& instrument, const Command& command, const std::string& name) {
  if (!command.query) return false;
  if (!command.arguments.empty()) {
    instrument.Error(-108);
  } else {
    instrument.Answer(instrument.Get(name));
  }
  return true;
}

// The word of the list that the text is, in its short form; empty when it is none.
std::string Choose(std::string_view choices, std::string_view text) {
  while (!choices.empty()) {
    const std::size_t end = std::min(choices.find('|'), choices.size());
    const std::string_view choice = choices.substr(0, end);
    if (MatchWord(choice, text)) {
      std::string word;
      for (const char c : choice) {
        if (c < 'a' || c > 'z') word += c;
      }
      return word;
    }
    choices.remove_prefix(std::min(end + 1, choices.size()));
  }
  return {};
}

// A voltage with or without a suffix that says what it counts.
std::optional<double> Volts(Instrument& instrument, const Command& command, std::string& unit) {
  if (!HasOne(instrument, command)) return std::nullopt;
  std::string_view text = command.arguments[0];
  unit.clear();
  if (text.size() > 2 && MatchWord("PP", text.substr(text.size() - 2))) unit = "PP";
  if (text.size() > 2 && MatchWord("PK", text.substr(text.size() - 2))) unit = "PK";
  if (!unit.empty()) text = Trim(text.substr(0, text.size() - 2));
  const auto value = ToNumber(text);
  if (value) return value;
  const bool number = !text.empty() && (std::isdigit(static_cast<unsigned char>(text.front())) != 0);
  instrument.Error(number ? -131 : -104);
  return std::nullopt;
}

const Range& RangeOf(const Instrument& instrument, int channel) {
  const std::string range = instrument.Get("range" + std::to_string(channel));
  const auto position = static_cast<std::size_t>(range == "200"   ? 1
                                                 : range == "100" ? 0
                                                                  : ToInteger(range).value_or(0));
  return instrument.Kind().ranges[std::min(position, instrument.Kind().ranges.size() - 1)];
}

// A power source answers with a set bit until it has settled.
void Settle(Instrument& instrument) {
  if (instrument.Kind().family == Family::Pj) instrument.Put("settling", std::to_string(kSettlingPolls));
}

} // namespace

void RunCommand(Instrument& instrument, Command& command) {
  if (!command.header.empty() && command.header.front() == '*') return CommonCommand(instrument, command);
  int suffix = 0;
  for (const Row& row : RowsOf(instrument.Kind())) {
    if (!MatchHeader(row.pattern, command.header, suffix)) continue;
    command.suffix = suffix;
    return row.run(instrument, command, row);
  }
  if (MatchHeader("SYSTem:ERRor", command.header, suffix) || MatchHeader("ERRor", command.header, suffix)) {
    if (command.query && command.arguments.empty()) return instrument.Answer(instrument.NextError());
  }
  instrument.Error(-113);
}

std::optional<int> ChannelOf(Instrument& instrument, const Command& command) {
  const bool numbered = command.suffix != 0;
  const int channel = numbered ? command.suffix : ToInteger(instrument.Get("channel")).value_or(1);
  if (channel >= 1 && channel <= instrument.Kind().channels) return channel;
  instrument.Error(-114);
  return std::nullopt;
}

std::string NameOf(const Row& row, int channel) {
  return row.setting + std::to_string(channel);
}

std::optional<int> OneInteger(Instrument& instrument, const Command& command, int min, int max) {
  if (!HasOne(instrument, command)) return std::nullopt;
  const auto value = ToNumber(command.arguments[0]);
  if (!value || *value != std::floor(*value)) {
    instrument.Error(-104);
    return std::nullopt;
  }
  if (*value < min || *value > max) {
    instrument.Error(-222);
    return std::nullopt;
  }
  return static_cast<int>(*value);
}

void SetFrequency(Instrument& instrument, Command& command, const Row& row) {
  // The phases of a power source share their frequency.
  const auto channel = instrument.Kind().family == Family::Pj ? std::optional(1) : ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel)) || !HasOne(instrument, command)) return;
  const auto value = ToNumber(command.arguments[0]);
  if (!value) return instrument.Error(-104);
  if (*value < instrument.Kind().frequencyMin || *value > instrument.Kind().frequencyMax) return instrument.Error(-222);
  instrument.Put(NameOf(row, *channel), ToText(*value));
}

void SetAmplitude(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel))) return;
  std::string unit;
  const auto value = Volts(instrument, command, unit);
  if (!value) return;
  const double limit = RangeOf(instrument, *channel).amplitude / (unit == "PK" ? 2 : 1);
  if (*value < 0 || *value > limit) return instrument.Error(-222);
  instrument.Put(NameOf(row, *channel), ToText(*value));
  instrument.Put("unit" + std::to_string(*channel), unit);
}

void SetOffset(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel)) || !HasOne(instrument, command)) return;
  const auto value = ToNumber(command.arguments[0]);
  if (!value) return instrument.Error(-104);
  const Range& range = RangeOf(instrument, *channel);
  if (*value < range.offsetMin || *value > range.offsetMax) return instrument.Error(-222);
  instrument.Put(NameOf(row, *channel), ToText(*value));
}

void SetRange(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel))) return;
  const auto value = OneInteger(instrument, command, 0, static_cast<int>(instrument.Kind().ranges.size()) - 1);
  if (value) instrument.Put(NameOf(row, *channel), std::to_string(*value));
}

void SetRangeVolts(Instrument& instrument, Command& command, const Row& row) {
  if (instrument.Kind().name != "PJ7410") return instrument.Error(-113);
  if (Answered(instrument, command, NameOf(row, 1))) return;
  const auto value = OneInteger(instrument, command, 100, 200);
  if (!value) return;
  if (*value != 100 && *value != 200) return instrument.Error(-222);
  instrument.Put(NameOf(row, 1), std::to_string(*value));
  Settle(instrument);
}

void SetSwitch(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel)) || !HasOne(instrument, command)) return;
  const std::string word = Choose("ON|OFF|1|0", command.arguments[0]);
  if (word.empty()) return instrument.Error(-224);
  instrument.Put(NameOf(row, *channel), word == "ON" || word == "1" ? "1" : "0");
}

void SetOutput(Instrument& instrument, Command& command, const Row& row) {
  SetSwitch(instrument, command, row);
  if (!command.query) Settle(instrument);
}

void SetChoice(Instrument& instrument, Command& command, const Row& row) {
  std::string name = row.setting;
  if (command.suffix != 0) { // a setting of each channel goes with the number in the header
    const auto channel = ChannelOf(instrument, command);
    if (!channel) return;
    name = NameOf(row, *channel);
  }
  if (Answered(instrument, command, name) || !HasOne(instrument, command)) return;
  const std::string word = Choose(row.choices, command.arguments[0]);
  if (word.empty()) return instrument.Error(-224);
  instrument.Put(name, word);
}

// ":OUTP1:POL USER, NORM": the shape that it is for stands first, and must be the present one.
void SetShapeChoice(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel))) return;
  if (command.arguments.size() != 2) return instrument.Error(command.arguments.size() < 2 ? -109 : -108);
  if (!MatchWord(instrument.Get("shape" + std::to_string(*channel)), command.arguments[0])) {
    return instrument.Error(-221);
  }
  const std::string word = Choose(row.choices, command.arguments[1]);
  if (word.empty()) return instrument.Error(-224);
  instrument.Put(NameOf(row, *channel), word);
}

void SelectChannel(Instrument& instrument, Command& command, const Row& row) {
  if (Answered(instrument, command, row.setting)) return;
  const auto value = OneInteger(instrument, command, 1, instrument.Kind().channels);
  if (value) instrument.Put(row.setting, std::to_string(*value));
}

void SetMode(Instrument& instrument, Command& command, const Row& row) {
  if (instrument.Kind().name != "PJ7410") return instrument.Error(-113);
  if (Answered(instrument, command, row.setting) || !HasOne(instrument, command)) return;
  std::string word = Choose(row.choices, command.arguments[0]);
  if (word.empty()) return instrument.Error(-224);
  if (instrument.IsOn("output1")) return instrument.Error(-221); // it changes its mode with the output off only
  if (word == "ACDC-ADD") word = "ACDC-EXT";                     // two names of one mode
  instrument.Put(row.setting, word);
  Settle(instrument);
}

void AskCondition(Instrument& instrument, Command& command, const Row& row) {
  if (!command.query || !command.arguments.empty()) return instrument.Error(command.query ? -108 : -113);
  const int polls = ToInteger(instrument.Get(row.setting)).value_or(0);
  instrument.Answer(polls > 0 ? "2" : "0");
  if (polls > 0) instrument.Put(row.setting, std::to_string(polls - 1));
}

// Ohms, or INFinity.
void SetLoad(Instrument& instrument, Command& command, const Row& row) {
  const auto channel = ChannelOf(instrument, command);
  if (!channel || Answered(instrument, command, NameOf(row, *channel)) || !HasOne(instrument, command)) return;
  if (MatchWord("INFinity", command.arguments[0])) return instrument.Put(NameOf(row, *channel), "INF");
  const auto value = ToNumber(command.arguments[0]);
  if (!value) return instrument.Error(-104);
  if (*value < 1 || *value > 1e4) return instrument.Error(-222);
  instrument.Put(NameOf(row, *channel), ToText(*value));
}

void SetSequence(Instrument& instrument, Command& command, const Row& row) {
  if (Answered(instrument, command, row.setting)) return;
  const auto value = OneInteger(instrument, command, 0, 1);
  if (!value) return;
  if (*value == 0 && instrument.IsOn("running")) return instrument.Error(-221); // stop it first
  instrument.Put(row.setting, std::to_string(*value));
  instrument.Put("running", std::to_string(*value));
}

void StopSequence(Instrument& instrument, Command& command, const Row& row) {
  if (command.query) return instrument.Error(-113);
  if (!HasOne(instrument, command)) return;
  if (Choose(row.choices, command.arguments[0]).empty()) return instrument.Error(-224);
  instrument.Put(row.setting, "0");
}

void AskChannelCondition(Instrument& instrument, Command& command, const Row& row) {
  if (!command.query || !command.arguments.empty()) return instrument.Error(command.query ? -108 : -113);
  if (ChannelOf(instrument, command)) instrument.Answer(instrument.IsOn(row.setting) ? "4" : "0");
}

} // namespace calder::sim
