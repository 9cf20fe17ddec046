// What a transfer shows while it runs, and whether the user wants it to end.
#pragma once

#include <cstddef>
#include <string>

namespace calder {

class TransferProgress {
public:
  virtual ~TransferProgress() = default;
  // Shows the window; a cancel of before is forgotten.
  virtual void Open() = 0;
  // A new step: its text, and the value that means its end. The window is shown again when it was unloaded.
  virtual void Step(const std::string& text, int maximum) = 0;
  // 0 to the maximum. The window's events run meanwhile, so that a cancel is noticed.
  virtual void Value(int value) = 0;
  // Bytes sent so far, of how many: for the rate and the remaining time. With 0 bytes, right before the first one, the
  // time begins to count.
  virtual void Sent(std::size_t bytes, std::size_t total) = 0;
  // A wait of that many seconds is still to come. The rate of what was sent before it stays.
  virtual void SecondsRemaining(int seconds) = 0;
  // Also for the windows to come; empty: the window's own.
  virtual void Caption(const std::string& text) = 0;
  [[nodiscard]] virtual bool Cancelled() const = 0;
  virtual void Unload() = 0;
};

} // namespace calder
