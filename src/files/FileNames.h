// File names as the file commands treat them: extensions, initial names of dialogs.
//
// Both "\" and "/" separate folders.
#pragma once

#include <string>
#include <string_view>

namespace calder {

// True when everything after the first dot of the file's name, in lower case, is `extension`: "a.b.wdb" has the
// extension "b.wdb".
[[nodiscard]] bool Is_FileExt(std::string_view path, std::string_view extension);

// What a dialog offers at first.
struct DialogName {
  std::string fileName;
  std::string defaultExt;
};

// From a remembered name: one with a three-letter extension gives that as the default extension.
[[nodiscard]] DialogName Set_DialogFile(std::string_view name, std::string_view extension,
                                        std::string_view defaultFolder);
// For saving a waveform: the current name with the extension of the form to be written.
[[nodiscard]] DialogName WaveSaveName(std::string_view current, std::string_view extension,
                                      std::string_view defaultFolder);
// The name itself, "Untitled" in the default folder.
[[nodiscard]] std::string SaveName(std::string_view name, std::string_view defaultFolder);

// The path without its dot and three-letter extension.
[[nodiscard]] std::string WithoutExtension(std::string_view path);

} // namespace calder
