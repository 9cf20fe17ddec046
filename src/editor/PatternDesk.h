// The digital view's pattern buttons and pattern text without their window: set, clear and invert the selected bits, or
// write the typed pattern; what the typed pattern would do, before it is written; where its fault is.
#pragma once

#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "libs/eval32/eval32.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace calder {

class PatternDesk {
public:
  // Items of Btn_Pattern.
  enum Button : int { kClear = 0, kSet = 1, kInvert = 2, kPattern = 3 };

  PatternDesk(EditBuffers& buffers, const SystemInfo& settings, Evaluator& evaluator, const ErrMsg& messages)
      : buffers_(buffers), settings_(settings), evaluator_(evaluator), messages_(messages) {}
  ~PatternDesk();
  PatternDesk(const PatternDesk&) = delete;
  PatternDesk& operator=(const PatternDesk&) = delete;

  // Writes the range between the markers, as an undoable edit; selectedBits: of the lanes. A pattern with a fault shows
  // its message, after the undo step was taken, and leaves the waveform. False: there was nothing to do, Note says why.
  bool Btn_Pattern_Click(int item, std::uint16_t selectedBits);

  // What Txt_Pattern holds from now on.
  void Type(const std::string& text);
  // Waveform or range changed: what the pattern would do is no longer known.
  void WaveformChanged() { isKnown_ = false; }

  // The waveform as the typed pattern would leave it, all MemorySize points; 0 when the text is empty or has a fault,
  // when writing it would take longer than a frame, and when it was just written.
  [[nodiscard]] WaveHandle Ghost();
  // Where the typed text has a fault, in bytes; none when it has none.
  [[nodiscard]] std::optional<std::size_t> FaultPlace();
  // A line for the user: the fault of the typed text, or why the last button did nothing; may be empty.
  [[nodiscard]] std::string Note();

private:
  struct Range {
    std::int32_t start = 0;
    std::int32_t count = 0;
  };
  [[nodiscard]] Range WholeRange() const;
  void Find();

  EditBuffers& buffers_;
  const SystemInfo& settings_;
  Evaluator& evaluator_;
  const ErrMsg& messages_;
  std::unique_ptr<Evaluator> aside_; // for the ghost: defines no constant that would outlive the text
  WaveHandle ghost_ = 0;             // made for the first text
  std::string text_;
  bool isKnown_ = true;
  EvalFault fault_;                // of the typed text
  std::optional<Scope> writtenAt_; // where the present text was written last
  std::string note_;
};

} // namespace calder
