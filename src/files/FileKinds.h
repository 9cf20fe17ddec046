// What differs between the kinds of files in the File menus: one row a kind.
#pragma once

#include "app/RememberedNames.h"

#include <string>
#include <string_view>

namespace calder {

// File kinds; any other number counts as Kind_Wave.
enum FileKind : int {
  Kind_List = 0,
  Kind_Table = 2,
  Kind_Pwf = 4,
  Kind_System = 5,
  Kind_Wave = 6,
  Kind_Import = 7,
  // The forms of a waveform file that the dialogs of Kind_Wave lead to.
  Kind_RealText = 16, // opened as text of real numbers
  Kind_WaveText = 17, // saved as text of codes
};

// Entries "text|pattern" joined by "|", as FileDialogRequest has them.
struct FilterTexts {
  const char* japanese = nullptr; // none: no dialog is shown, the reader has its own
  const char* english = nullptr;
};

struct FileKindRow {
  FileKind kind;
  FilterTexts openFilter{};
  FilterTexts saveFilter{};
  const char* defaultExtension = "";
  std::string_view extensions{}; // accepted, joined by "|"; empty: reader and writer look for themselves
  std::string RememberedNames::*remembered = nullptr; // offered first
  // How the remembered name is offered for saving.
  enum class Offer { AsItIs, WithoutExtension, WithDefaultExtension } offer = Offer::AsItIs;
  int otherFilter = 1;    // the entry preset for opening when the remembered name has another extension
  int realTextFilter = 0; // the entry that opens as Kind_RealText; 0: none

  int openRefusal = 0; // the message for another extension; 0: none is shown
  int saveRefusal = 0;
  // The result of a reader or writer that is shown with the path and keeps the remembered name. 0: they show their own
  // messages, and a failure keeps the new name.
  int readFailure = 0;
  int writeFailure = 0;
  bool openRemembers = false; // the path becomes the remembered name
  bool saveRemembers = false;

  bool emptyOpenIsCancelled = false; // an empty path ends the command before its extension is looked at
  bool emptySaveIsCancelled = false;
  bool isWaveform = false; // window title and default folder follow it
};

[[nodiscard]] const FileKindRow& RowOf(int kind);
[[nodiscard]] bool Accepts(const FileKindRow& row, std::string_view path);

} // namespace calder
