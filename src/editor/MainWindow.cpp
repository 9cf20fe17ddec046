#include "editor/MainWindow.h"

#include "app/FormPosition.h"
#include "editor/DigitalView.h"
#include "editor/MainWindowCaptions.h"
#include "platform/qt/Placement.h"
#include "platform/qt/SvgIcon.h"
#include "platform/qt/Text.h"
#include "tools/frame/WindowPosition.h"
#include "ui_MainWindow.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>

namespace calder {
namespace {

constexpr int kDefaultWidth = 1120;
constexpr int kDefaultHeight = 700;
constexpr int kValueCharacters = 10;
constexpr int kAllInView = 1 << 24;

// Only what differs is touched, so that a control keeps its cursor and its selection.
void Fill(QLabel* label, const std::string& text) {
  if (const QString shown = Text(text); label->text() != shown) label->setText(shown);
}

// A box that is being typed into keeps its text until it is left.
void Fill(ValueBox* box, const std::string& text) {
  if (!box->hasFocus() || !box->isModified()) box->ShowText(Text(text));
}

void Fill(QComboBox* box, int index) {
  if (box->currentIndex() != index) box->setCurrentIndex(index);
}

void Fill(QScrollBar* bar, const ScrollBarState& state) {
  bar->setRange(state.minimum, state.maximum);
  // A bar that cannot move shows that everything is in view.
  bar->setPageStep(state.enabled ? std::max(1, state.largeChange) : kAllInView);
  bar->setSingleStep(1);
  bar->setValue(state.value);
  bar->setEnabled(state.enabled);
}

PicturePoint At(const WaveformCanvas& picture, QPoint pixel) {
  return {pixel.x(), pixel.y(), picture.PixelWidth(), picture.PixelHeight(), picture.Scale()};
}

} // namespace

MainWindow::MainWindow(Editor& editor) : editor_(editor), ui_(std::make_unique<Ui::MainWindow>()) {
  ui_->setupUi(this);
  setWindowIcon(IconNamed("calder"));
  HideUnbuilt();
  editor_.program.formSetup = true;
  SetMainWindowCaptions(*this, editor_.program.messages);
  FillZoomLists();
  editor_.program.formSetup = false;
  for (ValueBox* box : findChildren<ValueBox*>()) box->SetCharacters(kValueCharacters);
  ConnectCommit(); // first: a typed value is taken before the command that follows
  ConnectMenus();
  ConnectView();
  ConnectReadouts();
  ConnectPictures();
  for (WaveformCanvas* picture : {ui_->Pict_Wave, ui_->Pict_Digital})
    picture->SetSpoken([this] { return Text(editor_.SpokenPicture()); });
  digital_ = std::make_unique<DigitalView>(*ui_, editor_);

  resize(FittingSize(*this, {kDefaultWidth, kDefaultHeight}));
  clsRegistry& registry = editor_.program.registry;
  if (const QScreen* where = screen()) {
    registry.SetScreen(where->virtualSize().width() * kTwipsPerPixel, where->virtualSize().height() * kTwipsPerPixel);
  }
  const FormPosition at = StoredPosition(registry, kFormName).value_or(FormPosition());
  move(at.left, at.top);

  editor_.SetPort(this);
  ui_->Opt_DspSel_0->setChecked(true);
  Show(kEverything);
  ui_->Txt_Start_X->setFocus();
}

MainWindow::~MainWindow() {
  // A box that has the focus loses it when it is destroyed, after this object's own members.
  for (QWidget* child : findChildren<QWidget*>()) child->disconnect(this);
  editor_.SetPort(nullptr);
}

void MainWindow::FillZoomLists() {
  for (QComboBox* box : {ui_->Comb_XZoom_0, ui_->Comb_XZoom_1}) {
    for (int i = 0; i < WaveView::kXZooms; ++i) box->addItem(QStringLiteral("1:%1").arg(1 << i));
  }
  for (int i = 0; i < WaveView::kYZooms; ++i) ui_->Comb_YZoom->addItem(QStringLiteral("1:%1").arg(1 << i));
}

// Entries whose windows or formats do not exist yet are not offered.
void MainWindow::HideUnbuilt() {
  for (const WindowCommand& command : WindowCommands()) {
    if (command.call == nullptr && command.id != Command::Exit)
      findChild<QAction*>(QLatin1String(command.action))->setVisible(false);
  }
  for (QMenu* menu : {ui_->Menu_Tools, ui_->Menu_MHelp}) menu->menuAction()->setVisible(false);
  for (QWidget* tool : ui_->Panel_Dlg->findChildren<QWidget*>()) tool->hide();
  ui_->Panel_Dlg->setVisible(false);
}

void MainWindow::AddTool(Tool tool) {
  if (tool.number == kToolSystem) {
    ui_->Menu_System->setVisible(true);
    connect(ui_->Menu_System, &QAction::triggered, this, [this, tool = std::move(tool)] { OpenTool(tool, nullptr); });
    return;
  }
  QAction* const entries[] = {ui_->Menu_Create, ui_->Menu_Compress, ui_->Menu_Spline, ui_->Menu_Compute, ui_->Menu_Pwf};
  QToolButton* const buttons[] = {ui_->Opt_DlgSel_0, ui_->Opt_DlgSel_1, ui_->Opt_DlgSel_2, ui_->Opt_DlgSel_3,
                                  ui_->Opt_DlgSel_4};
  QAction* entry = entries[tool.number];
  QToolButton* button = buttons[tool.number];
  entry->setVisible(true);
  button->show();
  ui_->Line_Dlg->show();
  ui_->Panel_Dlg->show();
  ui_->Menu_Tools->menuAction()->setVisible(true);
  SetMainWindowCaptions(*this, editor_.program.messages);
  // The menu entry presses the button.
  connect(entry, &QAction::triggered, button, &QToolButton::click);
  connect(button, &QToolButton::clicked, this, [this, button, tool = std::move(tool)] { OpenTool(tool, button); });
}

void MainWindow::Offer(Command command, std::function<void()> open) {
  auto* entry = findChild<QAction*>(QLatin1String(CommandRow(command).action));
  entry->setVisible(true);
  for (QMenu* menu : menuBar()->findChildren<QMenu*>()) {
    if (menu->actions().contains(entry)) menu->menuAction()->setVisible(true);
  }
  connect(entry, &QAction::triggered, this, [open = std::move(open)] { open(); });
}

void MainWindow::OpenTool(const Tool& tool, QToolButton* button) {
  HideNote();
  if (button != nullptr) button->setChecked(true);
  editor_.ToolOpened(tool.number, tool.modality);
  std::unique_ptr<ToolForm> form = tool.make(this);
  if (form != nullptr && tool.modality == ToolModality::Modeless) {
    modeless_ = std::move(form);
    connect(modeless_.get(), &QDialog::finished, this, [this, button] {
      modeless_.release()->deleteLater(); // it is still at its closing
      ToolClosed(button);
    });
    modeless_->setWindowModality(Qt::NonModal);
    modeless_->show();
    return;
  }
  if (form != nullptr) {
    form->exec();
  }
  ToolClosed(button);
}

void MainWindow::ToolClosed(QToolButton* button) {
  if (button != nullptr) button->setChecked(false);
  editor_.ToolClosed();
}

void MainWindow::ShowStatus(const std::string& text) {
  auto* line = new QLabel(Text(text), this);
  line->setObjectName(QStringLiteral("Label_Status"));
  statusBar()->setSizeGripEnabled(false);
  statusBar()->addWidget(line, 1);
}

void MainWindow::ShowNote(const std::string& text) {
  statusBar()->setSizeGripEnabled(false);
  statusBar()->show();
  statusBar()->showMessage(Text(text));
}

void MainWindow::HideNote() {
  auto* bar = findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly);
  if (bar == nullptr || bar->currentMessage().isEmpty()) return;
  bar->clearMessage();
  bar->setVisible(findChild<QLabel*>(QStringLiteral("Label_Status")) != nullptr);
}

