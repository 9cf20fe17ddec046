// The main window's commands, one row each: menus, tool bar, tips and keys come from here.
#pragma once

#include "app/Messages.h"
#include "editor/Changes.h"

#include <span>

namespace calder {

class Editor;

enum class Command {
  FileNew,
  FileOpen,
  FileSave,
  FileSaveAs,
  FileSaveAs2,
  FileImport,
  Print,
  Export,
  Exit,
  Undo,
  Cut,
  Copy,
  Paste,
  Delete,
  Create,
  Compress,
  Spline,
  Compute,
  Pwf,
  System,
  Grid,
  Version,
};

struct WindowCommand {
  Command id;
  const char* action; // the menu entry's object name
  const char* japanese;
  const char* english;
  const char* keys;      // the shortcut, the same in both languages; null: none
  const char* icon;      // null: none
  const char* button;    // the tool button that stands for the entry; null: none
  void (*call)(Editor&); // null: not the editor's, whoever opens the window for it connects the entry
  Changes changes;       // always; what only a success changes is marked by the call
};

// In the order of the enumeration.
[[nodiscard]] std::span<const WindowCommand> WindowCommands();
[[nodiscard]] const WindowCommand& CommandRow(Command id);

} // namespace calder
