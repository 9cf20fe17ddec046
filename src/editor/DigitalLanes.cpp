#include "editor/DigitalLanes.h"

#include "libs/wavelb32/wavelb32.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace calder {
namespace {

constexpr int kBesideMarker = 10; // logical pixels outside of the range that still count as inside
constexpr int kTopBit = W_LANES - 1;

std::uint16_t LaneMask(int lane) {
  return static_cast<std::uint16_t>(1U << lane);
}

bool IsLane(int lane) {
  return lane >= 0 && lane < W_LANES;
}

int LaneUnder(const PicturePoint& at) {
  return W_LaneAt(at.y, at.height);
}

} // namespace

std::uint16_t DigitalLanes::SelectedBits() const {
  return reverse_bit(selected_);
}

bool DigitalLanes::InsideScope(double point) const {
  const Scope& scope = buffers_.CurrentScope();
  return point > scope.Start && point < scope.End;
}

DigitalLanes::Outcome DigitalLanes::Clear() {
  selected_ = 0;
  source_.reset();
  return Outcome::Selection;
}

DigitalLanes::Outcome DigitalLanes::SelectOnly(int lane, bool isSource) {
  selected_ = LaneMask(lane);
  source_.reset();
  if (isSource) source_ = lane;
  return Outcome::Selection;
}

DigitalLanes::Outcome DigitalLanes::Press(const PicturePoint& at) {
  const Scope& scope = buffers_.CurrentScope();
  const double reach = kBesideMarker * at.scale;
  const int lane = LaneUnder(at);
  pressedAt_ = at;
  hovered_ = at;
  sourceByKey_ = cursorTalks_ = false;
  const bool beside = at.x < mapping_.PointToPixelX(scope.Start, at.width) - reach ||
                      at.x > mapping_.PointToPixelX(scope.End, at.width) + reach;
  if (beside || !IsLane(lane)) return Clear();
  pointer_ = Pointer::Lanes;
  return SelectOnly(lane, true);
}

DigitalLanes::Outcome DigitalLanes::CtrlPress(const PicturePoint& at) {
  const int lane = LaneUnder(at);
  pressedAt_ = at;
  hovered_ = at;
  sourceByKey_ = cursorTalks_ = false;
  if (!InsideScope(mapping_.PixelXToPoint(at.x, at.width))) return Clear();
  const bool first = selected_ == 0;
  source_.reset();
  if (!IsLane(lane)) return Outcome::Nothing;
  if (first) {
    pointer_ = Pointer::Arrow;
    return SelectOnly(lane, true);
  }
  selected_ = static_cast<std::uint16_t>(selected_ ^ LaneMask(lane));
  return Outcome::Selection;
}

DigitalLanes::Outcome DigitalLanes::Move(const PicturePoint& at) {
  const bool drags = source_.has_value() && !sourceByKey_;
  hovered_ = at;
  cursorTalks_ = false;
  pointer_ = Pointer::Lanes;
  return drags ? Outcome::Selection : Outcome::Nothing;
}

DigitalLanes::Outcome DigitalLanes::Copy(int source, int destination) {
  buffers_.Save_Undo();
  const Scope& scope = buffers_.CurrentScope();
  W_CopyBitDigital(buffers_.Current(), scope.Start, scope.Length(), reverse_bit(LaneMask(source)),
                   reverse_bit(LaneMask(destination)));
  static_cast<void>(SelectOnly(destination, false));
  return Outcome::Waveform;
}

DigitalLanes::Outcome DigitalLanes::Release(const PicturePoint& at) {
  if (!source_ || sourceByKey_) return Outcome::Nothing;
  const int source = *source_;
  source_.reset();
  const int lane = LaneUnder(at);
  const double point = std::nearbyint(mapping_.PixelXToPoint(at.x, at.width));
  if (!InsideScope(point) || !IsLane(lane) || lane == source) return Outcome::Selection;
  pointer_ = Pointer::Arrow;
  return Copy(source, lane);
}

