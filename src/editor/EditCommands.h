// Undo, Cut, Copy, Paste and Delete: on the waveform's selected range, or on a text box that has the focus.
#pragma once

#include "app/Program.h"

#include <string>

namespace calder {

// A text box with a selection, as the edit commands see it.
class TextSelection {
public:
  virtual ~TextSelection() = default;
  [[nodiscard]] virtual std::string Selected() const = 0;
  virtual void Replace(const std::string& text) = 0;
};

class EditCommands {
public:
  explicit EditCommands(Program& program) : program_(program) {}

  // What has the focus: a text box (the commands then work on its text) or none (on the waveform). The box must outlive
  // this object or be taken back.
  void SetTextFocus(TextSelection* box) { box_ = box; }

  // Each shows the library's message when it fails, and leaves the state before it as the undo step.
  void Copy();
  void Cut();
  void Paste();
  void Delete();
  void Undo();
  [[nodiscard]] bool CanUndo() const { return !program_.buffers.UndoDisabled(); }
  // The caption of the Undo entry in the current language.
  [[nodiscard]] std::string UndoCaption() const;

private:
  [[nodiscard]] bool CopyRange();
  void DeleteRange();

  Program& program_;
  TextSelection* box_ = nullptr;
  std::string textClipboard_;
};

} // namespace calder
