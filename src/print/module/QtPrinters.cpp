// The toolkit's printing: the library that is loaded when somebody prints.
#include "print/Printers.h"

#include <QCoreApplication>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace calder {
namespace {

class QtPrinters final : public Printers {
public:
  QtPrinters() { printer_.setCreator(QCoreApplication::applicationName()); }

  [[nodiscard]] bool Ready() const override {
    return printer_.outputFormat() == QPrinter::PdfFormat ? chosen_ && !printer_.outputFileName().isEmpty()
                                                          : printer_.isValid();
  }
  [[nodiscard]] QString Name() const override {
    if (!Ready()) return {};
    return printer_.outputFormat() == QPrinter::PdfFormat ? printer_.outputFileName() : printer_.printerName();
  }
  [[nodiscard]] QPageLayout Layout() const override { return printer_.pageLayout(); }
  bool SetUp(QWidget* parent) override {
    QPrintDialog dialog(&printer_, parent);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    if (dialog.exec() != QDialog::Accepted) return false;
    chosen_ = true;
    return true;
  }
  [[nodiscard]] QPagedPaintDevice& Device(const QString& title) override {
    printer_.setDocName(title);
    return printer_;
  }
  void Preview(QWidget* parent, const QString& title, const std::function<void(QPagedPaintDevice&)>& draw) override {
    printer_.setDocName(title);
    QPrintPreviewDialog dialog(&printer_, parent);
    dialog.setWindowTitle(title);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* printer) { draw(*printer); });
    dialog.exec();
  }

private:
  QPrinter printer_{QPrinter::HighResolution};
  bool chosen_ = false; // the dialog was accepted: what it names is meant
};

} // namespace
} // namespace calder

extern "C" __attribute__((visibility("default"))) calder::Printers* calder_make_printers() {
  return new calder::QtPrinters;
}
