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

std::filesystem::path ProgramFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

} // namespace

std::vector<std::string> ReadFolders() {
  const std::filesystem::path program = ProgramFolder();
  return {(DataHome() / kFolderName).string(), program.string(),
          (program / ".." / "share" / kFolderName).lexically_normal().string()};
}

std::vector<std::string> ModuleFolders() {
  const std::filesystem::path program = ProgramFolder();
  return {program.string(), (program / ".." / "lib" / kFolderName).lexically_normal().string()};
}

std::vector<std::string> PluginFolders() {
  std::vector<std::string> folders{(DataHome() / kFolderName).string()};
  for (const std::string& folder : ModuleFolders()) folders.push_back(folder);
  for (std::string& folder : folders) folder += "/PlugIn";
  return folders;
}

} // namespace calder
