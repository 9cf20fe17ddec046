#include "comm/SettingsTransfer.h"

#include "app/EngValB.h"
#include "comm/Instrument.h"

#include <array>

namespace calder {
namespace {

constexpr int kPowerSource = 10; // the model that is driven by fixed commands

// Sends the table's settings and asks for the status. False: told.
bool SendChecked(Instrument& instrument, const clsGpibCommand& commands, const clsGpibCommand& common) {
  if (!instrument.SendSettings(commands)) return false;
  if (!instrument.StatusError(common)) return true;
  instrument.ErrorReport(common);
  return false;
}

bool GeneratorSettings(GpibIO& io) {
  Instrument instrument(io);
  const clsGpibCommand common = instrument.Commands(Instrument::kCommon);
  if (!instrument.SendSettings(common)) return false;
  if (!instrument.SequenceCheck()) {
    io.Report(kMsgTransferStopped);
    return false;
  }
  if (!instrument.Identify(common)) {
    io.Report(kMsgCheckModel);
    return false;
  }
  return SendChecked(instrument, instrument.Commands(Instrument::kOscillator), common) &&
         SendChecked(instrument, instrument.Commands(Instrument::kClosing), common);
}

// Bit 1 of the operation condition: the output is not settled. An instrument may say so for ever; the user can cancel.
bool WaitForSettling(GpibIO& io) {
  constexpr std::uint32_t kSettling = 2;
  while (true) {
    io.Wait(1);
    if (!io.Send("STAT:OPER:COND?")) return false;
    const std::string reply = io.Read();
    if (reply.empty()) return !io.Stopped();
    if ((ReplyBits(reply) & kSettling) == 0) return true;
  }
}

bool ChangeMode(GpibIO& io) {
  static constexpr std::array<const char*, 4> kReplies{"AC-INT", "AC-ADD", "ACDC-INT", "ACDC-EXT"};
  static constexpr std::array<const char*, 4> kCommands{":Mode AC-INT", ":Mode AC-ADD", ":Mode ACDC-INT",
                                                        ":Mode ACDC-ADD"};
  const std::string reply = io.Query("MODE?");
  if (io.Stopped()) return false;
  std::size_t mode = 0;
  while (mode < kReplies.size() && reply != kReplies[mode]) ++mode;
  const auto wanted = static_cast<std::size_t>(io.Snapshot().Channel);
  if (mode == wanted) return true;
  if (!io.Send(":Outp 0")) return false;
  io.Wait(2);
  if (wanted < kCommands.size() && !io.Send(kCommands[wanted])) return false;
  return WaitForSettling(io);
}

bool ChangeRange(GpibIO& io) {
  const std::string reply = io.Query(":VOLT:RANG?");
  if (io.Stopped()) return false;
  const int range = reply == "200" ? 1 : 0;
  const int wanted = io.Snapshot().RangeNo;
  if (range == wanted) return true;
  return io.Send(std::string(":VOLT:RANG ") + (wanted == 0 ? "100" : "200")) && WaitForSettling(io);
}

bool PowerSourceSettings(GpibIO& io) {
  Instrument instrument(io);
  const clsGpibCommand common = instrument.Commands(Instrument::kCommon);
  if (!io.Send("*CLS")) return false;
  if (!instrument.Identify(common)) {
    io.Report(kMsgCheckModel);
    return false;
  }
  if (instrument.StatusError(common)) {
    instrument.ErrorReport(common);
    return false;
  }
  const SystemInfo& settings = io.Snapshot();
  std::string levels = ":VOLT " + NumberText(settings.Amplitude);
  if (settings.OffsetSwitch == 1) levels += ";:VOLT:OFFS " + NumberText(settings.Offset);
  levels += ";:Freq " + NumberText(settings.Frequency);
  return ChangeMode(io) && ChangeRange(io) && io.Send(":FUNC ARB" + std::to_string(settings.MemoryNo)) &&
         io.Send(levels) && io.Send(std::string("Outp ") + (settings.Output == 0 ? "1" : "0")) && WaitForSettling(io);
}

} // namespace

bool SettingsTransfer(Program& program, IntfcLib& bus, const std::function<bool()>& cancelled) {
  GpibIO io(program, bus, cancelled);
  if (!io.Begin("Oscillator settings")) return false;
  const bool sent = program.settings.ModelNo == kPowerSource ? PowerSourceSettings(io) : GeneratorSettings(io);
  io.End();
  return sent && !io.Stopped();
}

} // namespace calder
