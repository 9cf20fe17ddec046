#include "platform/posix/PosixInstances.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>

extern char** environ; // NOLINT(readability-redundant-declaration): POSIX asks the program to declare it

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

bool PosixInstances::StartCopy() {
  const std::string folder = std::filesystem::path(program_).parent_path().string();
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  if (posix_spawn_file_actions_init(&actions) != 0) return false;
  if (posix_spawnattr_init(&attributes) != 0) {
    posix_spawn_file_actions_destroy(&actions);
    return false;
  }
  // A session of its own: the new copy lives on when this one or its terminal ends. The shell in between exits at once,
  // so that no copy is left as a zombie of this one.
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  int result = folder.empty() ? 0 : posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  pid_t child = -1;
  if (result == 0) {
    std::string shell = "/bin/sh";
    std::string option = "-c";
    std::string script = "\"$0\" &";
    std::string program = program_;
    const std::array<char*, 5> arguments{shell.data(), option.data(), script.data(), program.data(), nullptr};
    result = access(program_.c_str(), X_OK) == 0
                 ? posix_spawn(&child, shell.c_str(), &actions, &attributes, arguments.data(), environ)
                 : -1;
  }
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  if (result != 0) return false;
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace calder
