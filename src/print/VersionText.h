// What the version dialog says about the program.
#pragma once

#include "app/Messages.h"

#include <ctime>
#include <string>

namespace calder {

struct VersionText {
  std::string caption;
  std::string product;
  std::string version;
  std::string notice;
};

// The program's version: major, minor and revision.
[[nodiscard]] const char* ProgramVersion();

// program: the path of the program's own file, whose date stands for the build's.
[[nodiscard]] VersionText Make_VersionText(Language language, const std::string& program);

// The day on which the file was changed last, as "Mar.5,2026": short months in full, the others cut, with names in the
// language of the system's date formats. Empty when the file cannot be found.
[[nodiscard]] std::string Format_BuildDate(const std::string& path);
// The same for a day of the calendar.
[[nodiscard]] std::string BuildDateText(const std::tm& day);

} // namespace calder
