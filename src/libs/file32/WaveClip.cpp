#include "libs/file32/WaveClip.h"

#include "libs/file32/IntegerText.h"
#include "libs/file32/LittleEndian.h"
#include "libs/file32/TextLines.h"
#include "platform/AsciiText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace calder {

namespace {

// The header of the exact form: magic, version, number of codes.
constexpr std::array<char, 8> kMagic = {'C', 'A', 'L', 'D', 'E', 'R', 'W', 'F'};
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kVersionOffset = 8;
constexpr std::size_t kCountOffset = 12;
constexpr std::size_t kHeaderBytes = 16;

// Whether what follows a comma makes one number of it: a decimal comma, or groups of thousands.
bool ContinuesNumber(std::string_view tail) {
  const auto digits = static_cast<std::size_t>(std::find_if_not(tail.begin(), tail.end(), IsDigit) - tail.begin());
  if (digits == 0) return false;
  const std::string_view rest = Trimmed(tail.substr(digits));
  if (rest.empty() || rest.front() == 'e' || rest.front() == 'E') return true;
  return digits == 3 && (rest.front() == '.' || rest.front() == ',');
}

// The character between the columns of the text. Spreadsheets put tabs there; a comma is one only when nothing else is.
char ColumnSeparator(std::string_view text) {
  if (text.find('\t') != std::string_view::npos) return '\t';
  return text.find(';') != std::string_view::npos ? ';' : ',';
}

// The number in the first column of a line that is not blank.
bool ParseFirstColumn(std::string_view line, char separator, double& value) {
  const std::size_t length = std::min(line.find(separator), line.size());
  if (separator == ',' && length < line.size() && ContinuesNumber(line.substr(length + 1))) return false;
  return ParseReal(Trimmed(line.substr(0, length)), value);
}

} // namespace

void WaveClip::Assign(std::span<const std::int16_t> codes) {
  textBytes_ = 0;
  exactBytes_ = kHeaderBytes + codes.size_bytes();
  if (exact_.size() < exactBytes_) exact_.resize(exactBytes_);
  std::ranges::transform(kMagic, exact_.begin(), [](char c) { return static_cast<std::byte>(c); });
  StoreLittleEndian(kVersion, exact_.data() + kVersionOffset);
  StoreLittleEndian(static_cast<std::uint32_t>(codes.size()), exact_.data() + kCountOffset);
  StoreCodes(codes, exact_.data() + kHeaderBytes);
}

std::vector<std::string> WaveClip::Formats() const {
  return {CLIP_EXACT_FORMAT, CLIP_TEXT_FORMAT};
}

std::span<const std::byte> WaveClip::Data(const std::string& mime) {
  if (mime == CLIP_EXACT_FORMAT) return std::span(exact_).first(exactBytes_);
  if (mime != CLIP_TEXT_FORMAT && mime != CLIP_PLAIN_TEXT_FORMAT) return {};
  if (textBytes_ == 0) {
    std::vector<std::int16_t> codes((exactBytes_ - kHeaderBytes) / 2);
    LoadCodes(exact_.data() + kHeaderBytes, codes);
    text_.resize(std::max(text_.size(), codes.size() * CODE_LINE_BYTES));
    textBytes_ = FormatCodes(codes, LineEnd::Lf, text_.data());
  }
  return std::as_bytes(std::span(text_).first(textBytes_));
}

std::optional<std::span<const std::byte>> ExactClipCodes(std::span<const std::byte> bytes) {
  if (bytes.size() < kHeaderBytes || !std::equal(kMagic.begin(), kMagic.end(), bytes.begin(),
                                                 [](char c, std::byte b) { return static_cast<std::byte>(c) == b; })) {
    return std::nullopt;
  }
  const auto count = LoadLittleEndian<std::uint32_t>(bytes.data() + kCountOffset);
  if (LoadLittleEndian<std::uint32_t>(bytes.data() + kVersionOffset) != kVersion) return std::nullopt;
  if (count == 0 || bytes.size() - kHeaderBytes != std::size_t{count} * 2) return std::nullopt;
  return bytes.subspan(kHeaderBytes);
}

bool ParseClipText(std::string_view text, std::size_t most, std::vector<std::int16_t>& codes, RealValues& reals) {
  // Some programs hand over the end mark of their strings.
  text = WithoutByteOrderMark(text.substr(0, text.find_last_not_of('\0') + 1));
  std::size_t count = 0;
  TextFault ignored;
  codes.resize(most);
  if (ParseCodes(text, codes, count, ignored)) {
    codes.resize(count);
    return true;
  }

  const char separator = ColumnSeparator(text);
  reals.values.clear();
  bool areCodes = true;
  for (std::size_t position = 0; reals.values.size() < most && position < text.size();) {
    const std::string_view rest = text.substr(position);
    const std::string_view line = rest.substr(0, LineLength(rest));
    position += line.size() + LineEndLength(rest.substr(line.size()));
    if (Trimmed(line).empty()) continue;
    double value = 0;
    if (!ParseFirstColumn(line, separator, value)) return false;
    areCodes = areCodes && value >= kLowestCode && value <= kHighestCode && value == std::trunc(value);
    reals.values.push_back(value);
  }
  if (reals.values.empty()) return false;
  codes.resize(reals.values.size());
  if (areCodes) {
    std::ranges::transform(reals.values, codes.begin(), [](double value) { return static_cast<std::int16_t>(value); });
    return true;
  }
  const auto [minimum, maximum] = std::ranges::minmax(reals.values);
  reals.minimum = minimum;
  reals.maximum = maximum;
  return ScaleReals(reals, codes, ignored);
}

} // namespace calder
