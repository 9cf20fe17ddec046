#include "libs/sysinf32/CommandColumns.h"

#include <algorithm>

namespace calder {

namespace {

bool IsQuote(char c) {
  return c == '"' || c == '\'';
}

bool IsTrimmable(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code <= ' ' || code == 127;
}

std::string CleanColumn(std::string_view column) {
  column = TrimCommandText(column);
  if (!column.empty() && IsQuote(column.front())) column.remove_prefix(1);
  if (!column.empty() && IsQuote(column.back())) column.remove_suffix(1);
  return std::string(column);
}

} // namespace

std::string_view TrimCommandText(std::string_view text) {
  while (!text.empty() && IsTrimmable(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsTrimmable(text.back())) text.remove_suffix(1);
  return text;
}

bool HasOnlyPlaceholders(std::string_view text, std::initializer_list<std::string_view> names) {
  for (;;) {
    const std::size_t begin = text.find('$');
    const std::size_t end = begin == std::string_view::npos ? begin : text.find('$', begin + 1);
    if (end == std::string_view::npos) return true;
    if (std::find(names.begin(), names.end(), text.substr(begin + 1, end - begin - 1)) == names.end()) return false;
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string> SplitCommandColumns(std::string_view value) {
  std::vector<std::string> columns;
  std::size_t begin = 0;
  for (;;) {
    std::size_t first = begin;
    while (first < value.size() && IsTrimmable(value[first])) ++first;
    std::size_t search = begin;
    if (first < value.size() && IsQuote(value[first])) {
      const std::size_t closing = value.find(value[first], first + 1);
      search = closing == std::string_view::npos ? value.size() : closing + 1;
    }
    const std::size_t comma = value.find(',', search);
    if (comma == std::string_view::npos) {
      columns.push_back(CleanColumn(value.substr(begin)));
      return columns;
    }
    columns.push_back(CleanColumn(value.substr(begin, comma - begin)));
    begin = comma + 1;
  }
}

} // namespace calder
