// The instrument at the other end of a transfer, spoken to with its model's commands: its settings, whether it is the
// right one, whether its status reports an error.
#pragma once

#include "comm/GpibCommand.h"
#include "comm/GpibIO.h"

namespace calder {

class Instrument {
public:
  // Numbers of the command tables.
  enum Table : int { kCommon = 0, kClosing = 1, kOscillator = 2, kWaveform = 3 };

  // The commands are filled with what the snapshot of a bus that was begun says.
  explicit Instrument(GpibIO& io) : io_(io) {}
  [[nodiscard]] clsGpibCommand Commands(Table table) const;

  // The settings that the table has commands for, sent as one message. Amplitude and offset first become 0 and then
  // their values, so that no step between leaves the limits. False: not sent.
  [[nodiscard]] bool SendSettings(const clsGpibCommand& commands);
  // Stops a running sequence and sends what the model wants before anything else, both by the live record's model.
  // False: no reply, or not sent.
  [[nodiscard]] bool SequenceCheck();
  // The model's name in the reply to the identification query.
  [[nodiscard]] bool Identify(const clsGpibCommand& common);
  // True: the status has an error bit, or there is no status.
  [[nodiscard]] bool StatusError(const clsGpibCommand& common);
  // What makes the loaded memory the waveform; empty when the waveform command did.
  [[nodiscard]] std::string SelectCommand() const;
  // That of on, off and keep which the output is to be.
  [[nodiscard]] const std::string& OutputCommand(const std::array<std::string, 3>& commands) const;
  // Reports the instrument's own error text.
  void ErrorReport(const clsGpibCommand& common);

private:
  [[nodiscard]] bool PolarityCommand(std::string& command);
  [[nodiscard]] bool StopSequence(const SequenceProtocol& sequence);

  GpibIO& io_;
};

// The numeric value of a reply as bits; what 32 bits cannot hold is limited to what they can.
[[nodiscard]] std::uint32_t ReplyBits(std::string_view reply);

// Joins with ";" what is not empty.
[[nodiscard]] std::string JoinCommands(std::initializer_list<std::string> pieces);

} // namespace calder
