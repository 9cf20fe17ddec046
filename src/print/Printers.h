// The printers of this desktop. They come in a library of their own, calder-printing.so, that is loaded when somebody
// prints, so that the editor starts without it.
#pragma once

#include <QPageLayout>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QPagedPaintDevice;
class QWidget;

namespace calder {

class Printers {
public:
  virtual ~Printers() = default;

  // A printer, or a file to print into, is chosen.
  [[nodiscard]] virtual bool Ready() const = 0;
  [[nodiscard]] virtual QString Name() const = 0; // of the printer or the file
  [[nodiscard]] virtual QPageLayout Layout() const = 0;
  // The desktop's printer dialog. False: cancelled.
  virtual bool SetUp(QWidget* parent) = 0;
  // Where the next job is drawn. title: the job's name.
  [[nodiscard]] virtual QPagedPaintDevice& Device(const QString& title) = 0;
  // A preview with all pages, from which one can print as well. draw: draws the job on that device.
  virtual void Preview(QWidget* parent, const QString& title, const std::function<void(QPagedPaintDevice&)>& draw) = 0;
};

// The library's one entry.
constexpr const char* kMakePrintersEntry = "calder_make_printers";
using MakePrinters = Printers* (*)();

// Null: the library is in none of these folders, or cannot be loaded; `fault` says why.
[[nodiscard]] std::unique_ptr<Printers> LoadPrinters(const std::vector<std::string>& folders, QString& fault);

} // namespace calder
