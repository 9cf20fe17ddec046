// Sends the oscillator settings to the instrument.
#pragma once

#include "comm/IntfcLib.h"

namespace calder {

// One transfer from beginning to end; the user is told what fails. False: it did not reach its end. cancelled: asked
// before each command; the transfer then ends without a word.
bool SettingsTransfer(Program& program, IntfcLib& bus, const std::function<bool()>& cancelled = {});

} // namespace calder
