// The numbered messages in both languages, and the four boxes that show them.
#pragma once

#include "platform/MessageBoxes.h"

#include <string>

namespace calder {

enum class Language { Japanese, English };

// Message numbers that several places share; the rest are named where they are used.
enum MessageNo : int {
  kMsgSystemExit = 0,
  kMsgNoModelFile = 2,
  kMsgModelFileRead = 3,
  kMsgCloseBeforeSessionEnd = 4,
  kMsgBadExtension = 7,
  kMsgBadFileName = 8,
  kMsgNoMemory = 10,
  kMsgModelFileSyntax = 11,
  kMsgModelFileValue = 12,
  kMsgSiblingRunning = 13,
  kMsgUnknownModel = 14,
  kMsgBadConstants = 18,
  kMsgReadFailed = 71,
  kMsgWriteFailed = 72,
  kMsgExitQuestion = 98,
  kMsgTransferRunning = 226,
  kMsgNoPlugin = 240,
  kMsgBadFormat = 241,
};

inline constexpr int kMessageCount = 251; // numbers 0 to 250; most are empty

class ErrMsg {
public:
  ErrMsg(MessageBoxes& boxes, Language language) : boxes_(boxes), language_(language) {}

  [[nodiscard]] Language GetLanguage() const { return language_; }
  // The one of two texts that the language wants.
  [[nodiscard]] const char* Pick(const char* japanese, const char* english) const {
    return language_ == Language::English ? english : japanese;
  }

  // The text followed by a carriage return; a number without a text gives the carriage return alone.
  // REQUIRES: 0 <= number < kMessageCount
  [[nodiscard]] std::string MessageText(int number) const;

  void ErrorBox(int number) const;
  void ErrorBoxText(const std::string& text) const;
  // Yes or No.
  [[nodiscard]] BoxAnswer WarningBox(const std::string& text) const;
  [[nodiscard]] BoxAnswer CautionQuestion(int number) const;
  // A caution that asks nothing.
  void CautionBox(int number) const;

private:
  MessageBoxes& boxes_;
  Language language_;
};

} // namespace calder
