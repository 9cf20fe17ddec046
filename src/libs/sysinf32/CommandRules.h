// What a row of a command table may hold.
#pragma once

#include "libs/sysinf32/Model.h"
#include "libs/sysinf32/TomlDocument.h"

namespace calder {

// Reads the table `commands` of a model file into model.Commands, in file order, and checks each row: a known key, at
// most 64 printable characters, the columns of its key, number formats of # 0 . only, and no placeholder but $CH$,
// $ARBNUM$ and $ARBNAME$. Then what a transfer cannot do without: model, getsts and errmask in the common table and
// arbmask, as many bits as the model has, in the waveform table.
// REQUIRES: model.DataBits is set.
void ReadCommands(const TomlNode& commands, Model& model, FaultSink& faults);

} // namespace calder
