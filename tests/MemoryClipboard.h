// A clipboard in memory, shared by copies of the program and by other programs (which put texts on it).
#pragma once

#include "Testing.h"
#include "platform/Clipboard.h"

namespace calder {

class MemoryClipboard final : public Clipboard {
public:
  [[nodiscard]] bool Offer(std::shared_ptr<ClipboardSource> offered) override {
    if (!available || !writable) return false;
    foreign_.clear();
    source = std::move(offered);
    if (keepsAll) kept.push_back(source);
    return true;
  }
  [[nodiscard]] bool Available() const override { return available; }
  [[nodiscard]] bool Has(const std::string& mime) const override {
    if (foreign_.contains(mime)) return true;
    if (!source) return false;
    const auto formats = source->Formats();
    return std::ranges::find(formats, mime) != formats.end();
  }
  [[nodiscard]] std::optional<std::span<const std::byte>> Read(const std::string& mime) override {
    if (!Has(mime)) return std::nullopt;
    const auto found = foreign_.find(mime);
    if (found == foreign_.end()) return source->Data(mime);
    return std::as_bytes(std::span(found->second.data(), found->second.size()));
  }

  // Another program's copy.
  void Put(const std::string& mime, std::string bytes) {
    source.reset();
    foreign_[mime] = std::move(bytes);
  }
  void Clear() {
    source.reset();
    foreign_.clear();
  }
  [[nodiscard]] std::string Get(const std::string& mime) {
    const auto bytes = Read(mime);
    if (!bytes) return "(none)";
    return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
  }

  bool available = true;
  bool writable = true;
  bool keepsAll = false; // as a clipboard manager does
  std::vector<std::shared_ptr<ClipboardSource>> kept;

  std::shared_ptr<ClipboardSource> source;

private:
  std::map<std::string, std::string> foreign_;
};

} // namespace calder
