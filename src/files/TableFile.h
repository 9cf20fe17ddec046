// Control points as a file: text tables, see TableText.h.
#pragma once

#include "app/SplinePoints.h"

#include <cstdint>
#include <string>

namespace calder {

class ConvUnit;
class ErrMsg;
struct SystemInfo;

class TableFile {
public:
  // What they refer to must outlive this object.
  TableFile(SplinePoints& points, const ConvUnit& units, const SystemInfo& settings, const ErrMsg& messages)
      : points_(points), units_(units), settings_(settings), messages_(messages) {}

  // 0, also for an empty list, of which no file is made; 72: not written, the old file is as it was.
  std::int32_t Write_Table(const std::string& path) const;
  // The points become those of the file, up to the first place that holds none; a message names the line when the file
  // goes on after it, or when it has more points than there is room for. 0; 71: nothing could be read, the points are
  // as they were, and the failure was reported.
  std::int32_t Read_Table(const std::string& path);

private:
  // Asks the user; false: to the letter.
  [[nodiscard]] bool ReadFeedsAsLineEnds(const std::string& path) const;

  SplinePoints& points_;
  const ConvUnit& units_;
  const SystemInfo& settings_;
  const ErrMsg& messages_;
};

} // namespace calder
