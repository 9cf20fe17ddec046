// Every control of the main window: a gesture of the user's and what must be seen after it.
#include "MainWindowFixture.h"
#include "platform/TempFolder.h"

#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>

#include <functional>

namespace calder {
namespace {

struct Wiring : MainWindowFixture {
  // What is looked at, as one text.
  std::string X() {
    const ViewState& view = State().view;
    return std::to_string(view.XStart) + ".." + std::to_string(view.XEnd);
  }
  std::string Y() {
    const ViewState& view = State().view;
    return std::to_string(view.YStart) + ".." + std::to_string(view.YEnd);
  }
  // Lists, bars and labels of both views.
  std::string Pairs() {
    std::string text;
    for (const char* name : {"Comb_XZoom_0", "Comb_XZoom_1"})
      text += Find<QComboBox>(name)->currentText().toStdString() + " ";
    for (const char* name : {"HScroll_0", "HScroll_1"}) {
      const auto* bar = Find<QScrollBar>(name);
      text += bar->isEnabled() ? std::to_string(bar->value()) + "/" + std::to_string(bar->maximum()) + " " : "- ";
    }
    return text + Label("Label_Start_0") + Label("Label_Start_1") + Label("Label_End_0") + Label("Label_End_1");
  }
  std::string Label(const char* name) { return Find<QLabel>(name)->text().toStdString() + " "; }
  std::string Scope() {
    return std::to_string(std::lround(State().buffers.CurrentScope().Start)) + ".." +
           std::to_string(std::lround(State().buffers.CurrentScope().End));
  }
  std::string Frames() {
    return std::string(Find<QWidget>("Frm_Wave")->isVisible() ? "wave" : "") +
           (Find<QWidget>("Frm_Digital")->isVisible() ? "digital" : "");
  }
  std::string Readouts() {
    std::string text;
    for (const char* name : {"Txt_Start_X", "Txt_Start_Y", "Txt_End_X", "Txt_End_Y", "Txt_Scope"})
      text += Shown(name) + " ";
    return text;
  }
  // The beginning: the code depends on the picture's height.
  std::string Mouse() {
    return (Shown("Txt_Cur_X_0") + " " + Shown("Txt_Cur_X_1") + " " + Shown("Txt_Cur_Y")).substr(0, 20);
  }
  std::string Pointer() {
    return Find<QWidget>("Pict_Wave")->cursor().shape() == Qt::SizeHorCursor ? "resize" : "arrow";
  }
  std::string Title() { return window->windowTitle().toStdString(); }

