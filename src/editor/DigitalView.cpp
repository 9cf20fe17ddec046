#include "editor/DigitalView.h"

#include "platform/qt/SvgIcon.h"
#include "platform/qt/Text.h"
#include "ui_MainWindow.h"

#include <QEvent>
#include <QMenu>

namespace calder {
namespace {

constexpr int kPointerSize = 32; // logical pixels
constexpr QPoint kPointerTip(3, 8);
constexpr int kPatternCharacters = 65535;

// Only what differs is touched.
void ShowText(QLabel& label, const QString& text) {
  if (label.text() == text) return;
  label.setText(text);
  label.setToolTip(text); // where it is too long for its place
}

QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

Editor::PressKeys PressKeysOf(Qt::KeyboardModifiers modifiers) {
  const Qt::KeyboardModifiers keys = modifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
  if (keys == Qt::NoModifier) return Editor::PressKeys::None;
  return keys == Qt::ControlModifier ? Editor::PressKeys::Ctrl : Editor::PressKeys::Other;
}

DigitalView::DigitalView(Ui::MainWindow& form, Editor& editor) : ui_(form), editor_(editor) {
  ui_.Txt_Pattern->SetLines(1);
  ui_.Txt_Pattern->SetMaxLength(kPatternCharacters);
  ui_.Txt_Pattern->SetCommentMark(QLatin1Char('\''));
  ui_.Txt_Pattern->SelectAllOnFocus();
  ConnectPicture();
  ConnectPatterns();
}

DigitalView::~DigitalView() = default;

PicturePoint DigitalView::At(QPoint pixel) const {
  const WaveformCanvas& picture = *ui_.Pict_Digital;
  return {pixel.x(), pixel.y(), picture.PixelWidth(), picture.PixelHeight(), picture.Scale()};
}

void DigitalView::ConnectPicture() {
  WaveformCanvas* picture = ui_.Pict_Digital;
  picture->installEventFilter(this);
  connect(picture, &WaveformCanvas::Moved, this, [this](QPoint pixel) {
    editor_.LaneMove(At(pixel));
    ShowPointer();
  });
  connect(picture, &WaveformCanvas::Pressed, this,
          [this](QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
            editor_.LaneMove(At(pixel));
            if (button == Qt::LeftButton) editor_.LanePress(At(pixel), PressKeysOf(modifiers));
            ShowPointer();
          });
  connect(picture, &WaveformCanvas::Released, this, [this](QPoint pixel, Qt::MouseButton) {
    editor_.LaneRelease(At(pixel));
    ShowPointer();
  });
  connect(picture, &WaveformCanvas::KeyPressed, this, &DigitalView::KeyPressed);
}

void DigitalView::ConnectPatterns() {
  QAbstractButton* const buttons[] = {ui_.Btn_Pattern_0, ui_.Btn_Pattern_1, ui_.Btn_Pattern_2, ui_.Btn_Pattern_3};
  for (int item = 0; item < 4; ++item) {
    connect(buttons[item], &QAbstractButton::clicked, this, [this, item] {
      editor_.PatternPress(item);
      if (item != PatternDesk::kPattern) return;
      if (const std::optional<std::size_t> place = editor_.patterns.FaultPlace())
        ui_.Txt_Pattern->GoTo(CharacterAt(ui_.Txt_Pattern->Text(), *place));
    });
  }
  connect(ui_.Txt_Pattern, &ExpressionBox::textChanged, this,
          [this] { editor_.PatternTyped(ui_.Txt_Pattern->Text().toStdString()); });
  auto* parts = new QMenu(ui_.Btn_Parts); // NOLINT: the button owns it
  ui_.Btn_Parts->setMenu(parts);
  connect(parts, &QMenu::aboutToShow, this, &DigitalView::FillParts);
}

void DigitalView::FillParts() {
  QMenu* parts = ui_.Btn_Parts->menu();
  if (!parts->isEmpty()) return;
  const bool english = editor_.program.language == Language::English;
  for (const EvalEntry& entry : PatternEntries()) {
    const QString name = Utf8(entry.name);
    const QString help = Utf8(english ? entry.english : entry.japanese);
    // After the tab stands what a menu shows in a column of its own.
    const QAction* part = parts->addAction(name + QLatin1Char('\t') + help);
    connect(part, &QAction::triggered, this, [this, name] {
      ExpressionBox& box = *ui_.Txt_Pattern;
      box.setFocus(Qt::OtherFocusReason);
      box.moveCursor(QTextCursor::End);
      const QString text = box.Text();
      const bool apart = text.isEmpty() || text.endsWith(QLatin1Char(' '));
      box.Insert(apart ? name : QLatin1Char(' ') + name);
    });
  }
}

void DigitalView::KeyPressed(int key) {
  static constexpr struct {
    int key;
    LaneKey lane;
  } kKeys[] = {{Qt::Key_Up, LaneKey::Up},      {Qt::Key_Down, LaneKey::Down},    {Qt::Key_Home, LaneKey::First},
               {Qt::Key_End, LaneKey::Last},   {Qt::Key_Space, LaneKey::Select}, {Qt::Key_Return, LaneKey::Copy},
               {Qt::Key_Enter, LaneKey::Copy}, {Qt::Key_Escape, LaneKey::Escape}};
  for (const auto& row : kKeys) {
    if (row.key == key) editor_.LanePress(row.lane);
  }
}

bool DigitalView::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
  case QEvent::FocusIn: // the lane cursor is seen while keys come here
  case QEvent::FocusOut: editor_.Apply(Change::Picture, [] {}); break;
  case QEvent::Leave: editor_.LaneLeave(); break;
  default: break;
  }
  return QObject::eventFilter(watched, event);
}