void MainWindow::CommitFocus() {
  if (auto* box = qobject_cast<ValueBox*>(focusWidget()); box != nullptr) box->Commit();
}

void MainWindow::ConnectCommit() {
  for (QAction* action : findChildren<QAction*>()) connect(action, &QAction::triggered, this, &MainWindow::CommitFocus);
  for (QToolButton* button : ui_->Frm_Common->findChildren<QToolButton*>())
    connect(button, &QToolButton::clicked, this, &MainWindow::CommitFocus);
  for (QAbstractButton* button : ui_->Panel_Ptn->findChildren<QAbstractButton*>())
    connect(button, &QAbstractButton::clicked, this, &MainWindow::CommitFocus);
}

void MainWindow::ConnectMenus() {
  for (const WindowCommand& command : WindowCommands()) {
    if (command.call != nullptr)
      connect(findChild<QAction*>(QLatin1String(command.action)), &QAction::triggered, this, [this, &command] {
        HideNote();
        editor_.commands.SetTextTarget(focusWidget() == ui_->Txt_Pattern ? digital_.get() : nullptr);
        editor_.Do(command);
      });
  }
  connect(ui_->Menu_Exit, &QAction::triggered, this, &QWidget::close);
}

void MainWindow::ConnectView() {
  // While the controls are filled their signals mean nothing.
  const auto follow = [this](auto* control, auto signal, auto apply) {
    connect(control, signal, this, [this, apply](int value) {
      if (!showing_) editor_.Apply(kViewMoved, [&] { return apply(editor_.view, value); });
    });
  };
  for (QComboBox* box : {ui_->Comb_XZoom_0, ui_->Comb_XZoom_1})
    follow(box, &QComboBox::currentIndexChanged, [](WaveView& view, int index) { view.ZoomX(index); });
  follow(ui_->Comb_YZoom, &QComboBox::currentIndexChanged, [](WaveView& view, int index) { view.ZoomY(index); });
  for (QScrollBar* bar : {ui_->HScroll_0, ui_->HScroll_1})
    follow(bar, &QScrollBar::valueChanged, [](WaveView& view, int value) { return view.Hrizontal_Scroll(value); });
  follow(ui_->VScroll, &QScrollBar::valueChanged,
         [](WaveView& view, int value) { return view.Vertical_Scroll(value); });
  connect(ui_->Opt_DspSel_0, &QToolButton::clicked, this, [this] { editor_.ChooseView(Editor::ViewKind::Wave); });
  connect(ui_->Opt_DspSel_1, &QToolButton::clicked, this, [this] { editor_.ChooseView(Editor::ViewKind::Digital); });
}

