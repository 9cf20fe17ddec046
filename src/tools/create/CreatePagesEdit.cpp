// The Create dialog's boxes, lists and page buttons.
#include "app/EngValB.h"
#include "instrument/SystemSetup.h"
#include "tools/create/CreatePages.h"
#include "tools/frame/ToolHost.h"

#include <algorithm>
#include <cmath>

namespace calder {

void CreatePages::Text_LostFocus(int box, const std::string& text) {
  if (formSetup_ || !ParameterEnabled(box)) return;
  CreatePage& page = ThePage();
  const CreatePage before = page;
  // A text that was not touched means the stored value, not its printed digits.
  const bool taken = text != ParameterText(box) && ReadBox(units_, settings_.MemorySize, text, page, box);
  Change_Parameter();
  if (!taken || BoxField(page, box) == BoxField(before, box)) return;
  if (box == kBoxSize) {
    pageModified_ = true;
    // The range's start stays where it is unless the end comes to lie before it.
    Scope& scope = buffers_.CurrentScope();
    scope = {std::min(scope.Start, page.EndX), page.EndX};
    host_.RangeChanged();
  }
  PageChanged();
}

void CreatePages::Text_X_LostFocus(AreaEnd edited, const std::string& startText, const std::string& endText) {
  if (formSetup_ || !fromMainWindow_) return;
  CreatePage& page = ThePage();
  // The other box's text means the stored value unless it was touched as well.
  const auto pointOf = [this](const std::string& text, const std::string& shown, double stored) {
    return text == shown ? stored : units_.XToPoint(ParseEng(text));
  };
  double from = pointOf(startText, StartText(), page.StartX);
  double to = pointOf(endText, EndText(), page.EndX);
  const bool start = edited == AreaEnd::Start;
  // Tested before the conversion, which would take a position beyond the end for point 0.
  double x = ParseEng(start ? startText : endText);
  const bool untouched = start ? from == page.StartX : to == page.EndX;
  if (untouched || !units_.CheckXCurrent(x)) {
    Change_Parameter();
    return;
  }
  if (to < from) (start ? to : from) = start ? from : to;
  page.SetArea(from, to);
  Change_Parameter();
  pageModified_ = true;
  PageChanged();
  ShowPageArea();
}

void CreatePages::Comb_Wave_Click(int function) {
  if (formSetup_ || function < 0 || function >= kPageFunctions) return;
  ThePage().Function = static_cast<std::int16_t>(function);
  pageModified_ = true;
  livePreview_ = false;
  Change_Parameter();
  Check_Visit();
  Refresh();
}

void CreatePages::Opt_effect_Click(bool effect) {
  if (formSetup_) return;
  ThePage().Valid = effect ? kPageTrue : std::int16_t{0};
}

void CreatePages::StoreText(std::string& field, const std::string& text, std::size_t limit) {
  if (formSetup_) return;
  std::string kept = calder::PageText(text, limit);
  if (kept == field) return;
  field = std::move(kept);
  pageModified_ = true;
}

void CreatePages::Txt_Const_LostFocus(const std::string& text) {
  StoreText(ThePage().Constants, text, CreatePage::kConstantsLimit);
}

void CreatePages::Txt_Expr_LostFocus(const std::string& text) {
  StoreText(ThePage().Expression, text, CreatePage::kExpressionLimit);
}

ExpressionFault CreatePages::LivePreview(std::string_view constants, std::string_view expression) {
  if (formSetup_ || !ExpressionShown()) return {};
  CreatePage typed = Page();
  typed.Constants = calder::PageText(constants, CreatePage::kConstantsLimit);
  typed.Expression = calder::PageText(expression, CreatePage::kExpressionLimit);
  ExpressionFault fault;
  if (typed.Expression.empty())
    generator_.ClearArea(typed);
  else
    fault = generator_.EvaluateAside(typed);
  if (fault.message != 0) return fault;
  // The buffer no longer has what Compute left there.
  pageModified_ = true;
  livePreview_ = true;
  port_->ShowPreview();
  return fault;
}

std::optional<int> CreatePages::NextBox(int box) const {
  for (int next = box + 1; next < kPageBoxes; ++next) {
    if (ParameterShown(next) && ParameterEnabled(next)) return next;
  }
  return std::nullopt;
}

// ---- pages ----

void CreatePages::Cmd_Page_Click(PageButton button) {
  if (!fromMainWindow_) return;
  int page = currentPage_;
  switch (button) {
  case PageButton::First: page = std::max(pages_.FirstValid(), PageTable::kFirst); break;
  case PageButton::Previous: page = std::max(page - 1, PageTable::kFirst); break;
  case PageButton::Next: page = std::min(page + 1, PageTable::kLast); break;
  case PageButton::Last: {
    const int last = pages_.LastValid();
    page = last == 0 ? PageTable::kLast : last;
    break;
  }
  }
  if (page == currentPage_) return;
  if (!pages_[page].IsVisited()) pages_[page].Function = Page().Function;
  GoToPage(page);
}

void CreatePages::Txt_Page_LostFocus(const std::string& text) {
  if (formSetup_ || !fromMainWindow_) return;
  const double number = text.find_first_not_of(' ') == std::string::npos ? PageTable::kFirst : LeadingNumber(text);
  GoToPage(static_cast<int>(std::nearbyint(std::clamp(number, double{PageTable::kFirst}, double{PageTable::kLast}))));
}

void CreatePages::GoToPage(int page) {
  page = std::clamp(page, PageTable::kFirst, PageTable::kLast);
  if (page == currentPage_) {
    Change_Parameter(); // the box may show another number
    return;
  }
  drag_.Release();
  currentPage_ = page;
  pageModified_ = true;
  livePreview_ = false;
  Change_Parameter();
  Refresh();
  ShowPageArea();
}

} // namespace calder
