// The hourglass while something is computed.
#pragma once

#include "tools/create/CreatePages.h"

namespace calder {

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
