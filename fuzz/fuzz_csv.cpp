// Any bytes as a table: a layout is guessed that the reader can follow, and what it takes are finite numbers, each line
// at most once.
#include "csv/CsvLayout.h"
#include "csv/CsvValues.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder::plugin;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) +
                     static_cast<std::size_t>(std::count(text.begin(), text.end(), '\r')) + 1;
  CsvChoice settled;
  for (int round = 0; round < 3; ++round) {
    const CsvGuess guess = GuessLayout(text, settled);
    const CsvLayout& layout = guess.layout;
    if (layout.headerLines > std::max(lines, settled.headerLines.value_or(0))) std::abort();
    if (guess.titles.empty() || guess.titles.size() > kMostColumns || layout.valueColumn >= guess.titles.size())
      std::abort();
    const CsvValues values = ReadValues(text, layout, static_cast<RejectedCell>(round), [](double) {});
    if (values.values.size() + static_cast<std::size_t>(values.rejectCount) > 2 * lines || values.values.size() > lines)
      std::abort();
    if (!std::all_of(values.values.begin(), values.values.end(), [](double value) { return std::isfinite(value); }))
      std::abort();
    // What was found can be settled, and others with it.
    if (round == 0) settled.delimiter = layout.delimiter == ',' ? ' ' : ',';
    if (round == 1) settled = {'\t', ',', 1, 63, 2};
  }
  return 0;
}
