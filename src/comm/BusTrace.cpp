#include "comm/BusTrace.h"

#include <cmath>
#include <cstdio>

namespace calder {
namespace {

constexpr std::size_t kShownBytes = 200;

std::string TimeText(double secondsOfDay) {
  const auto milliseconds = static_cast<long>(secondsOfDay * 1000);
  char text[32];
  std::snprintf(text, sizeof text, "%02ld:%02ld:%02ld.%03ld", milliseconds / 3600000, milliseconds / 60000 % 60,
                milliseconds / 1000 % 60, milliseconds % 1000);
  return text;
}

} // namespace

std::string ShowBytes(std::string_view bytes, std::size_t longest) {
  static constexpr char kHex[] = "0123456789ABCDEF";
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
      ((text += "\\x") += kHex[code / 16]) += kHex[code % 16];
  }
  text += '"';
  if (bytes.size() > longest) text += "... " + std::to_string(bytes.size()) + " bytes";
  return text;
}

void BusTrace::Begin(std::string_view title) {
  if (!keep_) lines_.clear();
  lastBegin_ = lines_.size();
  Push("-- " + std::string(title));
}

void BusTrace::Add(double secondsOfDay, std::string_view operation, int address, std::string_view data, int errorCode) {
  std::string line = TimeText(secondsOfDay) + "  " + std::string(operation);
  if (address >= 0) line += " " + std::to_string(address);
  if (!data.empty()) line += "  " + ShowBytes(data, kShownBytes);
  if (errorCode != 0) line += "  error " + std::to_string(errorCode);
  Push(std::move(line));
}

std::string BusTrace::Text() const {
  std::string text;
  for (const std::string& line : lines_) (text += line) += '\n';
  return text;
}

std::string BusTrace::LastTransfer() const {
  std::string text;
  for (std::size_t i = lastBegin_; i < lines_.size(); ++i) (text += lines_[i]) += '\n';
  return text;
}

void BusTrace::Push(std::string line) {
  lines_.push_back(std::move(line));
  if (lines_.size() <= kMostLines) return;
  lines_.pop_front();
  if (lastBegin_ > 0) --lastBegin_;
}

} // namespace calder
