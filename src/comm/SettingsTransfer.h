// Sends the oscillator settings to the instrument.
#pragma once

#include "comm/TransferContext.h"

#include <functional>

namespace calder {

// One transfer from beginning to end; the user is shown what fails. False: it did not reach its end. cancelled: asked
// before each command; the transfer then ends without a word.
bool SettingsTransfer(const TransferContext& context, const std::function<bool()>& cancelled = {});

} // namespace calder
