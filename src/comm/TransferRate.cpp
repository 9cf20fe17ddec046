#include "comm/TransferRate.h"

#include <cmath>
#include <cstdio>

namespace calder {
namespace {

constexpr double kFirstLook = 0.2; // seconds; a rate of before means little
constexpr double kShortest = 0.01; // seconds; the clock has steps of a millisecond

// Three digits of a value and its unit.
std::string RateText(double bytesPerSecond) {
  static constexpr const char* kUnits[] = {"B/s", "kB/s", "MB/s", "GB/s"};
  int unit = 0;
  while (bytesPerSecond >= 1000 && unit < 3) {
    bytesPerSecond /= 1000;
    ++unit;
  }
  const int decimals = bytesPerSecond >= 100 ? 0 : bytesPerSecond >= 10 ? 1 : 2;
  char text[32];
  std::snprintf(text, sizeof text, "%.*f %s", decimals, bytesPerSecond, kUnits[unit]);
  return text;
}

} // namespace

std::string TransferRateText(std::size_t bytes, std::size_t total, double seconds, Language language) {
  const bool complete = bytes == total;
  if (bytes == 0 || bytes > total || seconds < (complete ? kShortest : kFirstLook)) return {};
  const double rate = static_cast<double>(bytes) / seconds;
  if (complete) return RateText(rate);
  const auto left = static_cast<long>(std::ceil(static_cast<double>(total - bytes) / rate));
  return SecondsLeftText(left, language, RateText(rate));
}

std::string SecondsLeftText(long seconds, Language language, const std::string& rate) {
  const std::string count = std::to_string(seconds);
  if (language == Language::Japanese) return rate + (rate.empty() ? "" : "、") + "残り " + count + " 秒";
  return rate + (rate.empty() ? "" : ", ") + count + " s left";
}

} // namespace calder
