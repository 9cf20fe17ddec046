// A VISA library of the machine behind the Visa interface.
#include "libs/bus/Visa.h"

#include <array>

namespace calder {
namespace {

constexpr const char* kNames[] = {"libvisa.so.0", "libvisa.so", "librsvisa.so"};
constexpr std::size_t kNameLength = 256; // what the library writes a resource name into

class LoadedVisa final : public Visa {
public:
  std::unique_ptr<BusLibrary> library;

  [[nodiscard]] bool BindAll(const BusLibrary& entries) {
    return Bind(entries, "viOpenDefaultRM", viOpenDefaultRM_) && Bind(entries, "viFindRsrc", viFindRsrc_) &&
           Bind(entries, "viFindNext", viFindNext_) && Bind(entries, "viOpen", viOpen_) &&
           Bind(entries, "viClose", viClose_) && Bind(entries, "viSetAttribute", viSetAttribute_) &&
           Bind(entries, "viWrite", viWrite_) && Bind(entries, "viRead", viRead_) &&
           Bind(entries, "viClear", viClear_) && Bind(entries, "viGpibControlREN", viGpibControlREN_) &&
           Bind(entries, "viWriteFromFile", viWriteFromFile_) && Bind(entries, "viReadToFile", viReadToFile_);
  }

  ViStatus viOpenDefaultRM(ViSession& manager) override { return viOpenDefaultRM_(&manager); }
  ViStatus viFindRsrc(ViSession manager, const std::string& expression, ViSession& list, std::uint32_t& count,
                      std::string& name) override {
    std::array<char, kNameLength> found{};
    const ViStatus status = viFindRsrc_(manager, expression.c_str(), &list, &count, found.data());
    name = found.data();
    return status;
  }
  ViStatus viFindNext(ViSession list, std::string& name) override {
    std::array<char, kNameLength> found{};
    const ViStatus status = viFindNext_(list, found.data());
    name = found.data();
    return status;
  }
  ViStatus viOpen(ViSession manager, const std::string& name, ViSession& device) override {
    return viOpen_(manager, name.c_str(), 0, 0, &device);
  }
  ViStatus viClose(ViSession object) override { return viClose_(object); }
  ViStatus viSetAttribute(ViSession device, std::uint32_t attribute, std::uint64_t value) override {
    return viSetAttribute_(device, attribute, value);
  }
  ViStatus viWrite(ViSession device, const void* data, std::uint32_t count, std::uint32_t& written) override {
    return viWrite_(device, data, count, &written);
  }
  ViStatus viRead(ViSession device, void* data, std::uint32_t capacity, std::uint32_t& received) override {
    return viRead_(device, data, capacity, &received);
  }
  ViStatus viClear(ViSession device) override { return viClear_(device); }
  ViStatus viGpibControlREN(ViSession device, std::uint16_t mode) override { return viGpibControlREN_(device, mode); }
  ViStatus viWriteFromFile(ViSession device, const std::string& file, std::uint32_t count,
                           std::uint32_t& written) override {
    return viWriteFromFile_(device, file.c_str(), count, &written);
  }
  ViStatus viReadToFile(ViSession device, const std::string& file, std::uint32_t count,
                        std::uint32_t& received) override {
    return viReadToFile_(device, file.c_str(), count, &received);
  }

private:
  ViStatus (*viOpenDefaultRM_)(ViSession*) = nullptr;
  ViStatus (*viFindRsrc_)(ViSession, const char*, ViSession*, std::uint32_t*, char*) = nullptr;
  ViStatus (*viFindNext_)(ViSession, char*) = nullptr;
  ViStatus (*viOpen_)(ViSession, const char*, std::uint32_t, std::uint32_t, ViSession*) = nullptr;
  ViStatus (*viClose_)(ViSession) = nullptr;
  ViStatus (*viSetAttribute_)(ViSession, std::uint32_t, std::uint64_t) = nullptr;
  ViStatus (*viWrite_)(ViSession, const void*, std::uint32_t, std::uint32_t*) = nullptr;
  ViStatus (*viRead_)(ViSession, void*, std::uint32_t, std::uint32_t*) = nullptr;
  ViStatus (*viClear_)(ViSession) = nullptr;
  ViStatus (*viGpibControlREN_)(ViSession, std::uint16_t) = nullptr;
  ViStatus (*viWriteFromFile_)(ViSession, const char*, std::uint32_t, std::uint32_t*) = nullptr;
  ViStatus (*viReadToFile_)(ViSession, const char*, std::uint32_t, std::uint32_t*) = nullptr;
};

} // namespace

std::unique_ptr<Visa> LoadVisa(BusLibraries& libraries, std::string* lacking) {
  return LoadComplete<LoadedVisa>(
      libraries, kNames, [](const BusLibrary& entries, LoadedVisa& visa) { return visa.BindAll(entries); }, lacking);
}

} // namespace calder
