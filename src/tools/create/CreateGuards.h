// What the dialog sets for a while.
#pragma once

#include "tools/create/CreatePages.h"

namespace calder {

// Sets a flag for a while.
class ScopedFlag {
public:
  explicit ScopedFlag(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = before_; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
  bool& flag_;
  bool before_;
};

// The hourglass while something is computed.
class WaitCursor {
public:
  explicit WaitCursor(CreatePort& port) : port_(port) { port_.SetBusy(true); }
  ~WaitCursor() { port_.SetBusy(false); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;

private:
  CreatePort& port_;
};

} // namespace calder
