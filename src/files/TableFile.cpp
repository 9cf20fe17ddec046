#include "files/TableFile.h"

#include "app/Messages.h"
#include "files/TableText.h"
#include "libs/sysinf32/SystemInfo.h"
#include "platform/posix/WholeFile.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace calder {

std::int32_t TableFile::Write_Table(const std::string& path) const {
  if (points_.SplineCount == 0) return 0;
  const std::string text = ComposeTable(points_, units_, SeparatorOf(path));
  const std::array<std::span<const std::byte>, 1> pieces{std::as_bytes(std::span(text))};
  return ReplaceFile(path, pieces);
}

bool TableFile::ReadFeedsAsLineEnds(const std::string& path) const {
  return messages_.WarningBox(
             "[" + path + "]\r" +
             messages_.Pick("この表の行は LF だけで終わっています。そのまま読むと行の終わりで数値がつながります。"
                            "LF を行の終わりとして読みますか？",
                            "The lines of this table end in line feeds alone, which separate no numbers: read as it "
                            "stands, numbers run together. Read the line feeds as line ends?")) == BoxAnswer::Yes;
}

std::int32_t TableFile::Read_Table(const std::string& path) {
  std::vector<char> content;
  if (ReadWholeFile(path, content) != 0) {
    messages_.ErrorBox(kMsgReadFailed);
    return FILE_READ_FAILED;
  }
  std::string_view text(content.data(), content.size());
  std::string ended;
  if (EndsLinesInFeedsAlone(text) && ReadFeedsAsLineEnds(path)) {
    ended = WithLineEnds(text);
    text = ended;
  }
  const TableContent table = ParseTable(text, units_);
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
