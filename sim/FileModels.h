// Instruments that nobody has written code for: what they understand is what their model's file says.
#pragma once

#include "sim/Models.h"

#include <string>
#include <vector>

namespace calder::sim {

// The models of a folder of model files, in the order of its index. usbIds: the file with their resource prefixes; a
// model that it lacks has no USBTMC interface. Empty, and `fault` says why, when the folder cannot be read.
[[nodiscard]] std::vector<Model> ReadModels(const std::string& folder, const std::string& usbIds, std::string& fault);

} // namespace calder::sim
