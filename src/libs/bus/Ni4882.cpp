#include "libs/bus/Ni4882.h"

namespace calder {
namespace {

bool BindCalls(const BusLibrary& library, Ni4882& api) {
  return Bind(library, "ibfind", api.ibfind) && Bind(library, "ibconfig", api.ibconfig) &&
         Bind(library, "ibask", api.ibask) && Bind(library, "ibpad", api.ibpad) && Bind(library, "ibsic", api.ibsic) &&
         Bind(library, "ibsre", api.ibsre) && Bind(library, "ibeos", api.ibeos) && Bind(library, "ibeot", api.ibeot) &&
         Bind(library, "ibtmo", api.ibtmo) && Bind(library, "ibcmd", api.ibcmd) && Bind(library, "ibwrt", api.ibwrt) &&
         Bind(library, "ibrd", api.ibrd);
}

// One of the two ways to read the status; the other one's pointers are null then.
bool BindStatus(const BusLibrary& library, Ni4882& api) {
  const bool registers = Bind(library, "RegisterGpibGlobalsForThread", api.RegisterGpibGlobalsForThread) &&
                         Bind(library, "UnregisterGpibGlobalsForThread", api.UnregisterGpibGlobalsForThread);
  if (registers) return true;
  api.RegisterGpibGlobalsForThread = nullptr;
  api.UnregisterGpibGlobalsForThread = nullptr;
  return Bind(library, "ThreadIbsta", api.ThreadIbsta) && Bind(library, "ThreadIberr", api.ThreadIberr) &&
         Bind(library, "ThreadIbcntl", api.ThreadIbcntl);
}

} // namespace

std::unique_ptr<Ni4882> Ni4882::Load(BusLibraries& libraries, std::string* lacking) {
  return LoadComplete<Ni4882>(
      libraries, kNames,
      [](const BusLibrary& opened, Ni4882& api) { return BindCalls(opened, api) && BindStatus(opened, api); }, lacking);
}

} // namespace calder