DigitalLanes::Outcome DigitalLanes::Press(LaneKey key) {
  cursorTalks_ = true;
  const bool hadCursor = cursor_ >= 0;
  switch (key) {
  case LaneKey::Up: cursor_ = hadCursor ? std::max(cursor_ - 1, 0) : 0; return Outcome::Selection;
  case LaneKey::Down: cursor_ = hadCursor ? std::min(cursor_ + 1, kTopBit) : 0; return Outcome::Selection;
  case LaneKey::First: cursor_ = 0; return Outcome::Selection;
  case LaneKey::Last: cursor_ = kTopBit; return Outcome::Selection;
  case LaneKey::Select:
    if (!hadCursor) cursor_ = 0;
    selected_ = static_cast<std::uint16_t>(selected_ ^ LaneMask(cursor_));
    source_.reset();
    return Outcome::Selection;
  case LaneKey::Copy: break;
  case LaneKey::Escape: // first the copy, then the selection
    if (!source_) return Clear();
    source_.reset();
    return Outcome::Selection;
  }
  if (!hadCursor) cursor_ = 0;
  if (source_ && sourceByKey_ && *source_ != cursor_ && buffers_.CurrentScope().Length() > 0)
    return Copy(*source_, cursor_);
  sourceByKey_ = true;
  return SelectOnly(cursor_, true);
}

std::optional<DigitalLanes::Drag> DigitalLanes::PendingCopy() const {
  if (!source_) return std::nullopt;
  if (sourceByKey_) {
    if (cursor_ == *source_) return std::nullopt;
    return Drag{*source_, cursor_, {}, {}};
  }
  if (!hovered_) return std::nullopt;
  const int lane = LaneUnder(*hovered_);
  const double point = std::nearbyint(mapping_.PixelXToPoint(hovered_->x, hovered_->width));
  if (!IsLane(lane) || lane == *source_ || !InsideScope(point)) return std::nullopt;
  return Drag{*source_, lane, pressedAt_.x, hovered_->x};
}

std::string DigitalLanes::LaneText() const {
  if (const std::optional<Drag> drag = PendingCopy()) {
    const std::string from = std::to_string(kTopBit - drag->source);
    const std::string to = std::to_string(kTopBit - drag->destination);
    return messages_.GetLanguage() == Language::English ? "copy bit " + from + " to " + to
                                                        : "ビット" + from + "を" + to + "にコピー";
  }
  const int lane = cursorTalks_ ? cursor_ : hovered_ ? LaneUnder(*hovered_) : -1;
  if (!IsLane(lane)) return {};
  const int bit = kTopBit - lane;
  // Codes are two's complement: the top bit counts down.
  const int weight = bit == kTopBit ? -(1 << bit) : 1 << bit;
  std::string text = messages_.Pick("レーン ", "lane ") + std::to_string(lane) + messages_.Pick("  ビット ", "  bit ") +
                     std::to_string(bit) + messages_.Pick("  重み ", "  weight ") + std::to_string(weight);
  if (cursorTalks_ || !hovered_) return text;
  const std::string value = ValueText(bit, *hovered_);
  return value.empty() ? text : text + messages_.Pick("  値 ", "  value ") + value;
}

// Of the points in the pointer's column; where none stands there, of the one before.
std::string DigitalLanes::ValueText(int bit, const PicturePoint& at) const {
  const std::span<const std::int16_t> points = buffers_.Points();
  const auto last = static_cast<double>(points.size()) - 1;
  const double left = mapping_.PixelXToPoint(at.x, at.width);
  const double from = std::ceil(left);
  const double to = std::min(std::ceil(mapping_.PixelXToPoint(at.x + 1, at.width)) - 1, last);
  if (!(left >= 0 && left <= last + 1)) return {};
  const auto first = static_cast<std::size_t>(from <= to ? from : std::min(std::floor(left), last));
  const auto end = static_cast<std::size_t>(from <= to ? to : static_cast<double>(first)) + 1;
  bool low = false;
  bool high = false;
  for (const std::int16_t code : points.subspan(first, end - first)) {
    const bool isHigh = ((static_cast<std::uint32_t>(code) >> bit) & 1U) != 0;
    (isHigh ? high : low) = true;
  }
  return low && high ? messages_.Pick("0 と 1", "0 and 1") : high ? "1" : "0";
}

std::string DigitalLanes::MaskText() const {
  const std::uint32_t bits = SelectedBits();
  if (bits == 0) return messages_.Pick("ビット未選択", "no bit selected");
  std::string list;
  for (int bit = kTopBit; bit >= 0; --bit) {
    if ((bits >> bit & 1U) == 0) continue;
    int last = bit;
    while (last > 0 && (bits >> (last - 1) & 1U) != 0) --last;
    if (!list.empty()) list += ", ";
    list += std::to_string(bit);
    if (last < bit) list += (last + 1 == bit ? ", " : "-") + std::to_string(last);
    bit = last;
  }
  char hex[8];
  std::snprintf(hex, sizeof hex, "$%X", bits);
  const char* word = list.find_first_of(",-") == std::string::npos ? "bit " : "bits ";
  return messages_.Pick("ビット", word) + list + " = " + hex;
}

} // namespace calder
