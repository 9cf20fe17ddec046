// The helper's side of an import: answers the editor's calls until the editor has gone.
#pragma once

#include <string>
#include <vector>

namespace calder {

// Loads the plug-in and serves; the exit status. REQUIRES: the descriptors kHelperSocket and kHelperMemory.
[[nodiscard]] int ServePlugin(const std::string& plugin);

// For whoever writes a plug-in: loads it, imports `file` (empty: none) with the settings "KEY=VALUE" and prints what it
// gives; the exit status. Runs in the foreground, without time limits, so that a debugger can look on.
struct TryRequest {
  std::string plugin;
  std::string file;
  std::string language;
  std::vector<std::string> settings;
};
[[nodiscard]] int TryPlugin(const TryRequest& request);

} // namespace calder
