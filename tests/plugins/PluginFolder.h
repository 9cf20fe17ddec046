// A folder with the test plug-in under some of its names.
#pragma once

#include "platform/TempFolder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace calder {

struct PluginFolder {
  explicit PluginFolder(const std::vector<std::string>& names) {
    for (const std::string& name : names) Add(name);
  }
  void Add(const std::string& name) { std::filesystem::create_symlink(CALDER_TEST_PLUGIN, folder / (name + ".so")); }
  void Clear() {
    for (const std::string& name : folder.Names()) std::filesystem::remove(folder / name);
  }
  [[nodiscard]] std::vector<std::string> Folders() const { return {folder.Path().string()}; }

  TempFolder folder;
};

} // namespace calder
