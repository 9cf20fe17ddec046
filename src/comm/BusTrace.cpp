#include "comm/BusTrace.h"

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

void BusTrace::Begin(std::string_view title) {
  if (!keep_) {
    lines_.clear();
    bytes_ = 0;
  }
  ++transfers_;
  within_ = true;
  Push("-- " + std::string(title));
}

void BusTrace::Add(double secondsOfDay, std::string_view operation, int address, const BusData& data, int errorCode) {
  std::string line = TimeText(secondsOfDay) + "  " + std::string(operation);
  if (address >= 0) line += " " + std::to_string(address);
  if (const std::string shown = ShowData(data, keep_ ? std::string::npos : kShownBytes); !shown.empty())
    line += "  " + shown;
  if (errorCode != 0) line += "  error " + std::to_string(errorCode);
  Push(std::move(line));
}

std::string BusTrace::Text() const {
  std::string text;
  text.reserve(bytes_ + lines_.size());
  for (const Line& line : lines_) (text += line.text) += '\n';
  return text;
}

std::string BusTrace::LastTransfer() const {
  std::string text;
  for (const Line& line : lines_) {
    if (transfers_ > 0 && line.transfer == transfers_) (text += line.text) += '\n';
  }
  return text;
}

void BusTrace::Push(std::string text) {
  bytes_ += text.size();
  lines_.push_back({std::move(text), within_ ? transfers_ : 0});
  while (lines_.size() > kMostLines || bytes_ > kMostBytes) {
    bytes_ -= lines_.front().text.size();
    lines_.pop_front();
  }
}

} // namespace calder
