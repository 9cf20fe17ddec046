#include "comm/WaveTransfer.h"

#include "app/EditBuffers.h"
#include "app/InterfaceKind.h"
#include "comm/CommandTemplate.h"
#include "instrument/SystemSetup.h"
#include "libs/sysinf32/CommandColumns.h"

#include <algorithm>

namespace calder {
namespace {

constexpr std::size_t kChunk = 512;
constexpr std::size_t kLastBytes = 2;
constexpr std::size_t kBytesASecond = 65536; // what an instrument takes at least
constexpr int kSettleSeconds = 9;
constexpr double kOutputSeconds = 1;
constexpr double kBlockTimeLimit = 30; // seconds
constexpr double kShortTimeLimit = 1;
constexpr int kThousand = 1000;

std::string DefiniteLengthHeader(std::size_t bytes) {
  const std::string count = std::to_string(bytes);
  return "#" + std::to_string(count.size()) + count;
}

} // namespace

bool WaveTransfer::Run() {
  loaded_ = cancelled_ = false;
  // Until the block is sent a cancel is looked at before each command, so that nothing more changes the instrument.
  GpibIO io(context_, [this] { return !loaded_ && progress_.Cancelled(); });
  if (!io.Begin("Waveform")) return false;
  const bool sent = Transfer(io);
  io.End();
  progress_.Unload();
  return sent && !cancelled_ && !io.Failed();
}

bool WaveTransfer::Transfer(GpibIO& io) {
  Instrument instrument(io);
  const clsGpibCommand common = instrument.Commands(Instrument::kCommon);
  const clsGpibCommand waveform = instrument.Commands(Instrument::kWaveform);
  progress_.Open();
  progress_.Step("Data convert", kThousand);
  if (!BuildBlock(io, waveform) || !Prepare(io, instrument, common) || io.Stopped()) return false;

  const std::string command = WaveformCommand(io, waveform);
  const bool announced = !io.ModelProtocol().BlockHeader && io.Kind() != kUsbTmc;
  if (announced && !(io.TimeLimit(kBlockTimeLimit) && io.SendAnnouncement(command))) return false;
  if (!SendBlock(io, instrument, common, command)) return false;
  loaded_ = true;
  cancelled_ = progress_.Cancelled();
  progress_.Unload();
  if (!Select(io, instrument)) return false;
  cancelled_ = cancelled_ || progress_.Cancelled();

  // The closing table is sent whatever the status says: it leaves the instrument as the user wants it.
  const bool content = !instrument.StatusError(common);
  if (!content) instrument.ErrorReport(common);
  if (!instrument.SendSettings(instrument.Commands(Instrument::kClosing))) return false;
  if (!instrument.StatusError(common)) return content;
  instrument.ErrorReport(common);
  return false;
}

// The memory shown is smaller than the waveform: the points in between are left out. Models with a header know it from
// the header on every bus; for the others only USBTMC gives the length.
bool WaveTransfer::Thinned(const GpibIO& io, const BlockRequest& request) {
  if (request.layout == BlockLayout::ControlPoints) return false;
  if (request.layout == BlockLayout::PointsAlone && io.Kind() != kUsbTmc) return false;
  return static_cast<std::size_t>(request.shownPoints) != request.codes.size();
}

bool WaveTransfer::BuildBlock(const GpibIO& io, const clsGpibCommand& waveform) {
  const SystemInfo& settings = io.Snapshot();
  BlockRequest request;
  request.lowByteFirst = waveform.ArbByteSwap();
  request.divisor = DivisorOfMask(waveform.ArbBitMask());
  const auto points = static_cast<std::size_t>(settings.MemorySize);
  const std::int32_t shown = std::min(setup_.ShownMemorySize(), settings.MemorySize);
  request.shownPoints = shown;
  if (io.ModelProtocol().BlockHeader) request.layout = BlockLayout::HeaderAndPoints;
  if (io.ModelProtocol().BlockHeader && setup_.TransferFormatChoice() == 1) {
    const auto count = static_cast<std::size_t>(std::max(settings.ControlPointCount, 0));
    request.layout = BlockLayout::ControlPoints;
    request.positions = W_Lock32(context_.buffers.Block32()).first(count);
    request.codes = W_Lock(context_.buffers.Block16()).first(count);
  } else {
    request.codes = W_Lock(context_.buffers.Current()).first(points);
  }
  const bool built = BuildTransferBlock(request, block_, [&](int value) {
    progress_.Value(value);
    return !progress_.Cancelled();
  });
  if (!built) return false;
  if (!Thinned(io, request)) return true;
  const std::size_t header = request.layout == BlockLayout::HeaderAndPoints ? kBlockHeader : 0;
  Decimate(block_, header, static_cast<std::size_t>(shown), points / static_cast<std::size_t>(std::max(shown, 1)));
  return true;
}

// The instrument is the right one, in order, and its settings are those of the common table.
bool WaveTransfer::Prepare(GpibIO& io, Instrument& instrument, const clsGpibCommand& common) {
  if (!instrument.SendSettings(common)) return false;
  if (!instrument.SequenceCheck()) {
    io.Report(kMsgTransferStopped);
    return false;
  }
  if (!instrument.Identify(common)) return false;
  if (instrument.StatusError(common)) {
    instrument.ErrorReport(common);
    return false;
  }
  if (instrument.Identify(common)) return true;
  io.Report(kMsgCheckModel);
  return false;
}

std::string WaveTransfer::WaveformCommand(const GpibIO& io, const clsGpibCommand& waveform) const {
  const SystemInfo& settings = io.Snapshot();
  const std::string name(TrimCommandText(settings.MemoryName));
  if (io.ModelProtocol().BlockHeader) return FillTemplate(io.ModelProtocol().BlockCommand, settings);
  const double channel = settings.Channel + 1;
  return JoinCommands({waveform.Preset(), settings.ChannelSelectable != 0 ? waveform.channel(channel) : std::string(),
                       waveform.ArbPreCommand(), waveform.ArbSize(static_cast<double>(settings.MemorySize)),
                       waveform.ArbBank(settings.MemoryNo), waveform.ArbStartAddress(0.0), waveform.ArbName(name),
                       waveform.ArbFormat(), waveform.ArbSend(name)});
}

bool WaveTransfer::SendBlock(GpibIO& io, Instrument& instrument, const clsGpibCommand& common,
                             const std::string& command) {
  progress_.Step("Send data", kThousand);
  bool sent = false;
  if (io.Kind() == kUsbTmc) {
    sent = SendUsbTmc(io, instrument, common, command);
  } else {
    // Neither terminator nor end mark: the block goes out raw.
    if (!io.EndMark(false) || !io.Terminator(GpibIO::kNoTerminator)) return false;
    // Without a command before it the instrument knows nothing of the block yet.
    if (io.ModelProtocol().BlockHeader && io.Stopped()) return false;
    sent = io.Kind() == kUsb488 ? SendUsb488(io) : SendChunks(io);
  }
  return sent && io.Terminator("\r\n");
}

bool WaveTransfer::SendUsbTmc(GpibIO& io, Instrument& instrument, const clsGpibCommand& common,
                              const std::string& command) {
  if (!io.TimeLimit(kBlockTimeLimit) || io.Stopped()) return false;
  if (!io.ModelProtocol().BlockHeader) io.Debug("GpPuts", command);
  const std::string header = command + DefiniteLengthHeader(block_.size());
  progress_.Sent(0, block_.size());
  if (!io.SendBlock(header, block_)) return false;
  loaded_ = true;
  progress_.Sent(block_.size(), block_.size());
  // The instrument takes the block in by itself: nothing says when it is done.
  if (!Count(io, "Send data", static_cast<int>(block_.size() / kBytesASecond) + kSettleSeconds)) return false;
  if (instrument.StatusError(common)) {
    if (!io.Failed()) {
      const std::string reply = io.Query("syst:err?");
      if (!reply.empty()) io.Report(reply);
    }
    io.Report(kMsgTransferStopped);
    if (!io.Failed()) io.TimeLimit(kShortTimeLimit);
    return false;
  }
  return io.TimeLimit(kShortTimeLimit);
}

bool WaveTransfer::SendUsb488(GpibIO& io) {
  if (progress_.Cancelled()) return GiveUpBlock(io);
  progress_.Sent(0, block_.size());
  if (!io.SendBytes(GpibIO::Addressing::Instrument, block_)) return false;
  progress_.Sent(block_.size(), block_.size());
  return io.EndMark(true);
}

// Chunks, so that the user can cancel between them; the last 2 bytes alone, with the end mark.
bool WaveTransfer::SendChunks(GpibIO& io) {
  const std::span<const std::byte> block(block_);
  const std::size_t size = block.size();
  std::size_t sent = 0;
  const auto addressing = [&] { return sent == 0 ? GpibIO::Addressing::Instrument : GpibIO::Addressing::None; };
  progress_.Sent(0, size);
  while (sent + kLastBytes < size && !progress_.Cancelled()) {
    const std::size_t bytes = std::min(kChunk, size - kLastBytes - sent);
    if (!io.SendBytes(addressing(), block.subspan(sent, bytes))) return false;
    sent += bytes;
    progress_.Sent(sent, size);
    progress_.Value(static_cast<int>(sent * kThousand / (size - 1)));
  }
  if (progress_.Cancelled()) return GiveUpBlock(io);
  if (!io.EndMark(true) || !io.SendBytes(addressing(), block.subspan(sent))) return false;
  progress_.Sent(size, size);
  progress_.Value(kThousand);
  return true;
}

// What the instrument has of the block is cleared away; the transfer goes on after it.
bool WaveTransfer::GiveUpBlock(GpibIO& io) {
  loaded_ = true;
  return io.EndMark(true) && io.Reopen();
}

bool WaveTransfer::Select(GpibIO& io, const Instrument& instrument) {
  const Protocol& protocol = io.ModelProtocol();
  if (!io.Send(instrument.SelectCommand())) return false;
  const std::string& output = instrument.OutputCommand(protocol.Output);
  if (!io.Send(output)) return false;
  if (!output.empty()) io.Wait(kOutputSeconds);
  if (protocol.LoadSeconds > 0) {
    Count(io, "load data", protocol.LoadSeconds); // a cancel shortens the wait
    progress_.Unload();
  }
  return true;
}

// False: cancelled.
bool WaveTransfer::Count(GpibIO& io, const char* step, int seconds) {
  progress_.Step(step, seconds);
  for (int i = 0; i < seconds && !progress_.Cancelled(); ++i) {
    progress_.SecondsRemaining(seconds - i);
    io.Wait(1);
    progress_.Value(i + 1);
  }
  return !progress_.Cancelled();
}

} // namespace calder
