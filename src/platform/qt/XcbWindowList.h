// The captions of all visible top-level windows, from the window manager's own list.
#pragma once

#include "platform/Desktop.h"

namespace calder {

class XcbWindowList final : public WindowList {
public:
  // Empty without an X server or a window manager that keeps the list.
  [[nodiscard]] std::vector<std::string> Captions() const override;
};

} // namespace calder
