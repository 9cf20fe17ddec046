#include "comm/FailureText.h"

#include "app/Messages.h"
#include "comm/BusMessages.h"

namespace calder {

std::string FailureText(const ErrMsg& messages, int errorCode, const FailureHint& hint) {
  const int message = errorCode == kBusTimeout   ? kMsgInterfaceTimeout
                      : errorCode == kBusNoBoard ? kMsgNoInterfaceBoard
                                                 : kMsgInterfaceSystemError;
  return messages.MessageText(message) + HintText(messages, hint);
}

std::string HintText(const ErrMsg& messages, const FailureHint& hint) {
  switch (hint.kind) {
  case FailureHint::Kind::NotPermitted:
    return messages.Pick("USB機器はありますが、このユーザーには開く権限がありません。udevルール "
                         "60-calder-usbtmc.rules を入れてください。",
                         "The USB instrument is there, but this user may not open it. Install the udev rule "
                         "60-calder-usbtmc.rules.");
  case FailureHint::Kind::IncompleteLibrary:
    return messages.Pick("ライブラリに関数がありません: ", "The interface's library lacks the entry point ") +
           hint.entry + messages.Pick("", ".");
  case FailureHint::Kind::None: break;
  }
  return {};
}

} // namespace calder
