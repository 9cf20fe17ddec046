// Dragging in the preview of a page: where the pointer went down decides what the movement changes.
//
// Pixels are logical ones: a drag of the same length does the same on every screen.
#pragma once

#include "app/PageTable.h"

namespace calder {

class PreviewDrag {
public:
  enum class Mode {
    None,
    Size,  // top and bottom quarter: period and amplitude
    Shift, // middle half: phase and offset
    Shape, // right part of the middle half of a triangle or square: symmetry, or duty and transition
  };

  // What a press at that pixel of a picture of that size would begin. None: expressions cannot be dragged.
  [[nodiscard]] static Mode ModeAt(const CreatePage& page, double x, double y, double width, double height);

  void Press(const CreatePage& page, double x, double y, double width, double height);
  // The pointer moved to that pixel. The phase stays within its box's range by whole turns, percentages stop at 0 and
  // 100, a period below 0.1 is not taken. False: nothing is being dragged.
  bool Move(CreatePage& page, double x, double y);
  void Release() { mode_ = Mode::None; }

private:
  Mode mode_ = Mode::None;
  double lastX_ = 0;
  double lastY_ = 0;
  double horizontalStep_ = 0;
  double verticalStep_ = 0;
};

} // namespace calder
