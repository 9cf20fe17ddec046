// The examples in docs/expressions.md.
#include "libs/eval32/DocTable.h"
#include "libs/eval32/eval32.h"

#include <gtest/gtest.h>

namespace calder {
namespace {

TEST(Examples, OfTheDocumentHold) {
  const auto rows = DocTable("expressions.md", "expression");
  ASSERT_GE(rows.size(), 40U);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 3U) << row[0];
    Evaluator evaluator;
    double value = 0;
    EXPECT_EQ(evaluator.EvalOneL(row[0], std::stoi(row[1]), value), 0)
        << row[0] << EvalReasonText(evaluator.LastFault()).english;
    EXPECT_DOUBLE_EQ(value, std::stod(row[2])) << row[0];
  }
}

TEST(Examples, OfFaultsHold) {
  const auto rows = DocTable("expressions.md", "faulty text");
  ASSERT_GE(rows.size(), 10U);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 4U) << row[0];
    Evaluator evaluator;
    double value = 0;
    EXPECT_EQ(evaluator.EvalOneL(row[0], std::stoi(row[1]), value), std::stoi(row[2])) << row[0];
    EXPECT_EQ(evaluator.LastFault().position, std::stoul(row[3])) << row[0];
  }
}

} // namespace
} // namespace calder
