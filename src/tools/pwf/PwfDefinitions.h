// "pwf.fnc": the functions that the parameter-variable waveform dialog offers. docs/file-formats.md has the layout.
#pragma once

#include "app/Messages.h"
#include "app/PwfTable.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

inline constexpr const char* kPwfDefinitions = "pwf.fnc";

enum class PwfFaultReason {
  NoDefinitionLine, // the file has no line "[definition]"
  ShortHeader,      // one of "PWF ", "VER=" and "NUM=" is missing
  TooManyFunctions,
  FieldCount,
  ParamItems, // not one to five parameters of five items
  NoNumber,   // `word` belongs in a number's place
  NoStep,     // of the parameter `word`, as are the next
  EmptyRange,
  ValueOutside,
  StepsOutside,
  Formula, // `word` is the sentence
};

struct PwfFault {
  int line = 0; // from 1; 0: the whole file
  PwfFaultReason reason = PwfFaultReason::FieldCount;
  std::string word;
};

// As a sentence that begins with the file and the line.
[[nodiscard]] std::string PwfFaultText(const PwfFault& fault, const ErrMsg& messages);

struct PwfReading {
  std::vector<PwfFault> faults;                          // in the order of the lines
  std::array<int, PwfTable::kFunctions> lines{};         // where the functions were defined; 0: not in this file
  std::array<std::string, PwfTable::kFunctions> remarks; // the comment right before each, UTF-8
};

// Reads the definitions in their order into the table. An entry that the text does not define keeps what it held; one
// whose line is faulty is undefined, so that those after it keep their places.
[[nodiscard]] PwfReading Read_Fnc(std::string_view text, Language language, PwfTable& table);

} // namespace calder
