// Where a window was, in logical pixels; the session state keeps twips.
#pragma once

#include "app/Registry.h"

#include <optional>
#include <string>

namespace calder {

inline constexpr int kTwipsPerPixel = 15;

struct FormPosition {
  int left = 0;
  int top = 0;
};

// None for a window that was never placed.
[[nodiscard]] inline std::optional<FormPosition> StoredPosition(clsRegistry& registry, const std::string& form) {
  const FormPosition at{registry.GetFormLeft(form) / kTwipsPerPixel, registry.GetFormTop(form) / kTwipsPerPixel};
  if (at.left == 0 && at.top == 0) return std::nullopt;
  return at;
}

inline void StorePosition(clsRegistry& registry, const std::string& form, FormPosition at) {
  registry.SetFormTop(form, at.top * kTwipsPerPixel);
  registry.SetFormLeft(form, at.left * kTwipsPerPixel);
}

} // namespace calder
