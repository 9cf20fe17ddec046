// What the user chose for printing; it lives as long as the program.
#pragma once

#include "app/Messages.h"

#include <array>
#include <string>

namespace calder {

struct PrintMargins {
  static constexpr int kLeast = 5; // millimetres
  static constexpr int kMost = 100;

  int left = kLeast;
  int top = kLeast;
  int bottom = kLeast;
};

struct PrintFont {
  std::string name;
  double size = 10; // points
  bool bold = false;
  bool italic = false;
  bool strikethrough = false;
  bool underline = false;

  friend bool operator==(const PrintFont&, const PrintFont&) = default;
};

struct PrintSettings {
  explicit PrintSettings(Language language) { font.name = language == Language::English ? "Arial" : "ＭＳ ゴシック"; }

  PrintMargins margins;
  PrintFont font;
};

} // namespace calder
