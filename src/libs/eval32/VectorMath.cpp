#include "libs/eval32/VectorMath.h"

#include <cstddef>
#include <cstdint>
#include <link.h>
#include <sleef.h>
#include <unistd.h>

namespace calder::eval {

namespace {

bool Holds(const dl_phdr_info& object, std::uintptr_t address) {
  for (int i = 0; i < object.dlpi_phnum; ++i) {
    const auto& part = object.dlpi_phdr[i];
    const std::uintptr_t start = object.dlpi_addr + part.p_vaddr;
    if (part.p_type == PT_LOAD && address >= start && address - start < part.p_memsz) return true;
  }
  return false;
}

// Where the constants are; parts that hold code or variables as well are left alone.
struct Constants {
  const volatile char* start = nullptr;
  std::size_t size = 0;
};

// Ends the walk at the library, or at the program that it is linked into.
int FindConstants(dl_phdr_info* object, std::size_t, void* found) {
  if (!Holds(*object, reinterpret_cast<std::uintptr_t>(&Sleef_log_u10))) return 0;
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const auto& part = object->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || part.p_flags != PF_R) continue;
    const auto start = static_cast<std::uintptr_t>(object->dlpi_addr + part.p_vaddr);
    // The last such part: one before it holds what the linker needs.
    *static_cast<Constants*>(found) = {
        reinterpret_cast<const volatile char*>(start), // NOLINT(performance-no-int-to-ptr)
        part.p_memsz};
  }
  return 1;
}

Constants FoundConstants() {
  Constants constants;
  dl_iterate_phdr(&FindConstants, &constants);
  return constants;
}

} // namespace

void MapMathConstants() {
  static const Constants constants = FoundConstants();
  static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  for (std::size_t at = 0; at < constants.size; at += page) static_cast<void>(constants.start[at]);
}

} // namespace calder::eval
