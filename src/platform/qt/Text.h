// The toolkit's strings from ours, which are UTF-8.
#pragma once

#include <QString>

#include <string>

namespace calder {

[[nodiscard]] inline QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

} // namespace calder
