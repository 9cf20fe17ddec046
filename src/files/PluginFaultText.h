// Why an import failed, for people.
#pragma once

#include "app/Messages.h"
#include "libs/pluginsp/PluginForm.h"

#include <string>

namespace calder {

// One line or more without an end; empty: there is nothing to say.
[[nodiscard]] std::string PluginFaultText(const PluginFault& fault, Language language);

} // namespace calder
