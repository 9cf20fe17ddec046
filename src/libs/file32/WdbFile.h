// The binary waveform file: a settings block, the waveform area and the control-point table.
// docs/file-formats.md has the layout.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace calder {

inline constexpr std::size_t WDB_SETTINGS_BYTES = 352;
inline constexpr std::size_t WDB_WAVE_BYTES = 1048576;
inline constexpr std::size_t WDB_TABLE_OFFSET = WDB_SETTINGS_BYTES + WDB_WAVE_BYTES;
inline constexpr std::size_t WDB_TABLE_ENTRY_BYTES = 6;

// scratch: memory that is used in between and kept. 0, or FILE_WRITE_FAILED; also when the block speaks of a
// control-point table of another size than the one given, for such a file would never be read again.
[[nodiscard]] std::int32_t WriteWdb(const std::string& path, std::span<const std::byte> settingsBlock,
                                    std::span<const std::int16_t> codes, std::span<const std::byte> controlPointTable,
                                    std::vector<char>& scratch);

// The most bytes that a file can have that anything is taken from; what comes after them is not looked at.
inline constexpr std::size_t WDB_MOST_BYTES = WDB_TABLE_OFFSET + W_MAX_CONTROL_POINTS * WDB_TABLE_ENTRY_BYTES;

// The settings block of a file's bytes, whatever else is wrong with them; empty when they do not reach so far.
[[nodiscard]] std::span<const std::byte> WdbSettings(std::span<const std::byte> file);

// The codes of a file's bytes. 0, or FILE_READ_FAILED with the codes unchanged: the file lacks something that its
// settings block announces, or that announces an impossible table. A file that is longer than it has to be is sound.
// Codes for which there is no room are left out, and room for which the file has none becomes 0.
[[nodiscard]] std::int32_t WdbCodes(std::span<const std::byte> file, std::span<std::int16_t> codes);

} // namespace calder
