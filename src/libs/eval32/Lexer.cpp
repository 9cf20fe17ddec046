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

constexpr std::string_view kWideBlank = "\xE3\x80\x80"; // U+3000, which Japanese keyboards give

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

bool Lexer::IsWideBlank(std::size_t ahead) const {
  return At(ahead) == kWideBlank.front() && text_.substr(at_ + ahead).starts_with(kWideBlank);
}

void Lexer::SkipBlanks() {
  for (;;) {
    const char c = At(0);
    if (c > ' ' && c <= '~') return;
    if (at_ < text_.size() && (c == ' ' || c == '\t' || c == '\r' || c == '\n'))
      ++at_;
    else if (IsWideBlank(0))
      at_ += kWideBlank.size();
    else
      return;
  }
}

char Lexer::Peek() {
  SkipBlanks();
  return At(0);
}

// The token is filled where it stays: copying one that was written piece by piece just now would wait for each piece.
void Lexer::Make(Token& token, Symbol symbol, std::size_t length, double value) {
  token.symbol = symbol;
  token.position = at_;
  token.text = text_.substr(at_, length);
  token.value = value;
  at_ += token.text.size();
}

void Lexer::Next(Token& token) {
  SkipBlanks();
  if (at_ >= text_.size()) return Make(token, Symbol::End, 0);
  const char c = At(0);
  if (IsDigit(c) || (c == '.' && IsDigit(At(1)))) return Number(token);
  if (c == '$') return Hexadecimal(token);
  if (IsNameStart(c)) return Identifier(token);
  return Operator(token);
}

void Lexer::Number(Token& token) {
  constexpr std::size_t exactDigits = 15; // a double holds every whole number of that many
  std::size_t length = 0;
  double whole = 0;
  for (; IsDigit(At(length)); ++length) whole = whole * 10 + (At(length) - '0');
  const char next = At(length);
  if (length <= exactDigits && next != '.' && next != 'e' && next != 'E')
    return Make(token, Symbol::Number, length, whole);
  if (At(length) == '.') ++length;
  while (IsDigit(At(length))) ++length;
  if (At(length) == 'e' || At(length) == 'E') {
    std::size_t digits = length + 1;
    if (At(digits) == '+' || At(digits) == '-') ++digits;
    if (!IsDigit(At(digits))) return Make(token, Symbol::BadNumber, digits);
    while (IsDigit(At(digits))) ++digits;
    length = digits;
  }
  if (At(length) == '.') return Make(token, Symbol::BadNumber, length + 1);
  double value = 0;
  const char* first = text_.data() + at_;
  const auto read = std::from_chars(first, first + length, value);
  if (read.ec == std::errc::result_out_of_range) value = Beyond(text_.substr(at_, length));
  return Make(token, Symbol::Number, length, value);
}

void Lexer::Hexadecimal(Token& token) {
  std::size_t length = 1;
  double value = 0;
  for (; IsHexadecimal(At(length)); ++length) {
    const char c = At(length);
    value = value * 16 + (IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10);
  }
  return Make(token, length > 1 ? Symbol::Number : Symbol::BadNumber, length, value);
}

void Lexer::Identifier(Token& token) {
  std::size_t length = 1;
  while (IsNamePart(At(length)) && !IsWideBlank(length)) ++length;
  return Make(token, Symbol::Name, length);
}

void Lexer::Operator(Token& token) {
  const char second = At(1);
  switch (At(0)) {
  case '+': return Make(token, Symbol::Plus, 1);
  case '-': return Make(token, Symbol::Minus, 1);
  case '*': return Make(token, Symbol::Times, 1);
  case '/': return Make(token, Symbol::Divide, 1);
  case '%': return Make(token, Symbol::Percent, 1);
  case '^': return Make(token, Symbol::Caret, 1);
  case '(': return Make(token, Symbol::Open, 1);
  case ')': return Make(token, Symbol::Close, 1);
  case '[': return Make(token, Symbol::OpenBlock, 1);
  case ']': return Make(token, Symbol::CloseBlock, 1);
  case ',': return Make(token, Symbol::Comma, 1);
  case ';': return Make(token, Symbol::Semicolon, 1);
  case '?': return Make(token, Symbol::Question, 1);
  case ':': return Make(token, Symbol::Colon, 1);
  case '<':
    if (second == '>') return Make(token, Symbol::NotEqual, 2);
    return second == '=' ? Make(token, Symbol::LessEqual, 2) : Make(token, Symbol::Less, 1);
  case '>': return second == '=' ? Make(token, Symbol::GreaterEqual, 2) : Make(token, Symbol::Greater, 1);
  case '=': return Make(token, Symbol::Equal, second == '=' ? 2 : 1);
  case '!': return second == '=' ? Make(token, Symbol::NotEqual, 2) : Make(token, Symbol::Not, 1);
  case '&':
    if (second == '&') return Make(token, Symbol::And, 2);
    break;
  case '|':
    if (second == '|') return Make(token, Symbol::Or, 2);
    break;
  default: break;
  }
  return Make(token, Symbol::Unknown, 1);
}

} // namespace calder::eval
