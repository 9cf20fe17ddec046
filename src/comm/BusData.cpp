#include "comm/BusData.h"

#include <algorithm>

namespace calder {
namespace {

constexpr char kHex[] = "0123456789ABCDEF";

void AppendHex(std::string& text, unsigned code) {
  (text += kHex[code / 16]) += kHex[code % 16];
}

std::string ShowText(std::string_view bytes, std::size_t longest) {
  std::string text = "\"";
  for (const char c : bytes.substr(0, longest)) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '\n')
      text += "\\n";
    else if (c == '\r')
      text += "\\r";
    else if (c == '"' || c == '\\')
      (text += '\\') += c;
    else if (code >= ' ' && code < 127)
      text += c;
    else
      AppendHex(text += "\\x", code);
  }
  text += '"';
  if (bytes.size() > longest) text += "... " + std::to_string(bytes.size()) + " bytes";
  return text;
}

std::string ShowBlock(std::span<const std::byte> bytes, std::size_t longest) {
  std::string text = std::to_string(bytes.size()) + " bytes ";
  const std::size_t shown = std::min(bytes.size(), longest);
  text.reserve(text.size() + 2 * shown + 3);
  for (const std::byte byte : bytes.first(shown)) AppendHex(text, std::to_integer<unsigned>(byte));
  if (bytes.size() > longest) text += "...";
  return text;
}

} // namespace

std::string ShowData(const BusData& data, std::size_t longest) {
  std::string shown;
  if (!data.text.empty()) shown = ShowText(data.text, longest);
  if (data.block.empty()) return shown;
  if (!shown.empty()) shown += ' ';
  return shown + ShowBlock(data.block, longest);
}

} // namespace calder
