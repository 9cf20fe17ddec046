// The names that the next file dialogs offer first.
#pragma once

#include <string>

namespace calder {

inline constexpr const char* kUntitled = "Untitled";

struct RememberedNames {
  std::string CurrentWaveFile = kUntitled; // also in the title
  std::string LastSystemFile = kUntitled;
  std::string LastTableFile = kUntitled;
  std::string LastListFile = kUntitled;
  std::string LastPwfFile;
};

} // namespace calder
