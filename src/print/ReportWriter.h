// The pages of a text report: lines of a label and a value from the top margin down, a new page where the next line
// does not fit.
#pragma once

#include "print/Paper.h"
#include "print/PrintSettings.h"

#include <string>

namespace calder {

class ReportWriter {
public:
  // Starts at the top margin of the paper's first page.
  ReportWriter(Paper& paper, const PrintMargins& margins);

  [[nodiscard]] double LeftMargin() const { return x_; } // millimetres
  [[nodiscard]] double LineHeight() const { return lineHeight_; }

  // Goes on to a new page when an item of that height (millimetres) does not fit any more.
  void Check_NewPage(double height);
  // A line of its own at x.
  void Print_Heading(double x, double height, const std::string& text);
  // A label at x and its value beside it.
  void Print_Data(double x, double height, const std::string& label, const std::string& value);
  // The same with a value of several lines, broken at CR LF.
  void Print_Data_Const(double x, double height, const std::string& label, const std::string& text);
  void Print_Data_Expr(double x, double height, const std::string& label, const std::string& text);
  // Without a look at the end of the page.
  void Print_Line(const std::string& label, const std::string& value = {});

  static constexpr double kValueColumn = 60; // millimetres from the label to its value

private:
  void PrintLines(double x, double height, const std::string& label, const std::string& text);

  Paper& paper_;
  const PrintMargins margins_;
  const double x_;
  const double lineHeight_;
  double y_;
  double remaining_;
};

} // namespace calder