  void Key(const char* name, Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Find<QWidget>(name)->setFocus();
    QTest::keyClick(Find<QWidget>(name), key, keys);
  }
  // A shortcut or an access key, from the box that has the focus at the start.
  void Press(Qt::Key key, Qt::KeyboardModifiers keys) {
    Find<QWidget>("Txt_Start_X")->setFocus();
    QTest::keyClick(Find<QWidget>("Txt_Start_X"), key, keys);
  }
  void Drag(const char* name, int from, int to, Qt::MouseButton button = Qt::LeftButton,
            Qt::KeyboardModifiers keys = Qt::NoModifier) {
    auto* picture = Find<WaveformCanvas>(name);
    QTest::mouseMove(picture, QPoint(from, 60));
    QTest::mousePress(picture, button, keys, QPoint(from, 60));
    QTest::mouseMove(picture, QPoint(to, 60));
    QTest::mouseRelease(picture, button, keys, QPoint(to, 60));
  }
  void Hover(const char* name, int x, int y) { QTest::mouseMove(Find<QWidget>(name), QPoint(x, y)); }
  int Column(double point) {
    return application->TheEditor().view.PointToPixelX(point, Find<WaveformCanvas>("Pict_Wave")->PixelWidth());
  }
  std::string ModalWindow(const std::function<void()>& opens) {
    std::string name;
    QTimer::singleShot(0, [&name] {
      name = QApplication::activeModalWidget()->objectName().toStdString();
      QApplication::activeModalWidget()->close();
    });
    opens();
    return name;
  }
};

TEST_F(Wiring, EveryGestureIsSeen) {
  const TempFolder folder;
  PutFile(folder / "five.txt", "5\r\n");
  Start();
  State().settings.XUnit = State().settings.YUnit = 0;
  Ramp();
  desktop.dialogs.answers.clear();
  const auto open = [&] { desktop.dialogs.Answer(folder / "five.txt"); };
  const auto save = [&](const char* name) { desktop.dialogs.Answer(folder / name); };
  const auto written = [&](const char* name) {
    return std::string(std::filesystem::exists(folder / name) ? "file" : "none");
  };
  using Seen = std::function<std::string()>;
  const auto x = [this] { return X(); };
  const auto y = [this] { return Y() + " " + Label("Label_W_Max") + Label("Label_W_Offs") + Label("Label_W_Min"); };
  const auto pairs = [this] { return Pairs(); };
  const auto scope = [this] { return Scope(); };
  const auto code = [this] { return std::to_string(Code(100)); };
  const auto undo = [this] {
    return Find<QAction>("Menu_Undo")->text().toStdString() +
           (Find<QToolButton>("Tool_Undo")->isEnabled() ? "" : " off");
  };
  const auto picture = [this] {
    const QImage& image = Find<WaveformCanvas>("Pict_Wave")->Image();
    return std::to_string(qHashBits(image.constBits(), static_cast<std::size_t>(image.sizeInBytes())));
  };
  const auto focus = [] { return Focus(); };
  const auto frames = [this] { return Frames(); };
  const auto copied = [] { return QApplication::clipboard()->text().left(8).toStdString(); };
  const auto title = [this] { return Title().substr(Title().size() - 9); };
  const struct {
    const char* gesture;
    std::function<void()> act;
    Seen seen;
    std::string before; // "~": something else than after
    std::string after;  // "~": something else than before
  } rows[] = {
      {"Ctrl+U with nothing to undo", [this] { Press(Qt::Key_U, Qt::ControlModifier); },
       [this] { return Find<ValueBox>("Txt_Start_X")->text().toStdString(); }, "0.000000", "0.000000"},
      // The view.
      {"zoom list", [this] { Key("Comb_XZoom_0", Qt::Key_Down); }, pairs,
       "1:1 1:1 - - 0.000000Word 0.000000Word 524288.0Word 524288.0Word ",
       "1:2 1:2 0/16384 0/16384 0.000000Word 0.000000Word 262144.0Word 262144.0Word "},
      {"scroll bar", [this] { Key("HScroll_0", Qt::Key_Right); }, x, "0..262144", "16..262160"},
      {"scroll bar, a page", [this] { Key("HScroll_0", Qt::Key_PageUp); }, x, "16..262160", "262144..524288"},
      {"wheel with Shift", [this] { Wheel("Pict_Wave", QPointF(10, 50), 1, Qt::ShiftModifier); }, x, "~",
       "235936..498080"},
      {"digital view", [this] { Click("Opt_DspSel_1"); }, frames, "wave", "digital"},
      {"its zoom list", [this] { Key("Comb_XZoom_1", Qt::Key_Down); }, pairs, "~",
       "1:4 1:4 14746/24576 14746/24576 235936.0Word 235936.0Word 367008.0Word 367008.0Word "},
      {"its scroll bar", [this] { Key("HScroll_1", Qt::Key_Home); }, x, "~", "0..131072"},
      {"its wheel", [this] { Wheel("Pict_Digital", QPointF(0, 50), -2); }, x, "~", "0..524288"},
      {"its picture grabs no marker", [this] { Drag("Pict_Digital", 0, 100); }, scope, "0..524288", "0..524288"},
      {"its readout", [this] { Hover("Pict_Digital", 0, 20); }, [this] { return Shown("Txt_Cur_X_1"); }, "~",
       "0.000000"},
      {"waveform view", [this] { Click("Opt_DspSel_0"); }, frames, "digital", "wave"},
      {"wheel", [this] { Wheel("Pict_Wave", QPointF(0, 50), 3); }, x, "~", "0..65536"},
      {"wheel back", [this] { Wheel("Pict_Wave", QPointF(0, 50), -20); }, x, "~", "0..524288"},
      {"Y zoom list", [this] { Key("Comb_YZoom", Qt::Key_Down); }, y, "0..65534 32767.00 0.000000 -32767.0 ",
       "16384..49151 16383.00 0.000000 -16384.0 "},
      {"Y scroll bar", [this] { Key("VScroll", Qt::Key_Down); }, y, "~", "16386..49153 16381.00 -3.00000 -16386.0 "},
      {"wheel with Ctrl", [this] { Wheel("Pict_Wave", QPointF(10, 50), -1, Qt::ControlModifier); }, y, "~",
       "0..65534 32767.00 0.000000 -32767.0 "},
      {"access key of X", [this] { Press(Qt::Key_H, Qt::AltModifier); }, focus, "~", "Comb_XZoom_0"},
      {"access key of Y", [this] { Press(Qt::Key_V, Qt::AltModifier); }, focus, "~", "Comb_YZoom"},
      // The markers.
      {"A typed", [this] { Type("Txt_Start_X", "1000"); }, [this] { return Readouts(); }, "~",
       "1000.000 1000.000 524288.0 14287.00 523288.0 "},
      {"then B has the focus", [] {}, focus, "Txt_End_X", "Txt_End_X"},
      {"B typed", [this] { Type("Txt_End_X", "2k", Qt::Key_Tab); }, [this] { return Readouts(); }, "~",
       "1000.000 1000.000 2000.000 2000.000 1000.000 "},
      {"then the zoom list", [] {}, focus, "Comb_XZoom_0", "Comb_XZoom_0"},
      {"distance typed", [this] { Type("Txt_Scope", "500"); }, scope, "1000..2000", "1000..1500"},
      {"then A", [] {}, focus, "Txt_Start_X", "Txt_Start_X"},
      {"a refused text", [this] { Type("Txt_Start_X", "1600"); }, [this] { return Shown("Txt_Start_X"); }, "1000.000",
       "1000.000"},
      {"together",
       [this] {
         Click("Opt_Scope_1");
         Type("Txt_Start_X", "3000");
       },
       scope, "1000..1500", "3000..3500"},
      {"alone again",
       [this] {
         Click("Opt_Scope_0");
         Type("Txt_Start_X", "2000");
       },
       scope, "3000..3500", "2000..3500"},
      {"access key of A",
       [this] {
         Find<QWidget>("VScroll")->setFocus();
         QTest::keyClick(window, Qt::Key_A, Qt::AltModifier);
       },
       focus, "~", "Txt_Start_X"},
      {"access key of B", [this] { Press(Qt::Key_B, Qt::AltModifier); }, focus, "~", "Txt_End_X"},
      {"access key of dX", [this] { Press(Qt::Key_Minus, Qt::AltModifier); }, focus, "~", "Txt_Scope"},
      {"pointer over B",
       [this] {
         Type("Txt_End_X", "262144");
         Hover("Pict_Wave", Column(262144), 60);
       },
       [this] { return Pointer(); }, "arrow", "resize"},
      {"pointer beside it", [this] { Hover("Pict_Wave", Column(262144) + 9, 60); }, [this] { return Pointer(); },
       "resize", "arrow"},
      {"right button", [this] { Drag("Pict_Wave", Column(262144), 40, Qt::RightButton); }, scope, "2000..262144",
       "2000..262144"},
      {"Shift", [this] { Drag("Pict_Wave", Column(262144), 40, Qt::LeftButton, Qt::ShiftModifier); }, scope,
       "2000..262144", "2000..262144"},
      {"B dragged", [this] { Drag("Pict_Wave", Column(262144), 0x7FFF); }, scope, "2000..262144", "2000..262144"},
      {"B dragged inside", [this] { Drag("Pict_Wave", Column(262144), Column(131072)); },
       [this] { return std::abs(State().buffers.CurrentScope().End - 131072) < 600 ? std::string("there") : Scope(); },
       "~", "there"},
      {"mouse readout", [this] { Hover("Pict_Wave", 0, 1); }, [this] { return Mouse(); }, "~", "0.000000 0.000000 32"},
      // Commands by key and by button.
      {"grid", [this] { Click("Tool_Grid"); }, picture, "~", "~"},
      {"grid's state", [] {}, [this] { return std::string(Find<QAction>("Menu_Grid")->isChecked() ? "on" : "off"); },
       "off", "off"},
      {"markers typed",
       [this] {
         Type("Txt_Start_X", "10");
         Type("Txt_End_X", "20");
       },
       scope, "~", "10..20"},
      {"Tool_Copy", [this] { Click("Tool_Copy"); }, copied, "~", "10\n11\n12"},
      {"Tool_Cut", [this] { Click("Tool_Cut"); }, code, "100", "110"},
      {"Tool_Undo", [this] { Click("Tool_Undo"); }, undo, "&Undo", "&Redo"},
      {"once more", [this] { Click("Tool_Undo"); }, code, "100", "110"},
      {"Tool_Paste", [this] { Click("Tool_Paste"); }, [this] { return std::to_string(Code(15)); }, "25", "15"},
      {"Tool_Delete", [this] { Click("Tool_Delete"); }, code, "110", "120"},
      {"Ctrl+U", [this] { Press(Qt::Key_U, Qt::ControlModifier); }, code, "120", "110"},
      {"Ctrl+D", [this] { Press(Qt::Key_D, Qt::ControlModifier); }, code, "110", "120"},
      {"Ctrl+X", [this] { Press(Qt::Key_X, Qt::ControlModifier); }, code, "120", "130"},
      {"Ctrl+V", [this] { Press(Qt::Key_V, Qt::ControlModifier); }, [this] { return std::to_string(Code(10)); }, "40",
       "30"},
      {"Ctrl+C",
       [this] {
         QApplication::clipboard()->setText("old");
         Press(Qt::Key_C, Qt::ControlModifier);
       },
       copied, "30\n31\n32", "30\n31\n32"},
      {"Ctrl+N", [this] { Press(Qt::Key_N, Qt::ControlModifier); },
       [this] { return std::to_string(desktop.copies.started); }, "0", "1"},
      {"Ctrl+A",
       [&] {
         save("all.wdb");
         Press(Qt::Key_A, Qt::ControlModifier);
       },
       title, "~", "/all.wdb>"},
      {"Ctrl+T",
       [&] {
         save("all.txt");
         Press(Qt::Key_T, Qt::ControlModifier);
       },
       [&] { return written("all.txt"); }, "none", "file"},
      {"Ctrl+O",
       [&] {
         open();
         Press(Qt::Key_O, Qt::ControlModifier);
       },
       code, "~", "5"},
      {"Ctrl+S",
       [&] {
         std::filesystem::remove(folder / "five.txt");
         Press(Qt::Key_S, Qt::ControlModifier);
       },
       [&] { return written("five.txt"); }, "file", "file"},
      {"Tool_Save",
       [&] {
         std::filesystem::remove(folder / "five.txt");
         Click("Tool_Save");
       },
       [&] { return written("five.txt"); }, "file", "file"},
      {"Tool_Open",
       [&] {
         Ramp();
         open();
         Click("Tool_Open");
       },
       code, "5", "5"},
      {"a refused exit",
       [&] {
         desktop.boxes.Expect("Exit Program.", BoxAnswer::No);
         Find<QAction>("Menu_Exit")->trigger();
       },
       [this] { return std::string(window->isVisible() ? "stays" : ""); }, "stays", "stays"},
  };
  for (const auto& row : rows) {
    const std::string before = row.seen();
    row.act();
    QCoreApplication::processEvents();
    const std::string after = row.seen();
    const std::string_view from = row.before;
    const std::string_view to = row.after;
    EXPECT_EQ(before, from == "~" ? before : from) << row.gesture << ", before it";
    EXPECT_EQ(after, to == "~" ? after : to) << row.gesture;
    EXPECT_TRUE((from != "~" && to != "~") || before != after) << row.gesture << " did nothing";
  }
  EXPECT_EQ(ModalWindow([this] { Find<QAction>("Menu_Create")->trigger(); }), "CreateDialog");
  EXPECT_EQ(ModalWindow([this] { Click("Opt_DlgSel_0"); }), "CreateDialog");
  EXPECT_EQ(ModalWindow([this] { Find<QAction>("Menu_System")->trigger(); }), "SystemDialog");
}

} // namespace
} // namespace calder
