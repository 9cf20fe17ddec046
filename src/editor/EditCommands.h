// Undo, Cut, Copy, Paste and Delete on the waveform's selected range.
#pragma once

#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "libs/file32/file32.h"

#include <string>

namespace calder {

class Clipboard;

// A text box that Cut, Copy, Paste and Delete work on in place of the waveform.
class TextTarget {
public:
  virtual ~TextTarget() = default;
  [[nodiscard]] virtual std::string SelectedText() const = 0;
  virtual void ReplaceSelection(const std::string& text) = 0;
};

class EditCommands {
public:
  EditCommands(EditBuffers& buffers, const SystemInfo& settings, File32& fileLibrary, Clipboard& clipboard,
               const ErrMsg& messages)
      : buffers_(buffers), settings_(settings), fileLibrary_(fileLibrary), clipboard_(clipboard), messages_(messages) {}

  // While it is not null the four work on its text, with a clipboard of their own beside the desktop's.
  void SetTextTarget(TextTarget* target) { text_ = target; }
  // Each shows the library's message when it fails, and leaves the state before it as the undo step.
  void Copy();
  void Cut();
  void Paste();
  void Delete();
  void Undo();
  [[nodiscard]] bool CanUndo() const { return !buffers_.UndoDisabled(); }
  // The caption of the Undo entry in the current language.
  [[nodiscard]] std::string UndoCaption() const;

private:
  [[nodiscard]] bool CopyRange();
  void CopyText();

  EditBuffers& buffers_;
  const SystemInfo& settings_;
  File32& fileLibrary_;
  Clipboard& clipboard_;
  const ErrMsg& messages_;
  TextTarget* text_ = nullptr;
  std::string textClipboard_;
};

} // namespace calder
