// The parameter-variable waveform dialog without its window: the functions of the definitions file, the parameters of
// the selected one, the preview, and what goes into the waveform.
//
// The form forwards what the user does and shows what this object says; PwfPort is the way back.
//
// 1. GenBuffer's first kPreviewPoints codes are the preview; an OK computes the whole waveform over them.
// 2. A parameter's box may hold a text that is not stored: it was refused. What is computed goes by the texts.
// 3. Nothing is written into the waveform but by an OK.
#pragma once

#include "app/ConvUnit.h"
#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "app/PwfTable.h"
#include "files/PwfFile.h"
#include "libs/eval32/eval32.h"
#include "libs/sysinf32/SystemInfo.h"
#include "platform/Desktop.h"
#include "tools/frame/WavePreview.h"
#include "tools/pwf/PwfDefinitions.h"
#include "tools/pwf/PwfGenerator.h"
#include "tools/pwf/PwfScroll.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace calder {

class Program;
class DeviceContext;
class FileCommands;
class SystemSetup;
class ToolHost;

// What the dialog asks of its form.
class PwfPort {
public:
  virtual ~PwfPort() = default;
  // The functions with the selected one, and what is wrong with the definitions file.
  virtual void ShowList() = 0;
  // The selected function: its parameters, their names and limits, texts, scroll bars, formula.
  virtual void ShowFunction() = 0;
  // Texts and scroll positions of the parameters, and which of them the scroll bar moves.
  virtual void ShowParameters() = 0;
  // Draw_Wave_PWF on the preview.
  virtual void ShowPreview() = 0;
  // Selects the whole text of a parameter's box and takes the focus there.
  virtual void GoToBox(int j) = 0;
  // The hourglass, or the ordinary pointer again.
  virtual void SetBusy(bool busy) = 0;
  // Why nothing could be computed; message 0: it was.
  virtual void ShowFault(const ExpressionFault& fault) = 0;
  // Close the form, which calls Form_QueryUnload as any closing does.
  virtual void Close() = 0;
};

class PwfDesk {
public:
  static constexpr std::int32_t kPreviewPoints = 4096;
  static constexpr std::int32_t kCurvePoints = 512; // of the small pictures

  // Takes the file commands' handlers of parameter files. createArea: the area of the page that Wave Create shows; what
  // is before its start is not written.
  PwfDesk(Program& program, SystemSetup& setup, FileCommands& files, ToolHost& host, std::function<Scope()> createArea);
  ~PwfDesk();
  PwfDesk(const PwfDesk&) = delete;
  PwfDesk& operator=(const PwfDesk&) = delete;

  // REQUIRES: a port before any other call.
  void SetPort(PwfPort* port) { port_ = port; }

  // Opening: before the form is shown. Sets the units; a message says so when that changes them.
  void Form_Load();
  // Closing, whatever closed the form.
  void Form_QueryUnload();

  // What the user does.
  void Comb_Wave_Click(int function);
  void Comb_PrmSel_Click(int parameter);
  // While a scroll bar is dragged, what was there before stays the former curve.
  void Scroll_Pressed();
  void Scroll_Released() { dragging_ = false; }
  void HScroll1_Change(int position);
  // The slim scroll bar of a parameter: chooses it and moves the scroll bar.
  void Slider_Change(int parameter, int position);
  // False: the text is refused, the box shows what it has to show then.
  bool Text_Validate(int parameter, const std::string& text);
  // The stored value again, in place of a refused text.
  void Revert(int parameter);
  // The value of the definitions file again.
  void Restore(int parameter);
  void Btn_OK_Click();
  void Btn_Cancel_Click();
  void Menu_FileOpen_Click();
  void Menu_FileSave_Click();

  void Draw_Wave_PWF(DeviceContext& picture) const;
  // A function with the values of the definitions file, over the whole picture.
  void DrawCurve(int function, DeviceContext& picture);

  // What the form shows.
  [[nodiscard]] const PwfTable& Table() const { return functions_; }
  [[nodiscard]] int IsWaveIdx() const { return functions_.WaveIdx; }
  [[nodiscard]] const PwfFunction& Function() const { return functions_.Selected(); }
  // What the definitions file says about the selected function; may be empty.
  [[nodiscard]] const std::string& Remark() const { return remarks_[Index(IsWaveIdx())]; }
  [[nodiscard]] int ParameterChoice() const { return prmSel_; }
  [[nodiscard]] const std::string& ParameterText(int j) const { return texts_[Index(j)]; }
  [[nodiscard]] bool IsRefused(int j) const { return refused_[Index(j)]; }
  [[nodiscard]] std::string LimitsText(int j) const; // "0 to 1"
  [[nodiscard]] ScrollRange Scroll(int j) const { return ScrollRangeOf(Function().Params[Index(j)]); }
  [[nodiscard]] int ScrollPosition(int j) const;
  [[nodiscard]] PreviewLabels Labels() const { return PreviewLabels(units_); }
  // X and Y of the curve at a column of a picture of that width; empty outside of it and without a curve.
  [[nodiscard]] std::string PointerText(int column, int width) const;
  // Sentences about the definitions file; empty: all is well.
  [[nodiscard]] const std::vector<std::string>& Notes() const { return notes_; }
  // From where on an OK writes, when that is not the whole waveform; else empty.
  [[nodiscard]] std::string AreaNote() const;

  [[nodiscard]] bool WaveDirty() const { return waveDirty_; }

private:
  enum class Length { Preview, Whole };

  static std::size_t Index(int j) { return static_cast<std::size_t>(j); }
  [[nodiscard]] PwfFunction& TheFunction() { return functions_[IsWaveIdx()]; }
  void SetUnits();
  void ReadDefinitions();
  void CheckFormulas(PwfReading& reading);
  void Show_Function();
  void Store(int j, double value);
  void Refresh();
  void KeepFormer();
  bool Make_Wave_PWF(Length length);
  // Point 0 to MemorySize.
  [[nodiscard]] double FirstWritten() const;

  EditBuffers& buffers_;
  const Desktop& desktop_;
  Evaluator& evaluator_;
  bool& formSetup_;
  const ErrMsg& messages_;
  SystemInfo& settings_;
  const ConvUnit& units_;
  const Language language_;
  PwfTable& functions_;
  SystemSetup& setup_;
  FileCommands& files_;
  ToolHost& host_;
  std::function<Scope()> createArea_;
  PwfFile file_;
  PwfGenerator generator_;
  PwfPort* port_ = nullptr;
  PwfTexts texts_;
  std::array<bool, PwfTable::kMaxParams> refused_{};
  std::array<std::string, PwfTable::kFunctions> remarks_;
  std::vector<std::string> notes_;
  int prmSel_ = 0;
  bool scrollGuard_ = false; // the program moves the scroll bars
  bool dragging_ = false;
  bool waveDirty_ = true;
  bool cancelled_ = true;
  bool hasCurve_ = false; // the preview holds the selected function
  bool hasFormer_ = false;
  WaveHandle former_ = 0; // the preview before the last change
  WaveHandle curve_ = 0;  // scratch of the small pictures
};

} // namespace calder
