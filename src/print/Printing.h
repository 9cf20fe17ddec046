// Everything that comes out on paper or as a picture: the print dialog over what the window in front shows, and the
// picture of the main window as a file.
#pragma once

#include "print/PrintDesk.h"
#include "print/Printers.h"

#include <QString>

#include <memory>
#include <optional>

class QWidget;

namespace calder {

struct Desktop;
class clsRegistry;

class Printing {
public:
  // All references must outlive this object.
  Printing(const Desktop& desktop, clsRegistry& registry, const ErrMsg& messages, PrintSource source);
  ~Printing();

  // The print dialog for the selected tool, over the window that asks for it; it waits until the dialog is closed.
  void ShowDialog(int selectedTool, const std::string& document, QWidget* caller);
  // Asks for a file and writes the main window's picture there, as its extension says.
  void ExportPicture(const std::string& document);

private:
  const Desktop& desktop_;
  clsRegistry& registry_;
  const ErrMsg& messages_;
  const PrintSource source_;
  PrintSettings settings_;
  std::unique_ptr<Printers> printers_; // loaded by the first dialog; it keeps what was chosen
  QString printersFault_;
};

} // namespace calder
