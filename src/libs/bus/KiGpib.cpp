#include "libs/bus/KiGpib.h"

namespace calder {
namespace {

bool BindKiGpib(const BusLibrary& library, KiGpib& api) {
  return Bind(library, "_ieee_board_present", api._ieee_board_present) &&
         Bind(library, "_ieee_initialize", api._ieee_initialize) &&
         Bind(library, "_ieee_transmit", api._ieee_transmit) && Bind(library, "_ieee_receive", api._ieee_receive) &&
         Bind(library, "_ieee_tarray", api._ieee_tarray) && Bind(library, "_ieee_settimeout", api._ieee_settimeout) &&
         Bind(library, "_ieee_setinputEOS", api._ieee_setinputEOS);
}

} // namespace

std::unique_ptr<KiGpib> KiGpib::Load(BusLibraries& libraries, std::string* lacking) {
  return LoadComplete<KiGpib>(libraries, kNames, BindKiGpib, lacking);
}

} // namespace calder