void MainWindow::ConnectReadout(ValueBox* box, bool (Markers::*type)(const std::string&)) {
  connect(box, &ValueBox::EditingFinished, this, [this, type](const QString& text) {
    editor_.Apply(Change::Picture | Change::Readouts, [&] { return (editor_.markers.*type)(text.toStdString()); });
  });
}

void MainWindow::ConnectReadouts() {
  ConnectReadout(ui_->Txt_Start_X, &Markers::TypeStart);
  ConnectReadout(ui_->Txt_End_X, &Markers::TypeEnd);
  ConnectReadout(ui_->Txt_Scope, &Markers::TypeScope);
  connect(ui_->Txt_Start_X, &ValueBox::FocusNext, this, [this] { ui_->Txt_End_X->setFocus(Qt::TabFocusReason); });
  connect(ui_->Txt_End_X, &ValueBox::FocusNext, this, [this] {
    QWidget* next = ui_->Comb_XZoom_0;
    if (editor_.ShownView() == Editor::ViewKind::Digital) next = ui_->Btn_Pattern_0;
    next->setFocus(Qt::TabFocusReason);
  });
  connect(ui_->Txt_Scope, &ValueBox::FocusNext, this, [this] { ui_->Txt_Start_X->setFocus(Qt::TabFocusReason); });
  connect(ui_->Opt_Scope_1, &QRadioButton::toggled, this, [this](bool on) { editor_.markers.SetTrack(on); });
}

void MainWindow::ConnectPictures() {
  for (WaveformCanvas* picture : {ui_->Pict_Wave, ui_->Pict_Digital}) {
    connect(picture, &WaveformCanvas::Resized, this, [this] { Draw_Wave(); });
    connect(picture, &WaveformCanvas::KeyPressed, this, &MainWindow::PictureKey);
    connect(picture, &WaveformCanvas::WheelTurned, this,
            [this, picture](QPoint pixel, int steps, Qt::KeyboardModifiers modifiers) {
              WheelTurned(*picture, pixel, steps, modifiers);
            });
  }
  WaveformCanvas* picture = ui_->Pict_Wave;
  connect(picture, &WaveformCanvas::Moved, this, &MainWindow::MouseMoved);
  connect(picture, &WaveformCanvas::Pressed, this,
          [this, picture](QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
            MouseMoved(pixel);
            if (button == Qt::LeftButton) editor_.MousePress(At(*picture, pixel), PressKeysOf(modifiers));
          });
  connect(picture, &WaveformCanvas::Released, this, [this, picture](QPoint pixel, Qt::MouseButton) {
    editor_.MouseRelease(At(*picture, pixel));
    picture->setCursor(editor_.ToolOnPicture() != nullptr ? Qt::CrossCursor : Qt::ArrowCursor);
  });
}

