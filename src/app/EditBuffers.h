// The waveform being edited, its undo copy, the ranges that go with them, and the program's other long-lived buffers.
//
// 1. The big buffers hold 524288 points whatever the memory size; only the first MemorySize points are the waveform.
// 2. Exactly one of the two edit buffers is current; the other one is the undo copy.
// 3. Each edit buffer has a scope (the selected range) that travels with it.
#pragma once

#include "libs/sysinf32/SystemInfo.h"
#include "libs/wavelb32/wavelb32.h"

#include <array>
#include <cstdint>
#include <span>

namespace calder {

struct Scope {
  double Start = 0; // marker A, in points
  double End = 0;   // marker B, in points
  [[nodiscard]] double Length() const { return End - Start; }
  friend bool operator==(const Scope&, const Scope&) = default;
};

class EditBuffers {
public:
  explicit EditBuffers(const SystemInfo& settings) : settings_(settings) {}
  ~EditBuffers() { Free(); }
  EditBuffers(const EditBuffers&) = delete;
  EditBuffers& operator=(const EditBuffers&) = delete;

  // False: out of memory (what was allocated is freed).
  [[nodiscard]] bool Allocate();
  void Free();
  // Touches the big buffers, so that the first edit is as fast as the later ones; for when there is time.
  void WarmUp() const;

  [[nodiscard]] int CurrentIndex() const { return current_; }
  [[nodiscard]] WaveHandle Current() const { return edit_[static_cast<std::size_t>(current_)]; }
  // The current waveform: MemorySize points, or none before Allocate.
  [[nodiscard]] std::span<const std::int16_t> Points() const;
  [[nodiscard]] WaveHandle UndoCopy() const { return edit_[static_cast<std::size_t>(1 - current_)]; }
  [[nodiscard]] WaveHandle Create() const { return create_; }
  [[nodiscard]] WaveHandle Work() const { return work_; }
  [[nodiscard]] WaveHandle Block32() const { return block32_; }
  [[nodiscard]] WaveHandle Block16() const { return block16_; }
  [[nodiscard]] Scope& CurrentScope() { return scope_[static_cast<std::size_t>(current_)]; }
  [[nodiscard]] const Scope& CurrentScope() const { return scope_[static_cast<std::size_t>(current_)]; }
  [[nodiscard]] Scope& UndoScope() { return scope_[static_cast<std::size_t>(1 - current_)]; }
  // Both scopes.
  void ResetScopes();

  // Before an edit: the current waveform and its scope become the undo step.
  void Save_Undo();
  // Swaps the waveform with the undo step.
  void Undo_Swap();
  // The work buffer, with a whole new waveform in it, takes the place of the undo copy and becomes the current one; the
  // old one is cleared; the scope stays. No undo step is left.
  void TakeLoaded();
  // No undo step any more.
  void Reset_Undo();
  // True: the next press undoes an edit; false: it undoes an undo.
  [[nodiscard]] bool UndoMark() const { return undoMark_; }
  [[nodiscard]] bool UndoDisabled() const { return undoDisabled_; }

  // The memory grew from oldSize points: the points that came with it are cleared in all big buffers.
  void ClearGrownPoints(std::int32_t oldSize);

private:
  const SystemInfo& settings_;
  std::array<WaveHandle, 2> edit_{};
  WaveHandle create_ = 0;
  WaveHandle work_ = 0;
  WaveHandle block32_ = 0;
  WaveHandle block16_ = 0;
  std::array<Scope, 2> scope_;
  int current_ = 0;
  bool undoMark_ = true;
  bool undoDisabled_ = true;
};

} // namespace calder
