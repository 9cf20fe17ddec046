#include "files/TableFile.h"

#include "app/Messages.h"
#include "files/TableText.h"
#include "libs/sysinf32/SystemInfo.h"
#include "platform/posix/WholeFile.h"

#include <array>
#include <span>
#include <vector>

namespace calder {

std::int32_t TableFile::Write_Table(const std::string& path) const {
  if (points_.SplineCount == 0) return 0;
  const std::string text = ComposeTable(points_, units_, SeparatorOf(path));
  const std::array<std::span<const std::byte>, 1> pieces{std::as_bytes(std::span(text))};
  return ReplaceFile(path, pieces);
}

std::int32_t TableFile::Read_Table(const std::string& path) {
  std::vector<char> content;
  if (ReadWholeFile(path, content) != 0) {
    messages_.ErrorBox(kMsgReadFailed);
    return FILE_READ_FAILED;
  }
  const TableContent table = ParseTable({content.data(), content.size()}, units_);
  const std::size_t taken = points_.Replace(table.points, settings_.MemorySize);
  if (taken < table.points.size()) {
    messages_.ErrorBoxText(std::string(messages_.Pick("制御点が多すぎます。読み込んだ点数: ",
                                                      "There are too many control points. Points that were read: ")) +
                           std::to_string(taken));
  } else if (table.faultLine > 0) {
    messages_.ErrorBoxText(messages_.MessageText(kMsgReadFailed) + messages_.Pick("行 ", "Line ") +
                           std::to_string(table.faultLine) +
                           messages_.Pick(": X と Y の組がありません。これより前の点を読み込みました。",
                                          ": no pair of X and Y. The points before it were read."));
  }
  return 0;
}

} // namespace calder
