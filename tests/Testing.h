// What every test uses: GoogleTest, the library's usual headers, and values compared several at once.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <numbers>
#include <numeric>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace calder {

// The values as one text with blanks between them, numbers with 15 digits: one line compares and shows them all.
template <class... Values>
std::string Texts(const Values&... values) {
  std::ostringstream text;
  text.precision(15);
  text << std::boolalpha;
  const char* separator = "";
  ((text << separator << values, separator = " "), ...);
  return text.str();
}

} // namespace calder
