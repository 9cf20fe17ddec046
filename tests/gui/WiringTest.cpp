// Every control of the main window: a gesture of the user's and what must be seen after it.
#include "ToolFixture.h"
#include "platform/TempFolder.h"
#include "tools/frame/ExpressionBox.h"

#include <QPushButton>

namespace calder::wiring_test {

struct Wiring : ToolFixture {
  void AddViews() {
    const auto range = [](auto start, auto end) { return std::to_string(start) + ".." + std::to_string(end); };
    views["x"] = [this, range] { return range(State().view.XStart, State().view.XEnd); };
    views["y"] = [this, range] { return range(State().view.YStart, State().view.YEnd); };
    views["scope"] = [this, range] {
      const Scope& scope = State().buffers.CurrentScope();
      return range(std::lround(scope.Start), std::lround(scope.End));
    };
    views["end"] = [this] { return std::to_string(std::lround(State().buffers.CurrentScope().End / 2000)); };
    for (const char* bar : {"HScroll_0", "HScroll_1"})
      views[bar] = [this, bar] {
        const auto* at = Find<QScrollBar>(bar);
        return at->isEnabled() ? std::to_string(at->value()) + "/" + std::to_string(at->maximum()) : "-";
      };
    views["curY"] = [this] { return Shown("Txt_Cur_Y").substr(0, 2); }; // the rest depends on the picture's height
    views["frames"] = [this] {
      return std::string(Find<QWidget>("Frm_Wave")->isVisible() ? "wave" : "") +
             (Find<QWidget>("Frm_Digital")->isVisible() ? "digital" : "");
    };
    views["pointer"] = [this] {
      return std::string(Find<QWidget>("Pict_Wave")->cursor().shape() == Qt::SizeHorCursor ? "resize" : "arrow");
    };
    views["picture"] = [this] {
      const QImage& image = Find<WaveformCanvas>("Pict_Wave")->Image();
      return std::to_string(qHashBits(image.constBits(), static_cast<std::size_t>(image.sizeInBytes())));
    };
    for (const int point : {10, 15, 100})
      views["code" + std::to_string(point)] = [this, point] { return std::to_string(Code(point)); };
    views["copied"] = [] { return QApplication::clipboard()->text().left(8).toStdString(); };
    views["copies"] = [this] { return std::to_string(desktop.copies.started); };
    views["title"] = [this] { return window->windowTitle().right(9).toStdString(); };
    views["files"] = [this] {
      std::vector<std::string> names = folder.Names();
      std::ranges::sort(names);
      std::string text;
      for (const std::string& name : names) text += name;
      return text;
    };
  }
  // "wheel PICTURE X NOTCHES MODIFIER", "hover PICTURE X Y", "drag FROM TO BUTTON"; a column is that of a point, or a
  // point's and some more.
  void AddVerbs() {
    const auto words = [](const std::string& rest) { return QString::fromStdString(rest).split(QLatin1Char(' ')); };
    const auto column = [this](const QString& text) {
      const int width = Find<WaveformCanvas>("Pict_Wave")->PixelWidth();
      if (!text.startsWith(QLatin1Char('@'))) return text.toInt();
      return application->TheEditor().view.PointToPixelX(text.mid(1).section('+', 0, 0).toDouble(), width) +
             text.section('+', 1, 1).toInt();
    };
    verbs["wheel"] = [this, words](const auto& name, const auto& rest) {
      const auto part = words(rest);
      const auto keys = QKeySequence(part.value(2) + QStringLiteral("A"))[0].keyboardModifiers();
      Wheel(name.c_str(), QPointF(part[0].toInt(), 50), part[1].toInt(), keys);
    };
    verbs["hover"] = [this, words, column](const auto& name, const auto& rest) {
      QTest::mouseMove(Find<QWidget>(name), {column(words(rest)[0]), words(rest)[1].toInt()});
    };
    verbs["drag"] = [this, words, column](const auto& name, const auto& rest) {
      const auto part = words(rest);
      auto* picture = Find<WaveformCanvas>(name);
      const QPoint from(column(part[0]), 60);
      const QPoint to(column(part[1]), 60);
      const auto button = part.value(2) == QLatin1String("right") ? Qt::RightButton : Qt::LeftButton;
      const auto keys = part.value(2) == QLatin1String("shift") ? Qt::ShiftModifier : Qt::NoModifier;
      QTest::mouseMove(picture, from);
      QTest::mousePress(picture, button, keys, from);
      QTest::mouseMove(picture, to);
      QTest::mouseRelease(picture, button, keys, to);
    };
    verbs["copy"] = [](const auto& text, const auto&) {
      QApplication::clipboard()->setText(QString::fromStdString(text));
    };
    verbs["file"] = [this](const auto& name, const auto&) { desktop.dialogs.Answer(folder / name); };
    verbs["remove"] = [this](const auto& name, const auto&) { std::filesystem::remove(folder / name); };
    verbs["ramp"] = [this](const auto&, const auto&) { Ramp(); };
  }
  const TempFolder folder;
};

TEST_F(Wiring, EveryGestureIsSeen) {
  PutFile(folder / "five.txt", "5\r\n");
  Start();
  AddViews();
  AddVerbs();
  State().settings.XUnit = State().settings.YUnit = 0;
  Ramp();
  const char* const pairs = "Comb_XZoom_0 Comb_XZoom_1 HScroll_0 HScroll_1";
  const char* const ends = "Label_Start_0 Label_End_0";
  const char* const yView = "y Label_W_Max Label_W_Offs Label_W_Min";
  const char* const readouts = "Txt_Start_X Txt_Start_Y Txt_End_X Txt_End_Y Txt_Scope focus";
  Walk({{"key Txt_Start_X Ctrl+U", "Txt_Start_X", "0.000000", "0.000000"}, // there is nothing to undo
                                                                           // The view.
        {"key Comb_XZoom_0 Down", pairs, "1:2 hidden 1:2 0/16384 0/16384", "1:1 hidden 1:1 - -"},
        {"", ends, "0.000000Word 262144.0Word"},
        {"key HScroll_0 Right", "x", "16..262160", "0..262144"},
        {"key HScroll_0 PgUp", "x", "262144..524288"},
        {"wheel Pict_Wave 10 1 Shift+", "x", "235936..498080"},
        {"click Opt_DspSel_1", "frames", "digital", "wave"},
        {"key Comb_XZoom_1 Down", pairs, "hidden 1:4 1:4 14746/24576 14746/24576", "~"},
        {"", "Label_Start_1 Label_End_1", "235936.0Word 367008.0Word"},
        {"key HScroll_1 Home", "x", "0..131072", "~"},
        {"wheel Pict_Digital 0 -2", "x", "0..524288", "~"},
        {"drag Pict_Digital 0 100", "scope", "0..524288", "0..524288"}, // there are no markers to grab
        {"hover Pict_Digital 0 20", "Txt_Cur_X_1", "0.000000", "~"},
        {"click Opt_DspSel_0", "frames", "wave", "digital"},
        {"wheel Pict_Wave 0 3", "x", "0..65536", "~"},
        {"wheel Pict_Wave 0 -20", "x", "0..524288", "~"},
        {"", yView, "0..65534 32767.00 0.000000 -32767.0"},
        {"key Comb_YZoom Down", yView, "16384..49151 16383.00 0.000000 -16384.0"},
        {"key VScroll Down", yView, "16386..49153 16381.00 -3.00000 -16386.0"},
        {"wheel Pict_Wave 10 -1 Ctrl+", yView, "0..65534 32767.00 0.000000 -32767.0"},
        {"key Txt_Start_X Alt+H", "focus", "Comb_XZoom_0"},
        {"key Txt_Start_X Alt+V", "focus", "Comb_YZoom"},
        // The markers.
        {"type Txt_Start_X 1000", readouts, "1000.000 1000.000 524288.0 14287.00 523288.0 Txt_End_X"},
        {"tab Txt_End_X 2k", readouts, "1000.000 1000.000 2000.000 2000.000 1000.000 Comb_XZoom_0"},
        {"type Txt_Scope 500", "scope focus", "1000..1500 Txt_Start_X"},
        {"type Txt_Start_X 1600", "Txt_Start_X", "1000.000", "1000.000"}, // refused
        {"click Opt_Scope_1; type Txt_Start_X 3000", "scope", "3000..3500"},
        {"click Opt_Scope_0; type Txt_Start_X 2000", "scope", "2000..3500"},
        {"key VScroll Alt+A", "focus", "Txt_Start_X"},
        {"key Txt_Start_X Alt+B", "focus", "Txt_End_X"},
        {"key Txt_Start_X Alt+-", "focus", "Txt_Scope"},
        {"type Txt_End_X 262144; hover Pict_Wave @262144 60", "pointer", "resize", "arrow"},
        {"hover Pict_Wave @262144+9 60", "pointer", "arrow"},
        {"drag Pict_Wave @262144 40 right", "scope", "2000..262144", "2000..262144"},
        {"drag Pict_Wave @262144 40 shift", "scope", "2000..262144", "2000..262144"},
        {"drag Pict_Wave @262144 32767", "scope", "2000..262144", "2000..262144"}, // outside of it
        {"drag Pict_Wave @262144 @131072", "end", "66", "131"},
        {"hover Pict_Wave 0 1", "Txt_Cur_X_0 Txt_Cur_X_1 Txt_Cur_Y", "~", "~"},
        {"", "Txt_Cur_X_0 Txt_Cur_X_1 curY", "0.000000 hidden 0.000000 32"},
        // Commands by key and by button.
        {"click Tool_Grid", "picture", "~", "~"},
        {"", "Menu_Grid", "unchecked"},
        {"type Txt_Start_X 10; type Txt_End_X 20", "scope", "10..20"},
        {"click Tool_Copy", "copied", "10\n11\n12", "~"},
        {"click Tool_Cut", "code100", "110", "100"},
        {"click Tool_Undo", "Menu_Undo Tool_Undo", "&Redo Redo", "&Undo Undo"},
        {"click Tool_Undo", "code100", "110", "100"},
        {"click Tool_Paste", "code15", "15", "25"},
        {"click Tool_Delete", "code100", "120", "110"},
        {"key Txt_Start_X Ctrl+U", "code100", "110", "120"},
        {"key Txt_Start_X Ctrl+D", "code100", "120", "110"},
        {"key Txt_Start_X Ctrl+X", "code100", "130", "120"},
        {"key Txt_Start_X Ctrl+V", "code10", "30", "40"},
        {"copy old", "copied", "old"},
        {"key Txt_Start_X Ctrl+C", "copied", "30\n31\n32"},
        {"key Txt_Start_X Ctrl+N", "copies", "1", "0"},
        {"file all.wdb; key Txt_Start_X Ctrl+A", "title", "/all.wdb>", "~"},
        {"file all.txt; key Txt_Start_X Ctrl+T", "files", "all.txtall.wdbfive.txt", "all.wdbfive.txt"},
        {"file five.txt; key Txt_Start_X Ctrl+O", "code100", "5", "~"},
        {"remove five.txt", "files", "all.txtall.wdb"},
        {"key Txt_Start_X Ctrl+S", "files", "all.txtall.wdbfive.txt"},
        {"remove five.txt", "files", "all.txtall.wdb"},
        {"click Tool_Save", "files", "all.txtall.wdbfive.txt"},
        {"ramp", "code100", "100"},
        {"file five.txt; click Tool_Open", "code100", "5"}});
  desktop.boxes.Expect("Exit Program.", BoxAnswer::No);
  Do("menu Menu_Exit");
  EXPECT_TRUE(window->isVisible());
  for (const auto& [gesture, form] : {std::pair{"menu Menu_Create", "CreateDialog"},
                                      {"click Opt_DlgSel_0", "CreateDialog"},
                                      {"menu Menu_System", "SystemDialog"}}) {
    QString name;
    Within([&] { name = driven->objectName(); });
    Do(gesture);
    EXPECT_EQ(name, form) << gesture;
  }
}

TEST_F(Wiring, KeysMoveMarkersAndAreHeardOf) {
  Start();
  AddViews();
  AddVerbs();
  State().settings.XUnit = 0;
  auto* picture = Find<WaveformCanvas>("Pict_Wave");
  views["spoken"] = [&] {
    return QAccessible::queryAccessibleInterface(picture)->text(QAccessible::Value).left(23).toStdString();
  };
  const auto pixel = std::lround(1 + 8192.0 / picture->PixelWidth());
  State().view.XEnd = 8192;
  Walk({{"key Pict_Wave Right", "scope spoken", "1..524288 marker A: 1.000000 Word", "~"},
        {"key Pict_Wave Shift+Right", "scope", std::to_string(pixel) + "..524288"},
        {"key Pict_Wave Left; key Pict_Wave Shift+Left", "scope", "0..524288"},
        {"key Pict_Wave Left", "scope", "0..524288", "0..524288"},
        {"key Pict_Wave B; key Pict_Wave Ctrl+Left", "scope", "0..516096"},
        {"set Comb_XZoom_0 7; key Pict_Wave A", "x", "0..4096", "~"},
        {"key Pict_Wave Ctrl+Right", "scope x", "4096..516096 0..4096", "~"},
        {"key Pict_Wave Right", "x", "2048..6144"},
        {"type Txt_End_X 400000; key Pict_Wave Right", "scope", "4097..400001", "~"}});
}

TEST_F(Wiring, LanesAreSelectedCopiedAndWritten) {
  Start();
  AddViews();
  AddVerbs();
  State().settings.XUnit = State().settings.YUnit = 0;
  Ramp();
  Do("click Opt_DspSel_1; type Txt_End_X 500k");
  EXPECT_EQ(Focus(), "Btn_Pattern_0");
  auto* picture = Find<WaveformCanvas>("Pict_Digital");
  auto* box = Find<ExpressionBox>("Txt_Pattern");
  const auto middle = [picture](const std::string& lane) {
    const LaneRows rows = W_RowsOfLane(std::stoi(lane), picture->PixelHeight());
    return QPoint(300, (rows.top + rows.bottom) / 2);
  };
  views["lanes"] = [picture] {
    const QImage& image = picture->Image();
    return std::to_string(qHashBits(image.constBits(), static_cast<std::size_t>(image.sizeInBytes())));
  };
  views["lanePointer"] = [picture] {
    return std::string(picture->cursor().shape() == Qt::BitmapCursor ? "image" : "arrow");
  };
  views["pattern"] = [box] { return box->Text().toStdString(); };
  views["selected"] = [box] { return box->SelectedText().toStdString(); };
  verbs["over"] = [&](const auto& lane, const auto&) { QTest::mouseMove(picture, middle(lane)); };
  verbs["lane"] = [&](const auto& lane, const auto& keys) { // REST: a modifier, or the right button
    const auto button = keys == "right" ? Qt::RightButton : Qt::LeftButton;
    const auto modifiers =
        keys == "right" ? Qt::NoModifier : QKeySequence(QString::fromStdString(keys + "A"))[0].keyboardModifiers();
    QTest::mouseClick(picture, button, modifiers, middle(lane));
  };
  verbs["drop"] = [&](const auto& from, const auto& to) {
    QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, middle(from));
    QTest::mouseMove(picture, middle(to));
    QTest::mouseRelease(picture, Qt::LeftButton, Qt::NoModifier, middle(to));
  };
  verbs["press"] = [this](const auto& keys, const auto&) { // an access key: its button is down for a moment
    Do("key Txt_Start_X " + keys);
    const auto buttons = Find<QWidget>("Panel_Ptn")->template findChildren<QAbstractButton*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::ranges::none_of(buttons, &QAbstractButton::isDown); }));
  };
  verbs["part"] = [this](const auto& number, const auto&) {
    QMenu* parts = Find<QPushButton>("Btn_Parts")->menu();
    Q_EMIT parts->aboutToShow();
    parts->actions()[std::stoi(number)]->trigger();
  };
  verbs["all"] = [box](const auto&, const auto&) { box->selectAll(); };
  verbs["paste"] = [box](const auto&, const auto&) {
    QApplication::clipboard()->setText(QStringLiteral("Mask $F 'four bits\n0H"));
    box->paste();
  };
  verbs["expect"] = [this](const auto&, const auto&) { desktop.boxes.Expect("Syntax error."); };
  Walk(
      {{"over 3", "lanePointer Label_Lane", "image lane 3  bit 12  weight 4096  value 0"},
       {"lane 3 right", "Label_Mask", "no bit selected", "no bit selected"},
       {"lane 3", "Label_Mask", "bit 12 = $1000"},
       {"lane 15 Ctrl+", "Label_Mask", "bits 12, 0 = $1001"},
       {"lane 14 Ctrl+Shift+", "Label_Mask", "bits 12, 0 = $1001", "bits 12, 0 = $1001"},
       {"click Btn_Pattern_1", "code100", "4197", "100"},
       {"press Alt+0", "code100", "100"},
       {"press Alt+/", "code100", "4197"},
       {"click Tool_Undo", "code100", "100"},
       {"drop 13 0", "code100 lanePointer", "-32668 arrow"},
       {"key Pict_Digital Escape; key . End; key . Space; key . Home; key . Space", "Label_Mask", "bits 15, 0 = $8001"},
       {"key . Down; key . Return; key . Up", "Label_Lane", "copy bit 14 to 15"},
       {"key . Return", "code100 Label_Mask", "100 bit 15 = $8000"},
       {"key . A; key . Shift+Right", "lanes", "~"}, // the ground between the markers
       {"type Txt_Start_X 0", "scope", "0..500000"},
       {"key Pict_Digital Down", "lanes", "~"},
       {"type Txt_Start_X 0", "lanes", "~"}, // no frame where no keys go
       {"on Txt_Pattern Mask $F 0H", "lanes", "~"},
       {"on Txt_Pattern 3", "Label_Note", "Syntax error.  L, H, N, X or $ expected after the count"},
       {"expect; click Btn_Pattern_3", "focus", "Txt_Pattern", "Txt_Pattern"},
       {"copy mine; all; key . Ctrl+X", "pattern Label_Note copied", "mine"},
       {"key . Ctrl+V; key . Ctrl+V", "pattern", "Mask $F 0H3Mask $F 0H3"},
       {"all; key . Ctrl+C; key . Ctrl+D; key . Ctrl+D", "pattern", ""},
       {"", "code100", "100"},
       {"paste", "pattern", "Mask $F  0H"}, // its comment ends with the line
       {"press Alt+*", "code100", "111"},
       {"part 1", "pattern focus", "Mask $F  0H 4L Txt_Pattern"},
       {"key Txt_Start_X Escape", "focus", "Txt_Start_X"}});
  box->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(See("selected"), "Mask $F  0H 4L");
}

} // namespace calder::wiring_test
