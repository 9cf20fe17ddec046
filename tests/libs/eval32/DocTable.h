// Reads the rows of a table in a document: the cells of those tables whose header has the given first cell.
#pragma once

#include "Testing.h"

namespace calder {

// A cell's text without its blanks and, where it is code, without its marks; "\|" stands for "|".
inline std::string CellText(std::string cell) {
  const auto strip = [&cell](const char* what) {
    const std::size_t first = cell.find_first_not_of(what);
    cell = first == std::string::npos ? "" : cell.substr(first, cell.find_last_not_of(what) + 1 - first);
  };
  strip(" ");
  if (cell.size() > 1 && cell.front() == '`' && cell.back() == '`') cell = cell.substr(1, cell.size() - 2);
  return cell;
}

inline std::vector<std::vector<std::string>> DocTable(const std::string& document, const std::string& firstHeader) {
  std::ifstream file(std::string(CALDER_SOURCE_DIR) + "/docs/" + document);
  std::vector<std::vector<std::string>> rows;
  bool isInside = false;
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with("|")) {
      isInside = false;
      continue;
    }
    std::vector<std::string> cells;
    std::string cell;
    for (std::size_t i = 1; i < line.size(); ++i) {
      if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '|')
        cell += line[++i];
      else if (line[i] == '|')
        cells.push_back(CellText(std::exchange(cell, {})));
      else
        cell += line[i];
    }
    if (isInside && !cells.empty() && !cells[0].starts_with("---")) rows.push_back(cells);
    if (!cells.empty() && cells[0] == firstHeader) isInside = true;
  }
  return rows;
}

} // namespace calder
