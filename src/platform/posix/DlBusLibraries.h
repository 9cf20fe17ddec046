// Bus libraries by dlopen.
#pragma once

#include "platform/BusLibrary.h"

namespace calder {

class DlBusLibraries final : public BusLibraries {
public:
  // folder: looked into before the system's own places; empty for none.
  explicit DlBusLibraries(std::string folder) : folder_(std::move(folder)) {}
  void Offer(std::span<const char* const> names, const std::function<bool(std::unique_ptr<BusLibrary>)>& take) override;

private:
  std::string folder_;
};

} // namespace calder
