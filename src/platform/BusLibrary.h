// The instrument bus libraries of the machine, loaded when they are first needed and never linked.
#pragma once

#include <memory>
#include <span>
#include <string>

namespace calder {

// A loaded shared object. It stays loaded as long as this object lives.
class BusLibrary {
public:
  virtual ~BusLibrary() = default;
  // The address of an entry point; null when the library has none of that name.
  [[nodiscard]] virtual void* Entry(const char* name) const = 0;
};

class BusLibraries {
public:
  virtual ~BusLibraries() = default;
  // The first of these file names that can be loaded; null when none can.
  [[nodiscard]] virtual std::unique_ptr<BusLibrary> Open(std::span<const char* const> names) = 0;
};

// Puts the entry point into a function pointer. False: there is none.
template <typename Function>
[[nodiscard]] bool Bind(const BusLibrary& library, const char* name, Function*& pointer) {
  pointer = reinterpret_cast<Function*>(library.Entry(name));
  return pointer != nullptr;
}

} // namespace calder
