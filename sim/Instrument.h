// One simulated instrument: program messages in, answers out, status and errors as IEEE 488.2 and SCPI have them.
//
// An error goes into the queue and sets its bit of the event status: command errors (-1xx) bit 5, execution errors
// (-2xx) bit 4, device errors (-3xx) bit 3, query errors (-4xx) bit 2. A command error ends its message, another error
// only the command. Bit 2 of the status byte says that the queue is not empty, bit 4 that an answer is waiting.
#pragma once

#include "sim/Command.h"
#include "sim/Models.h"
#include "sim/SimBench.h"

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace calder::sim {

class Instrument {
public:
  explicit Instrument(const Model& model);

  // From the bus.
  void SwitchOn();
  void Receive(std::string_view bytes, bool end);
  [[nodiscard]] bool HasAnswer() const { return !answer_.empty(); }
  // At most `capacity` bytes of the answer, at most up to the byte `terminator` (-1: none). ended: the answer is
  // complete.
  [[nodiscard]] std::string Send(std::size_t capacity, int terminator, bool& ended);
  // It was asked for an answer and has none.
  void NothingToSay();
  // Device clear: input and output are forgotten, settings and status stay.
  void Clear();

  // For its commands.
  [[nodiscard]] const Model& Kind() const { return model_; }
  void Answer(std::string_view text);
  void Error(int number);
  void ClearStatus();
  void ResetSettings();
  [[nodiscard]] int TakeEventStatus();
  [[nodiscard]] int StatusByte() const;
  void CompleteOperation() { eventStatus_ |= 1; }
  [[nodiscard]] std::string NextError();
  // A setting's own name: the first channel's, when it was meant without its number.
  [[nodiscard]] std::string NameOf(const std::string& name) const;
  [[nodiscard]] std::string Get(const std::string& name) const;
  void Put(const std::string& name, std::string_view value) { settings_[name] = value; }
  [[nodiscard]] bool IsOn(const std::string& name) const { return Get(name) == "1"; }
  // The memory `number` gets the next message, which is a raw block.
  void ExpectBlock(int number, std::string_view name);
  // A block of codes for a memory: its length must be that of the set size.
  void StoreArray(int number, std::string_view name, std::string_view block);
  // A block that begins with a format word and a count.
  void StoreFormatted(int number, std::string_view name, std::string_view block);
  [[nodiscard]] std::string FormattedBlock(const Waveform& waveform) const;
  // A formatted block that came without a command goes into that memory.
  void StoreKeptBlock(int number);
  [[nodiscard]] const Waveform* Stored(int number) const;
  void StoreWaveform(int number, Waveform waveform) { memories_[number] = std::move(waveform); }
  [[nodiscard]] bool HasMemory(int number) const { return number >= model_.memoryMin && number <= model_.memoryMax; }

  // For the bench.
  [[nodiscard]] const std::vector<std::string>& Messages() const { return messages_; }
  [[nodiscard]] std::vector<std::string> ErrorQueue() const;

private:
  enum class Input { Text, Raw };
  void TakeMessage();
  void TakeRawBlock();
  // How long the raw block is to become: not every bus ends it with the end mark. 0: not known yet.
  [[nodiscard]] std::size_t RawBytes() const;
  void Run(std::string_view message);
  [[nodiscard]] bool LowByteFirst() const;
  [[nodiscard]] std::int16_t Code(std::string_view block, std::size_t at) const;
  [[nodiscard]] std::int32_t Word(std::string_view block, std::size_t at) const;
  [[nodiscard]] bool ReadCodes(std::string_view block, std::size_t at, std::size_t count, Waveform& waveform);
  [[nodiscard]] bool ReadControls(std::string_view block, std::size_t count, Waveform& waveform);

  Model model_;
  std::map<std::string, std::string> settings_;
  std::map<int, Waveform> memories_;
  int eventStatus_ = 0;
  std::deque<int> errors_;

  std::string input_;
  Input kind_ = Input::Text;
  MessageScanner scanner_;
  bool expectsBlock_ = false; // the next message is a raw block
  int blockMemory_ = 0;
  std::string blockName_;
  std::string kept_;    // a formatted block without a command
  bool failed_ = false; // the message had a command error
  std::string answer_;
  std::vector<std::string> messages_;
};

// Runs a command, or puts its error into the queue (Commands.cpp).
void RunCommand(Instrument& instrument, Command& command);

} // namespace calder::sim
