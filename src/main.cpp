#include "Application.h"
#include "app/CommandLine.h"
#include "instrument/Initialise.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/posix/BigPages.h"
#include "platform/posix/ReadFolders.h"
#include "platform/qt/OutsideEnd.h"
#include "platform/qt/QtDesktop.h"
#include "print/VersionText.h"

#include <QApplication>

#include <cstdio>
#include <span>

namespace {

constexpr int kWrongUse = 2;

// The program's exit status; it goes on with -1.
int AnswerOptions(const calder::CommandLine& line) {
  using Wish = calder::CommandLine::Wish;
  switch (line.wish) {
  case Wish::Help: return std::fputs(calder::HelpText(), stdout) < 0 ? 1 : 0;
  case Wish::Version: return std::printf("calder %s\n", calder::ProgramVersion()) < 0 ? 1 : 0;
  case Wish::WrongUse:
    std::fprintf(stderr, "calder: there is no option %s\nTry: calder --help\n", line.wrong.c_str());
    return kWrongUse;
  case Wish::Open: break;
  }
  return -1;
}

} // namespace

int main(int argc, char** argv) {
  const calder::CommandLine line = calder::ReadCommandLine(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  if (const int status = AnswerOptions(line); status >= 0) return status;

  calder::UseBigPagesForHeap();
  calder::ModelDatabase models; // read while the toolkit starts
  models.Prefetch(calder::FindProgramFile(calder::ReadFolders(), calder::kModelFolder));
  int own = 1; // the toolkit has options of its own, which would take words away
  QApplication qtApplication(own, argv);
  QApplication::setApplicationName(QStringLiteral("Calder"));
  QApplication::setApplicationVersion(QString::fromLatin1(calder::ProgramVersion()));
  QApplication::setDesktopFileName(QStringLiteral("calder"));

  calder::QtDesktop desktop;
  calder::Application application(desktop.Services(), std::move(models));
  if (!application.Start(line.files)) return 1;
  const calder::OutsideEnd outside([&application] { application.End(); },
                                   [&application] { application.StoreAtExit(); });
  return QApplication::exec();
}
