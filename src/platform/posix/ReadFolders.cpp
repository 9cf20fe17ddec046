#include "platform/posix/ReadFolders.h"

#include <cstdlib>
#include <filesystem>

namespace calder {
namespace {

constexpr const char* kFolderName = "calder";

// The base of the user's data files, as the XDG base directories are defined: a relative path is none.
std::filesystem::path DataHome() {
  const char* stated = std::getenv("XDG_DATA_HOME"); // NOLINT: read before any thread writes
  if (stated != nullptr && *stated == '/') return stated;
  const char* home = std::getenv("HOME"); // NOLINT: as above
  return std::filesystem::path(home == nullptr ? "/" : home) / ".local" / "share";
}

} // namespace

std::vector<std::string> ReadFolders() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  return {(DataHome() / kFolderName).string(), program.string(),
          (program / ".." / "share" / kFolderName).lexically_normal().string()};
}

} // namespace calder
