#include "platform/posix/DlBusLibraries.h"

#include <dlfcn.h>

#include <vector>

namespace calder {
namespace {

class DlBusLibrary final : public BusLibrary {
public:
  explicit DlBusLibrary(void* handle) : handle_(handle) {}
  DlBusLibrary(const DlBusLibrary&) = delete;
  DlBusLibrary& operator=(const DlBusLibrary&) = delete;
  ~DlBusLibrary() override { dlclose(handle_); }
  [[nodiscard]] void* Entry(const char* name) const override { return dlsym(handle_, name); }

private:
  void* handle_;
};

std::unique_ptr<BusLibrary> OpenOne(const std::string& name) {
  // Everything is resolved now, so that a library with a missing part fails here and not in the middle of a transfer.
  void* handle = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) return nullptr;
  return std::make_unique<DlBusLibrary>(handle);
}

} // namespace

void DlBusLibraries::Offer(std::span<const char* const> names,
                           const std::function<bool(std::unique_ptr<BusLibrary>)>& take) {
  std::vector<std::string> files;
  if (!folder_.empty()) {
    for (const char* name : names) files.push_back(folder_ + "/" + name);
  }
  files.insert(files.end(), names.begin(), names.end());
  for (const std::string& file : files) {
    if (auto library = OpenOne(file); library && take(std::move(library))) return;
  }
}

} // namespace calder
