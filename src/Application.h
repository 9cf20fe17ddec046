// The whole program on a desktop's services: start it, show it, end it.
#pragma once

#include "libs/sysinf32/sysinf32.h"
#include "platform/Desktop.h"

#include <memory>
#include <string>

namespace calder {

class CreatePages;
class Communication;
class Editor;
class MainWindow;
class Program;

class Application {
public:
  // REQUIRES: a QApplication. The services must outlive this object. database: one that was told to read ahead while
  // the toolkit started, or an empty one.
  explicit Application(const Desktop& desktop, ModelDatabase database = {});
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Brings everything up and shows the main window; file: a waveform file to open, empty for none. False: the program
  // ends; the user was told why.
  [[nodiscard]] bool Start(const std::string& file);
  [[nodiscard]] MainWindow& Window() { return *window_; }
  [[nodiscard]] Editor& TheEditor() { return *editor_; }

private:
  void AddTools();

  std::unique_ptr<Program> program_;
  std::unique_ptr<Editor> editor_;
  std::unique_ptr<CreatePages> createPages_;
  std::unique_ptr<Communication> communication_;
  std::unique_ptr<MainWindow> window_;
};

} // namespace calder
