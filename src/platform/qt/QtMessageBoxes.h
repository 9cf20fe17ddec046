// Message boxes of the desktop, modal to the application.
#pragma once

#include "platform/MessageBoxes.h"

namespace calder {

class QtMessageBoxes final : public MessageBoxes {
public:
  BoxAnswer Show(const std::string& title, const std::string& text, BoxButtons buttons, BoxIcon icon) override;
  std::string Input(const std::string& title, const std::string& prompt) override;
};

} // namespace calder
