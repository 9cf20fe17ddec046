// A TOML text as a plain tree in file order, each value with its line. The only unit that knows the TOML library.
#pragma once

#include "libs/sysinf32/ModelFault.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

struct TomlNode {
  enum class Kind { None, Table, Array, Text, Integer, Real, Boolean, Other };

  Kind kind = Kind::None;
  std::string key;       // in a table; empty in an array and at the top
  std::int32_t line = 0; // 1-based line where the value (of a table: its header) begins; 0 at the top
  std::string text;      // UTF-8
  std::int64_t integer = 0;
  double real = 0;
  bool boolean = false;
  std::vector<TomlNode> children; // in file order

  // The child with that key; null when there is none.
  [[nodiscard]] const TomlNode* Find(std::string_view name) const;
};

// Longest text and longest line, in bytes, that are read. With the limit on nested values they bound the depth of the
// tree.
inline constexpr std::size_t kTomlMaxBytes = 65536;
inline constexpr std::size_t kTomlMaxLine = 1000;

// Fills `root` (a table). A fault (SYS_SYNTAX_ERROR with its line, or SYS_BAD_VALUE for a text above kTomlMaxBytes)
// goes to `faults`, and `root` is then empty.
void ParseToml(std::string_view text, TomlNode& root, FaultSink& faults);

} // namespace calder
