#include "comm/Instrument.h"

#include "app/EngValB.h"
#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/AsciiText.h"

#include <algorithm>

namespace calder {
namespace {

constexpr double kSequenceStop = 2; // seconds
constexpr std::uint32_t kSequenceRuns = 0x0C;

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
  Program& program = io_.GetProgram();
  clsGpibCommand commands(program.desktop.messageBoxes);
  const SystemInfo& snapshot = io_.Snapshot();
  commands.MemoryNo = snapshot.MemoryNo;
  commands.MemoryName = snapshot.MemoryName;
  commands.Channel = snapshot.Channel;
  const auto i = static_cast<std::size_t>(table);
  commands.Fill(program.commandTables[i], program.commandRows[i], snapshot.DefaultArbCommand);
  return commands;
}

bool Instrument::PolarityCommand(std::string& command) {
  static constexpr const char* kScales[] = {" FS", " PFS", " MFS"};
  const SystemInfo& live = io_.GetProgram().settings;
  const std::string shape = io_.Query(":SOUR" + std::to_string(live.Channel + 1) + ":FUNC:SHAPE?");
  if (io_.Stopped()) return false;
  const std::string output = live.Channel == 0 ? ":OUTP1" : ":OUTP2";
  const int polarity = std::clamp<int>(live.Polarity, 0, 5);
  command = output + ":POL " + shape + "," + (polarity < 3 ? " NORM" : " INV") + ";" + output + ":SCAL " + shape + "," +
            kScales[polarity % 3];
  return true;
}

bool Instrument::SendSettings(const clsGpibCommand& commands) {
  if (io_.Stopped()) return false;
  const SystemInfo& settings = io_.Snapshot();
  const std::string suffix = io_.GetProgram().settings.Polarity % 3 == 0 ? "PP" : "PK";
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
  SystemInfo& live = io_.GetProgram().settings;
  if (live.ModelNo != 0 && live.ModelNo != 1) return true;
  const std::string state = io_.Query(":SOUR1:SEQ:STAT?");
  if (state.empty()) return false;
  if (LeadingNumber(state) == 1) {
    const std::string condition = io_.Query(":STAT:OPER:CH1:COND?");
    if ((ReplyBits(condition) & kSequenceRuns) != 0 && !io_.Send(":TRIG1:SEL:EXEC ISTOP")) return false;
    io_.Wait(kSequenceStop);
    if (!io_.Send(":SOUR1:SEQ:STAT 0")) return false;
  }
  live.ModelName = TrimCommandText(live.ModelName);
  if (!io_.Send("OUTP1:LOAD INFinity")) return false;
  return live.ModelName != "XG5531" || io_.Send("OUTP2:LOAD INFinity");
}

bool Instrument::Identify(const clsGpibCommand& common) {
  const clsGpibCommand::ReplyField model = common.Model();
  if (!io_.Send(model.command)) return false;
  const std::string reply = io_.Read();
  if (reply.empty()) return false;
  const std::string_view expected = TrimCommandText(model.expected);
  if (EqualWithoutCase(Field(reply, model.start, model.length), expected)) return true;
  const Program& program = io_.GetProgram();
  if (program.registry.GetDebugMode()) {
    program.desktop.messageBoxes.Show("ModelCheck",
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

void Instrument::ErrorReport(const clsGpibCommand& common) {
  if (io_.Stopped()) return; // told, or told at the end
  const ErrMsg& messages = io_.GetProgram().messages;
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
