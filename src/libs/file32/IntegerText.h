// The text form of codes: one whole number a line. docs/file-formats.md has the rules.
#pragma once

#include "libs/file32/TextFault.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace calder {

// The room that FormatCodes needs for one code and its line end, and may touch after the last one.
inline constexpr std::size_t CODE_LINE_BYTES = 8;

enum class LineEnd { CrLf, Lf };

// Writes the codes to `text`, which has room for CODE_LINE_BYTES a code; the number of bytes.
std::size_t FormatCodes(std::span<const std::int16_t> codes, LineEnd end, char* text);

// Reads at most codes.size() codes; what follows them is not looked at. False with `fault` filled: `codes` holds
// anything.
[[nodiscard]] bool ParseCodes(std::string_view text, std::span<std::int16_t> codes, std::size_t& count,
                              TextFault& fault);

} // namespace calder
