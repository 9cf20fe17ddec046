// The settings record as a block of 352 bytes, as .wdb and .ocb files carry it: little-endian, without padding, texts
// in the system's ANSI code page and filled up with blanks. docs/file-formats.md has the layout.
#pragma once

#include "app/Messages.h"
#include "libs/file32/CodePage.h"
#include "libs/file32/WdbFile.h"
#include "libs/sysinf32/SystemInfo.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace calder {

// The code page of the files of that language.
[[nodiscard]] constexpr CodePage PageOf(Language language) {
  return language == Language::Japanese ? CodePage::Japanese : CodePage::Western;
}

// interfaceKind: 0 NI GPIB, 1 KI GPIB, 2 USB488, 3 USBTMC, 4 simulated. A text that is too long is cut at a whole
// character.
void Pack_Settings(const SystemInfo& record, std::int32_t interfaceKind, CodePage page,
                   std::span<std::byte, WDB_SETTINGS_BYTES> block);

// Every field of the record is set, whatever the block holds: the caller checks ranges. A block without an interface
// kind leaves interfaceKind as it was; another one may give any value from 0 to 126.
void Unpack_Settings(std::span<const std::byte, WDB_SETTINGS_BYTES> block, CodePage page, SystemInfo& record,
                     std::int32_t& interfaceKind);

// Whether the program can live with a record that a file gave: sizes and ranges that views and conversions divide by.
[[nodiscard]] bool IsSound(const SystemInfo& record);

} // namespace calder
