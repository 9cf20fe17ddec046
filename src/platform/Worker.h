// Work that may block, done beside the window.
#pragma once

#include <functional>

namespace calder {

class Worker {
public:
  // What the window does meanwhile: everything; or only what is not the user's doing, such as painting, for a caller
  // who is not prepared for a press in the middle. Keys and the mouse wait then.
  enum class Meanwhile { Everything, NoUserInput };

  virtual ~Worker() = default;
  // Runs the work and returns when it is done; meanwhile the window stays alive. All work runs on one and the same
  // thread, which need not be the caller's. Work that is asked for while other work runs (an event did it) runs after
  // it. The work throws nothing.
  virtual void Run(const std::function<void()>& work, Meanwhile meanwhile) = 0;
};

} // namespace calder
