// The table of an instrument's commands: what a row says, and the handlers that several families share.
#pragma once

#include "sim/Instrument.h"

#include <span>

namespace calder::sim {

struct Row;
using Handler = void (*)(Instrument&, Command&, const Row&);

struct Row {
  std::string pattern; // see MatchHeader
  Handler run = nullptr;
  std::string setting{}; // what it sets and answers
  std::string choices{}; // words separated by "|", each as in MatchWord
  int first = 0;         // a number that the command's value begins at
};

// The channel that a command is for: the number in its header, or the chosen one. Empty: there is none of that number,
// and the error is in the queue.
[[nodiscard]] std::optional<int> ChannelOf(Instrument& instrument, const Command& command);
// The setting's name for that channel.
[[nodiscard]] std::string NameOf(const Row& row, int channel);
// The only argument as a whole number from min to max; otherwise the error is in the queue.
[[nodiscard]] std::optional<int> OneInteger(Instrument& instrument, const Command& command, int min, int max);

// Settings.
void SetFrequency(Instrument& instrument, Command& command, const Row& row);
void SetAmplitude(Instrument& instrument, Command& command, const Row& row);
void SetOffset(Instrument& instrument, Command& command, const Row& row);
void SetRange(Instrument& instrument, Command& command, const Row& row);
void SetRangeVolts(Instrument& instrument, Command& command, const Row& row);
void SetSwitch(Instrument& instrument, Command& command, const Row& row);
void SetOutput(Instrument& instrument, Command& command, const Row& row);
void SetChoice(Instrument& instrument, Command& command, const Row& row);
void SetShapeChoice(Instrument& instrument, Command& command, const Row& row);
void SelectChannel(Instrument& instrument, Command& command, const Row& row);
void SetMode(Instrument& instrument, Command& command, const Row& row);
void AskCondition(Instrument& instrument, Command& command, const Row& row);
void SetLoad(Instrument& instrument, Command& command, const Row& row);
void SetSequence(Instrument& instrument, Command& command, const Row& row);
void StopSequence(Instrument& instrument, Command& command, const Row& row);
void AskChannelCondition(Instrument& instrument, Command& command, const Row& row);

// Waveforms (WaveCommands.cpp).
void SetSize(Instrument& instrument, Command& command, const Row& row);
void SetNumber(Instrument& instrument, Command& command, const Row& row);
void SetName(Instrument& instrument, Command& command, const Row& row);
void TakeArray(Instrument& instrument, Command& command, const Row& row);
void TakeNamedArray(Instrument& instrument, Command& command, const Row& row);
void TakeSelectedArray(Instrument& instrument, Command& command, const Row& row);
void TakeArbArray(Instrument& instrument, Command& command, const Row& row);
void TraceData(Instrument& instrument, Command& command, const Row& row);
void AskTraceInfo(Instrument& instrument, Command& command, const Row& row);
void ChooseMemory(Instrument& instrument, Command& command, const Row& row);
void ChooseArb(Instrument& instrument, Command& command, const Row& row);

// The rows of a model, by its family (Families.cpp) or of its file; the common commands of IEEE 488.2 are not among
// them.
std::span<const Row> RowsOf(const Model& model);

} // namespace calder::sim
