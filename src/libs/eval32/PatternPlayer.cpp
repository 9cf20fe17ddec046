#include "libs/eval32/PatternPlayer.h"

#include <algorithm>
#include <cmath>

namespace calder::eval {

namespace {

// Items played, and passes of their expressions: about a second. An expression of a dozen operations at each of the
// most points stays below.
constexpr double kWorkLimit = 1e8;

} // namespace

EvalFault PatternPlayer::Play() {
  while (item_ < pattern_.items.size() && done_ < codes_.size())
    if (!PlayItem()) return fault_;
  return fault_;
}

bool PatternPlayer::Spend(double work, std::size_t position) {
  spent_ += work;
  if (spent_ <= kWorkLimit) return true;
  fault_ = {PATTERN_TOO_DEEP, position, EvalReason::GroupsTakeTooLong, {}};
  return false;
}

bool PatternPlayer::PlayItem() {
  const PatternItem& item = pattern_.items[item_];
  std::uint32_t count = 0;
  if (!CountOf(item, count)) return false;
  switch (item.act) {
  case PatternAct::Mask: mask_ = item.bits; break;
  case PatternAct::Open: Begin(count); return true;
  case PatternAct::Close: Close(); return true;
  default: Write(item, count); break;
  }
  ++item_;
  return true;
}

// A written 0 means to the end; an expression that comes to 0 means none at all, so that a run may shrink to nothing.
bool PatternPlayer::CountOf(const PatternItem& item, std::uint32_t& count) {
  count = item.count == 0 ? UINT32_MAX : item.count;
  if (item.expression < 0) return Spend(1, item.position);
  const Program& program = pattern_.expressions[static_cast<std::size_t>(item.expression)];
  if (!Spend(1 + 4 * static_cast<double>(program.rowCount + program.passes.size()), item.position)) return false;
  double value = 0;
  if (!value_(program, firstPoint_ + static_cast<double>(done_), value)) {
    fault_ = {PATTERN_EXPRESSION, item.position, EvalReason::DivisionByZero, {}};
    return false;
  }
  const double whole = std::rint(value);
  if (!(whole >= 0 && whole <= kPatternCountLimit)) {
    fault_ = {PATTERN_COUNT_TOO_LARGE, item.position, EvalReason::NoCount, {}};
    return false;
  }
  count = static_cast<std::uint32_t>(whole);
  return true;
}

void PatternPlayer::Begin(std::uint32_t count) {
  if (count == 0) {
    item_ = pattern_.items[item_].partner + 1;
    return;
  }
  levels_.push_back({item_, count - 1, count == UINT32_MAX, done_});
  ++item_;
}

// A group that did not move on never will: doing it again changes nothing.
void PatternPlayer::Close() {
  Level& level = levels_.back();
  const bool isAgain = (level.isToEnd || level.left > 0) && done_ > level.startedAt;
  if (!isAgain) {
    levels_.pop_back();
    ++item_;
    return;
  }
  if (!level.isToEnd) --level.left;
  level.startedAt = done_;
  item_ = level.open + 1;
}

void PatternPlayer::Write(const PatternItem& item, std::uint32_t count) {
  const std::size_t points = std::min<std::size_t>(count, codes_.size() - done_);
  std::uint16_t keep = 0xFFFF; // code = code & keep ^ flip
  std::uint16_t flip = 0;
  const auto others = static_cast<std::uint16_t>(~mask_);
  switch (item.act) {
  case PatternAct::Clear: keep = others; break;
  case PatternAct::Set:
    keep = others;
    flip = mask_;
    break;
  case PatternAct::Invert: flip = mask_; break;
  case PatternAct::Word:
    keep = others;
    flip = static_cast<std::uint16_t>(item.bits & mask_);
    break;
  default: break;
  }
  for (std::int16_t& code : codes_.subspan(done_, points))
    code = static_cast<std::int16_t>((static_cast<std::uint16_t>(code) & keep) ^ flip);
  done_ += points;
}

} // namespace calder::eval
