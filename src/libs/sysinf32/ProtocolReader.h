// The table `protocol` of a model file.
#pragma once

#include "libs/sysinf32/Model.h"
#include "libs/sysinf32/TomlDocument.h"

namespace calder {

// Reads it into model.Protocol and checks each key: texts of at most 128 printable characters with the placeholders of
// their key only, lists as long as the lists of the model that they belong to.
// REQUIRES: model.Interfaces and model.Channels are set.
void ReadProtocol(const TomlNode& protocol, Model& model, FaultSink& faults);

} // namespace calder
