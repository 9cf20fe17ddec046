// Blocking work on a thread of its own, while the window's events go on.
#pragma once

#include "platform/Worker.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace calder {

class QtWorker final : public Worker {
public:
  QtWorker() = default;
  QtWorker(const QtWorker&) = delete;
  QtWorker& operator=(const QtWorker&) = delete;
  ~QtWorker() override;
  void Run(const std::function<void()>& work, Meanwhile meanwhile) override;

private:
  struct Task {
    const std::function<void()>* work;
    bool done = false; // under mutex_
  };
  void Loop();

  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable finished_;
  std::deque<Task*> tasks_;
  bool ending_ = false;
  std::thread thread_; // started by the first work
};

} // namespace calder
