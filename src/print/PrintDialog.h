// The print dialog's form over PrintDesk: lays the controls out, forwards what the user does, and shows the pages as
// they will be.
#pragma once

#include "print/PrintDesk.h"
#include "print/Printers.h"
#include "tools/frame/ToolForm.h"

#include <array>
#include <memory>

namespace Ui {
class PrintDialog;
}

namespace calder {

class FileDialogs;
class ValueBox;

// What the print dialog needs of the desktop.
struct PrintServices {
  clsRegistry& registry;
  const ErrMsg& messages;
  FileDialogs& fileDialogs;
  Printers* printers;    // null: printing support is missing
  QString printersFault; // why
  QString documentName;  // offered for a PDF, without extension
};

class PrintDialog final : public ToolForm {
  Q_OBJECT

public:
  PrintDialog(std::unique_ptr<PrintDesk> desk, const PrintServices& services, QWidget* parent);
  ~PrintDialog() override;

  static constexpr const char* kFormName = "PrintDialog";

private:
  void SetCaptions();
  void ConnectMargins();
  void ConnectButtons();
  void ShowMargins();
  // The pages after a change of margins, font or paper.
  void ShowPages();
  void ShowPageNumber();
  void TurnPage(int by);
  void ChooseFont();
  void SetUpPrinter();
  void Preview();
  void SavePdf();
  void Print();
  [[nodiscard]] QPageLayout Layout() const;
  [[nodiscard]] QString JobName() const { return windowTitle(); }

  const std::unique_ptr<PrintDesk> desk_;
  const PrintServices services_;
  std::unique_ptr<Ui::PrintDialog> ui_;
  std::array<ValueBox*, 3> margins_{};
};

} // namespace calder
