// A whole file as bytes, without reading what is not looked at.
#pragma once

#include "common/Importer.h"

#include <string>
#include <string_view>

namespace calder::plugin {

class MappedFile {
public:
  // Throws a Refusal when it cannot be read or is not a regular file.
  MappedFile(const Editor& editor, const std::string& path);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  [[nodiscard]] std::string_view Bytes() const { return bytes_; }

private:
  std::string_view bytes_;
};

} // namespace calder::plugin
