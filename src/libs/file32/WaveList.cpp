#include "libs/file32/WaveList.h"

#include "libs/file32/TextLines.h"

#include <cmath>
#include <limits>

namespace calder {
namespace {

constexpr std::string_view kXRange = "'XX\t";
constexpr std::string_view kYRange = "'YY\t";
constexpr std::string_view kStartPage = "StartPage";
constexpr std::string_view kEndPage = "EndPage";
constexpr std::string_view kExpressionFollows = "'Y=";
constexpr std::string_view kConstantsFollow = "'Const";
constexpr std::int32_t kDamaged = -1;

struct Range {
  double low = 0;
  double high = 0;
  bool found = false;
};

// "low,high". False: it is none.
bool ReadRange(std::string_view text, Range& range) {
  const auto comma = text.find(',');
  if (comma == std::string_view::npos) return false;
  range.found = ParseReal(Trimmed(text.substr(0, comma)), range.low) &&
                ParseReal(Trimmed(text.substr(comma + 1)), range.high) && std::isfinite(range.high - range.low) &&
                range.low <= range.high;
  return range.found;
}

bool IsBlankOrComment(std::string_view line) {
  return Trimmed(line).empty() || line.front() == '\'';
}

} // namespace

WaveListReader::WaveListReader(std::string_view text) : rest_(WithoutByteOrderMark(text)) {}

bool WaveListReader::NextLine(std::string_view& line) {
  if (rest_.empty()) return false;
  line = rest_.substr(0, LineLength(rest_));
  rest_.remove_prefix(line.size());
  rest_.remove_prefix(LineEndLength(rest_));
  return true;
}

std::int32_t WaveListReader::ReadWaveListHeader(double& xMinimum, double& xMaximum, double& yMinimum,
                                                double& yMaximum) {
  Range x;
  Range y;
  while (!rest_.empty()) {
    const std::string_view here = rest_;
    std::string_view line;
    if (!NextLine(line)) break;
    if (!IsBlankOrComment(line)) { // the first page
      rest_ = here;
      break;
    }
    if (line.starts_with(kXRange) && !ReadRange(line.substr(kXRange.size()), x)) return kDamaged;
    if (line.starts_with(kYRange) && !ReadRange(line.substr(kYRange.size()), y)) return kDamaged;
  }
  if (!x.found || !y.found || x.low == x.high) return kDamaged;
  xMinimum = x.low;
  xMaximum = x.high;
  yMinimum = y.low;
  yMaximum = y.high;
  return 0;
}

// A value ends at a tab; what follows it is a comment.
bool WaveListReader::NextValue(double& value) {
  std::string_view line;
  do {
    if (!NextLine(line)) return false;
  } while (IsBlankOrComment(line));
  return ParseReal(Trimmed(line.substr(0, line.find('\t'))), value);
}

bool WaveListReader::NextInteger(std::int16_t& value) {
  double number = 0;
  using Limits = std::numeric_limits<std::int16_t>;
  if (!NextValue(number) || number != std::nearbyint(number) || number < Limits::min() || number > Limits::max())
    return false;
  value = static_cast<std::int16_t>(number);
  return true;
}

bool WaveListReader::NextText(std::string_view last, std::string& text) {
  std::string_view line;
  if (!NextLine(line)) return false;
  // The first line is text whatever it looks like; further ones come from programs that break long texts.
  std::string all(line);
  while (true) {
    if (!NextLine(line)) return false;
    const std::string_view trimmed = Trimmed(line);
    if (trimmed == last) break;
    if (trimmed == kStartPage || trimmed == kEndPage) return false;
    all.append(" ").append(line);
  }
  text = std::string_view(all).substr(0, all.find('\0'));
  text = std::string(Trimmed(text));
  if (text == kNoListText) text.clear();
  return true;
}

std::int32_t WaveListReader::ReadOneWaveList(WaveListRecord& record) {
  std::string_view line;
  do {
    if (!NextLine(line)) return 0;
  } while (IsBlankOrComment(line));
  const auto damaged = [this] {
    rest_ = {};
    return kDamaged;
  };
  if (Trimmed(line) != kStartPage) return damaged();
  WaveListRecord read;
  if (!NextInteger(read.PageNo) || !NextInteger(read.Function) || !NextValue(read.StartX) || !NextValue(read.EndX))
    return damaged();
  for (double& value : read.Values) {
    if (!NextValue(value)) return damaged();
  }
  do {
    if (!NextLine(line)) return damaged();
  } while (Trimmed(line) != kExpressionFollows && IsBlankOrComment(line));
  if (Trimmed(line) != kExpressionFollows) return damaged();
  if (!NextText(kConstantsFollow, read.Expression) || !NextText(kEndPage, read.Constants)) return damaged();
  record = std::move(read);
  return 1;
}

} // namespace calder
