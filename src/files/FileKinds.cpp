#include "files/FileKinds.h"

#include "app/Messages.h"
#include "files/FileNames.h"

#include <algorithm>
#include <iterator>

namespace calder {
namespace {

using Offer = FileKindRow::Offer;

constexpr FileKindRow kRows[] = {
    {.kind = Kind_Wave,
     .openFilter = {"ﾊﾞｲﾅﾘ独自形式(*.wdb)|*.wdb|ﾃｷｽﾄ 整数形式(*.txt)|*.txt|ﾃｷｽﾄ 実数形式(*.txt)|*.txt|"
                    "全てのﾌｧｲﾙ(*.*)|*.*",
                    "Binary files(*.wdb)|*.wdb|Text Integer data files(*.txt)|*.txt|"
                    "Text Real data files(*.txt)|*.txt|All files(*.*)|*.*"},
     .saveFilter = {"ﾊﾞｲﾅﾘ独自形式(*.wdb)|*.wdb", "Binary files(*.wdb)|*.wdb"},
     .defaultExtension = "wdb",
     .remembered = &RememberedNames::CurrentWaveFile,
     .offer = Offer::WithDefaultExtension,
     .otherFilter = 2,
     .realTextFilter = 3,
     .emptyOpenIsCancelled = true,
     .emptySaveIsCancelled = true,
     .isWaveform = true},
    {.kind = Kind_WaveText,
     .saveFilter = {"ﾃｷｽﾄ形式(*.txt)|*.txt", "Text files(*.txt)|*.txt"},
     .defaultExtension = "txt",
     .remembered = &RememberedNames::CurrentWaveFile,
     .offer = Offer::WithDefaultExtension,
     .emptySaveIsCancelled = true,
     .isWaveform = true},
    {.kind = Kind_RealText, .isWaveform = true},
    {.kind = Kind_Import, .isWaveform = true},
    {.kind = Kind_List,
     .openFilter = {"ﾃｷｽﾄ独自形式(*.wfn)|*.wfn|全てのﾌｧｲﾙ(*.*)|*.*",
                    "Expression files(*.wfn)|*.wfn|All files(*.*)|*.*"},
     .saveFilter = {"ﾃｷｽﾄ独自形式(*.wfn)|*.wfn", "Expression files(*.wfn)|*.wfn"},
     .defaultExtension = "wfn",
     .extensions = "wfn",
     .remembered = &RememberedNames::LastListFile,
     .saveRefusal = kMsgBadFileName,
     .saveRemembers = true},
    {.kind = Kind_Table,
     .openFilter = {"ﾃｷｽﾄﾌｧｲﾙ(*.prn)|*.prn|全てのﾌｧｲﾙ(*.*)|*.*", "Text files(*.prn)|*.prn|All files(*.*)|*.*"},
     .saveFilter = {"ﾃｷｽﾄﾌｧｲﾙ（ｽﾍﾟｰｽ区切り）(*.prn)|*.prn", "Text files(Space delimited)(*.prn)|*.prn"},
     .defaultExtension = "prn",
     .extensions = "csv|tsv|prn",
     .remembered = &RememberedNames::LastTableFile,
     .offer = Offer::WithoutExtension,
     .openRefusal = kMsgBadExtension,
     .saveRefusal = kMsgBadFileName,
     .openRemembers = true,
     .saveRemembers = true,
     .emptyOpenIsCancelled = true},
    {.kind = Kind_Pwf,
     .openFilter = {"ﾃｷｽﾄ独自形式(*.pwf)|*.pwf", "PWF Parameter files(*.pwf)|*.pwf"},
     .saveFilter = {"ﾃｷｽﾄ独自形式(*.pwf)|*.pwf", "PWF Parameter files(*.pwf)|*.pwf"},
     .defaultExtension = "pwf",
     .extensions = "pwf",
     .remembered = &RememberedNames::LastPwfFile,
     .openRefusal = kMsgBadFileName,
     .saveRefusal = kMsgBadFileName,
     .readFailure = kMsgReadFailed,
     .writeFailure = kMsgWriteFailed,
     .saveRemembers = true},
    {.kind = Kind_System,
     .openFilter = {"ｼｽﾃﾑﾌｧｲﾙ(*.ocb)|*.ocb|全てのﾌｧｲﾙ(*.*)|*.*", "System files(*.ocb)|*.ocb|All files(*.*)|*.*"},
     .saveFilter = {"ｼｽﾃﾑﾌｧｲﾙ(*.ocb)|*.ocb", "System files(*.ocb)|*.ocb"},
     .defaultExtension = "ocb",
     .extensions = "ocb",
     .remembered = &RememberedNames::LastSystemFile,
     .saveRefusal = kMsgBadFileName,
     .readFailure = kMsgReadFailed,
     .writeFailure = kMsgWriteFailed,
     .openRemembers = true,
     .saveRemembers = true},
};

} // namespace

const FileKindRow& RowOf(int kind) {
  const auto* const found = std::ranges::find(kRows, kind, &FileKindRow::kind);
  return found == std::end(kRows) ? kRows[0] : *found;
}

bool Accepts(const FileKindRow& row, std::string_view path) {
  std::string_view left = row.extensions;
  if (left.empty()) return true;
  while (!left.empty()) {
    const std::size_t end = std::min(left.find('|'), left.size());
    if (Is_FileExt(path, left.substr(0, end))) return true;
    left.remove_prefix(std::min(end + 1, left.size()));
  }
  return false;
}

} // namespace calder
