// Bus libraries by dlopen.
#pragma once

#include "platform/BusLibrary.h"

namespace calder {

class DlBusLibraries final : public BusLibraries {
public:
  // folder: looked into before the system's own places; empty for none.
  explicit DlBusLibraries(std::string folder) : folder_(std::move(folder)) {}
  [[nodiscard]] std::unique_ptr<BusLibrary> Open(std::span<const char* const> names) override;

private:
  std::string folder_;
};

} // namespace calder
