// A model's values in the settings record.
#pragma once

#include "libs/sysinf32/Model.h"
#include "libs/sysinf32/SystemInfo.h"

namespace calder {

// Channels and ranges below are positions inside their lists.

// Everything about the model, with `settings`, its first memory size and its default address and memory; the rest of
// the record gets the values of a program that has just started: user units on both axes, no control points.
void FillRecord(const Model& model, std::int16_t modelNo, const ModelSettings& settings, SystemInfo& record);

// The limits of the bus address; an address outside becomes the least one.
void SetAddressRange(const AddressRange& range, SystemInfo& record);

void SetMemorySize(const Model& model, std::int16_t index, SystemInfo& record);

// Frequency and Period.
void SetFrequency(double frequency, SystemInfo& record);

// Channel, its limits, and a range: the record's when the channel has it, else the last. Frequency, amplitude and
// offset are brought inside.
void SetChannel(const Model& model, std::int16_t channel, SystemInfo& record);

// Range and its limits; amplitude, then offset are brought inside, by the record's polarity.
void SetRange(const ModelChannel& channel, std::int16_t range, SystemInfo& record);

} // namespace calder
