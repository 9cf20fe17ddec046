#include "app/EngValB.h"

#include "libs/file32/TextLines.h"
#include "platform/AsciiText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace calder {
namespace {

constexpr int kDigits = 15;
constexpr std::string_view kPrefixes = "afpnum kMGT"; // thousands to the power -6 to +4
constexpr int kBlankPrefix = 6;

constexpr std::size_t PrefixIndex(int thousands) {
  const int index = thousands + kBlankPrefix;
  return static_cast<std::size_t>(index);
}

// A value as its 15 decimal digits: 0.d1d2d3... * 10^point.
struct Decimal {
  bool negative = false;
  std::string digits; // no leading zeros; empty for zero
  int point = 0;      // digits before the decimal point
};

Decimal ToDecimal(double value) {
  Decimal decimal;
  if (std::isnan(value)) return decimal;
  value = std::clamp(value, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
  if (value == 0) return decimal;
  std::array<char, 40> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                 std::chars_format::scientific, kDigits - 1)
                       .ptr;
  // d.ddddddddddddddE+xx
  decimal.negative = value < 0;
  decimal.digits.push_back(text[0]);
  decimal.digits.append(text.data() + 2, kDigits - 1);
  const char* exponentText = text.data() + kDigits + 2;
  if (*exponentText == '+') ++exponentText;
  int exponent = 0;
  std::from_chars(exponentText, end, exponent);
  decimal.point = exponent + 1;
  return decimal;
}

// Rounds to that many decimals, halves to even.
void RoundTo(Decimal& decimal, int decimals) {
  const int keep = decimal.point + decimals; // digits that stay
  if (keep >= static_cast<int>(decimal.digits.size())) return;
  if (keep < 0) {
    decimal.digits.clear();
    decimal.point = 0;
    return;
  }
  const auto cut = static_cast<std::size_t>(keep);
  const std::string rest = decimal.digits.substr(cut);
  decimal.digits.resize(cut);
  const bool odd = cut > 0 && (decimal.digits[cut - 1] - '0') % 2 != 0;
  const bool aboveHalf = rest[0] > '5' || (rest[0] == '5' && rest.find_first_not_of('0', 1) != std::string::npos);
  const bool half = rest[0] == '5' && !aboveHalf;
  if (!aboveHalf && !(half && odd)) return;
  auto i = static_cast<int>(cut) - 1;
  while (i >= 0 && decimal.digits[static_cast<std::size_t>(i)] == '9') {
    decimal.digits[static_cast<std::size_t>(i)] = '0';
    --i;
  }
  if (i >= 0) {
    ++decimal.digits[static_cast<std::size_t>(i)];
  } else {
    decimal.digits.insert(decimal.digits.begin(), '1');
    ++decimal.point;
  }
}

char DigitAt(const Decimal& decimal, int position) { // 0 = first before or after the point, as `point` counts
  if (position < 0 || position >= static_cast<int>(decimal.digits.size())) return '0';
  return decimal.digits[static_cast<std::size_t>(position)];
}

std::string IntegerPart(const Decimal& decimal) {
  std::string text;
  for (int i = 0; i < decimal.point; ++i) text += DigitAt(decimal, i);
  return text;
}

std::string Fixed(const Decimal& decimal, int width) {
  std::string text = decimal.negative ? "-" : "";
  const std::string integer = IntegerPart(decimal);
  text += integer.empty() ? "0" : integer;
  text += '.';
  for (int i = 0; i < 20; ++i) text += DigitAt(decimal, decimal.point + i);
  if (width < static_cast<int>(text.size())) text.resize(static_cast<std::size_t>(std::max(width, 0)));
  return text;
}

std::string Scientific(Decimal decimal) {
  const int exponent = decimal.point - 1;
  Decimal mantissa = std::move(decimal);
  mantissa.point = 1;
  RoundTo(mantissa, 2);
  const int shown = exponent + mantissa.point - 1; // a carry moves the point
  mantissa.point = 1;
  std::string text = Fixed(mantissa, mantissa.negative ? 5 : 4);
  const std::string exponentText = std::to_string(std::abs(shown));
  text += shown < 0 ? "E-" : "E+";
  if (exponentText.size() < 2) text += '0';
  return text + exponentText;
}

bool OutOfPrefixRange(const Decimal& decimal) {
  if (decimal.point > 12) return true; // from 1e12
  if (decimal.point > -17) return false;
  // up to 1e-18 itself
  return decimal.point < -17 ||
         (decimal.digits[0] == '1' && decimal.digits.find_first_not_of('0', 1) == std::string::npos);
}

// Splits off the power of a thousand: the mantissa stays with 1 to 3 integer digits.
int TakeThousands(Decimal& decimal) {
  const int exponent = decimal.point - 1;
  const int k = exponent >= 0 ? exponent / 3 : -((2 - exponent) / 3);
  decimal.point -= 3 * k;
  return k;
}

std::string ByMask(Decimal decimal, std::string_view mask) {
  const auto dot = mask.find('.');
  const std::string_view integerMask = mask.substr(0, dot);
  const std::string_view decimalMask = dot == std::string_view::npos ? std::string_view{} : mask.substr(dot + 1);
  RoundTo(decimal, static_cast<int>(decimalMask.size()));
  std::string text = IntegerPart(decimal);
  const auto least = static_cast<std::size_t>(std::count(integerMask.begin(), integerMask.end(), '0'));
  if (text.size() < least) text.insert(0, least - text.size(), '0');
  if (dot != std::string_view::npos) {
    std::string decimals;
    for (int i = 0; i < static_cast<int>(decimalMask.size()); ++i) decimals += DigitAt(decimal, decimal.point + i);
    while (!decimals.empty() && decimals.back() == '0' && decimalMask[decimals.size() - 1] == '#') decimals.pop_back();
    text += '.' + decimals;
  }
  const bool zero = decimal.digits.find_first_not_of('0') == std::string::npos;
  return decimal.negative && !zero ? '-' + text : text;
}

} // namespace

