// The hourglass while something is computed: Port is what a tool asks of its form, with SetBusy(bool).
#pragma once

namespace calder {

template <class Port>
class WaitCursor {
public:
  explicit WaitCursor(Port& port) : port_(port) { port_.SetBusy(true); }
  ~WaitCursor() { port_.SetBusy(false); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;

private:
  Port& port_;
};

} // namespace calder
