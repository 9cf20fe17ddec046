// The loop test: waveform transfers one after the other until it is stopped, counted in the progress window's caption.
#pragma once

#include <cstdint>

namespace calder {

class clsRegistry;
struct Desktop;
class TransferProgress;
class WaveTransfer;

class LoopTest {
public:
  LoopTest(const Desktop& desktop, const clsRegistry& registry, WaveTransfer& transfer, TransferProgress& progress)
      : desktop_(desktop), registry_(registry), transfer_(transfer), progress_(progress) {}

  // The first press runs the loop and returns when it is over: after a transfer that failed or was cancelled, or
  // after the one under way when there was a press while it ran.
  void Press();
  [[nodiscard]] bool Running() const { return running_; }

private:
  const Desktop& desktop_;
  const clsRegistry& registry_;
  WaveTransfer& transfer_;
  TransferProgress& progress_;
  bool running_ = false;
  bool stop_ = false;
  std::int32_t count_ = 0;
};

} // namespace calder
