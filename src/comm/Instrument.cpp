#include "comm/Instrument.h"

#include "app/EngValB.h"
#include "app/Messages.h"
#include "comm/CommandTemplate.h"
#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/AsciiText.h"
#include "platform/Desktop.h"

#include <algorithm>

namespace calder {
namespace {

constexpr double kSequenceStop = 2; // seconds

// `length` characters from `start`, which counts from 1.
std::string_view Field(std::string_view reply, int start, int length) {
  const auto from = static_cast<std::size_t>(std::max(start, 1) - 1);
  if (from >= reply.size()) return {};
  return reply.substr(from, static_cast<std::size_t>(std::max(length, 0)));
}

} // namespace

std::uint32_t ReplyBits(std::string_view reply) {
  const double value = LeadingNumber(reply);
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(std::clamp(value, -2147483648.0, 4294967295.0)));
}

std::string JoinCommands(std::initializer_list<std::string> pieces) {
  std::string command;
  for (const std::string& piece : pieces) {
    if (piece.empty()) continue;
    if (!command.empty()) command += ';';
    command += piece;
  }
  return command;
}

clsGpibCommand Instrument::Commands(Table table) const {
  const TransferContext& live = io_.Live();
  clsGpibCommand commands(live.desktop.messageBoxes);
  const SystemInfo& snapshot = io_.Snapshot();
  commands.MemoryNo = snapshot.MemoryNo;
  commands.MemoryName = snapshot.MemoryName;
  commands.Channel = snapshot.Channel;
  const auto i = static_cast<std::size_t>(table);
  commands.Fill(live.commandTables[i], live.commandRows[i], snapshot.DefaultArbCommand);
  return commands;
}

// By the live record: the polarity may have been chosen while the transfer ran.
bool Instrument::PolarityCommand(std::string& command) {
  const SystemInfo& live = io_.Live().settings;
  const std::optional<PolarityProtocol>& protocol = io_.ModelProtocol().Polarity;
  if (!protocol) return true;
  const std::string shape = io_.Query(FillTemplate(protocol->Query, live));
  if (io_.Stopped()) return false;
  const int polarity = std::clamp<int>(live.Polarity, 0, 5);
  command = FillTemplate(protocol->Command, {{"CH", std::to_string(live.Channel + 1)},
                                             {"SHAPE", shape},
                                             {"POLARITY", polarity < 3 ? protocol->Normal : protocol->Inverted},
                                             {"SCALE", protocol->Scales[static_cast<std::size_t>(polarity % 3)]}});
  return true;
}

bool Instrument::SendSettings(const clsGpibCommand& commands) {
  if (io_.Stopped()) return false;
  const SystemInfo& settings = io_.Snapshot();
  std::string suffix;
  if (io_.ModelProtocol().PeakSuffix) suffix = settings.Polarity % 3 == 0 ? "PP" : "PK";
  const auto amplitude = [&](double value) {
    const std::string piece = commands.AmplitudeLevel(value);
    return piece.empty() ? piece : piece + suffix;
  };
  const std::string range = commands.AmplitudeRange(static_cast<double>(settings.RangeNo));
  std::string polarity;
  if (!range.empty() && !PolarityCommand(polarity)) return false;
  const double channel = settings.Channel + 1;
  return io_.Send(
      JoinCommands({commands.Preset(), commands.HeaderOff(),
                    settings.ChannelSelectable != 0 ? commands.channel(channel) : std::string(),
                    commands.frequency(settings.Frequency),
                    settings.OffsetSwitch != 0 ? commands.DcOffset(settings.OffsetOn) : std::string(), range, polarity,
                    amplitude(0), commands.DcOffsetLevel(0.0), amplitude(settings.Amplitude),
                    commands.DcOffsetLevel(settings.Offset), commands.Output(settings.Output)}));
}

bool Instrument::SequenceCheck() {
  SystemInfo& live = io_.Live().settings;
  const Protocol& protocol = io_.Live().models.SysGetProtocol(live.ModelNo);
  if (protocol.Sequence && !StopSequence(*protocol.Sequence)) return false;
  live.ModelName = TrimCommandText(live.ModelName);
  return std::all_of(protocol.Preparation.begin(), protocol.Preparation.end(),
                     [this](const std::string& command) { return io_.Send(command); });
}

bool Instrument::StopSequence(const SequenceProtocol& sequence) {
  const std::string state = io_.Query(sequence.State);
  if (state.empty()) return false;
  if (LeadingNumber(state) != 1) return true;
  const std::string condition = io_.Query(sequence.Condition);
  if ((ReplyBits(condition) & sequence.Running) != 0 && !io_.Send(sequence.Stop)) return false;
  io_.Wait(kSequenceStop);
  return io_.Send(sequence.End);
}

bool Instrument::Identify(const clsGpibCommand& common) {
  const clsGpibCommand::ReplyField model = common.Model();
  if (!io_.Send(model.command)) return false;
  const std::string reply = io_.Read();
  if (reply.empty()) return false;
  const std::string_view expected = TrimCommandText(model.expected);
  if (EqualWithoutCase(Field(reply, model.start, model.length), expected)) return true;
  const TransferContext& live = io_.Live();
  if (live.registry.GetDebugMode()) {
    live.desktop.messageBoxes.Show("ModelCheck",
                                   "System Setting Model:" + std::string(expected) + "\rReturn ID:'" + reply + "'",
                                   BoxButtons::Ok, BoxIcon::None);
  }
  return false;
}

bool Instrument::StatusError(const clsGpibCommand& common) {
  if (!io_.Send(common.GetStatus())) return true;
  const std::string reply = io_.Read();
  if (io_.Stopped()) return true;
  return (ReplyBits(reply) & common.ErrorMask()) != 0;
}

std::string Instrument::SelectCommand() const {
  const Protocol& protocol = io_.ModelProtocol();
  return FillTemplate(protocol.Select, io_.Snapshot(), protocol.SelectOffset);
}

const std::string& Instrument::OutputCommand(const std::array<std::string, 3>& commands) const {
  const int output = io_.Snapshot().Output;
  return commands[output == 0 || output == 1 ? static_cast<std::size_t>(output) : 2];
}

void Instrument::ErrorReport(const clsGpibCommand& common) {
  if (io_.Stopped()) return; // reported, or reported at the end
  const ErrMsg& messages = io_.Live().messages;
  if (common.GetErrorMessage().empty()) {
    io_.Report(kMsgCheckModel);
    return;
  }
  const std::string reply = io_.Query(common.GetErrorMessage());
  if (io_.Stopped()) return;
  if (LeadingNumber(reply) == 0) {
    io_.Report(kMsgInterfaceOther);
  } else {
    io_.Report(messages.MessageText(kMsgCheckModel) + reply);
  }
}

} // namespace calder
