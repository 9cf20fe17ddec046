#include "libs/eval32/Lexer.h"

#include "platform/AsciiText.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace calder::eval {

namespace {

// A byte of a character outside ASCII counts as a letter: constants may have names in any language.
bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool IsNamePart(char c) {
  return IsNameStart(c) || IsDigit(c);
}
bool IsHexadecimal(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr std::string_view wideBlank = "\xE3\x80\x80"; // U+3000, which Japanese keyboards give

// A number beyond what a double holds: an infinity when it is large, 0 when it is small.
double Beyond(std::string_view number) {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
  const auto leading = static_cast<std::int64_t>(std::min(digits.find_first_not_of("0."), digits.size()));
  const bool isExponentNegative = number.substr(mark).find('-') != std::string_view::npos;
  std::int64_t exponent = 0;
  for (const char c : number.substr(mark))
    if (IsDigit(c)) exponent = std::min<std::int64_t>(exponent * 10 + (c - '0'), INT32_MAX);
  const std::int64_t magnitude = point - leading + (isExponentNegative ? -exponent : exponent);
  return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0;
}

} // namespace

void Lexer::SkipBlanks() {
  for (;;) {
    const char c = At(0);
    if (at_ < text_.size() && (c == ' ' || c == '\t' || c == '\r' || c == '\n'))
      ++at_;
    else if (text_.substr(at_).starts_with(wideBlank))
      at_ += wideBlank.size();
    else
      return;
  }
}

char Lexer::Ahead() {
  SkipBlanks();
  return At(0);
}

Token Lexer::Made(Symbol symbol, std::size_t length, double value) {
  const Token token{symbol, at_, text_.substr(at_, length), value};
  at_ += token.text.size();
  return token;
}

Token Lexer::Next() {
  SkipBlanks();
  if (at_ >= text_.size()) return Made(Symbol::End, 0);
  const char c = At(0);
  if (IsDigit(c) || (c == '.' && IsDigit(At(1)))) return Number();
  if (c == '$') return Hexadecimal();
  if (IsNameStart(c)) return Word();
  return Sign();
}

Token Lexer::Number() {
  std::size_t length = 0;
  while (IsDigit(At(length))) ++length;
  if (At(length) == '.') ++length;
  while (IsDigit(At(length))) ++length;
  if (At(length) == 'e' || At(length) == 'E') {
    std::size_t digits = length + 1;
    if (At(digits) == '+' || At(digits) == '-') ++digits;
    if (!IsDigit(At(digits))) return Made(Symbol::BadNumber, digits);
    while (IsDigit(At(digits))) ++digits;
    length = digits;
  }
  if (At(length) == '.') return Made(Symbol::BadNumber, length + 1);
  double value = 0;
  const char* first = text_.data() + at_;
  const auto read = std::from_chars(first, first + length, value);
  if (read.ec == std::errc::result_out_of_range) value = Beyond(text_.substr(at_, length));
  return Made(Symbol::Number, length, value);
}

Token Lexer::Hexadecimal() {
  std::size_t length = 1;
  double value = 0;
  for (; IsHexadecimal(At(length)); ++length) {
    const char c = At(length);
    value = value * 16 + (IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10);
  }
  return Made(length > 1 ? Symbol::Number : Symbol::BadNumber, length, value);
}

Token Lexer::Word() {
  std::size_t length = 1;
  while (IsNamePart(At(length)) && !text_.substr(at_ + length).starts_with(wideBlank)) ++length;
  return Made(Symbol::Name, length);
}

Token Lexer::Sign() {
  const char second = At(1);
  switch (At(0)) {
  case '+': return Made(Symbol::Plus, 1);
  case '-': return Made(Symbol::Minus, 1);
  case '*': return Made(Symbol::Times, 1);
  case '/': return Made(Symbol::Divide, 1);
  case '%': return Made(Symbol::Percent, 1);
  case '^': return Made(Symbol::Caret, 1);
  case '(': return Made(Symbol::Open, 1);
  case ')': return Made(Symbol::Close, 1);
  case '[': return Made(Symbol::OpenBlock, 1);
  case ']': return Made(Symbol::CloseBlock, 1);
  case ',': return Made(Symbol::Comma, 1);
  case ';': return Made(Symbol::Semicolon, 1);
  case '?': return Made(Symbol::Question, 1);
  case ':': return Made(Symbol::Colon, 1);
  case '<':
    if (second == '>') return Made(Symbol::NotEqual, 2);
    return second == '=' ? Made(Symbol::LessEqual, 2) : Made(Symbol::Less, 1);
  case '>': return second == '=' ? Made(Symbol::GreaterEqual, 2) : Made(Symbol::Greater, 1);
  case '=': return Made(Symbol::Equal, second == '=' ? 2 : 1);
  case '!': return second == '=' ? Made(Symbol::NotEqual, 2) : Made(Symbol::Not, 1);
  case '&':
    if (second == '&') return Made(Symbol::And, 2);
    break;
  case '|':
    if (second == '|') return Made(Symbol::Or, 2);
    break;
  default: break;
  }
  return Made(Symbol::Unknown, 1);
}

} // namespace calder::eval
