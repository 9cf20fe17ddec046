#include "libs/eval32/Worker.h"

#include <system_error>

namespace calder::eval {

Worker::~Worker() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

bool Worker::Start() {
  if (thread_.joinable()) return true;
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    return false; // the caller does the work alone
  }
  return true;
}

void Worker::Begin(Call call, void* context) {
  {
    const std::lock_guard lock(mutex_);
    call_ = call;
    context_ = context;
  }
  wake_.notify_one();
}

void Worker::Finish() {
  std::unique_lock lock(mutex_);
  call_ = nullptr;
  done_.wait(lock, [this] { return !isBusy_; });
}

void Worker::Run() {
  std::unique_lock lock(mutex_);
  for (;;) {
    wake_.wait(lock, [this] { return isEnding_ || call_ != nullptr; });
    if (isEnding_) return;
    const Call call = call_;
    void* const context = context_;
    call_ = nullptr;
    isBusy_ = true;
    lock.unlock();
    call(context);
    lock.lock();
    isBusy_ = false;
    done_.notify_one();
  }
}

} // namespace calder::eval
