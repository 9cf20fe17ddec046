// The numbers of the tools.
#pragma once

namespace calder {

// Window numbers: the selected tool, the print mode and the file kind count alike.
enum ToolNo : int {
  kToolCreate = 0,
  kToolElastic = 1,
  kToolSpline = 2,
  kToolCalc = 3,
  kToolPwf = 4,
  kToolSystem = 5,
  kToolNone = 6,
};

} // namespace calder
