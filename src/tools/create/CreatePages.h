// The Create dialog without its window: the pages, their parameters and areas, the preview, and what goes into the
// waveform.
//
// The form forwards what the user does and shows what this object says; CreatePort is the way back. A box that is being
// edited is committed (its LostFocus call) before anything else that the user does is forwarded.
//
// 1. GenBuffer holds the page on show in its area. What else it holds means nothing.
// 2. PageModified says whether an OK has to compute the page again: it is false only after a Compute whose texts, area
//    and result are still the ones on show.
// 3. Nothing is written into the waveform but by an OK.
#pragma once

#include "app/ConvUnit.h"
#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "app/PageTable.h"
#include "files/ListFile.h"
#include "libs/eval32/eval32.h"
#include "libs/sysinf32/SystemInfo.h"
#include "platform/Desktop.h"
#include "tools/create/PageBoxes.h"
#include "tools/create/PageGenerator.h"
#include "tools/create/PreviewDrag.h"
#include "tools/frame/WavePreview.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace calder {

class Program;
class DeviceContext;
class FileCommands;
class SystemSetup;
class ToolHost;

// What the dialog asks of its form.
class CreatePort {
public:
  virtual ~CreatePort() = default;
  // Show everything anew: page number, function, Effect, area, parameters, texts, what is enabled. The form-setup flag
  // is set meanwhile.
  virtual void ShowPage() = 0;
  // Draw_Wave_Create on the preview.
  virtual void ShowPreview() = 0;
  // The Operate dialog's picture of the created waveform.
  virtual void ShowOperand() = 0;
  // The hourglass, or the ordinary pointer again.
  virtual void SetBusy(bool busy) = 0;
  // The user has seen the message of a fault of the page on show; the cursor goes to its place when it has one.
  virtual void ShowFault(const ExpressionFault& fault) = 0;
  // Close the form, which calls Form_QueryUnload as any closing does.
  virtual void Close() = 0;
};

// What the Operate dialog hands in: the buffer of the created waveform, as many points as the range, which is the main
// window's.
struct OperateTarget {
  WaveHandle buffer = 0;
  Scope range;
};

class CreatePages {
public:
  // A number from 0 (included) to 1 (excluded) for each opening; without one the clock gives it.
  using RandomSource = std::function<double()>;

  // Takes the file commands' handlers of expression lists.
  CreatePages(Program& program, SystemSetup& setup, FileCommands& files, ToolHost& host, RandomSource random = {});
  CreatePages(const CreatePages&) = delete;
  CreatePages& operator=(const CreatePages&) = delete;

  // REQUIRES: a port before any other call.
  void SetPort(CreatePort* port) { port_ = port; }

  // Opening: before the form is shown.
  void PrepareCreate();
  void PrepareCreate(const OperateTarget& target);
  // Closing, whatever closed the form.
  void Form_QueryUnload();

  // What the user does. Texts of boxes as they stand there.
  void Text_LostFocus(int box, const std::string& text);
  enum class AreaEnd { Start = 0, End = 1 };
  void Text_X_LostFocus(AreaEnd edited, const std::string& startText, const std::string& endText);
  void Comb_Wave_Click(int function);
  void Opt_effect_Click(bool effect);
  void Txt_Const_LostFocus(const std::string& text);
  void Txt_Expr_LostFocus(const std::string& text);
  enum class PageButton { First = 0, Previous = 1, Next = 2, Last = 3 };
  void Cmd_Page_Click(PageButton button);
  void Txt_Page_LostFocus(const std::string& text);
  void Btn_Comp_Click();
  void Btn_OK_Click();
  void Btn_Confirm_Click();
  void Btn_Cancel_Click();
  void Menu_Clear_Click();
  void Menu_AllClear_Click() { AllClear(); }
  void Menu_FileOpen_Click();
  void Menu_FileSave_Click();
  // The preview. Logical pixels; leftAlone: the left button without Shift.
  void PictWave_MouseDown(bool leftAlone, double x, double y, double width, double height);
  void PictWave_MouseMove(double x, double y);
  void PictWave_MouseUp() { drag_.Release(); }

