#include "files/TableText.h"

#include "app/ConvUnit.h"
#include "app/EngValB.h"
#include "libs/file32/TextLines.h"
#include "platform/AsciiText.h"

#include <algorithm>

namespace calder {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kEnds = "\r,\t ";

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
}

} // namespace

bool Take_Number(double& value, std::string_view& text) {
  std::string_view rest = text;
  SkipBlanks(rest);
  const std::string_view number = rest.substr(0, rest.find_first_of(kEnds));
  if (number.empty()) return false;
  value = ParseEng(number);
  rest.remove_prefix(number.size());
  SkipBlanks(rest);
  if (rest.starts_with(',')) rest.remove_prefix(1);
  SkipBlanks(rest);
  if (rest.starts_with('\r')) {
    rest.remove_prefix(1);
    if (rest.starts_with('\n')) rest.remove_prefix(1);
  }
  text = rest;
  return true;
}

bool EndsLinesInFeedsAlone(std::string_view text) {
  const std::size_t feed = text.find('\n');
  return feed != std::string_view::npos && text.find('\r') == std::string_view::npos &&
         text.find_first_not_of(" \t\n", feed) != std::string_view::npos;
}

std::string WithLineEnds(std::string_view text) {
  std::string made;
  made.reserve(text.size() + text.size() / 8);
  for (const char c : text) {
    if (c == '\n') made += '\r';
    made += c;
  }
  return made;
}

TableContent ParseTable(std::string_view text, const ConvUnit& units) {
  const std::string_view all = WithoutByteOrderMark(text);
  std::string_view rest = all;
  TableContent table;
  while (true) {
    const std::string_view line = rest;
    double x = 0;
    double y = 0;
    if (!Take_Number(x, rest) || !Take_Number(y, rest)) {
      // Blank lines at the end are no fault.
      const bool isEnd = line.find_first_not_of(" \t\r\n\x1A") == std::string_view::npos;
      if (!isEnd) table.faultLine = LineNumber(all, all.size() - line.size());
      return table;
    }
    static_cast<void>(units.CheckXCurrent(x)); // brings it inside
    static_cast<void>(units.CheckYCurrent(y));
    table.points.push_back({units.XToPoint(x), units.YToCode(y)});
  }
}

std::string ComposeTable(const SplinePoints& points, const ConvUnit& units, char separator) {
  std::string text;
  for (int i = 0; i < points.SplineCount; ++i) {
    const SplinePoint point = points.At(i);
    text += units.PointToXTextWide(point.x);
    text += separator;
    text += units.CodeToYText(point.y);
    text += "\r\n";
  }
  return text;
}

char SeparatorOf(std::string_view path) {
  const std::string end = LowerText(std::string(path.substr(path.size() - std::min<std::size_t>(path.size(), 4))));
  if (end == ".prn") return ' ';
  return end == ".tsv" ? '\t' : ',';
}

} // namespace calder
