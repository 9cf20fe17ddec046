#include "app/UsbIds.h"

#include "libs/file32/file32.h"

namespace calder {

std::vector<UsbId> ParseUsbIds(std::string_view text) {
  std::vector<UsbId> ids;
  while (!text.empty()) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const auto comma = line.find(',');
    UsbId id{std::string(line.substr(0, comma)), {}};
    if (comma != std::string_view::npos) {
      const std::string_view rest = line.substr(comma + 1);
      id.value = rest.substr(0, rest.find(','));
    }
    ids.push_back(std::move(id));
  }
  return ids;
}

bool ReadUsbIds(const std::string& path, std::vector<UsbId>& ids) {
  std::vector<char> content;
  if (path.empty() || ReadWholeFile(path, content) != 0) return false;
  ids = ParseUsbIds({content.data(), content.size()});
  return !ids.empty();
}

} // namespace calder
