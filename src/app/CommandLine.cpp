#include "app/CommandLine.h"

#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace calder {
namespace {

// %41 and the like as the bytes that they mean; what is none stays.
std::string Decoded(std::string_view address) {
  std::string text;
  for (std::size_t i = 0; i < address.size(); ++i) {
    unsigned char byte = 0;
    const char* digits = address.data() + i + 1;
    if (address[i] == '%' && i + 2 < address.size() &&
        std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
      text += static_cast<char>(byte);
      i += 2;
    } else {
      text += address[i];
    }
  }
  return text;
}

std::string PathOf(std::string_view argument) {
  constexpr std::string_view kScheme = "file://";
  std::string path(argument);
  if (argument.starts_with(kScheme)) {
    const std::size_t slash = argument.find('/', kScheme.size()); // after the host's name, which is mostly empty
    if (slash != std::string_view::npos) path = Decoded(argument.substr(slash));
  }
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.string();
}

bool IsFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error);
}

} // namespace

CommandLine ReadCommandLine(std::span<const char* const> arguments) {
  CommandLine line;
  std::string joined;
  bool optionsEnded = false;
  for (const std::string_view argument : arguments) {
    if (!optionsEnded && argument == "--") {
      optionsEnded = true;
    } else if (!optionsEnded && argument.size() > 1 && argument.front() == '-') {
      if (argument == "--help" || argument == "-h") return {CommandLine::Wish::Help, {}, {}};
      if (argument == "--version" || argument == "-v") return {CommandLine::Wish::Version, {}, {}};
      return {CommandLine::Wish::WrongUse, {}, std::string(argument)};
    } else if (!argument.empty()) {
      line.files.push_back(PathOf(argument));
      joined.append(joined.empty() ? "" : " ").append(argument);
    }
  }
  if (line.files.size() > 1 && IsFile(PathOf(joined))) line.files = {PathOf(joined)};
  return line;
}

const char* HelpText() {
  return "Usage: calder [OPTION]... [--] [FILE]...\n"
         "Editor for arbitrary waveforms. Opens FILE, a .wdb or a text with one code a line; each further file opens "
         "in a\n"
         "window of its own.\n"
         "\n"
         "  -h, --help     print this and end\n"
         "  -v, --version  print the version and end\n"
         "  --             what follows are files\n";
}

} // namespace calder
