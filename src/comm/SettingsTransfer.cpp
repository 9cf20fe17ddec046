#include "comm/SettingsTransfer.h"

#include "app/EngValB.h"
#include "comm/Instrument.h"

#include <algorithm>

namespace calder {
namespace {

// Sends the table's settings and asks for the status. False: reported.
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

// An instrument may say for ever that its output is not settled; the user can cancel.
bool WaitForSettling(GpibIO& io, const PowerSourceProtocol& power) {
  if (power.SettlingQuery.empty()) return true;
  while (true) {
    io.Wait(1);
    if (!io.Send(power.SettlingQuery)) return false;
    const std::string reply = io.Read();
    if (reply.empty()) return !io.Stopped();
    if ((ReplyBits(reply) & power.SettlingBits) == 0) return true;
  }
}

// The position of a reply, `otherwise` for one that is not in the list.
std::size_t PositionOf(const std::vector<std::string>& replies, const std::string& reply, std::size_t otherwise) {
  const auto found = std::find(replies.begin(), replies.end(), reply);
  return found == replies.end() ? otherwise : static_cast<std::size_t>(found - replies.begin());
}

bool ChangeMode(GpibIO& io, const PowerSourceProtocol& power) {
  if (power.ModeQuery.empty()) return true;
  const std::string reply = io.Query(power.ModeQuery);
  if (io.Stopped()) return false;
  const auto wanted = static_cast<std::size_t>(io.Snapshot().Channel);
  if (PositionOf(power.ModeReplies, reply, power.ModeReplies.size()) == wanted) return true;
  if (!io.Send(power.ModeOutputOff)) return false;
  io.Wait(2);
  if (wanted < power.ModeCommands.size() && !io.Send(power.ModeCommands[wanted])) return false;
  return WaitForSettling(io, power);
}

bool ChangeRange(GpibIO& io, const PowerSourceProtocol& power) {
  if (power.RangeQuery.empty()) return true;
  const std::string reply = io.Query(power.RangeQuery);
  if (io.Stopped()) return false;
  const auto wanted = static_cast<std::size_t>(io.Snapshot().RangeNo);
  if (PositionOf(power.RangeReplies, reply, 0) == wanted) return true;
  return io.Send(power.RangeCommands[std::min(wanted, power.RangeCommands.size() - 1)]) && WaitForSettling(io, power);
}

bool PowerSourceSettings(GpibIO& io, const PowerSourceProtocol& power) {
  Instrument instrument(io);
  const clsGpibCommand common = instrument.Commands(Instrument::kCommon);
  if (!io.Send(power.Clear)) return false;
  if (!instrument.Identify(common)) {
    io.Report(kMsgCheckModel);
    return false;
  }
  if (instrument.StatusError(common)) {
    instrument.ErrorReport(common);
    return false;
  }
  const SystemInfo& settings = io.Snapshot();
  std::string levels = power.Amplitude + " " + NumberText(settings.Amplitude);
  if (settings.OffsetSwitch == 1) levels += ";" + power.Offset + " " + NumberText(settings.Offset);
  levels += ";" + power.Frequency + " " + NumberText(settings.Frequency);
  return ChangeMode(io, power) && ChangeRange(io, power) && io.Send(instrument.SelectCommand()) && io.Send(levels) &&
         io.Send(instrument.OutputCommand(power.Output)) && WaitForSettling(io, power);
}

} // namespace

bool SettingsTransfer(const TransferContext& context, const std::function<bool()>& cancelled) {
  GpibIO io(context, cancelled);
  if (!io.Begin("Oscillator settings")) return false;
  const std::optional<PowerSourceProtocol>& power = io.ModelProtocol().PowerSource;
  const bool sent = power ? PowerSourceSettings(io, *power) : GeneratorSettings(io);
  io.End();
  return sent && !io.Stopped();
}

} // namespace calder
