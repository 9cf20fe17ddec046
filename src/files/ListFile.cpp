#include "files/ListFile.h"

#include "app/Messages.h"
#include "app/PageTable.h"
#include "files/ListText.h"
#include "platform/posix/WholeFile.h"

#include <array>
#include <span>
#include <vector>

namespace calder {

std::int32_t ListFile::Write_List(const std::string& path) const {
  if (pages_.CountValid() == 0) return 0;
  const std::string text = ListText(settings_, messages_.GetLanguage()).Compose(pages_);
  const std::array<std::span<const std::byte>, 1> pieces{std::as_bytes(std::span(text))};
  return ReplaceFile(path, pieces);
}

std::int32_t ListFile::Read_List(const std::string& path) {
  std::vector<char> content;
  const ListText list(settings_, messages_.GetLanguage());
  if (ReadWholeFile(path, content) == 0 && list.Parse({content.data(), content.size()}, pages_)) return 0;
  messages_.ErrorBox(kMsgReadFailed);
  return FILE_READ_FAILED;
}

} // namespace calder
