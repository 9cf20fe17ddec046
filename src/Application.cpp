#include "Application.h"

#include "editor/MainWindow.h"
#include "platform/qt/Theme.h"
#include "print/Printing.h"
#include "print/VersionDialog.h"
#include "setup/Communication.h"
#include "tools/create/CreateDialog.h"
#include "tools/elastic/ElasticDialog.h"
#include "tools/import/ImportWindows.h"
#include "tools/interpolate/SplineDialog.h"
#include "tools/operate/CalcDialog.h"
#include "tools/pwf/PwfDialog.h"

#include <QApplication>
#include <QEvent>
#include <QSessionManager>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <utility>

// Resources in a static library are linked only when somebody asks for them.
static void InitIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace calder {
namespace {

constexpr int kWarmUpDelay = 150; // milliseconds
constexpr int kSettled = 100;     // milliseconds without input after which a waveform is taken for finished

// Calls back each time that the user has stopped for a moment after an input that may have changed something.
class PauseAfterInput final : public QObject {
public:
  PauseAfterInput(std::function<void()> paused, QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setInterval(kSettled);
    connect(&timer_, &QTimer::timeout, this, [paused = std::move(paused)] { paused(); });
    qApp->installEventFilter(this);
  }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
    case QEvent::Drop: timer_.start(); break;
    default: break;
    }
    return false;
  }

private:
  QTimer timer_;
};
// Calls back once; the owner owns the timer.
void After(int milliseconds, QObject* owner, std::function<void()> act) {
  auto* timer = new QTimer(owner);
  timer->setSingleShot(true);
  QObject::connect(timer, &QTimer::timeout, owner, [act = std::move(act)] { act(); });
  timer->start(milliseconds);
}

// The shown view as it is printed, with the labels that stand around it.
WaveReport WaveReportOf(const Editor& editor) {
  const Program& program = editor.program;
  WaveReport report;
  report.wave = program.buffers.Current();
  report.points = program.settings.MemorySize;
  report.digital = editor.ShownView() == Editor::ViewKind::Digital;
  report.xStart = program.view.XStart;
  report.xSpan = program.view.XEnd - program.view.XStart;
  report.yStart = program.view.YStart;
  report.ySpan = program.view.YEnd - program.view.YStart;
  report.top = report.digital ? "MSB" : editor.view.MaxLabel();
  report.middle = report.digital ? std::string() : editor.view.OffsetLabel();
  report.bottom = report.digital ? "LSB" : editor.view.MinLabel();
  report.start = editor.view.StartLabel();
  report.end = editor.view.EndLabel();
  return report;
}

constexpr int kEndLook = 50;   // milliseconds between two looks whether a cancelled transfer has ended
constexpr int kEndLooks = 200; // then the instrument is left as it is

} // namespace

Application::Application(const Desktop& desktop, ModelDatabase database)
    : program_(std::make_unique<Program>(desktop, std::move(database))) {
  InitIcons();
  ApplyTheme(*qApp, program_->language == Language::English);
}

Application::~Application() = default;

void Application::AddTools() {
  createPages_ = std::make_unique<CreatePages>(*program_, editor_->setup, editor_->fileCommands, *editor_);
  splineDesk_ = std::make_unique<SplineDesk>(*program_, editor_->view, editor_->setup, editor_->fileCommands, *editor_);
  pwfDesk_ = std::make_unique<PwfDesk>(*program_, editor_->setup, editor_->fileCommands, *editor_, [this] {
    return Scope{createPages_->Page().StartX, createPages_->Page().EndX};
  });
  communication_ =
      std::make_unique<Communication>(*program_, editor_->setup, editor_->fileCommands, editor_->waveFiles);
  // A row a tool: its number, how much of the main window waits for it, how its form is made.
  const MainWindow::Tool tools[] = {
      {kToolCreate, ToolModality::Modal,
       [this](QWidget* parent) {
         auto form = std::make_unique<CreateDialog>(*program_, *createPages_, parent);
         form->PrepareForMainWindow();
         return form;
       }},
      {kToolSpline, ToolModality::Modeless,
       [this](QWidget* parent) { return std::make_unique<SplineDialog>(*program_, *splineDesk_, parent); }},
      {kToolPwf, ToolModality::Modal,
       [this](QWidget* parent) { return std::make_unique<PwfDialog>(*program_, *pwfDesk_, parent); }},
      {kToolElastic, ToolModality::Modal,
       [this](QWidget* parent) {
         auto elastic = std::make_unique<Elastic>(program_->buffers, program_->settings, program_->units,
                                                  program_->view, *editor_);
         return std::make_unique<ElasticDialog>(std::move(elastic), program_->registry, program_->units,
                                                program_->messages, parent);
       }},
      {kToolCalc, ToolModality::Modal, [this](QWidget* parent) { return MakeOperate(parent); }},
      {kToolSystem, ToolModality::Modal,
       [this](QWidget* parent) { return communication_->MakeSystemSetup(*editor_, parent); }},
  };
  for (MainWindow::Tool tool : tools) {
    tool.make = [this, make = std::move(tool.make)](QWidget* parent) {
      std::unique_ptr<ToolForm> form = make(parent);
      if (form == nullptr) return form;
      QObject::connect(form.get(), &ToolForm::PrintWanted, form.get(), [this, owner = form.get()] {
        printing_->ShowDialog(program_->selectedTool, program_->names.CurrentWaveFile, owner);
      });
      return form;
    };
    window_->AddTool(std::move(tool));
  }
  if (SimulatedBench(program_->desktop.folders.bus).Present()) {
    window_->ShowStatus(program_->messages.Pick(
        "計測器はシミュレーションです。実機を使うには CALDER_BUS_PATH= ./run で起動してください。",
        "The instruments are simulated. For real ones start the editor with CALDER_BUS_PATH= ./run"));
  }
}

