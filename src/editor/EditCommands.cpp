#include "editor/EditCommands.h"
#include "platform/WholePoint.h"

#include <algorithm>

namespace calder {
namespace {

std::int32_t WholeUp(double points) {
  return static_cast<std::int32_t>(WholePoint(points));
}

} // namespace

void EditCommands::Copy() {
  if (box_ != nullptr) {
    if (const std::string selected = box_->Selected(); !selected.empty()) textClipboard_ = selected;
    return;
  }
  program_.buffers.Save_Undo();
  static_cast<void>(CopyRange());
}

void EditCommands::Cut() {
  if (box_ != nullptr) {
    Copy();
    Delete();
    return;
  }
  // A range that could not be copied is not cut away.
  if (CopyRange()) DeleteRange();
}

void EditCommands::Paste() {
  if (box_ != nullptr) {
    box_->Replace(textClipboard_);
    return;
  }
  EditBuffers& buffers = program_.buffers;
  buffers.Save_Undo();
  Scope& scope = buffers.CurrentScope();
  const std::int32_t start = WholeUp(scope.Start);
  std::int32_t placed = 0;
  const std::int32_t result =
      program_.fileLibrary.GetClipBoard(program_.desktop.clipboard, buffers.Current(), start, WholeUp(scope.Length()),
                                        program_.settings.MemorySize, placed);
  if (result != 0) {
    program_.messages.ErrorBox(result);
    return;
  }
  scope.End = start + placed;
}

void EditCommands::Delete() {
  if (box_ != nullptr) {
    if (!box_->Selected().empty()) box_->Replace({});
    return;
  }
  DeleteRange();
}

void EditCommands::Undo() {
  if (CanUndo()) program_.buffers.Undo_Swap();
}

std::string EditCommands::UndoCaption() const {
  return program_.buffers.UndoMark() ? program_.messages.Pick("元に戻す(&U)", "&Undo")
                                     : program_.messages.Pick("元に戻すを取り消す(&R)", "&Redo");
}

bool EditCommands::CopyRange() {
  const EditBuffers& buffers = program_.buffers;
  const Scope& scope = buffers.CurrentScope();
  const std::int32_t start = WholeUp(scope.Start);
  // Where both are rounded up the last point may lie behind the waveform's end.
  const std::int32_t count = std::min(WholeUp(scope.Length()), std::max(program_.settings.MemorySize - start, 0));
  const std::int32_t result =
      program_.fileLibrary.SetClipBoard(program_.desktop.clipboard, buffers.Current(), start, count);
  if (result != 0) program_.messages.ErrorBox(result);
  return result == 0;
}

void EditCommands::DeleteRange() {
  EditBuffers& buffers = program_.buffers;
  buffers.Save_Undo();
  const Scope& scope = buffers.CurrentScope();
  W_DeleteWave(buffers.Current(), scope.Start, scope.Length(), program_.settings.MemorySize);
}

} // namespace calder
