// A folder of the test's own that goes away with it, and files as texts.
#pragma once

#include "Testing.h"
#include "platform/posix/WholeFile.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

namespace calder {

class TempFolder {
public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "calder-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) std::abort();
    path_ = name;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  [[nodiscard]] std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  // The names in the folder, hidden ones too.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) names.push_back(entry.path().filename());
    return names;
  }

private:
  std::filesystem::path path_;
};

inline void PutFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

inline std::string GetFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline std::span<const std::byte> Bytes(std::string_view text) {
  return std::as_bytes(std::span(text.data(), text.size()));
}

} // namespace calder
