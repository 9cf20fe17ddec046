#include "platform/posix/PosixInstances.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>

namespace calder {

// Every copy holds a shared lock for its whole life; the one that can take it exclusively is alone. It keeps it so
// until it has counted itself in, and a second copy that starts in that moment waits for its shared one.
PosixInstances::PosixInstances(const std::string& lockPath, std::string program) : program_(std::move(program)) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(lockPath).parent_path(), error);
  fd_ = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (fd_ < 0) return;
  others_ = flock(fd_, LOCK_EX | LOCK_NB) != 0;
  if (others_) StartupFinished();
}

void PosixInstances::StartupFinished() {
  if (fd_ < 0) return;
  int result = 0;
  do {
    result = flock(fd_, LOCK_SH);
  } while (result != 0 && errno == EINTR);
  if (result == 0) return;
  close(fd_);
  fd_ = -1;
}

PosixInstances::~PosixInstances() {
  if (fd_ >= 0) close(fd_);
}

// In between stands a process that ends at once, so that no copy is left as a zombie of this one. It makes only calls
// that are safe in a fork of a program with threads.
bool PosixInstances::StartCopy(const std::string& file) {
  const std::string folder = std::filesystem::path(program_).parent_path().string();
  std::string name = program_;
  std::string path = file;
  const std::array<char*, 3> arguments{name.data(), path.empty() ? nullptr : path.data(), nullptr};
  std::array<int, 2> refusal{}; // closed without a byte when the new copy runs
  if (pipe2(refusal.data(), O_CLOEXEC) != 0) return false;
  const pid_t between = fork();
  if (between == 0) {
    setsid(); // the new copy lives on when this one or its terminal ends
    const bool there = folder.empty() || chdir(folder.c_str()) == 0;
    const pid_t copy = there ? fork() : -1;
    if (copy > 0) _exit(0);
    if (copy == 0) execv(name.c_str(), arguments.data());
    constexpr char refused = 'r';
    _exit(write(refusal[1], &refused, sizeof refused) == sizeof refused ? 1 : 2);
  }
  close(refusal[1]);
  int status = 0;
  while (between > 0 && waitpid(between, &status, 0) < 0 && errno == EINTR) {
  }
  char answer = 0;
  ssize_t got = 0;
  do {
    got = read(refusal[0], &answer, sizeof answer);
  } while (got < 0 && errno == EINTR);
  close(refusal[0]);
  return between > 0 && got == 0;
}

} // namespace calder
