#include "libs/pluginsp/PluginProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <new>
#include <thread>

namespace calder {
namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds kLook{20};   // how often a cancel is looked for
constexpr Milliseconds kGrace{200}; // for a killed process to be gone; one that the system holds up is left to it
constexpr int kAboveHelpers = 10;   // descriptors up here do not collide with those that the helper gets

// The memory cannot be made smaller under the editor's feet.
Descriptor MakeMemory() {
  Descriptor memory(::memfd_create("calder-plugin", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  if (!memory.Valid() || ::ftruncate(memory.Get(), sizeof(PluginArea)) != 0 ||
      ::fcntl(memory.Get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0)
    return Descriptor();
  return memory;
}

class SpawnActions {
public:
  SpawnActions() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
  }
  ~SpawnActions() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  // Nothing of the editor but these two descriptors and the errors' output; no signal blocked or ignored; a group of
  // its own, so that a key in the terminal ends the editor in order first.
  pid_t Spawn(const std::string& helper, const std::string& plugin, int socket, int memory) {
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions_, socket, kHelperSocket);
    ::posix_spawn_file_actions_adddup2(&actions_, memory, kHelperMemory);
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, kHelperMemory + 1);
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    std::string program = helper;
    std::string argument = plugin;
    const std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
    pid_t process = -1;
    return ::posix_spawn(&process, helper.c_str(), &actions_, &attributes_, arguments.data(), environ) == 0 ? process
                                                                                                            : -1;
  }

private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

} // namespace

PluginProcess::PluginProcess(const std::string& helper, const std::string& plugin) {
  const Descriptor memory = MakeMemory();
  std::array<int, 2> ends{-1, -1};
  if (!memory.Valid() || ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
  socket_ = Descriptor(ends[0]);
  const Descriptor theirs(ends[1]);
  void* mapped = ::mmap(nullptr, sizeof(PluginArea), PROT_READ | PROT_WRITE, MAP_SHARED, memory.Get(), 0);
  if (mapped == MAP_FAILED) return; // NOLINT: the system's macro
  area_ = new (mapped) PluginArea;
  const Descriptor highSocket(::fcntl(theirs.Get(), F_DUPFD_CLOEXEC, kAboveHelpers));
  const Descriptor highMemory(::fcntl(memory.Get(), F_DUPFD_CLOEXEC, kAboveHelpers));
  if (!highSocket.Valid() || !highMemory.Valid()) return;
  process_ = SpawnActions().Spawn(helper, plugin, highSocket.Get(), highMemory.Get());
}

PluginProcess::~PluginProcess() {
  if (Started()) static_cast<void>(End());
  if (area_ != nullptr) ::munmap(area_, sizeof(PluginArea));
}

bool PluginProcess::Send(const PluginPacket& packet) {
  area_->progress = 0;
  return ::send(socket_.Get(), &packet, sizeof packet, MSG_NOSIGNAL) == sizeof packet;
}

PluginFault PluginProcess::Receive(PluginPacket& answer) {
  ssize_t got = 0;
  do {
    got = ::recv(socket_.Get(), &answer, sizeof answer, MSG_DONTWAIT);
  } while (got < 0 && errno == EINTR);
  if (got != sizeof answer) return got > 0 ? PluginFault{PluginFault::Kind::Garbled} : End();
  if (answer.length > area_->text.size()) return {PluginFault::Kind::Garbled};
  const auto kind = static_cast<PluginFault::Kind>(answer.what);
  if (kind == PluginFault::Kind::None) return {};
  return {kind, answer.number, answer.other, TextOf(answer)};
}

PluginFault PluginProcess::Exchange(const PluginPacket& packet, PluginPacket& answer, Milliseconds limit,
                                    const std::atomic<bool>& cancelled) {
  using Clock = std::chrono::steady_clock;
  if (!Started()) return {PluginFault::Kind::NoHelper};
  std::uint32_t alive = area_->alive;
  Clock::time_point since = Clock::now();
  if (!cancelled && !Send(packet)) return End();
  while (true) {
    pollfd readable{socket_.Get(), POLLIN, 0};
    if (!cancelled && ::poll(&readable, 1, static_cast<int>(std::min(kLook, limit).count())) > 0)
      return Receive(answer);
    PluginFault fault{PluginFault::Kind::Cancelled};
    if (!cancelled) {
      if (const std::uint32_t now = area_->alive; now != alive) {
        alive = now;
        since = Clock::now();
      }
      if (Clock::now() - since < limit) continue;
      fault = {PluginFault::Kind::Hung,
               static_cast<std::int32_t>(std::chrono::ceil<std::chrono::seconds>(limit).count())};
    }
    static_cast<void>(End());
    return fault;
  }
}

std::string PluginProcess::TextOf(const PluginPacket& answer) const {
  return {area_->text.data(), std::min<std::size_t>(answer.length, area_->text.size())};
}

double PluginProcess::Progress() const {
  return std::min<double>(area_->progress, kWholeProgress) / kWholeProgress;
}

// Ends the helper and says how it ended, when it did so by itself.
PluginFault PluginProcess::End() {
  if (!Started()) return {PluginFault::Kind::NoHelper};
  int status = 0;
  // One that closed its socket is on its way out: its own end says more than the kill does.
  pollfd gone{socket_.Get(), POLLIN, 0};
  const bool leaving = ::poll(&gone, 1, 0) > 0 && (gone.revents & POLLHUP) != 0;
  bool reaped = leaving && Reap(status);
  if (!reaped) {
    ::kill(-process_, SIGKILL); // with what the plug-in may have started
    reaped = Reap(status);
  }
  process_ = -1;
  if (reaped && WIFSIGNALED(status)) return {PluginFault::Kind::Crashed, WTERMSIG(status)};
  return {PluginFault::Kind::Ended, reaped && WIFEXITED(status) ? WEXITSTATUS(status) : 0};
}

bool PluginProcess::Reap(int& status) {
  const auto end = std::chrono::steady_clock::now() + kGrace;
  while (true) {
    const pid_t got = ::waitpid(process_, &status, WNOHANG);
    if (got == process_) return true;
    if ((got < 0 && errno != EINTR) || std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::microseconds(500));
  }
}

} // namespace calder
