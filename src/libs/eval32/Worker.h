// One thread that waits for a job, spinning for a moment before it sleeps. Inside the evaluator only.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace calder::eval {

class Worker {
public:
  Worker() = default;
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  // Makes the thread at the first call. False when the system gives none.
  [[nodiscard]] bool Start();
  // Has the thread call job, which must live until Finish. REQUIRES: Start was true; the last job is finished.
  template <class Job>
  void Begin(Job& job) {
    Begin([](void* context) { (*static_cast<Job*>(context))(); }, &job);
  }
  // Waits until the job is done; a job that the thread has not yet begun is dropped.
  void Finish();

private:
  using Call = void (*)(void*);
  void Begin(Call call, void* context);
  void Run();

  std::mutex mutex_;
  std::condition_variable wake_;
  std::condition_variable done_;
  // Written under the mutex; the atomic ones are looked at without it as well.
  std::atomic<Call> call_{nullptr}; // waiting to be begun
  void* context_ = nullptr;
  std::atomic<bool> isBusy_{false};
  std::atomic<bool> isEnding_{false};
  bool isAsleep_ = false;
  std::thread thread_;
};

} // namespace calder::eval
