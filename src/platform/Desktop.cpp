#include "platform/Desktop.h"

#include <filesystem>

namespace calder {

std::string FindProgramFile(const std::vector<std::string>& folders, const std::string& name) {
  for (const std::string& folder : folders) {
    const std::filesystem::path path = std::filesystem::path(folder) / name;
    std::error_code error;
    if (std::filesystem::exists(path, error)) return path.string();
  }
  return {};
}

} // namespace calder
