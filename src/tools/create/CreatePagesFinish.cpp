// The Create dialog's Compute, its ways out, its clears and its files.
#include "files/FileCommands.h"
#include "instrument/SystemSetup.h"
#include "libs/eval32/eval32.h"
#include "platform/AsciiText.h"
#include "tools/create/CreatePages.h"
#include "tools/frame/ToolHost.h"
#include "tools/frame/WaitCursor.h"

#include <algorithm>

namespace calder {

bool CreatePages::CheckConstants() {
  CreatePage& page = ThePage();
  page.Constants = LowerText(page.Constants);
  const ExpressionFault fault = generator_.CheckConstants(page);
  if (fault.message == 0) return true;
  Report(fault);
  return false;
}

void CreatePages::Btn_Comp_Click() {
  if (!ExpressionShown() || !CheckConstants()) return;
  CreatePage& page = ThePage();
  if (TrimBlanks(page.Expression).empty()) return;
  page.Expression = TrimBlanks(page.Expression);
  Change_Parameter();
  ExpressionFault fault;
  {
    const WaitCursor busy(*port_);
    fault = generator_.Evaluate(page);
  }
  if (fault.message != 0) {
    Report(fault);
    return;
  }
  Check_Visit();
  port_->ShowPreview();
  pageModified_ = false;
  setup_.ForgetControlPoints();
}

void CreatePages::ClearAll() const {
  if (fromMainWindow_)
    W_ClearMemory(generator_.GenBuffer(), 0, settings_.MemorySize);
  else
    W_ClearMemory(generator_.GenBuffer(), 0, Page().EndX - Page().StartX);
}

ExpressionFault CreatePages::Regenerate() {
  if (!pageModified_) return {};
  ClearAll();
  Make_Wave(currentPage_, PageGenerator::Expressions::Evaluated);
  return lastFault_;
}

void CreatePages::CopyArea(const CreatePage& page) const {
  W_CopyMemory(generator_.GenBuffer(), buffers_.Current(), page.StartX, page.StartX, page.EndX - page.StartX);
}

void CreatePages::Btn_OK_Click() {
  if (fromMainWindow_) {
    Check_Visit();
    buffers_.Save_Undo();
  }
  const bool wanted = !fromMainWindow_ || Page().Valid != 0;
  const ExpressionFault fault = wanted ? Regenerate() : ExpressionFault{};
  if (fault.message != 0) {
    port_->ShowPreview();
    Report(fault);
    return;
  }
  if (!fromMainWindow_) {
    port_->ShowOperand();
  } else if (wanted) {
    CopyArea(Page());
    setup_.ForgetControlPoints();
  }
  CloseAfterOk();
}

void CreatePages::Btn_Confirm_Click() {
  if (!fromMainWindow_) { // there is one page only
    Btn_OK_Click();
    return;
  }
  if (pages_.CountValid() == 0) {
    CloseAfterOk();
    return;
  }
  int failedPage = 0;
  ExpressionFault failure;
  buffers_.Save_Undo();
  ClearAll();
  evaluator_.ClearConstant();
  {
    const WaitCursor busy(*port_);
    for (int page = PageTable::kFirst; page <= PageTable::kLast; ++page) {
      if (pages_[page].Valid == 0) continue;
      const ExpressionFault fault = generator_.Make_Wave(pages_[page], PageGenerator::Expressions::Evaluated);
      if (fault.message != 0 && failedPage == 0) {
        failedPage = page;
        failure = fault;
      }
      CopyArea(pages_[page]);
    }
  }
  setup_.ForgetControlPoints();
  if (failedPage == 0) {
    pageModified_ = false;
    CloseAfterOk();
    return;
  }
  evaluator_.ClearConstant();
  pageModified_ = true; // other pages may have written into this one's area of the buffer
  GoToPage(failedPage);
  Refresh();
  host_.RangeChanged(); // the other pages are in the waveform
  Report(failure);
}

void CreatePages::Btn_Cancel_Click() {
  cancelled_ = true;
  evaluator_.ClearConstant();
  port_->Close();
}

void CreatePages::Menu_Clear_Click() {
  CreatePage& page = ThePage();
  generator_.ClearArea(page);
  CreatePage cleared;
  cleared.PageNo = page.PageNo;
  cleared.Visited = page.Visited;
  cleared.Valid = page.Valid;
  cleared.Function = page.Function;
  cleared.SetArea(page.StartX, page.EndX);
  page = cleared;
  pageModified_ = true;
  livePreview_ = false;
  Change_Parameter();
  Refresh();
}

void CreatePages::AllClear() {
  ClearAll();
  const CreatePage shown = Page();
  for (int page = 0; page <= PageTable::kLast + 1; ++page) pages_[page] = CreatePage{};
  if (fromMainWindow_) {
    currentPage_ = PageTable::kFirst;
  } else { // the Operate dialog's page has no other area than its range
    ThePage().SetArea(shown.StartX, shown.EndX);
    ThePage().Valid = kPageTrue;
  }
  drag_.Release();
  pageModified_ = true;
  livePreview_ = false;
  Change_Parameter();
  Refresh();
}

void CreatePages::Menu_FileOpen_Click() {
  if (!fromMainWindow_) return;
  listRead_ = false;
  files_.Open_File(Kind_List);
  if (!listRead_) { // the page on show keeps what was computed for it
    Change_Parameter();
    port_->ShowPreview();
    return;
  }
  ClampAreas();
  // A list shows its first page unless it has the one on show.
  const int first = pages_.FirstValid();
  if (Page().Valid == 0 && first != 0) currentPage_ = first;
  drag_.Release();
  pageModified_ = true;
  livePreview_ = false;
  ShowPageArea();
  Change_Parameter();
  Refresh();
}

void CreatePages::Menu_FileSave_Click() {
  if (!fromMainWindow_) return;
  RestoreAreas(); // the file gets the areas that the pages have, not what the memory has room for
  files_.Save_File(Kind_List, false);
  ClampAreas();
}

} // namespace calder
