#include "comm/TransferContext.h"

#include "app/Program.h"

namespace calder {

TransferContext ContextOf(Program& program, IntfcLib& bus) {
  return {program.desktop, program.registry,      program.messages,    program.settings,      program.buffers,
          program.models,  program.commandTables, program.commandRows, program.interfaceKind, bus};
}

} // namespace calder
