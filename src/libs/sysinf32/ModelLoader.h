// The folder of model files.
#pragma once

#include "libs/sysinf32/Model.h"
#include "libs/sysinf32/ModelFault.h"

#include <optional>
#include <string>
#include <vector>

namespace calder {

// Reads index.toml in `folder` and the files that it lists, in its order, and checks the models against each other: no
// name twice, and a name that begins with another one only after it, since a name that a file carries is looked up by
// its beginning. Nothing: `models` is filled. Otherwise the fault, any status of sysinf32.h, and `models` is empty.
[[nodiscard]] std::optional<ModelFault> LoadModels(const std::string& folder, std::vector<Model>& models);

} // namespace calder
