#include "comm/Debug_Mdl.h"

#include "libs/sysinf32/CommandColumns.h"
#include "platform/MessageBoxes.h"

#define SI_NO_CONVERSION // no wide characters here
#include <SimpleIni.h>

namespace calder {
namespace {

constexpr std::size_t kAnswerLength = 99;
constexpr const char* kDefaultFile = "simulated.ini";

std::vector<std::string> QueriesOf(std::string_view text) {
  std::vector<std::string> queries;
  while (!text.empty()) {
    const std::size_t end = text.find(';');
    const std::string_view part = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    if (part.find('?') != std::string_view::npos) queries.emplace_back(TrimCommandText(part));
  }
  return queries;
}

// As a private-profile lookup gives it: without one pair of quotes around it.
std::string Unquoted(std::string value) {
  const bool quoted =
      value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

} // namespace

int Debug_Mdl::GP_Init(const std::string& configuration) {
  file_ = ConfigurationValue(configuration, "INI_FILE");
  if (file_.empty()) file_ = kDefaultFile;
  responseDialog_ = ConfigurationHas(configuration, "RESPONSE_DIALOG");
  int result = GP_REN(true);
  result |= GP_MTerm(kTermLf);
  result |= GP_EOI(true);
  return result | GP_Time_Out(kTimeLimit300ms);
}

int Debug_Mdl::GP_Send_Str(int address, const std::string& text) {
  queries_.clear();
  answers_.clear();
  const std::vector<std::string> queries = QueriesOf(text);
  if (queries.empty()) return kBusOk;
  CSimpleIniA ini(true, false, false); // UTF-8, one value a key and line
  ini.SetQuotes(false);
  (void)ini.LoadFile((host_.folder + "/" + file_).c_str()); // a missing file answers nothing
  const std::string section = "ADRS" + std::to_string(address);
  int result = kBusOk;
  for (std::size_t i = 0; i < queries.size(); ++i) {
    std::string answer = Unquoted(ini.GetValue(section.c_str(), queries[i].c_str(), ""));
    if (answer.size() >= kAnswerLength) {
      answer = "Buffer Over";
      result = kBusOverflow;
    }
    queries_ += (i > 0 ? "," : "") + queries[i];
    answers_ += (i > 0 ? "," : "") + answer;
  }
  return result;
}

int Debug_Mdl::GP_Receive_Str(int /*address*/, std::string& text) {
  text = responseDialog_ ? host_.boxes.Input(Name(), queries_ + "の応答メッセージを入力してください") : answers_;
  return kBusOk;
}

} // namespace calder
