#include "editor/EditCommands.h"
#include "libs/file32/file32.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <utility>

namespace calder {
namespace {

std::int32_t WholeUp(double points) {
  return static_cast<std::int32_t>(WholePoint(points));
}

} // namespace

void EditCommands::CopyText() {
  if (std::string selected = text_->SelectedText(); !selected.empty()) textClipboard_ = std::move(selected);
}

void EditCommands::Copy() {
  if (text_ != nullptr) {
    CopyText();
    return;
  }
  buffers_.Save_Undo();
  static_cast<void>(CopyRange());
}

void EditCommands::Cut() {
  if (text_ != nullptr) {
    CopyText();
    Delete();
    return;
  }
  // A range that could not be copied is not cut away.
  if (CopyRange()) Delete();
}

void EditCommands::Paste() {
  if (text_ != nullptr) {
    text_->ReplaceSelection(textClipboard_);
    return;
  }
  buffers_.Save_Undo();
  Scope& scope = buffers_.CurrentScope();
  const std::int32_t start = WholeUp(scope.Start);
  std::int32_t placed = 0;
  const std::int32_t result = fileLibrary_.GetClipBoard(clipboard_, buffers_.Current(), start, WholeUp(scope.Length()),
                                                        settings_.MemorySize, placed);
  if (result != 0) {
    messages_.ErrorBox(result);
    return;
  }
  scope.End = start + placed;
}

void EditCommands::Undo() {
  if (CanUndo()) buffers_.Undo_Swap();
}

std::string EditCommands::UndoCaption() const {
  return buffers_.UndoMark() ? messages_.Pick("元に戻す(&U)", "&Undo")
                             : messages_.Pick("元に戻すを取り消す(&R)", "&Redo");
}

bool EditCommands::CopyRange() {
  const Scope& scope = buffers_.CurrentScope();
  const std::int32_t start = WholeUp(scope.Start);
  // Where both are rounded up the last point may lie beyond the waveform's end.
  const std::int32_t count = std::min(WholeUp(scope.Length()), std::max(settings_.MemorySize - start, 0));
  const std::int32_t result = fileLibrary_.SetClipBoard(clipboard_, buffers_.Current(), start, count);
  if (result != 0) messages_.ErrorBox(result);
  return result == 0;
}

void EditCommands::Delete() {
  if (text_ != nullptr) {
    text_->ReplaceSelection({});
    return;
  }
  buffers_.Save_Undo();
  const Scope& scope = buffers_.CurrentScope();
  W_DeleteWave(buffers_.Current(), scope.Start, scope.Length(), settings_.MemorySize);
}

} // namespace calder
