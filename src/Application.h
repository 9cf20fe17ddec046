// The whole program on a desktop's services: start it, show it, end it.
#pragma once

#include "libs/sysinf32/sysinf32.h"
#include "platform/Desktop.h"

#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace calder {

class CreatePages;
class Communication;
class Editor;
class ImportWindows;
class MainWindow;
class PluginImport;
class Program;
class Printing;
class PwfDesk;
class SplineDesk;
class ToolForm;

class Application {
public:
  // REQUIRES: a QApplication. The services must outlive this object. database: one that reads while the toolkit
  // starts, or an empty one.
  explicit Application(const Desktop& desktop, ModelDatabase database = {});
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Brings everything up and shows the main window; files: waveform files to open, the first one here and
  // each further one in a copy of the program. False: the program ends, and a message has said why.
  [[nodiscard]] bool Start(const std::vector<std::string>& files);
  // Ends the program in order without a question, when a signal asks for it: what a close stores is stored, a transfer
  // of this copy is cancelled and waited for (ten seconds at most), then the event loop ends.
  void End();
  // Stores the same where no event is processed any more: counts this copy out and clears its busy flag.
  void StoreAtExit();

  [[nodiscard]] MainWindow& Window() { return *window_; }
  [[nodiscard]] Editor& TheEditor() { return *editor_; }

private:
  void EndWhenIdle();
  void AddTools();
  void AddPrinting();
  void ShowVersion();
  void OpenFiles(const std::vector<std::string>& files);
  void AddImport();
  // nullptr: the range has no point.
  [[nodiscard]] std::unique_ptr<ToolForm> MakeOperate(QWidget* parent);

  std::unique_ptr<Program> program_;
  std::unique_ptr<Editor> editor_;
  std::unique_ptr<CreatePages> createPages_;
  std::unique_ptr<SplineDesk> splineDesk_;
  std::unique_ptr<PwfDesk> pwfDesk_;
  std::unique_ptr<Communication> communication_;
  std::unique_ptr<Printing> printing_;
  std::unique_ptr<ImportWindows> importWindows_;
  std::unique_ptr<PluginImport> import_;
  std::unique_ptr<MainWindow> window_;
  int lookedForEnd_ = 0; // how often End has found a transfer under way
};

} // namespace calder
