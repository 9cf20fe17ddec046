#include "editor/PatternDesk.h"

#include "libs/wavelb32/wavelb32.h"

#include <cmath>
#include <cstdio>

namespace calder {
namespace {

constexpr std::int16_t kFirstMessage = PATTERN_TOO_LONG;
constexpr std::int16_t kLastMessage = PATTERN_SYNTAX;

std::string MaskedPattern(std::uint16_t bits, const char* act) {
  char text[32];
  std::snprintf(text, sizeof text, "Mask $%X %s", static_cast<unsigned>(bits), act);
  return text;
}

// Not wrong: only more than can be shown while somebody types.
bool IsTooLongForAFrame(const EvalFault& fault) {
  return fault.reason == EvalReason::GroupsTakeTooLong;
}

} // namespace

PatternDesk::~PatternDesk() {
  if (ghost_ != 0) static_cast<void>(W_FreeMemory(ghost_));
}

PatternDesk::Range PatternDesk::WholeRange() const {
  const Scope& scope = buffers_.CurrentScope();
  // Both to the nearest, halves to even: together they never pass the waveform's end.
  return {static_cast<std::int32_t>(std::nearbyint(scope.Start)),
          static_cast<std::int32_t>(std::nearbyint(scope.Length()))};
}

bool PatternDesk::Btn_Pattern_Click(int item, std::uint16_t selectedBits) {
  static constexpr const char* kActs[] = {"0L", "0H", "0N"};
  note_.clear();
  if (buffers_.CurrentScope().Length() == 0) {
    note_ = messages_.Pick("マーカ間に点がありません。", "There is no point between the markers.");
    return false;
  }
  if (item != kPattern && selectedBits == 0) {
    note_ = messages_.Pick("先にレーンを選択してください (Ctrl+クリックで追加)。",
                           "Select a lane first; Ctrl+click adds lanes.");
    return false;
  }
  const std::string text = item == kPattern ? text_ : MaskedPattern(selectedBits, kActs[item]);
  if (text.empty()) {
    note_ = messages_.Pick("パターンが入力されていません。", "There is no pattern in the box.");
    return false;
  }
  buffers_.Save_Undo();
  const Range range = WholeRange();
  const std::int16_t result = evaluator_.DigitalPattern(text, range.start, buffers_.Current(), range.count);
  isKnown_ = false;
  if (result != EVAL_SUCCESS) {
    messages_.ErrorBox(result < kFirstMessage || result > kLastMessage ? kLastMessage : result);
  } else if (item == kPattern) {
    writtenAt_ = buffers_.CurrentScope();
  }
  return true;
}

void PatternDesk::Type(const std::string& text) {
  if (text == text_) return;
  text_ = text;
  isKnown_ = false;
  writtenAt_.reset();
  note_.clear();
}

void PatternDesk::Find() {
  if (isKnown_) return;
  isKnown_ = true;
  fault_ = {};
  if (text_.empty()) return;
  if (aside_ == nullptr) aside_ = std::make_unique<Evaluator>(1);
  if (ghost_ == 0) ghost_ = W_AllocMemory(W_MAX_POINTS);
  if (ghost_ == 0) return; // it is written all the same
  W_CopyMemory(buffers_.Current(), ghost_, 0, 0, settings_.MemorySize);
  aside_->TakeConstants(evaluator_);
  const Range range = WholeRange();
  static_cast<void>(aside_->DigitalPattern(text_, range.start, ghost_, range.count, Evaluator::PatternEffort::Frame));
  fault_ = aside_->LastFault();
}

WaveHandle PatternDesk::Ghost() {
  if (text_.empty() || writtenAt_ == buffers_.CurrentScope()) return 0;
  Find();
  return fault_.code == EVAL_SUCCESS ? ghost_ : 0;
}

std::optional<std::size_t> PatternDesk::FaultPlace() {
  Find();
  if (fault_.code == EVAL_SUCCESS || IsTooLongForAFrame(fault_)) return std::nullopt;
  return fault_.position;
}

std::string PatternDesk::Note() {
  if (!note_.empty()) return note_;
  Find();
  if (fault_.code == EVAL_SUCCESS) return {};
  if (IsTooLongForAFrame(fault_)) {
    return messages_.Pick("計算量が多いため、書き込むまで表示されません。",
                          "It takes too long to be shown before it is written.");
  }
  const auto [japanese, english] = EvalReasonText(fault_);
  std::string line = messages_.MessageText(fault_.code);
  while (!line.empty() && line.back() == '\r') line.pop_back();
  return line + "  " + messages_.Pick(japanese.c_str(), english.c_str());
}

} // namespace calder
