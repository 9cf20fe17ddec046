// The ends that come from outside: a signal that asks the program to go, and a display that went.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace calder {

// Watches for SIGTERM, SIGHUP and SIGINT (one that the parent had ignored stays ignored) and for a call of exit(),
// which is how the toolkit ends when its connection to the display breaks. One object a process, made after the
// QApplication; the signals have their old meaning again when it goes.
class OutsideEnd {
public:
  // asked: called among the window's events after a signal; the program ends in its own time. exiting: called within
  // exit(), where no event is processed any more and only what must be stored can still be stored.
  OutsideEnd(std::function<void()> asked, std::function<void()> exiting);
  ~OutsideEnd();
  OutsideEnd(const OutsideEnd&) = delete;
  OutsideEnd& operator=(const OutsideEnd&) = delete;

private:
  static void OnSignal(int number);
  static void OnExit();

  std::function<void()> asked_;
  std::function<void()> exiting_;
  std::unique_ptr<QSocketNotifier> readable_; // the pipe's end that the handler's byte comes out of
};

} // namespace calder
