#include "files/ListFile.h"

#include "files/ListText.h"

#include <array>
#include <span>
#include <vector>

namespace calder {

std::int32_t ListFile::Write_List(const std::string& path) const {
  if (program_.pages.CountValid() == 0) return 0;
  const std::string text = ListText(program_.settings, program_.language).Compose(program_.pages);
  const std::array<std::span<const std::byte>, 1> pieces{std::as_bytes(std::span(text))};
  return ReplaceFile(path, pieces);
}

std::int32_t ListFile::Read_List(const std::string& path) {
  std::vector<char> content;
  const ListText list(program_.settings, program_.language);
  if (ReadWholeFile(path, content) == 0 && list.Parse({content.data(), content.size()}, program_.pages)) return 0;
  program_.messages.ErrorBox(kMsgReadFailed);
  return FILE_READ_FAILED;
}

} // namespace calder
