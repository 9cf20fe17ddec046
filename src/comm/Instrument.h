// The instrument at the other end of a transfer, spoken to with its model's commands: its settings, whether it is the
// right one, whether it is content.
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
  // Stops a running sequence and sets open-ended loads; only for models 0 and 1. False: no reply.
  [[nodiscard]] bool SequenceCheck();
  // The model's name in the reply to the identification query.
  [[nodiscard]] bool Identify(const clsGpibCommand& common);
  // True: the status has an error bit, or there is no status.
  [[nodiscard]] bool StatusError(const clsGpibCommand& common);
  // Tells the instrument's own error text.
  void ErrorReport(const clsGpibCommand& common);

private:
  [[nodiscard]] bool PolarityCommand(std::string& command);

  GpibIO& io_;
};

// The numeric value of a reply as bits; what 32 bits cannot hold is limited to what they can.
[[nodiscard]] std::uint32_t ReplyBits(std::string_view reply);

// Joins with ";" what is not empty.
[[nodiscard]] std::string JoinCommands(std::initializer_list<std::string> pieces);

} // namespace calder
