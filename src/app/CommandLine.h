// What the program was started with.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace calder {

struct CommandLine {
  enum class Wish { Open, Help, Version, WrongUse };
  Wish wish = Wish::Open;
  std::vector<std::string> files; // absolute paths
  std::string wrong;              // the option that does not exist
};

// arguments: without the program's name. A file may be given by its path, which counts from the current folder, or as a
// file:// address; one whose name has blanks may come as several arguments, when a file of that whole name exists.
// After "--" everything is a file.
[[nodiscard]] CommandLine ReadCommandLine(std::span<const char* const> arguments);

// What --help prints.
[[nodiscard]] const char* HelpText();

} // namespace calder
