#include "csv/CsvCells.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace calder::plugin {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The place of the closing quote of a cell that begins with one; npos: it is not closed.
std::size_t ClosingQuote(std::string_view text) {
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != '"') continue;
    if (i + 1 == text.size() || text[i + 1] != '"') return i;
    ++i; // a doubled one stands for itself
  }
  return std::string_view::npos;
}

} // namespace

char LineEndOf(std::string_view text) {
  return text.find('\n') == std::string_view::npos && text.find('\r') != std::string_view::npos ? '\r' : '\n';
}

bool TakeLine(std::string_view& text, char lineEnd, std::string_view& line) {
  if (text.empty()) return false;
  const std::size_t end = std::min(text.find(lineEnd), text.size());
  line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return true;
}

bool IsBlank(std::string_view line) {
  return line.find_first_not_of(kBlanks) == std::string_view::npos;
}

bool TakeCell(std::string_view& line, char delimiter, bool& first, std::string_view& cell) {
  const bool blanks = delimiter == kBlankDelimiter;
  if (blanks || first) {
    // A tab that parts cells is not a blank before the first.
    const std::string_view skipped = delimiter == '\t' ? std::string_view(" ") : kBlanks;
    line.remove_prefix(std::min(line.find_first_not_of(skipped), line.size()));
  }
  if (line.data() == nullptr || (line.empty() && (blanks || first))) return false;
  first = false;
  std::string_view rest = line;
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  std::size_t from = 0; // where the delimiter is looked for
  const std::size_t close = !rest.empty() && rest.front() == '"' ? ClosingQuote(rest) : std::string_view::npos;
  if (close != std::string_view::npos) from = static_cast<std::size_t>(rest.data() - line.data()) + close + 1;
  const std::size_t end = blanks ? line.find_first_of(kBlanks, from) : line.find(delimiter, from);
  cell = Trimmed(close == std::string_view::npos ? line.substr(0, end) : rest.substr(1, close - 1));
  if (end == std::string_view::npos) {
    line = {}; // without data: used up, also where an empty cell would follow
  } else {
    line.remove_prefix(end + 1);
  }
  return true;
}

std::string_view CellAt(std::string_view line, char delimiter, std::size_t column) {
  bool first = true;
  std::string_view cell;
  for (std::size_t i = 0; TakeCell(line, delimiter, first, cell); ++i)
    if (i == column) return cell;
  return {};
}

bool ParseCell(std::string_view cell, char decimal, double& value) {
  constexpr std::size_t kLongest = 64;
  if (cell.starts_with('+') && !cell.starts_with("+-")) cell.remove_prefix(1);
  if (cell.empty() || cell.size() > kLongest) return false;
  // Keeps out the names of infinity and of what is no number; too many digits are an error below.
  const char begin = cell[cell[0] == '-' && cell.size() > 1 ? 1 : 0];
  if (!IsDigit(begin) && begin != decimal) return false;
  std::array<char, kLongest> pointed{};
  if (decimal != '.') {
    if (cell.find('.') != std::string_view::npos) return false;
    std::ranges::replace_copy(cell, pointed.begin(), decimal, '.');
    cell = {pointed.data(), cell.size()};
  }
  const auto [stop, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
  return error == std::errc() && stop == cell.data() + cell.size();
}

} // namespace calder::plugin
