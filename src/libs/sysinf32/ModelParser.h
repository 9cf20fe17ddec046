// Model files and their index, from texts. docs/models.md describes both.
#pragma once

#include "libs/sysinf32/Model.h"
#include "libs/sysinf32/ModelFault.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

// A model's file: its name in the folder, and the line of the index that lists it.
struct IndexEntry {
  std::string file;
  std::int32_t line = 0;
};

// `fileName` only goes into the fault. Nothing: read, and everything of the model is inside its limits; otherwise the
// fault, with SYS_SYNTAX_ERROR or SYS_BAD_VALUE, and `model` is not to be used.
[[nodiscard]] std::optional<ModelFault> ParseModel(std::string_view text, const std::string& fileName, Model& model);

// At most 256 entries, since files keep a model's number in a byte.
[[nodiscard]] std::optional<ModelFault> ParseIndex(std::string_view text, const std::string& fileName,
                                                   std::vector<IndexEntry>& entries);

} // namespace calder
