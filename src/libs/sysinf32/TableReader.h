// Values of a TOML table, checked: type, range, unknown and missing keys. Every fault is SYS_BAD_VALUE with the line of
// the value (of the table for a missing key) and goes to the sink; the reader then returns a harmless value.
#pragma once

#include "libs/sysinf32/TomlDocument.h"

#include <initializer_list>
#include <span>
#include <string_view>

namespace calder {

class TableReader {
public:
  // Reports a `table` that is no table and every key of it that is not among `keys`, with the nearest of them when one
  // is near. `table` and `faults` must outlive the reader.
  TableReader(const TomlNode& table, std::span<const std::string_view> keys, FaultSink& faults);
  TableReader(const TomlNode& table, std::initializer_list<std::string_view> keys, FaultSink& faults)
      : TableReader(table, std::span<const std::string_view>(keys.begin(), keys.size()), faults) {}

  // Null when the key is missing.
  [[nodiscard]] const TomlNode* Find(std::string_view key) const { return table_.Find(key); }
  // A missing key is reported and gives an empty node.
  [[nodiscard]] const TomlNode& Require(std::string_view key) const;

private:
  const TomlNode& table_;
  FaultSink& faults_;
};

// Printable ASCII of 1 to `most` characters without a blank at either end.
[[nodiscard]] std::string ReadName(const TomlNode& node, std::size_t most, FaultSink& faults);
// UTF-8 text of 1 to `most` bytes.
[[nodiscard]] std::string ReadText(const TomlNode& node, std::size_t most, FaultSink& faults);
// min <= value <= max; `min` after a fault.
[[nodiscard]] std::int32_t ReadInteger(const TomlNode& node, std::int32_t min, std::int32_t max, FaultSink& faults);
// Finite; an integer counts as a number. 0 after a fault.
[[nodiscard]] double ReadNumber(const TomlNode& node, FaultSink& faults);
[[nodiscard]] bool ReadFlag(const TomlNode& node, FaultSink& faults);
// The items of an array of 1 to `most` items; empty after a fault.
[[nodiscard]] std::span<const TomlNode> ReadItems(const TomlNode& node, std::size_t most, FaultSink& faults);
// The same for a list of tables; a table in its place is reported how a list of tables is written.
[[nodiscard]] std::span<const TomlNode> ReadTables(const TomlNode& node, std::size_t most, FaultSink& faults);
// The position in `choices` of a text; 0 after a fault.
[[nodiscard]] std::int16_t ReadChoice(const TomlNode& node, std::span<const std::string_view> choices,
                                      FaultSink& faults);

// True when every character is printable ASCII (codes 32 to 126).
[[nodiscard]] bool IsPrintableAscii(std::string_view text);

} // namespace calder
