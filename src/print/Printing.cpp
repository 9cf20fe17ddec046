#include "print/Printing.h"

#include "platform/Desktop.h"
#include "platform/FileDialogs.h"
#include "platform/qt/Text.h"
#include "print/PictureFile.h"
#include "print/PrintDialog.h"

#include <QFileInfo>

#include <utility>

namespace calder {
namespace {

// The document's name without folder and extension.
QString BaseName(const std::string& document) {
  const QString name = QFileInfo(Text(document)).completeBaseName();
  return name.isEmpty() ? QStringLiteral("Untitled") : name;
}

} // namespace

Printing::Printing(const Desktop& desktop, clsRegistry& registry, const ErrMsg& messages, PrintSource source)
    : desktop_(desktop), registry_(registry), messages_(messages), source_(std::move(source)),
      settings_(messages.GetLanguage()) {}

Printing::~Printing() = default;

void Printing::ShowDialog(int selectedTool, const std::string& document, QWidget* caller) {
  if (printers_ == nullptr) printers_ = LoadPrinters(desktop_.folders.modules, printersFault_);
  PrintDialog dialog(std::make_unique<PrintDesk>(settings_, source_, selectedTool, messages_),
                     {registry_, messages_, desktop_.fileDialogs, printers_.get(), printersFault_, BaseName(document)},
                     caller);
  dialog.exec();
}

void Printing::ExportPicture(const std::string& document) {
  const auto answer = desktop_.fileDialogs.Save(
      {messages_.Pick("図の書き出し", "Export Picture"), kPictureFilter, 1, BaseName(document).toStdString(), ""});
  if (!answer) return;
  if (!IsPictureName(answer->path)) {
    messages_.ErrorBoxText(
        "[" + answer->path + "] " +
        messages_.Pick("拡張子は .pdf, .svg, .png のいずれかです。", "A picture's name ends in .pdf, .svg or .png."));
    return;
  }
  if (!WritePicture(answer->path, BaseName(document), source_.wave(), settings_.font))
    messages_.ErrorBoxText("[" + answer->path + "] " + messages_.MessageText(kMsgWriteFailed));
}

} // namespace calder
