#include "print/VersionText.h"

#include <sys/stat.h>

#include <cstddef>
#include <exception>
#include <iomanip>
#include <locale>
#include <sstream>

namespace calder {
namespace {

// The name of the month by strftime's conversion, in the locale of the environment's date formats.
std::string Month(const std::tm& day, char conversion) {
  std::ostringstream text;
  try {
    text.imbue(std::locale(""));
  } catch (const std::exception&) {
    text.imbue(std::locale::classic()); // the environment names a locale that the system lacks
  }
  const char format[] = {'%', conversion, '\0'};
  text << std::put_time(&day, format);
  std::string name = text.str();
  return name.erase(0, name.find_first_not_of(' ')); // some languages pad them
}

// The first `count` characters of a UTF-8 text.
std::string FirstCharacters(const std::string& text, int count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    const bool starts = (static_cast<unsigned char>(text[end]) & 0xC0U) != 0x80U;
    if (starts && count-- == 0) break;
  }
  return text.substr(0, end);
}

} // namespace

std::string BuildDateText(const std::tm& day) {
  constexpr int kMay = 4;
  constexpr int kJune = 5;
  constexpr int kJuly = 6;
  constexpr int kSeptember = 8;
  constexpr int kYearZero = 1900;
  std::string month;
  switch (day.tm_mon) {
  case kMay: month = Month(day, 'b') + " "; break;
  case kJune:
  case kJuly: month = Month(day, 'B') + " "; break;
  case kSeptember: month = FirstCharacters(Month(day, 'B'), 4) + "."; break;
  default: month = Month(day, 'b') + "."; break;
  }
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << month << day.tm_mday << ',' << std::setw(4) << std::setfill('0') << day.tm_year + kYearZero;
  return text.str();
}

std::string Format_BuildDate(const std::string& path) {
  struct stat status {};
  std::tm day{};
  if (stat(path.c_str(), &status) != 0 || localtime_r(&status.st_mtime, &day) == nullptr) return {};
  return BuildDateText(day);
}

const char* ProgramVersion() {
  return CALDER_VERSION;
}

VersionText Make_VersionText(Language language, const std::string& program) {
  const bool english = language == Language::English;
  return {english ? "Version Information" : "ﾊﾞｰｼﾞｮﾝ情報",
          english ? "Orvo Calder  ARBITRARY WAVEFORM EDITOR" : "Orvo Calder  任意波形作成ｿﾌﾄｳｴｱ",
          std::string("Version ") + ProgramVersion() + ".0  " + Format_BuildDate(program),
          english ? "© 2026 the makers of Orvo Calder. All rights reserved."
                  : "© 2026 Orvo Calder 製作者. All rights reserved."};
}

} // namespace calder
