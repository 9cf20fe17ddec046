#include "print/Printers.h"

#include "platform/Desktop.h"

#include <QLibrary>

namespace calder {
namespace {

constexpr const char* kLibrary = "calder-printing.so";

} // namespace

std::unique_ptr<Printers> LoadPrinters(const std::vector<std::string>& folders, QString& fault) {
  const std::string path = FindProgramFile(folders, kLibrary);
  if (path.empty()) {
    fault = QLatin1String(kLibrary);
    return nullptr;
  }
  QLibrary library(QString::fromStdString(path));
  if (const auto make = reinterpret_cast<MakePrinters>(library.resolve(kMakePrintersEntry)))
    return std::unique_ptr<Printers>(make());
  fault = library.errorString();
  return nullptr;
}

} // namespace calder