void Application::AddPrinting() {
  printing_ = std::make_unique<Printing>(
      program_->desktop, program_->registry, program_->messages,
      PrintSource{program_->settings, program_->units, program_->pages, program_->functions,
                  [this] { return communication_->ReportTexts(); }, [this] { return WaveReportOf(*editor_); }});
  window_->Offer(Command::Print, [this] {
    printing_->ShowDialog(program_->selectedTool, program_->names.CurrentWaveFile, window_.get());
  });
  window_->Offer(Command::Export, [this] { printing_->ExportPicture(program_->names.CurrentWaveFile); });
  window_->Offer(Command::Version, [this] { ShowVersion(); });
}

void Application::ShowVersion() {
  const Language language = program_->messages.GetLanguage();
  QStringList components{QStringLiteral("Qt ") + QString::fromLatin1(qVersion())};
  for (const std::string& line : communication_->BusLines()) components << QString::fromStdString(line);
  VersionDialog(Make_VersionText(language, QCoreApplication::applicationFilePath().toStdString()), components,
                program_->messages, window_.get())
      .exec();
}

// Nothing is looked for before the user asks for it.
void Application::AddImport() {
  importWindows_ = std::make_unique<ImportWindows>(program_->registry, program_->messages);
  import_ = std::make_unique<PluginImport>(
      program_->desktop, program_->messages, program_->buffers, program_->settings, program_->names, *importWindows_,
      PluginImport::Hooks{[this](const std::string& path) { editor_->fileCommands.RememberFolder(path); },
                          [this](const std::string& text) { window_->ShowNote(text); }});
  editor_->fileCommands.SetFormat(
      Kind_Import,
      {[this](const std::string& /*path*/) { return import_->Import_Plugin(program_->desktop.fileDialogs); }, {}});
}

std::unique_ptr<ToolForm> Application::MakeOperate(QWidget* parent) {
  auto operate = std::make_unique<Operate>(program_->buffers, program_->settings, program_->units,
                                           program_->fileLibrary, program_->desktop.clipboard, program_->messages);
  if (!operate->Open()) return nullptr;
  return std::make_unique<CalcDialog>(
      std::move(operate), program_->registry, program_->units, program_->messages,
      [this](QWidget* owner, const Operate& target, std::function<void()> redraw) {
        CreateDialog form(*program_, *createPages_, owner);
        form.PrepareForOperate({target.Operand(), target.Range()}, std::move(redraw));
        form.exec();
        return !createPages_->Cancelled();
      },
      parent);
}

bool Application::Start(const std::vector<std::string>& files) {
  editor_ = std::make_unique<Editor>(*program_);
  if (!editor_->Start()) return false;
  window_ = std::make_unique<MainWindow>(*editor_);
  AddTools();
  AddPrinting();
  AddImport();
  QObject::connect(
      qApp, &QGuiApplication::commitDataRequest, window_.get(),
      [this](QSessionManager& session) {
        // Who may not speak to the user may still refuse.
        if (!session.allowsErrorInteraction() || !window_->SessionMayEnd()) session.cancel();
      },
      Qt::DirectConnection);
  window_->show();
  // After the first picture of the window, so that a message about the file has a window to belong to.
  if (!files.empty()) After(0, window_.get(), [this, files] { OpenFiles(files); });
  // Once the window stands, there is time for what makes the first edit as fast as the later ones.
  After(kWarmUpDelay, window_.get(), [this] { program_->buffers.WarmUp(); });
  // System Setup and Save need the control points: they are looked for before the user gets there.
  new PauseAfterInput([this] { program_->controlPoints.Prepare(program_->buffers.Points()); }, window_.get());
  return true;
}

void Application::OpenFiles(const std::vector<std::string>& files) {
  for (std::size_t i = 1; i < files.size(); ++i) {
    if (program_->desktop.instances.StartCopy(files[i])) continue;
    editor_->ReportNoCopy();
    break;
  }
  editor_->OpenCommandLine(files.front());
}

void Application::End() {
  if (lookedForEnd_ > 0 || !window_) return;
  window_->StoreSession();
  communication_->CancelTransfer();
  import_->Cancel();
  EndWhenIdle();
}

void Application::EndWhenIdle() {
  if (program_->registry.GetGpibHost() && ++lookedForEnd_ < kEndLooks) {
    After(kEndLook, window_.get(), [this] { EndWhenIdle(); });
    return;
  }
  if (!program_->registry.GetGpibHost()) {
    QCoreApplication::exit(0); // what dialogs wait for comes back as cancelled
    return;
  }
  StoreAtExit(); // a bus call does not come back
  std::_Exit(1);
}

void Application::StoreAtExit() {
  if (window_) window_->StoreSession();
  if (program_->registry.GetGpibHost()) program_->registry.SetGpibBusy(false);
  program_->registry.Release();
}

} // namespace calder
