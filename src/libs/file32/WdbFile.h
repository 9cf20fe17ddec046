// The binary waveform file: a settings block, the waveform area and the control-point table.
// docs/file-formats.md has the layout.
#pragma once

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

// 0, or FILE_READ_FAILED with the block unchanged, and the codes too unless the device fails in their midst. A file
// that is longer than it has to be is sound. Codes for which there is no room are left out, and room for which the file
// has none becomes 0.
[[nodiscard]] std::int32_t ReadWdb(const std::string& path, std::span<std::byte> settingsBlock,
                                   std::span<std::int16_t> codes);

} // namespace calder
