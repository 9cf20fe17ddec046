#include "app/Program.h"

#include "libs/eval32/eval32.h"
#include "libs/file32/file32.h"
#include "libs/sysinf32/sysinf32.h"

#include <utility>

namespace calder {

struct Program::Engines {
  explicit Engines(ModelDatabase database) : models(std::move(database)) {}

  ModelDatabase models;
  std::array<CommandTable, 4> commandTables;
  File32 fileLibrary;
  Evaluator evaluator;
};

Program::Program(const Desktop& desktopServices) : Program(desktopServices, ModelDatabase()) {}

Program::Program(const Desktop& desktopServices, ModelDatabase database)
    : engines_(std::make_unique<Engines>(std::move(database))), desktop(desktopServices),
      registry(desktop.settings, desktop.instances),
      language(desktop.language.DefaultLangID() == SystemLanguage::kJapanese ? Language::Japanese : Language::English),
      messages(desktop.messageBoxes, language), models(engines_->models), commandTables(engines_->commandTables),
      fileLibrary(engines_->fileLibrary), evaluator(engines_->evaluator) {}

Program::~Program() = default;

} // namespace calder
