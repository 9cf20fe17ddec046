// What the dialog sets for a while.
#pragma once

#include "tools/create/CreatePages.h"

namespace calder {

// Sets a flag for a while.
class FlagFor {
public:
  explicit FlagFor(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~FlagFor() { flag_ = before_; }
  FlagFor(const FlagFor&) = delete;
  FlagFor& operator=(const FlagFor&) = delete;

private:
  bool& flag_;
  bool before_;
};

// The hourglass while something is computed.
class BusyFor {
public:
  explicit BusyFor(CreatePort& port) : port_(port) { port_.SetBusy(true); }
  ~BusyFor() { port_.SetBusy(false); }
  BusyFor(const BusyFor&) = delete;
  BusyFor& operator=(const BusyFor&) = delete;

private:
  CreatePort& port_;
};

} // namespace calder
