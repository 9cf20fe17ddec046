// The Operate dialog without its window: the selected area and an operand combined point by point.
//
// 1. The operand and both results are as long as the selected area and live from Open to Close.
// 2. The pending result is what the present operand and operator give; it follows each change.
// 3. The firm result is the pending one at the last press of the result button, zeros before the first. OK writes it.
#pragma once

#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "tools/frame/WavePreview.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace calder {

class Clipboard;
class File32;

// Points of a result that are not what the operation gives in full.
struct CalcFaultCount {
  std::int32_t limited = 0;
  std::int32_t byZero = 0;
  [[nodiscard]] bool None() const { return limited == 0 && byZero == 0; }
};

class Operate {
public:
  Operate(EditBuffers& buffers, const SystemInfo& settings, const ConvUnit& units, File32& fileLibrary,
          Clipboard& clipboard, const ErrMsg& messages)
      : buffers_(buffers), settings_(settings), units_(units), fileLibrary_(fileLibrary), clipboard_(clipboard),
        messages_(messages) {}
  ~Operate() { Close(); }
  Operate(const Operate&) = delete;
  Operate& operator=(const Operate&) = delete;

  // False: the range holds no point or there is no memory, which a box has said.
  [[nodiscard]] bool Open();
  // Frees the buffers; nothing when there are none.
  void Close();

  void Comb_Comp_Click(int operation);
  // The operand from the clipboard; what it has no points for becomes 0. A failure is shown and leaves the operand.
  void Btn_Cut_Click();
  void Btn_Result_Click();
  // The caller closes the form.
  void Btn_OK_Click();
  // For the Create dialog, which fills the operand; OperandCreated when it has, OperandCleared when it was cancelled.
  [[nodiscard]] WaveHandle Operand() const { return operand_; }
  [[nodiscard]] const Scope& Range() const { return range_; }
  void OperandCreated();
  void OperandCleared();

  // Picture_Src, Picture_Dest, Picture_Result.
  enum class Picture { Source, Operand, Result };
  void Draw(Picture picture, DeviceContext& context) const;
  // X and Y at a column of any of the pictures, which share one X axis; empty outside.
  [[nodiscard]] std::string ValueText(Picture picture, int column, int width) const;
  [[nodiscard]] std::string StartText() const { return PreviewPositionText(units_, range_.Start); }
  [[nodiscard]] std::string EndText() const { return PreviewPositionText(units_, range_.End); }

  // The firm and the pending result differ: OK would not write what the picture's ghost shows.
  [[nodiscard]] bool Pending() const;
  [[nodiscard]] const CalcFaultCount& FirmFaults() const { return firm_.count; }
  [[nodiscard]] const CalcFaultCount& PendingFaults() const { return pending_.count; }
  // The lines under the pictures.
  [[nodiscard]] std::string FirmText() const;    // how many points were limited
  [[nodiscard]] std::string PendingText() const; // what a press of the button would change; empty: nothing
  [[nodiscard]] std::string OperandText() const; // where the operand came from
  [[nodiscard]] std::string ScaleText() const;   // an example of the operation in the current unit

private:
  struct Result {
    WaveHandle buffer = 0;
    std::vector<std::uint8_t> marks; // one a point
    CalcFaultCount count;
  };
  enum class Origin { None, Clipboard, Created };

  // The points that the range covers.
  [[nodiscard]] std::int32_t Points() const { return static_cast<std::int32_t>(pending_.marks.size()); }
  void Compute();
  [[nodiscard]] std::string CountText(const CalcFaultCount& count) const;
  [[nodiscard]] PreviewWave WaveOf(Picture picture) const;

  EditBuffers& buffers_;
  const SystemInfo& settings_;
  const ConvUnit& units_;
  File32& fileLibrary_;
  Clipboard& clipboard_;
  const ErrMsg& messages_;
  Scope range_;
  std::int32_t first_ = 0; // the first whole point of the range
  WaveHandle operand_ = 0;
  Result firm_;
  Result pending_;
  bool possible_ = true; // the unit's scale allows an operation
  int operation_ = 0;
  Origin origin_ = Origin::None;
  std::int32_t placed_ = 0; // points that the clipboard had
};

// Marks in red the columns that have a marked point, at its code. As many marks as points, which fill the width.
void DrawFaultMarks(DeviceContext& picture, std::span<const std::int16_t> codes, std::span<const std::uint8_t> marks);

} // namespace calder
