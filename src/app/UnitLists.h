// The choices of the unit lists as the System Setup dialog shows them and files and reports name them.
#pragma once

#include "app/Messages.h"

namespace calder {

// unit: 0 points, 1 seconds, 2 the user's.
[[nodiscard]] inline const char* XUnitListText(int unit, Language language) {
  const bool english = language == Language::English;
  switch (unit) {
  case 1: return english ? "Time" : "時間";
  case 2: return english ? "User Unit" : "ｶｽﾀﾑ";
  default: return english ? "Address" : "ｱﾄﾞﾚｽ";
  }
}

// unit: 0 codes, 1 volts, 2 the user's.
[[nodiscard]] inline const char* YUnitListText(int unit, Language language) {
  const bool english = language == Language::English;
  switch (unit) {
  case 1: return english ? "Voltage" : "電圧";
  case 2: return english ? "User Unit" : "ｶｽﾀﾑ";
  default: return english ? "Data" : "ﾃﾞｰﾀ";
  }
}

} // namespace calder
