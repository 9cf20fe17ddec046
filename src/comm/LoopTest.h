// The loop test: waveform transfers one after the other until it is stopped, counted in the progress window's caption.
#pragma once

#include <cstdint>

namespace calder {

class Program;
class TransferProgress;
class WaveTransfer;

class LoopTest {
public:
  LoopTest(Program& program, WaveTransfer& transfer, TransferProgress& progress)
      : program_(program), transfer_(transfer), progress_(progress) {}

  // The first press runs the loop and returns when it is over: behind a transfer that failed or was cancelled, or
  // behind the one under way when there was a press while it ran.
  void Press();
  [[nodiscard]] bool Running() const { return running_; }

private:
  Program& program_;
  WaveTransfer& transfer_;
  TransferProgress& progress_;
  bool running_ = false;
  bool stop_ = false;
  std::int32_t count_ = 0;
};

} // namespace calder
