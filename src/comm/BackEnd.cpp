#include "comm/BackEnd.h"

#include "libs/sysinf32/CommandColumns.h"
#include "platform/AsciiText.h"
#include "platform/MessageBoxes.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace calder {
namespace {

// Where the key stands, without regard to case.
std::size_t FindKey(const std::string& configuration, std::string_view key) {
  return LowerText(configuration).find(LowerText(std::string(key)));
}

// In the order of their weight, when several bits are set.
const char* WordOf(int result, const ErrorLabels& words) {
  if ((result & kBusFailed) != 0) return words.failed;
  if ((result & kBusTimeout) != 0) return words.timeout;
  if ((result & kBusNoBoard) != 0) return words.noBoard;
  return (result & kBusOverflow) != 0 ? words.overflow : "";
}

} // namespace

std::string_view TerminatorText(int mode) {
  static constexpr std::array<std::string_view, 4> kTexts{"", "\n", "\r", "\r\n"};
  return mode >= 0 && mode < static_cast<int>(kTexts.size()) ? kTexts[static_cast<std::size_t>(mode)]
                                                             : std::string_view{};
}

std::string ConfigurationValue(const std::string& configuration, std::string_view key) {
  const std::size_t at = FindKey(configuration, key);
  if (at == std::string::npos) return {};
  const std::string_view entry = std::string_view(configuration).substr(at, configuration.find(',', at) - at);
  const std::size_t equals = entry.find('=');
  if (equals == std::string_view::npos) return {};
  return std::string(TrimCommandText(entry.substr(equals + 1)));
}

bool ConfigurationHas(const std::string& configuration, std::string_view key) {
  return FindKey(configuration, key) != std::string::npos;
}

unsigned long TimeLimitMilliseconds(int code) {
  static constexpr std::array<unsigned long, 18> kLimits{1,   1,   1,    1,    1,     1,     3,      10,     30,
                                                         100, 300, 1000, 3000, 10000, 30000, 100000, 300000, 1000000};
  return kLimits[static_cast<std::size_t>(std::clamp(code, 0, 17))];
}

void BackEnd::ReadReporting(const std::string& configuration) {
  logFile_ = ConfigurationValue(configuration, "LOG_FILE");
  showDialog_ = ConfigurationHas(configuration, "VIEW_ERR_DIALOG");
}

void BackEnd::Report(const BackEndHost& host, const char* operation, int address, const BusData& data,
                     int result) const {
  const char* word = WordOf(result, Labels());
  if (!logFile_.empty()) {
    std::ofstream log(logFile_, std::ios::app);
    log << operation << ' ' << address << ' ' << ShowData(data) << ' ' << word << '\n';
  }
  if (result == kBusOk || !showDialog_) return;
  const std::string text = std::string(operation) + '\n' + word + "\nアプリケーションを終了しますか?";
  const BoxAnswer answer = host.boxes.Show(Name(), text, BoxButtons::YesNo, BoxIcon::Critical);
  if (answer == BoxAnswer::Yes && host.quit) host.quit();
}

void CutReply(std::string& reply, std::size_t received) {
  reply.resize(std::min(received, reply.size()));
  reply.resize(std::min(reply.size(), reply.find_first_of("\r\n")));
  reply.erase(reply.find_last_not_of(' ') + 1);
}

std::string BinaryPayload(std::span<const std::byte> data, int count, int width, bool swap) {
  static constexpr std::array<std::size_t, 3> kSizes{1, 2, 4};
  const std::size_t size = kSizes[static_cast<std::size_t>(std::clamp(width, 0, 2))];
  const std::size_t bytes = std::min(data.size(), static_cast<std::size_t>(std::max(count, 0)) * size);
  std::string payload(reinterpret_cast<const char*>(data.data()), bytes);
  if (!swap) return payload;
  if (bytes % 2 != 0) payload += '\0'; // the last word is filled up
  for (std::size_t i = 0; i + 1 < payload.size(); i += 2) std::swap(payload[i], payload[i + 1]);
  payload.resize(bytes);
  return payload;
}

} // namespace calder
