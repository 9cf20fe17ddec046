// The examples in docs/expressions.md.
#include "libs/eval32/DocTable.h"
#include "libs/eval32/eval32.h"

namespace calder::examples_test {

// A row of the second table ends with the code and the position of a fault in place of a value.
TEST(Examples, OfTheDocumentHold) {
  auto rows = DocTable("expressions.md", "expression");
  ASSERT_GE(rows.size(), 40U);
  const auto faults = DocTable("expressions.md", "faulty text");
  ASSERT_GE(faults.size(), 10U);
  rows.insert(rows.end(), faults.begin(), faults.end());
  for (const auto& row : rows) {
    Evaluator evaluator;
    double value = 0;
    const bool isFault = row.size() == 4;
    EXPECT_EQ(evaluator.EvalOneL(row[0], std::stoi(row[1]), value), isFault ? std::stoi(row[2]) : 0) << row[0];
    EXPECT_EQ(evaluator.LastFault().position, isFault ? std::stoul(row[3]) : 0) << row[0];
    EXPECT_DOUBLE_EQ(value, isFault ? 0 : std::stod(row[2])) << row[0];
  }
}

} // namespace calder::examples_test
