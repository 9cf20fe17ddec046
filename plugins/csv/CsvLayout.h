// How a table in text is laid out, and what its beginning makes one think of it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calder::plugin {

struct CsvLayout {
  char delimiter = ','; // comma, semicolon, tab or a blank
  char decimal = '.';   // point or comma
  std::size_t headerLines = 0;
  std::size_t valueColumn = 0;           // from 0
  std::optional<std::size_t> timeColumn; // none: the table has none
};

// What the user has settled already.
struct CsvChoice {
  std::optional<char> delimiter;
  std::optional<char> decimal;
  std::optional<std::size_t> headerLines;
  std::optional<std::size_t> valueColumn;
  std::optional<std::optional<std::size_t>> timeColumn;
};

struct CsvGuess {
  CsvLayout layout;
  std::vector<std::string> titles; // a column each, at least one; empty for a column without a title
};

inline constexpr std::size_t kMostColumns = 64;
inline constexpr std::size_t kSampleBytes = std::size_t{1} << 18;

// The layout of the text, of which the first kSampleBytes are looked at: delimiter and decimal sign that give the most
// columns of numbers; the first lines that hold something else are the header, the last of them the titles; a first
// column of numbers that only grows is the time, when another column of numbers follows.
[[nodiscard]] CsvGuess GuessLayout(std::string_view text, const CsvChoice& choice);

} // namespace calder::plugin
