#include "csv/CsvLayout.h"

#include "csv/CsvCells.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace calder::plugin {
namespace {

constexpr std::size_t kMostLines = 2000;

struct Signs {
  char delimiter;
  char decimal;
};
// Of two that fit equally well the first is taken.
constexpr Signs kSigns[] = {
    {',', '.'}, {';', '.'}, {'\t', '.'}, {kBlankDelimiter, '.'}, {';', ','}, {'\t', ','}, {kBlankDelimiter, ','},
    {',', ','}};

struct Line {
  std::string_view text;
  std::size_t number; // from 0, blank lines counted
};

std::vector<Line> SampleLines(std::string_view text) {
  const char lineEnd = LineEndOf(text.substr(0, kSampleBytes));
  const bool cut = text.size() > kSampleBytes;
  text = text.substr(0, kSampleBytes);
  if (cut) text = text.substr(0, text.rfind(lineEnd) + 1); // a sample without a line's end gives none
  std::vector<Line> lines;
  std::string_view line;
  for (std::size_t number = 0; lines.size() < kMostLines && TakeLine(text, lineEnd, line); ++number)
    if (!IsBlank(line)) lines.push_back({line, number});
  return lines;
}

std::vector<std::string_view> Cells(std::string_view line, char delimiter) {
  std::vector<std::string_view> cells;
  bool first = true;
  std::string_view cell;
  while (cells.size() < kMostColumns && TakeCell(line, delimiter, first, cell)) cells.push_back(cell);
  return cells;
}

bool IsNumber(std::string_view cell, char decimal) {
  double value = 0;
  return ParseCell(cell, decimal, value);
}

// How well a pair of signs fits the last lines, which are data if any are.
struct Fit {
  Signs signs{};
  std::vector<std::size_t> columns; // that hold numbers in half or more of their cells
  double score = -1;
};

Fit FitOf(std::span<const Line> last, Signs signs) {
  std::array<std::size_t, kMostColumns> numbers{};
  std::array<std::size_t, kMostColumns> filled{}; // cells that are not empty
  std::size_t strays = 0;
  for (const Line& line : last) {
    const auto cells = Cells(line.text, signs.delimiter);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (cells[i].empty()) continue;
      ++filled[i];
      const bool number = IsNumber(cells[i], signs.decimal);
      numbers[i] += number ? 1 : 0;
      strays += number ? 0 : 1;
    }
  }
  Fit fit{signs, {}, 0};
  for (std::size_t i = 0; i < kMostColumns; ++i)
    if (numbers[i] > 0 && 2 * numbers[i] >= filled[i]) fit.columns.push_back(i);
  fit.score = 2 * static_cast<double>(fit.columns.size()) -
              static_cast<double>(strays) / static_cast<double>(std::max<std::size_t>(last.size(), 1));
  return fit;
}

bool AllDigits(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// "0,05" is two columns of whole numbers as well; a second one that begins with a zero, or a first one that is -0, says
// that the comma is a decimal sign.
bool CommaIsDecimal(std::span<const Line> lines) {
  bool seen = false;
  for (const Line& line : lines) {
    const auto cells = Cells(line.text, ',');
    if (cells.size() != 2 || !AllDigits(cells[1])) return false;
    seen = seen || (cells[1].size() > 1 && cells[1][0] == '0') || cells[0] == "-0";
  }
  return seen;
}

Fit BestFit(std::span<const Line> last, const CsvChoice& choice) {
  Fit best;
  for (const Signs signs : kSigns) {
    if (choice.delimiter.value_or(signs.delimiter) != signs.delimiter ||
        choice.decimal.value_or(signs.decimal) != signs.decimal)
      continue;
    Fit fit = FitOf(last, signs);
    if (fit.score > best.score) best = std::move(fit);
  }
  if (best.score < 0) best = FitOf(last, {choice.delimiter.value_or(','), choice.decimal.value_or('.')});
  const bool open = !choice.delimiter && !choice.decimal;
  if (open && best.signs.delimiter == ',' && best.columns.size() == 2 && CommaIsDecimal(last))
    best = FitOf(last, {';', ','});
  return best;
}

// The first line from which on the columns hold numbers, in it and in most of the next few. Empty cells say nothing: a
// column may be shorter than others.
std::size_t FirstData(std::span<const Line> lines, const Fit& fit) {
  constexpr std::size_t kWindow = 5;
  const auto isData = [&fit](const Line& line) {
    const auto cells = Cells(line.text, fit.signs.delimiter);
    bool any = false;
    for (const std::size_t column : fit.columns) {
      if (column >= cells.size() || cells[column].empty()) continue;
      any = true;
      if (!IsNumber(cells[column], fit.signs.decimal)) return false;
    }
    return any;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isData(lines[i])) continue;
    const auto window = lines.subspan(i, std::min(kWindow, lines.size() - i));
    if (4 * static_cast<std::size_t>(std::ranges::count_if(window, isData)) >= 3 * window.size()) return i;
  }
  return 0;
}

bool OnlyGrows(std::span<const Line> data, Signs signs, std::size_t column) {
  std::optional<double> before;
  std::size_t seen = 0;
  for (const Line& line : data) {
    double value = 0;
    if (!ParseCell(CellAt(line.text, signs.delimiter, column), signs.decimal, value)) continue;
    if (before && value <= *before) return false;
    before = value;
    ++seen;
  }
  return seen > 2;
}

} // namespace

CsvGuess GuessLayout(std::string_view text, const CsvChoice& choice) {
  const std::vector<Line> lines = SampleLines(text);
  constexpr std::size_t kMostLast = 8;
  const std::size_t lastCount = std::min(lines.size(), std::clamp<std::size_t>(lines.size() / 2, 1, kMostLast));
  const Fit fit = BestFit(std::span(lines).last(lastCount), choice);

  CsvGuess guess;
  CsvLayout& layout = guess.layout;
  layout.delimiter = fit.signs.delimiter;
  layout.decimal = fit.signs.decimal;
  std::size_t first = FirstData(lines, fit); // among the lines of the sample
  layout.headerLines = choice.headerLines.value_or(lines.empty() ? 0 : lines[first].number);
  first =
      static_cast<std::size_t>(std::ranges::lower_bound(lines, layout.headerLines, {}, &Line::number) - lines.begin());

  const auto data = std::span(lines).subspan(first);
  if (fit.columns.size() > 1 && OnlyGrows(data, fit.signs, fit.columns[0])) layout.timeColumn = fit.columns[0];
  if (choice.timeColumn) layout.timeColumn = *choice.timeColumn;
  const auto value = std::ranges::find_if(fit.columns, [&](std::size_t column) { return column != layout.timeColumn; });
  layout.valueColumn = choice.valueColumn.value_or(value == fit.columns.end() ? 0 : *value);

  std::size_t columns = std::max({layout.valueColumn, layout.timeColumn.value_or(0),
                                  fit.columns.empty() ? std::size_t{0} : fit.columns.back()}) +
                        1;
  if (first > 0) {
    const auto titles = Cells(lines[first - 1].text, layout.delimiter);
    // A line of another kind, such as a comment, has fewer cells.
    if (titles.size() >= std::min<std::size_t>(columns, 2)) guess.titles.assign(titles.begin(), titles.end());
  }
  columns = std::min(std::max(columns, guess.titles.size()), kMostColumns);
  guess.titles.resize(columns);
  return guess;
}

} // namespace calder::plugin
