// The parts of a model file about frequency, amplitude and offset.
#pragma once

#include "libs/sysinf32/Model.h"
#include "libs/sysinf32/TomlDocument.h"

namespace calder {

// Reads [[channel]] with the shared [frequency] and [[range]] of the top level into model.Channels, and
// [[frequency_warning]] into model.Warnings. Null: not in the file.
struct LimitsTables {
  const TomlNode* channels = nullptr;
  const TomlNode* frequency = nullptr;
  const TomlNode* ranges = nullptr;
  const TomlNode* warnings = nullptr;
};
void ReadChannels(const LimitsTables& tables, Model& model, FaultSink& faults);

// Reads [defaults] and [start] (null: not in the file) into model.Defaults and model.Start.
// REQUIRES: model.Channels is filled, or `faults` has a fault.
void ReadSettings(const TomlNode* defaults, const TomlNode* start, Model& model, FaultSink& faults);

} // namespace calder
