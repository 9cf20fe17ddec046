// The choices of the unit lists as the System Setup dialog shows them and files and reports name them.
#pragma once

#include "app/Messages.h"
#include "libs/sysinf32/SystemInfo.h"

namespace calder {

// unit: an XUnitNo.
[[nodiscard]] inline const char* XUnitListText(int unit, Language language) {
  const bool english = language == Language::English;
  switch (unit) {
  case kXSeconds: return english ? "Time" : "時間";
  case kXUser: return english ? "User Unit" : "ｶｽﾀﾑ";
  default: return english ? "Address" : "ｱﾄﾞﾚｽ";
  }
}

// unit: a YUnitNo.
[[nodiscard]] inline const char* YUnitListText(int unit, Language language) {
  const bool english = language == Language::English;
  switch (unit) {
  case kYVolts: return english ? "Voltage" : "電圧";
  case kYUser: return english ? "User Unit" : "ｶｽﾀﾑ";
  default: return english ? "Data" : "ﾃﾞｰﾀ";
  }
}

} // namespace calder
