#include "platform/qt/OutsideEnd.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

namespace calder {
namespace {

constexpr std::array kSignals = {SIGTERM, SIGHUP, SIGINT};

// What a signal handler and exit() can reach: they take no argument.
struct Reach {
  OutsideEnd* object = nullptr;
  std::array<int, 2> pipe = {-1, -1}; // read here, written by the handler
  std::array<struct sigaction, kSignals.size()> before{};
};
Reach reach; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

} // namespace

OutsideEnd::OutsideEnd(std::function<void()> asked, std::function<void()> exiting)
    : asked_(std::move(asked)), exiting_(std::move(exiting)) {
  reach.object = this;
  static const bool registered = std::atexit(&OutsideEnd::OnExit) == 0;
  static_cast<void>(registered);
  if (pipe2(reach.pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  readable_ = std::make_unique<QSocketNotifier>(reach.pipe[0], QSocketNotifier::Read);
  QObject::connect(readable_.get(), &QSocketNotifier::activated, readable_.get(), [this] {
    char byte = 0;
    while (read(reach.pipe[0], &byte, 1) > 0) {
    }
    asked_();
  });
  struct sigaction action = {};
  action.sa_handler = &OutsideEnd::OnSignal;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    if (sigaction(kSignals[i], nullptr, &reach.before[i]) == 0 && reach.before[i].sa_handler != SIG_IGN)
      sigaction(kSignals[i], &action, nullptr);
  }
}

OutsideEnd::~OutsideEnd() {
  if (readable_) {
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &reach.before[i], nullptr);
    readable_.reset();
    for (int& end : reach.pipe) close(std::exchange(end, -1));
  }
  reach.object = nullptr;
}

// Only what may be done between any two instructions.
void OutsideEnd::OnSignal(int /*number*/) {
  const int before = errno;
  const char byte = 1;
  const auto written = write(reach.pipe[1], &byte, 1); // a full pipe has been asked enough
  static_cast<void>(written);
  errno = before;
}

void OutsideEnd::OnExit() {
  if (reach.object != nullptr) std::exchange(reach.object, nullptr)->exiting_();
}

} // namespace calder
