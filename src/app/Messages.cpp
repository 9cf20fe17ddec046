#include "app/Messages.h"

#include <algorithm>
#include <cassert>

namespace calder {
namespace {

struct MessageRow {
  int number;
  const char* japanese;
  const char* english;
};

constexpr MessageRow kMessages[] = {
#include "app/MessageTable.inc"
};

} // namespace

std::string ErrMsg::MessageText(int number) const {
  assert(number >= 0 && number < kMessageCount);
  const auto* row = std::find_if(std::begin(kMessages), std::end(kMessages),
                                 [&](const MessageRow& candidate) { return candidate.number == number; });
  if (row == std::end(kMessages)) return "\r";
  return std::string(Pick(row->japanese, row->english)) + '\r';
}

void ErrMsg::ErrorBox(int number) const {
  ErrorBoxText(MessageText(number));
}

void ErrMsg::ErrorBoxText(const std::string& text) const {
  boxes_.Show("Error Message", text, BoxButtons::Ok, BoxIcon::None);
}

BoxAnswer ErrMsg::WarningBox(const std::string& text) const {
  return boxes_.Show("Warning Message", text, BoxButtons::YesNo, BoxIcon::Critical);
}

BoxAnswer ErrMsg::CautionQuestion(int number) const {
  return boxes_.Show("Caution Message", MessageText(number), BoxButtons::YesNo, BoxIcon::Question);
}

void ErrMsg::CautionBox(int number) const {
  boxes_.Show("Caution Message", MessageText(number), BoxButtons::Ok, BoxIcon::Critical);
}

} // namespace calder
