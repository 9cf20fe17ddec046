#include "libs/eval32/Worker.h"

#include <chrono>
#include <system_error>
#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace calder::eval {

namespace {

// To wake a thread that sleeps takes longer than a short job: who waits looks around for so long before it sleeps.
constexpr std::chrono::microseconds kPatience{100};
constexpr int kLooksBetweenTimes = 16;

template <typename Condition>
bool ComesTrueSoon(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  do {
    for (int i = 0; i < kLooksBetweenTimes; ++i) {
      if (condition()) return true;
#ifdef __SSE2__
      _mm_pause();
#endif
    }
  } while (std::chrono::steady_clock::now() < end);
  return condition();
}

} // namespace

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
  bool isAsleep = false;
  {
    const std::lock_guard lock(mutex_);
    call_ = call;
    context_ = context;
    isAsleep = isAsleep_;
  }
  if (isAsleep) wake_.notify_one();
}

void Worker::Finish() {
  {
    const std::lock_guard lock(mutex_);
    call_ = nullptr;
  }
  if (ComesTrueSoon([this] { return !isBusy_; })) return;
  std::unique_lock lock(mutex_);
  done_.wait(lock, [this] { return !isBusy_; });
}

void Worker::Run() {
  for (;;) {
    const auto hasNews = [this] { return isEnding_ || call_ != nullptr; };
    static_cast<void>(ComesTrueSoon(hasNews));
    std::unique_lock lock(mutex_);
    isAsleep_ = true;
    wake_.wait(lock, hasNews);
    isAsleep_ = false;
    if (isEnding_) return;
    const Call call = call_;
    void* const context = context_;
    call_ = nullptr;
    isBusy_ = true;
    lock.unlock();
    call(context);
    lock.lock();
    isBusy_ = false;
    lock.unlock();
    done_.notify_one();
  }
}

} // namespace calder::eval
