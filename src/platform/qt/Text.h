// The toolkit's strings from ours, which are UTF-8.
#pragma once

#include <QString>

#include <cstddef>
#include <string>

namespace calder {

[[nodiscard]] inline QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

// A place in UTF-8 bytes as one in the toolkit's characters.
[[nodiscard]] inline int CharacterAt(const QString& text, std::size_t byte) {
  return static_cast<int>(QString::fromUtf8(text.toUtf8().left(static_cast<qsizetype>(byte))).size());
}

} // namespace calder
