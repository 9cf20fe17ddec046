#include "platform/qt/QtWorker.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <chrono>

namespace calder {
namespace {

// Most bus calls are done at once: the window is asked for its events only when one takes longer, and then so often
// that a frame is never missed.
constexpr auto kPatience = std::chrono::milliseconds(5);

} // namespace

QtWorker::~QtWorker() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void QtWorker::Run(const std::function<void()>& work, Meanwhile meanwhile) {
  const QEventLoop::ProcessEventsFlags events =
      meanwhile == Meanwhile::NoUserInput ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents;
  Task task{&work};
  std::unique_lock lock(mutex_);
  if (!thread_.joinable()) thread_ = std::thread([this] { Loop(); });
  tasks_.push_back(&task);
  wake_.notify_one();
  while (!finished_.wait_for(lock, kPatience, [&] { return task.done; })) {
    lock.unlock();
    QCoreApplication::processEvents(events);
    lock.lock();
  }
}

void QtWorker::Loop() {
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [&] { return ending_ || !tasks_.empty(); });
    if (tasks_.empty()) return;
    Task* task = tasks_.front();
    tasks_.pop_front();
    lock.unlock();
    (*task->work)();
    lock.lock();
    task->done = true;
    finished_.notify_all();
  }
}

} // namespace calder
