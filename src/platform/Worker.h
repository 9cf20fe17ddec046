// Work that may block, done beside the window.
#pragma once

#include <functional>

namespace calder {

class Worker {
public:
  virtual ~Worker() = default;
  // Runs the work and returns when it is done; meanwhile the window stays alive. All work runs on one and the same
  // thread, which need not be the caller's. Work that is asked for while other work runs (an event did it) runs after
  // it. The work throws nothing.
  virtual void Run(const std::function<void()>& work) = 0;
};

} // namespace calder