  // While an expression page's texts are being typed: when they can be computed the preview shows it. The texts are not
  // stored, the page is not marked, no constant is defined and no message comes; an OK or Compute still computes the
  // stored texts. The result says what is wrong with a text that cannot be computed; the preview stays then.
  ExpressionFault LivePreview(std::string_view constants, std::string_view expression);

  // By the names that the dialog's procedures have.
  void Draw_Wave_Create(DeviceContext& picture) const;
  void Change_Parameter();
  void Check_Visit();
  // 0 or the number of a message.
  int Make_Wave(int page, PageGenerator::Expressions expressions = PageGenerator::Expressions::Cleared);
  void AllClear();
  void GoToPage(int page);
  // Shows message 18 when it fails.
  bool CheckConstants();
  void ShowPageArea();

  // What the form shows.
  [[nodiscard]] const CreatePage& Page() const { return pages_[currentPage_]; }
  [[nodiscard]] int CurrentPage() const { return currentPage_; }
  [[nodiscard]] bool FromMainWindow() const { return fromMainWindow_; } // page panel, File menu, area boxes
  [[nodiscard]] std::string PageText() const { return std::to_string(currentPage_); }
  [[nodiscard]] std::string StartText() const { return units_.PointToXTextWide(Page().StartX); }
  [[nodiscard]] std::string EndText() const { return units_.PointToXTextWide(Page().EndX); }
  [[nodiscard]] std::string ParameterText(int box) const { return BoxText(units_, Page(), box); }
  [[nodiscard]] bool ParameterShown(int box) const { return BoxShown(Page().Function, box); }
  [[nodiscard]] bool ParameterEnabled(int box) const { return box != kBoxSize || fromMainWindow_; }
  // The box to which Enter or Tab goes from one; none: to the page buttons when there are any.
  [[nodiscard]] std::optional<int> NextBox(int box) const;
  [[nodiscard]] bool ExpressionShown() const { return Page().Function == kFunctionExpression; }
  // The preview's labels.
  [[nodiscard]] PreviewLabels Labels() const { return PreviewLabels(units_); }
  // For the pointer's shape over the preview.
  [[nodiscard]] PreviewDrag::Mode DragModeAt(double x, double y, double width, double height) const {
    return PreviewDrag::ModeAt(Page(), x, y, width, height);
  }

  // For tests and the form: the page was changed since the last compute; no OK has succeeded since the opening.
  [[nodiscard]] bool PageModified() const { return pageModified_; }
  [[nodiscard]] bool Cancelled() const { return cancelled_; }

private:
  [[nodiscard]] CreatePage& ThePage() { return pages_[currentPage_]; }
  void Open();
  // Areas that a smaller memory does not have are shown as far as they reach into it; their own come back at the close.
  void ClampAreas();
  void RestoreAreas();
  void Form_Load();
  void PageChanged();
  void Refresh();
  void StoreText(std::string& field, const std::string& text, std::size_t limit);
  [[nodiscard]] ExpressionFault Regenerate();
  void CopyArea(const CreatePage& page) const;
  void ClearAll() const;
  void Report(const ExpressionFault& fault);
  void CloseAfterOk();

  EditBuffers& buffers_;
  const Desktop& desktop_;
  Evaluator& evaluator_;
  bool& formSetup_;
  const ErrMsg& messages_;
  PageTable& pages_;
  SystemInfo& settings_;
  const ConvUnit& units_;
  SystemSetup& setup_;
  FileCommands& files_;
  ToolHost& host_;
  RandomSource random_;
  ListFile listFile_;
  PageGenerator generator_;
  PreviewDrag drag_;
  CreatePort* port_ = nullptr;
  int currentPage_ = PageTable::kFirst;
  bool fromMainWindow_ = true;
  bool pageModified_ = true;
  bool cancelled_ = true;
  bool listRead_ = false;
  bool livePreview_ = false; // the preview shows the expression on show without an OK or Compute
  struct ClampedArea {
    int page = 0;
    double startX = 0; // as it was
    double endX = 0;
    double clampedStart = 0;
    double clampedEnd = 0;
  };
  std::vector<ClampedArea> clamped_;
  ExpressionFault lastFault_; // of the last Make_Wave
};

} // namespace calder
