#include "app/EditBuffers.h"

#include <algorithm>
#include <utility>

namespace calder {

bool EditBuffers::Allocate() {
  // Neighbours share a page where pages are big: the two that opening a file touches stand together.
  std::array<WaveHandle, 4> big{};
  if (!W_AllocTogether(W_MAX_POINTS, big)) return false;
  edit_ = {big[0], big[2]};
  work_ = big[1];
  create_ = big[3];
  block32_ = W_AllocMemory32(W_MAX_CONTROL_POINTS);
  block16_ = W_AllocMemory(W_MAX_CONTROL_POINTS);
  if (block32_ != 0 && block16_ != 0) return true;
  Free();
  return false;
}

void EditBuffers::Free() {
  for (WaveHandle* handle : {&edit_[0], &edit_[1], &create_, &work_, &block16_}) {
    if (*handle != 0) W_FreeMemory(*handle);
    *handle = 0;
  }
  if (block32_ != 0) W_FreeMemory32(block32_);
  block32_ = 0;
}

void EditBuffers::WarmUp() const {
  for (const WaveHandle handle : {edit_[0], edit_[1], create_, work_}) W_WarmMemory(handle);
}

std::span<const std::int16_t> EditBuffers::Points() const {
  const std::span<const std::int16_t> all = W_Lock(Current());
  return all.first(std::min(all.size(), static_cast<std::size_t>(std::max(settings_.MemorySize, 0))));
}

void EditBuffers::ResetScopes() {
  scope_.fill({0, static_cast<double>(settings_.MemorySize)});
}

void EditBuffers::Save_Undo() {
  W_CopyMemory(Current(), UndoCopy(), 0, 0, settings_.MemorySize);
  UndoScope() = CurrentScope();
  undoMark_ = true;
  undoDisabled_ = false;
}

void EditBuffers::Undo_Swap() {
  undoMark_ = false;
  current_ = 1 - current_;
}

void EditBuffers::TakeLoaded() {
  UndoScope() = CurrentScope();
  current_ = 1 - current_;
  std::swap(work_, edit_[static_cast<std::size_t>(current_)]);
  W_ClearMemory(UndoCopy(), 0, W_MAX_POINTS);
  Reset_Undo();
}

void EditBuffers::Reset_Undo() {
  undoMark_ = true;
  undoDisabled_ = true;
}

void EditBuffers::ClearGrownPoints(std::int32_t oldSize) {
  const std::int32_t grown = settings_.MemorySize - oldSize;
  if (grown <= 0) return;
  for (const WaveHandle handle : {edit_[0], edit_[1], create_, work_}) W_ClearMemory(handle, oldSize, grown);
}

} // namespace calder
