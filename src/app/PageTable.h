// The pages from which the Create dialog builds a waveform: each fills an area with a standard function or an
// expression. The table lives as long as the program; list files and printing read it too.
#pragma once

#include "app/Messages.h"
#include "platform/WaveLimits.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace calder {

// What a page is filled with. The numbers stand in list files.
enum PageFunction : std::int16_t {
  kFunctionSine = 0,
  kFunctionTriangle = 1,
  kFunctionSquare = 2,
  kFunctionNoise = 3,
  kFunctionDc = 4,
  kFunctionExpression = 5,
};
inline constexpr int kPageFunctions = 6;

// "Sin", "Triangle", ...; empty for a number that is no function.
[[nodiscard]] const char* PageFunctionName(int function, Language language);

// Flags: 0 false, -1 true.
inline constexpr std::int16_t kPageTrue = -1;

struct CreatePage {
  static constexpr std::size_t kConstantsLimit = 944; // characters
  static constexpr std::size_t kExpressionLimit = 1024;

  std::int16_t PageNo = 0;   // of a page that came from a list file
  std::int16_t Visited = 0;  // somebody touched the page, or it came from a file
  std::int16_t Valid = 0;    // takes part in All Page OK
  std::int16_t Function = 0; // a PageFunction
  double StartX = 0;         // points; 0 <= StartX <= EndX <= MemorySize
  double EndX = 0;
  double Offset = 0;              // code
  double Size = 0;                // points, EndX - StartX
  double Amplitude = W_CODE_SPAN; // codes, peak to peak
  double Period = 1;              // periods over the area, >= 0
  double Phase = 0;               // degrees, -360 to 360
  double Symmetry = 50;           // percent
  double Duty = 50;               // percent
  double Transition = 0;          // percent
  std::string Constants;          // UTF-8 as PageText makes it
  std::string Expression;

  [[nodiscard]] bool IsVisited() const { return Visited != 0 || Valid != 0; }
  void SetArea(double start, double end) {
    StartX = start;
    EndX = end;
    Size = end - start;
  }
  friend bool operator==(const CreatePage&, const CreatePage&) = default;
};

// A text as a page keeps it: at most `limit` characters, every control character (line breaks too) a blank, no blanks
// at the end. A position in the result is the same position in `text`.
[[nodiscard]] std::string PageText(std::string_view text, std::size_t limit);

class PageTable {
public:
  static constexpr int kPages = 203; // 0 is the Operate dialog's, 201 and 202 are not used
  static constexpr int kFirst = 1;   // the user's pages
  static constexpr int kLast = 200;

  // REQUIRES: 0 <= page < kPages
  [[nodiscard]] CreatePage& operator[](int page) { return pages_[static_cast<std::size_t>(page)]; }
  [[nodiscard]] const CreatePage& operator[](int page) const { return pages_[static_cast<std::size_t>(page)]; }

  // The first and the last user's page that takes part in All Page OK; 0: there is none.
  [[nodiscard]] int FirstValid() const;
  [[nodiscard]] int LastValid() const;
  // The number of the user's pages that do.
  [[nodiscard]] int CountValid() const;

private:
  std::array<CreatePage, kPages> pages_;
};

} // namespace calder
