// What the toolkit has made in memory, as a file.
#pragma once

#include "platform/posix/WholeFile.h"

#include <QBuffer>

#include <array>
#include <span>
#include <string>

namespace calder {

// In one step or not at all. False: the file could not be written.
[[nodiscard]] inline bool WriteBuffer(const std::string& path, const QBuffer& content) {
  const QByteArray& bytes = content.data();
  const std::array pieces{std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size())))};
  return ReplaceFile(path, pieces) == 0;
}

} // namespace calder
