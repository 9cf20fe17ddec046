#include "libs/eval32/PatternPlayer.h"

#include <algorithm>
#include <cmath>

namespace calder::eval {

namespace {

constexpr std::size_t kFewPoints = 64; // are played sooner than repeated

} // namespace

EvalFault PatternPlayer::Play() {
  while (item_ < pattern_.items.size() && done_ < pointCount_)
    if (!PlayItem()) return fault_;
  return fault_;
}

bool PatternPlayer::Spend(double work, std::size_t position) {
  spent_ += work;
  if (spent_ <= workLimit_) return true;
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
  levels_.push_back({item_, count - 1, count == UINT32_MAX, false, done_, strokes_.size()});
  ++item_;
}

// A group that did not move on never will: doing it again changes nothing. Without expressions inside, every time after
// the second is as the second one (the first may begin with another mask).
void PatternPlayer::Close() {
  Level& level = levels_.back();
  const std::size_t period = done_ - level.startedAt;
  if ((level.isToEnd || level.left > 0) && period > 0) {
    const std::size_t room = pointCount_ - done_;
    const std::size_t points = level.isToEnd || level.left > room / period ? room : level.left * period;
    if (!level.isSecond || pattern_.items[level.open].hasExpression || points < kFewPoints) {
      if (!level.isToEnd) --level.left;
      level.isSecond = true;
      level.startedAt = done_;
      level.firstStroke = strokes_.size();
      item_ = level.open + 1;
      return;
    }
    strokes_.push_back({points, 0xFFFF, 0, level.firstStroke, period});
    done_ += points;
  }
  levels_.pop_back();
  ++item_;
}

void PatternPlayer::Write(const PatternItem& item, std::uint32_t count) {
  PatternStroke stroke{std::min<std::size_t>(count, pointCount_ - done_), 0xFFFF, 0, 0, 0};
  const auto others = static_cast<std::uint16_t>(~mask_);
  switch (item.act) {
  case PatternAct::Clear: stroke.keep = others; break;
  case PatternAct::Set:
    stroke.keep = others;
    stroke.flip = mask_;
    break;
  case PatternAct::Invert: stroke.flip = mask_; break;
  case PatternAct::Word:
    stroke.keep = others;
    stroke.flip = static_cast<std::uint16_t>(item.bits & mask_);
    break;
  default: break;
  }
  done_ += stroke.points;
  if (stroke.points > 0) strokes_.push_back(stroke);
}

} // namespace calder::eval
