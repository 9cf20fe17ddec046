// The digital view's lanes without their picture: which are selected, copying one onto another, where the lane cursor
// of the keyboard stands, what is said of the lane under the pointer.
//
// Lane 0 is the top one and shows bit 15. A mask of lanes has bit i set for lane i.
#pragma once

#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "editor/PictureTool.h"
#include "editor/WaveView.h"

#include <cstdint>
#include <optional>
#include <string>

namespace calder {

enum class LaneKey { Up, Down, First, Last, Select, Copy, Escape };

class DigitalLanes {
public:
  enum class Pointer { Lanes, Arrow };
  // What a gesture changed: nothing, what is drawn, or the waveform too.
  enum class Outcome { Nothing, Selection, Waveform };

  DigitalLanes(EditBuffers& buffers, const WaveView& mapping, const ErrMsg& messages)
      : buffers_(buffers), mapping_(mapping), messages_(messages) {}

  // Left button alone: the lane under the pointer becomes the only selected one, and the source of a copy until the
  // button is let go; beyond the range between the markers, and more than ten logical pixels from it, nothing is
  // selected any more.
  Outcome Press(const PicturePoint& at);
  // Left button with Ctrl: the lane is added or taken out; outside of the range nothing is selected any more.
  Outcome CtrlPress(const PicturePoint& at);
  // The pointer moved, with a button held or not.
  Outcome Move(const PicturePoint& at);
  void Leave() { hovered_.reset(); }
  // On another lane than the source's, inside the range: that lane takes its bits, as an undoable edit.
  Outcome Release(const PicturePoint& at);
  // The keyboard: the cursor moves, its lane is selected or not; Copy takes it for the source, then for the
  // destination.
  Outcome Press(LaneKey key);

  [[nodiscard]] std::uint16_t SelectedLanes() const { return selected_; }
  [[nodiscard]] std::uint16_t SelectedBits() const;
  [[nodiscard]] Pointer PointerShape() const { return pointer_; }
  // -1 before a key moved it.
  [[nodiscard]] int CursorLane() const { return cursor_; }

  // The copy under way, for its line on the picture.
  struct Drag {
    int source = 0; // lanes
    int destination = 0;
    std::optional<int> fromX; // columns; none: the keyboard's
    std::optional<int> toX;
  };
  // None while no copy is pending or it would go nowhere.
  [[nodiscard]] std::optional<Drag> PendingCopy() const;

  // "copy bit 12 to 10", or "lane 3, bit 12, weight 4096, value 1", or, after a key, the cursor's lane; may be empty.
  [[nodiscard]] std::string LaneText() const;
  // "bits 15, 7-4 = $80F0"; "no bit" when none is selected.
  [[nodiscard]] std::string MaskText() const;

private:
  [[nodiscard]] Outcome SelectOnly(int lane, bool isSource);
  [[nodiscard]] Outcome Clear();
  [[nodiscard]] Outcome Copy(int source, int destination);
  [[nodiscard]] bool InsideScope(double point) const;
  [[nodiscard]] std::string ValueText(int bit, const PicturePoint& at) const;

  EditBuffers& buffers_;
  const WaveView& mapping_;
  const ErrMsg& messages_;
  std::uint16_t selected_ = 0;
  std::optional<int> source_; // lane; none: no copy is pending
  bool sourceByKey_ = false;
  PicturePoint pressedAt_;
  std::optional<PicturePoint> hovered_;
  int cursor_ = -1;
  bool cursorTalks_ = false; // the last word was a key's
  Pointer pointer_ = Pointer::Lanes;
};

} // namespace calder
