// The instrument bus libraries of the machine, loaded when they are first needed and never linked.
#pragma once

#include <functional>
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
  // Offers those of these file names that can be loaded, in their order, until one is taken.
  virtual void Offer(std::span<const char* const> names,
                     const std::function<bool(std::unique_ptr<BusLibrary>)>& take) = 0;
};

// Puts the entry point into a function pointer. False: there is none.
template <typename Function>
[[nodiscard]] bool Bind(const BusLibrary& library, const char* name, Function*& pointer) {
  pointer = reinterpret_cast<Function*>(library.Entry(name));
  return pointer != nullptr;
}

// Keeps the last entry point that a library was asked for and lacks.
class LackingEntry final : public BusLibrary {
public:
  explicit LackingEntry(const BusLibrary& library) : library_(library) {}
  [[nodiscard]] void* Entry(const char* name) const override {
    void* entry = library_.Entry(name);
    if (entry == nullptr) name_ = name;
    return entry;
  }
  [[nodiscard]] const std::string& Name() const { return name_; }

private:
  const BusLibrary& library_;
  mutable std::string name_;
};

// The first of these libraries that has every entry point; null when none has. bindAll(library, api): fills the
// pointers of an Api, which keeps the library; false when one is missing. lacking: becomes the entry point that the
// first library lacks; it stays as it is when there is no library at all.
template <typename Api, typename BindAll>
[[nodiscard]] std::unique_ptr<Api> LoadComplete(BusLibraries& libraries, std::span<const char* const> names,
                                                BindAll bindAll, std::string* lacking) {
  std::unique_ptr<Api> complete;
  libraries.Offer(names, [&](std::unique_ptr<BusLibrary> library) {
    auto api = std::make_unique<Api>();
    api->library = std::move(library);
    const LackingEntry entries(*api->library);
    if (!bindAll(entries, *api)) {
      if (lacking != nullptr && lacking->empty()) *lacking = entries.Name();
      return false;
    }
    complete = std::move(api);
    return true;
  });
  return complete;
}

} // namespace calder
