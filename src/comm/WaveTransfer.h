// Sends the edited waveform together with the settings to the instrument.
#pragma once

#include "comm/GpibIO.h"
#include "comm/Instrument.h"
#include "comm/TransferBlock.h"
#include "comm/TransferProgress.h"

namespace calder {

class SystemSetup;

class WaveTransfer {
public:
  // What they refer to must outlive this object. setup: the memory size and the transfer format that are shown.
  WaveTransfer(const TransferContext& context, const SystemSetup& setup, TransferProgress& progress)
      : context_(context), setup_(setup), progress_(progress) {}

  // One transfer from beginning to end; the user is shown what fails. False: it was stopped or cancelled, or the
  // instrument reported an error at its end.
  bool Run();

private:
  [[nodiscard]] static bool Thinned(const GpibIO& io, const BlockRequest& request);
  [[nodiscard]] bool BuildBlock(const GpibIO& io, const clsGpibCommand& waveform);
  [[nodiscard]] bool Prepare(GpibIO& io, Instrument& instrument, const clsGpibCommand& common);
  [[nodiscard]] std::string WaveformCommand(const GpibIO& io, const clsGpibCommand& waveform) const;
  [[nodiscard]] bool Transfer(GpibIO& io);
  [[nodiscard]] bool SendBlock(GpibIO& io, Instrument& instrument, const clsGpibCommand& common,
                               const std::string& command);
  [[nodiscard]] bool SendUsbTmc(GpibIO& io, Instrument& instrument, const clsGpibCommand& common,
                                const std::string& command);
  [[nodiscard]] bool SendUsb488(GpibIO& io);
  [[nodiscard]] bool SendChunks(GpibIO& io);
  [[nodiscard]] bool GiveUpBlock(GpibIO& io);
  [[nodiscard]] bool Select(GpibIO& io, const Instrument& instrument);
  bool Count(GpibIO& io, const char* step, int seconds);

  const TransferContext context_;
  const SystemSetup& setup_;
  TransferProgress& progress_;
  bool loaded_ = false; // the block is sent, or given up: a cancel ends nothing more
  bool cancelled_ = false;
  std::vector<std::byte> block_; // kept, so that the next transfer needs no new memory
};

} // namespace calder