void DigitalView::ShowPointer() {
  WaveformCanvas& picture = *ui_.Pict_Digital;
  if (editor_.lanes.PointerShape() == DigitalLanes::Pointer::Arrow) {
    picture.setCursor(Qt::ArrowCursor);
    return;
  }
  if (pointerScale_ != picture.Scale()) { // the first time, or on another screen
    pointerScale_ = picture.Scale();
    const QPixmap image = IconNamed("lanes").pixmap(QSize(kPointerSize, kPointerSize), pointerScale_);
    lanePointer_ = QCursor(image, kPointerTip.x(), kPointerTip.y());
  }
  picture.setCursor(lanePointer_);
}

void DigitalView::ShowFault() {
  const std::optional<std::size_t> place = editor_.patterns.FaultPlace();
  ui_.Txt_Pattern->MarkFault(place ? CharacterAt(ui_.Txt_Pattern->Text(), *place) : -1);
  ShowText(*ui_.Label_Note, Text(editor_.patterns.Note()));
}

void DigitalView::Show(Changes changes) {
  if (editor_.ShownView() != Editor::ViewKind::Digital) return;
  if (changes.Has(Change::Mouse)) ShowText(*ui_.Label_Lane, Text(editor_.lanes.LaneText()));
  if (!changes.Has(Change::Picture)) return;
  ShowText(*ui_.Label_Mask, Text(editor_.lanes.MaskText()));
  ShowFault();
}

void DigitalView::Draw() {
  WaveformCanvas& picture = *ui_.Pict_Digital;
  const DigitalLanes& lanes = editor_.lanes;
  PixelContext context = picture.Context();
  editor_.painter.Draw_Digital(context, {lanes.SelectedBits(), editor_.patterns.Ghost(),
                                         picture.hasFocus() ? lanes.CursorLane() : -1, lanes.PendingCopy()});
  picture.Show();
  ui_.Gutter_Lanes->ShowLanes(lanes.SelectedBits(), editor_.program.settings.DataBits, picture.PixelHeight());
}

std::string DigitalView::SelectedText() const {
  return ui_.Txt_Pattern->SelectedText().toStdString();
}

void DigitalView::ReplaceSelection(const std::string& text) {
  ui_.Txt_Pattern->Insert(Text(text));
}

} // namespace calder
