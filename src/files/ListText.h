// The text of an expression list: pages into text and back. docs/file-formats.md has the layout.
//
// A list is written in the units of the moment and says their ranges, so that it means the same when it is read in
// others.
#pragma once

#include "app/ConvUnit.h"
#include "app/PageTable.h"
#include "files/SettingsBlock.h"

#include <string>
#include <string_view>

namespace calder {

class ListText {
public:
  // The record must outlive this object. The language chooses the comments and the code page.
  ListText(const SystemInfo& settings, Language language)
      : settings_(settings), units_(settings), language_(language), codePage_(PageOf(language)) {}

  // The user's pages that take part in All Page OK, in the code page.
  [[nodiscard]] std::string Compose(const PageTable& pages) const;

  // Replaces all pages by those of the text, up to the first that is damaged. What lies outside the range of a page's
  // field is brought into it. False: there are no ranges or the first page is damaged already; `pages` is as it was.
  [[nodiscard]] bool Parse(std::string_view text, PageTable& pages) const;

private:
  [[nodiscard]] std::string ComposeHead() const;
  [[nodiscard]] std::string ComposePage(int number, CreatePage page) const;

  const SystemInfo& settings_;
  ConvUnit units_;
  Language language_;
  CodePage codePage_;
};

} // namespace calder
