// "USBTMC.ID": which VISA resource prefix the USB devices of a model are searched under.
//
// One record a line, "model name,prefix"; text after a second comma is ignored, a line without a comma gives an empty
// prefix, an empty line an empty record.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace calder {

struct UsbId {
  std::string key;
  std::string value;
};

[[nodiscard]] std::vector<UsbId> ParseUsbIds(std::string_view text);
// False: the file cannot be read or holds no line at all.
[[nodiscard]] bool ReadUsbIds(const std::string& path, std::vector<UsbId>& ids);

} // namespace calder