void MainWindow::PictureKey(int key, Qt::KeyboardModifiers modifiers) {
  const bool shift = modifiers.testFlag(Qt::ShiftModifier);
  const bool ctrl = modifiers.testFlag(Qt::ControlModifier);
  const auto step = ctrl ? Editor::KeyStep::Page : shift ? Editor::KeyStep::Pixel : Editor::KeyStep::Point;
  switch (key) {
  case Qt::Key_Backspace: editor_.BackspaceKey(); break;
  case Qt::Key_Left: editor_.MarkerKey(-1, step, ui_->Pict_Wave->PixelWidth()); break;
  case Qt::Key_Right: editor_.MarkerKey(1, step, ui_->Pict_Wave->PixelWidth()); break;
  case Qt::Key_A: editor_.ChooseMarker(Markers::Which::A); break;
  case Qt::Key_B: editor_.ChooseMarker(Markers::Which::B); break;
  default: break;
  }
}

void MainWindow::MouseMoved(QPoint pixel) {
  WaveformCanvas& picture = *ui_->Pict_Wave;
  editor_.MouseMove(pixel.x(), pixel.y(), picture.PixelWidth(), picture.PixelHeight(), picture.Scale(), true);
  const bool resize = editor_.markers.Grabbed() || editor_.markers.Hovering();
  Qt::CursorShape shape = resize ? Qt::SizeHorCursor : Qt::ArrowCursor;
  if (const PictureTool* tool = editor_.ToolOnPicture(); tool != nullptr && !editor_.markers.Grabbed()) {
    const PictureTool::Pointer pointer = tool->PointerAt(At(picture, pixel));
    if (pointer == PictureTool::Pointer::Hand)
      shape = Qt::PointingHandCursor;
    else if (!resize)
      shape = Qt::CrossCursor;
  }
  picture.setCursor(shape);
}

void MainWindow::WheelTurned(WaveformCanvas& picture, QPoint pixel, int steps, Qt::KeyboardModifiers modifiers) {
  const double across = std::clamp(static_cast<double>(pixel.x()) / picture.PixelWidth(), 0.0, 1.0);
  const double down = std::clamp(static_cast<double>(pixel.y()) / picture.PixelHeight(), 0.0, 1.0);
  editor_.Apply(kViewMoved, [&] {
    WaveView& view = editor_.view;
    if ((modifiers & Qt::ShiftModifier) != 0) return view.WheelScrollX(-steps);
    if ((modifiers & Qt::ControlModifier) != 0) {
      view.WheelZoomY(steps, down);
    } else {
      view.WheelZoomX(steps, across);
    }
    return true;
  });
}

void MainWindow::Draw_Wave() {
  const bool wave = editor_.ShownView() == Editor::ViewKind::Wave;
  WaveformCanvas* picture = wave ? ui_->Pict_Wave : ui_->Pict_Digital;
  if (!picture->IsSeen()) return;
  if (!wave) {
    digital_->Draw();
    return;
  }
  PixelContext context = picture->Context();
  editor_.painter.Draw_Wave(context);
  picture->Show();
}

void MainWindow::MoveMarkers() {
  PixelContext context = ui_->Pict_Wave->Context();
  editor_.markers.Move_Marker(context);
  const Markers::Touched touched = editor_.markers.LastTouched();
  ui_->Pict_Wave->ShowColumns(touched.left, touched.right);
}

void MainWindow::Show(Changes changes) {
  showing_ = true;
  if (changes.Has(Change::Title)) setWindowTitle(Text(editor_.Title()));
  if (changes.Has(Change::Commands)) ShowCommands();
  if (changes.Has(Change::View)) ShowView();
  if (changes.Has(Change::Readouts)) ShowReadouts();
  if (changes.Has(Change::Mouse)) ShowMouse();
  digital_->Show(changes);
  showing_ = false;
  if (changes.Has(Change::Picture)) {
    Draw_Wave();
  } else if (changes.Has(Change::Markers)) {
    // Selected lanes have another ground between the markers, and a typed pattern ends at them.
    editor_.ShownView() == Editor::ViewKind::Digital ? Draw_Wave() : MoveMarkers();
  }
}