std::string FormatFixed(double value, int width) {
  return Fixed(ToDecimal(value), width);
}

std::string FormatEng(double value, int width) {
  Decimal decimal = ToDecimal(value);
  if (decimal.digits.empty()) return width >= 2 ? "0." + std::string(static_cast<std::size_t>(width - 1), '0') : "0";
  if (OutOfPrefixRange(decimal)) return Scientific(decimal);
  const int k = TakeThousands(decimal);
  std::string text = Fixed(decimal, width + 1);
  const char prefix = kPrefixes[PrefixIndex(k)];
  if (prefix != ' ' && !text.empty()) text.pop_back();
  return TrimBlanks(text + prefix);
}

std::string FormatEngMask(double value, std::string_view mask) {
  Decimal decimal = ToDecimal(value);
  if (decimal.digits.empty()) {
    const auto dot = mask.find('.');
    return dot == std::string_view::npos ? "0" : "0." + std::string(mask.size() - dot - 1, '0');
  }
  if (OutOfPrefixRange(decimal)) return Scientific(decimal);
  const int k = TakeThousands(decimal);
  std::string text = ByMask(decimal, mask);
  if (!text.empty() && text.back() == '.') text.pop_back();
  return TrimBlanks(text + kPrefixes[PrefixIndex(k)]);
}

std::string FormatMask(double value, std::string_view mask) {
  return ByMask(ToDecimal(value), mask);
}

std::string NumberText(double value) {
  if (std::isnan(value)) value = 0;
  value = std::clamp(value, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
  std::array<char, 40> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, kDigits).ptr;
  std::string result(text.data(), end);
  std::replace(result.begin(), result.end(), 'e', 'E');
  return result == "-0" ? "0" : result;
}

double LeadingNumber(std::string_view text) {
  std::string number;
  for (const char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') number += c;
  }
  std::size_t i = 0;
  std::string plain; // what from_chars reads
  if (i < number.size() && (number[i] == '+' || number[i] == '-')) {
    if (number[i] == '-') plain += '-';
    ++i;
  }
  bool anyDigit = false;
  bool anyPoint = false;
  for (; i < number.size(); ++i) {
    const char c = number[i];
    if (c >= '0' && c <= '9') {
      anyDigit = true;
    } else if (c == '.' && !anyPoint) {
      anyPoint = true;
    } else {
      break;
    }
    plain += c;
  }
  if (!anyDigit) return 0;
  if (i < number.size() && std::string_view("EeDd").find(number[i]) != std::string_view::npos) {
    std::string exponent;
    std::size_t j = i + 1;
    if (j < number.size() && (number[j] == '+' || number[j] == '-')) exponent += number[j++];
    const std::size_t digitsFrom = j;
    while (j < number.size() && number[j] >= '0' && number[j] <= '9') exponent += number[j++];
    if (j > digitsFrom) plain += 'e' + exponent;
  }
  double value = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // from_chars leaves the value alone; a tiny magnitude counts as 0, a huge one as the largest double.
    const bool negative = plain[0] == '-';
    value = IsTiny(std::string_view(plain).substr(negative ? 1 : 0)) ? 0 : std::numeric_limits<double>::max();
    if (negative) value = -value;
  }
  return value;
}

double ParseEng(std::string_view text) {
  const auto last = text.find_last_not_of(' ');
  if (last == std::string_view::npos) return 0;
  const double number = LeadingNumber(text);
  const auto prefix = kPrefixes.find(text[last]);
  if (prefix == std::string_view::npos) return number;
  // Powers of ten below 1 are no binary fractions: dividing by the power above 1 rounds once, so "1.3m" is 0.0013.
  static constexpr std::array<double, 11> kPowers{1e18, 1e15, 1e12, 1e9, 1e6, 1e3, 1, 1e3, 1e6, 1e9, 1e12};
  constexpr double kMost = std::numeric_limits<double>::max();
  const double power = kPowers[prefix];
  return std::clamp(prefix < kPrefixes.find(' ') ? number / power : number * power, -kMost, kMost);
}

} // namespace calder
