// The system clipboard as the program uses it: one offer in several formats, each made only when somebody asks for it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace calder {

// What a copy command puts on the clipboard. It lives as long as the clipboard holds it.
class ClipboardSource {
public:
  virtual ~ClipboardSource() = default;
  // MIME types, the most exact first.
  [[nodiscard]] virtual std::vector<std::string> Formats() const = 0;
  // The bytes of one of the formats; they stay valid while the source lives. Empty for an unknown format.
  [[nodiscard]] virtual std::span<const std::byte> Data(const std::string& mime) = 0;
};

class Clipboard {
public:
  virtual ~Clipboard() = default;
  // False when the clipboard cannot be had.
  [[nodiscard]] virtual bool Offer(std::shared_ptr<ClipboardSource> source) = 0;
  // False when the clipboard cannot be had at all.
  [[nodiscard]] virtual bool Available() const = 0;
  [[nodiscard]] virtual bool Has(const std::string& mime) const = 0;
  // The bytes on the clipboard in that format, valid until the next call of this object; none when it is not there.
  [[nodiscard]] virtual std::optional<std::span<const std::byte>> Read(const std::string& mime) = 0;
};

} // namespace calder
