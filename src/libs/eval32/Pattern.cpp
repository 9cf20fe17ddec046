#include "libs/eval32/Pattern.h"

#include "platform/AsciiText.h"

#include <algorithm>

namespace calder::eval {

namespace {

int HexadecimalValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char lower = Lower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

constexpr std::string_view kMaskWord = "mask";

} // namespace

bool PatternParser::Fail(std::int16_t code, std::size_t position, EvalReason reason) {
  fault_ = {code, position, reason, {}};
  return false;
}

void PatternParser::SkipBlanks() {
  for (; at_ < text_.size(); ++at_) {
    const char c = Now();
    if (c == '\'') // a comment, to the end of its line
      at_ = std::min(text_.find('\n', at_), text_.size() - 1);
    else if (c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != ',')
      return;
  }
}

EvalFault PatternParser::Parse(Pattern& pattern) {
  pattern_ = &pattern;
  if (text_.size() > kPatternTextLimit) {
    Fail(PATTERN_TOO_LONG, kPatternTextLimit, EvalReason::TextTooLong);
    return fault_;
  }
  for (SkipBlanks(); at_ < text_.size(); SkipBlanks())
    if (!ParseItem()) return fault_;
  if (!open_.empty()) Fail(PATTERN_UNBALANCED, pattern.items[open_.back()].position, EvalReason::BracketWithoutEnd);
  return fault_;
}

bool PatternParser::ParseItem() {
  if (Now() == ']') return ParseClose();
  if (Now() == '[') {
    if (open_.size() == kPatternDepthLimit) return Fail(PATTERN_TOO_DEEP, at_, EvalReason::GroupsTooDeep);
    open_.push_back(pattern_->items.size());
    expressionSince_.push_back(pattern_->expressions.size());
    pattern_->items.push_back({PatternAct::Open, 0, 1, -1, 0, at_, false});
    ++at_;
    return true;
  }
  const std::string_view rest = text_.substr(at_, kMaskWord.size());
  const bool isMask = std::ranges::equal(rest, kMaskWord, {}, Lower);
  return isMask ? ParseMask() : ParseRun();
}

bool PatternParser::ParseHexadecimal(std::uint16_t& bits) {
  ++at_;
  std::uint32_t value = 0;
  const std::size_t start = at_;
  for (int digit = HexadecimalValue(Now()); digit >= 0; digit = HexadecimalValue(Now())) {
    value = value * 16 + static_cast<std::uint32_t>(digit);
    if (value > 0xFFFF) return false;
    ++at_;
  }
  bits = static_cast<std::uint16_t>(value);
  return at_ > start;
}

bool PatternParser::ParseMask() {
  const std::size_t start = at_;
  at_ += kMaskWord.size();
  SkipBlanks();
  PatternItem item{PatternAct::Mask, 0, 1, -1, 0, start, false};
  if (Now() != '$' || !ParseHexadecimal(item.bits)) return Fail(PATTERN_MASK, start, EvalReason::MaskDigits);
  pattern_->items.push_back(item);
  return true;
}

bool PatternParser::ParseRun() {
  Count count;
  if (!ParseCount(count)) return false;
  PatternItem item{PatternAct::Keep, 0, count.value, count.expression, 0, count.position, false};
  switch (Lower(Now())) {
  case 'l': item.act = PatternAct::Clear; break;
  case 'h': item.act = PatternAct::Set; break;
  case 'n': item.act = PatternAct::Invert; break;
  case 'x': item.act = PatternAct::Keep; break;
  case '$': {
    const std::size_t start = at_;
    item.act = PatternAct::Word;
    if (!ParseHexadecimal(item.bits)) return Fail(PATTERN_SYNTAX, start, EvalReason::WordDigits);
    pattern_->items.push_back(item);
    return true;
  }
  case '}': return Fail(PATTERN_BRACES, at_, EvalReason::BraceWithoutStart);
  default:
    if (count.isWritten) return Fail(PATTERN_NO_OPERATION, count.position, EvalReason::ActExpected);
    return Fail(PATTERN_SYNTAX, at_, EvalReason::NotInLanguage);
  }
  ++at_;
  pattern_->items.push_back(item);
  return true;
}

bool PatternParser::ParseClose() {
  if (open_.empty()) return Fail(PATTERN_UNBALANCED, at_, EvalReason::BracketWithoutStart);
  const std::size_t position = at_++;
  Count count;
  if (!ParseCount(count)) return false;
  PatternItem& open = pattern_->items[open_.back()];
  open.hasExpression = expressionSince_.back() < pattern_->expressions.size() - (count.expression >= 0 ? 1 : 0);
  expressionSince_.pop_back();
  open.partner = pattern_->items.size();
  open.count = count.value;
  open.expression = count.expression;
  if (count.isWritten) open.position = count.position;
  pattern_->items.push_back({PatternAct::Close, 0, 1, -1, open_.back(), position, false});
  open_.pop_back();
  return true;
}

// Nothing where no count stands: it is 1 then.
bool PatternParser::ParseCount(Count& count) {
  SkipBlanks();
  count.position = at_;
  if (Now() == '{') return ParseBraces(count);
  if (!IsDigit(Now())) return true;
  count.isWritten = true;
  count.value = 0;
  for (; IsDigit(Now()); ++at_) {
    count.value = count.value * 10 + static_cast<std::uint32_t>(Now() - '0');
    if (count.value > kPatternCountLimit)
      return Fail(PATTERN_COUNT_TOO_LARGE, count.position, EvalReason::CountTooLarge);
  }
  SkipBlanks();
  return true;
}

bool PatternParser::ParseBraces(Count& count) {
  const std::size_t end = text_.find_first_of("{}", at_ + 1);
  if (end == std::string_view::npos || text_[end] == '{') return Fail(PATTERN_BRACES, at_, EvalReason::BraceWithoutEnd);
  const std::string_view expression = text_.substr(at_ + 1, end - at_ - 1);
  Program program;
  fault_ = compile_(expression, program);
  if (fault_.code != EVAL_SUCCESS) {
    fault_.code = PATTERN_EXPRESSION;
    fault_.position += at_ + 1;
    return false;
  }
  count.expression = static_cast<std::int32_t>(pattern_->expressions.size());
  pattern_->expressions.push_back(std::move(program));
  count.isWritten = true;
  at_ = end + 1;
  SkipBlanks();
  return true;
}

} // namespace calder::eval
