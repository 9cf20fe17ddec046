// The settings store as an INI file in the user's configuration folder.
//
// Several copies of the program read and write the same file. Every call asks for the file's state and reads it anew
// when another copy has replaced it; a write holds an exclusive lock on a lock file beside it while it reads, changes
// and replaces the file in one step, so that no copy sees a torn file and none loses what another one wrote. Keys keep
// the order in which they were first written.
#pragma once

#include "platform/SettingsStore.h"
#include "platform/posix/IniText.h"

#include <sys/stat.h>

namespace calder {

class IniSettings final : public SettingsStore {
public:
  // path: the INI file; its folder is made when it is missing.
  explicit IniSettings(std::string path);

  [[nodiscard]] std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
  bool Set(const std::string& section, const std::string& key, const std::string& value) override;
  bool Update(const std::string& section, const std::string& key, const Change& change) override;
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> All(const std::string& section) const override;

private:
  // The text as the file has it now; null when there is a file that cannot be read.
  [[nodiscard]] IniText* Current() const;

  std::string path_;
  mutable IniText text_;
  mutable struct stat state_ {}; // of the file that text_ was read from; all zeros: of none
};

} // namespace calder
