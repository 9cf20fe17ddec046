#include "files/FileNames.h"

#include "app/RememberedNames.h"
#include "platform/AsciiText.h"

#include <algorithm>

namespace calder {
namespace {

constexpr std::size_t kExtensionLength = 4; // the dot and three letters

bool HasShortExtension(std::string_view name) {
  return name.size() >= kExtensionLength && name[name.size() - kExtensionLength] == '.';
}

std::string UntitledIn(std::string_view folder) {
  return std::string(folder) + '/' + kUntitled;
}

} // namespace

bool Is_FileExt(std::string_view path, std::string_view extension) {
  const auto separator = path.find_last_of("\\/");
  const std::string_view name = separator == std::string_view::npos ? path : path.substr(separator + 1);
  const auto dot = name.find('.');
  if (dot == std::string_view::npos) return false;
  const std::string_view found = name.substr(dot + 1);
  return std::equal(found.begin(), found.end(), extension.begin(), extension.end(),
                    [](char a, char b) { return Lower(a) == b; });
}

DialogName Set_DialogFile(std::string_view name, std::string_view extension, std::string_view defaultFolder) {
  if (HasShortExtension(name)) {
    return {std::string(name.substr(0, name.size() - kExtensionLength)), std::string(name.substr(name.size() - 3))};
  }
  return {SaveName(name, defaultFolder), std::string(extension)};
}

DialogName WaveSaveName(std::string_view current, std::string_view extension, std::string_view defaultFolder) {
  if (HasShortExtension(current)) {
    return {std::string(current.substr(0, current.size() - 3)) + std::string(extension), std::string(extension)};
  }
  return {SaveName(current, defaultFolder), std::string(extension)};
}

std::string SaveName(std::string_view name, std::string_view defaultFolder) {
  return name == kUntitled ? UntitledIn(defaultFolder) : std::string(name);
}

std::string WithoutExtension(std::string_view path) {
  return std::string(path.substr(0, path.size() - std::min(kExtensionLength, path.size())));
}

} // namespace calder