void MainWindow::ShowCommands() {
  SetActionText(*ui_->Menu_Undo, Text(editor_.commands.UndoCaption()));
  ui_->Menu_Grid->setChecked(editor_.painter.GridShown());
  const bool free = !editor_.PartlyBlocked();
  for (QMenu* menu : {ui_->Menu_File, ui_->Menu_Edit, ui_->Menu_Tools, ui_->Menu_Set}) menu->setEnabled(free);
  // The entries too: their keys and tool buttons would work on.
  for (const WindowCommand& command : WindowCommands()) {
    const bool possible =
        command.id == Command::Version || (free && (command.id != Command::Undo || editor_.commands.CanUndo()));
    findChild<QAction*>(QLatin1String(command.action))->setEnabled(possible);
  }
  ui_->Panel_Dlg->setEnabled(free);
  ui_->Opt_DspSel_1->setEnabled(free);
  // Interpolate works on the waveform's picture.
  const bool wave = editor_.ShownView() == Editor::ViewKind::Wave;
  ui_->Opt_DlgSel_2->setEnabled(wave);
  ui_->Menu_Spline->setEnabled(wave);
  // A tool on the picture has keys there.
  ui_->Pict_Wave->setFocusPolicy(editor_.ToolOnPicture() != nullptr ? Qt::ClickFocus : Qt::NoFocus);
}

void MainWindow::ShowView() {
  const bool wave = editor_.ShownView() == Editor::ViewKind::Wave;
  // The frame that goes is hidden first, so that the window never has to hold both.
  (wave ? ui_->Frm_Digital : ui_->Frm_Wave)->setVisible(false);
  (wave ? ui_->Frm_Wave : ui_->Frm_Digital)->setVisible(true);
  const WaveView& view = editor_.view;
  for (QComboBox* box : {ui_->Comb_XZoom_0, ui_->Comb_XZoom_1}) Fill(box, view.XZoomIndex());
  Fill(ui_->Comb_YZoom, view.YZoomIndex());
  for (QScrollBar* bar : {ui_->HScroll_0, ui_->HScroll_1}) Fill(bar, view.HScroll());
  Fill(ui_->VScroll, view.VScroll());
  const ConvUnit& units = editor_.program.units;
  const std::pair<QLabel*, std::string> labels[] = {
      {ui_->Label_Start_0, view.StartLabel()},  {ui_->Label_Start_1, view.StartLabel()},
      {ui_->Label_End_0, view.EndLabel()},      {ui_->Label_End_1, view.EndLabel()},
      {ui_->Label_W_Max, view.MaxLabel()},      {ui_->Label_W_Offs, view.OffsetLabel()},
      {ui_->Label_W_Min, view.MinLabel()},      {ui_->Label_Unit_X_2, units.XUnitName()},
      {ui_->Label_Unit_X_5, units.XUnitName()}, {ui_->Label_Unit_Y_2, units.YUnitName()}};
  for (const auto& [label, text] : labels) Fill(label, text);
}

void MainWindow::ShowReadouts() {
  const Markers& markers = editor_.markers;
  Fill(ui_->Txt_Start_X, markers.StartXText());
  Fill(ui_->Txt_End_X, markers.EndXText());
  Fill(ui_->Txt_Scope, markers.ScopeText());
  Fill(ui_->Txt_Start_Y, markers.StartYText());
  Fill(ui_->Txt_End_Y, markers.EndYText());
  for (WaveformCanvas* picture : {ui_->Pict_Wave, ui_->Pict_Digital}) picture->SpokenChanged();
}

void MainWindow::ShowMouse() {
  for (ValueBox* box : {ui_->Txt_Cur_X_0, ui_->Txt_Cur_X_1}) Fill(box, editor_.MouseXText());
  Fill(ui_->Txt_Cur_Y, editor_.MouseYText());
}

void MainWindow::StorePosition() {
  StoreWindowPosition(editor_.program.registry, kFormName, *this);
}

bool MainWindow::MayClose(Editor::CloseReason reason) {
  StorePosition();
  return editor_.QueryUnload(reason);
}

bool MainWindow::SessionMayEnd() {
  return MayClose(Editor::CloseReason::SessionEnds);
}

void MainWindow::StoreSession() {
  StorePosition();
  editor_.StoreSession();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  CommitFocus();
  if (MayClose(Editor::CloseReason::User)) {
    if (modeless_ != nullptr) modeless_->close();
    event->accept();
  } else {
    event->ignore();
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.size() == 1 && urls.front().isLocalFile() && !editor_.PartlyBlocked()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  // After the drop: a message box here would hold up the program that the file came from.
  const std::string path = event->mimeData()->urls().front().toLocalFile().toStdString();
  auto* opening = new QTimer(this); // the window owns it
  opening->setSingleShot(true);
  connect(opening, &QTimer::timeout, this, [this, path] {
    CommitFocus();
    editor_.FileDropped(path);
  });
  connect(opening, &QTimer::timeout, opening, &QObject::deleteLater);
  opening->start(0);
}

} // namespace calder
