#include "ToolFixture.h"
#include "platform/qt/QtWorker.h"
#include "plugins/PluginFolder.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>

namespace calder {
namespace {

struct ImportTest : ToolFixture {
  void SetUp() override { desktop.folders.modules = {CALDER_MODULES}; }
  [[nodiscard]] std::string Preview() { return Find<QPlainTextEdit>("Text_Preview")->toPlainText().toStdString(); }
  [[nodiscard]] std::string Note() { return window->statusBar()->currentMessage().toStdString(); }
  // The window of that name; null when it is not shown.
  static QWidget* Shown(const char* name) {
    for (QWidget* top : QApplication::topLevelWidgets())
      if (top->isVisible() && top->objectName() == QLatin1String(name)) return top;
    return nullptr;
  }

  TempFolder folder;
};

TEST_F(ImportTest, TheGuessIsShownAndCanBeChanged) {
  desktop.folders.plugins = {CALDER_PLUGIN_FOLDER};
  PutFile(folder / "a.csv", "name;x\nt;u;v\n0;1;-4\n1;2;five\n2;3;6\n3;4;7\n4;5;8\n");
  for (const int language : {SystemLanguage::kJapanese, SystemLanguage::kEnglish}) {
    const bool english = language == SystemLanguage::kEnglish;
    desktop.language.id = language;
    Start();
    Ramp();
    desktop.dialogs.Answer(folder / "a.csv");
    Within([&] {
      EXPECT_EQ(Find<QComboBox>("Comb_column")->currentText(), QStringLiteral("2: u"));
      EXPECT_EQ(Find<QSpinBox>("Num_header")->value(), 2);
      EXPECT_EQ(Focus(), "Comb_delimiter");
      EXPECT_THAT(Preview(), testing::HasSubstr("2 | 1;2;five"));
      LookAt("import");
      QTest::keyClick(Find<QWidget>("Comb_column"), Qt::Key_Down);
      EXPECT_THAT(Preview(), testing::HasSubstr("? | 1;2;five"));
      Click("Btn_OK");
    });
    Find<QAction>("Menu_FileImport")->trigger();
    driven = Shown("ImportReport");
    ASSERT_NE(driven, nullptr);
    EXPECT_THAT(Find<QPlainTextEdit>("Text_Report")->toPlainText().toStdString(), testing::HasSubstr(" 3: \"five\""));
    LookAt("import-report");
    Click("Btn_OK");
    driven = window;
    EXPECT_EQ((std::vector{Code(0), Code(1), Code(2), Code(5)}), (std::vector{-4, -4, 6, 5}));
    EXPECT_THAT(window->windowTitle().toStdString(), testing::HasSubstr("Untitled"));
    EXPECT_THAT(Note(), testing::StartsWith(english ? "Imported 5 points; Undo does not" : "5 点を"));
    Find<QAction>("Menu_Copy")->trigger();
    EXPECT_EQ(Note(), "");
    // What the user cancels leaves everything as it is.
    desktop.dialogs.Answer(folder / "a.csv");
    Within([&] { QTest::keyClick(driven, Qt::Key_Escape); });
    Find<QAction>("Menu_FileImport")->trigger();
    EXPECT_EQ(Code(1), -4);
    EXPECT_EQ(Note(), "");
  }
  EXPECT_EQ(desktop.settings.Get("Files", "LastFolder"), folder.Path().string());
}

// A plug-in that fails while its settings are on show: the form goes, and the failure is reported once.
TEST_F(ImportTest, AChangeThatFailsEndsTheSettings) {
  PluginFolder plugins({"crash-set"});
  desktop.folders.plugins = plugins.Folders();
  Start();
  PutFile(folder / "a.num", "10");
  desktop.dialogs.Answer(folder / "a.num");
  desktop.boxes.Expect("The plug-in crashed");
  Within([&] { Find<QSpinBox>("Num_step")->stepUp(); });
  Find<QAction>("Menu_FileImport")->trigger();
  EXPECT_EQ(Code(3), 0);
}

// Until the progress comes up, and while it is shown, nothing but its button can be used.
TEST_F(ImportTest, ALongImportShowsItsProgressAndCanBeCancelled) {
  PluginFolder plugins({"long", "hang-open"});
  QtWorker thread;
  worker = &thread;
  desktop.folders.plugins = plugins.Folders();
  Start();
  Ramp();
  PutFile(folder / "a.num", "10");
  for (const int entry : {1, 2}) {
    desktop.dialogs.Answer(folder / "a.num", entry);
    QTimer looks;
    int keys = 0;
    QObject::connect(&looks, &QTimer::timeout, window, [&] {
      if (!desktop.dialogs.answers.empty()) return; // the plug-ins are looked for
      if (keys++ == 0) {
        QTest::keyClick(Find<QWidget>("Txt_Start_X"), Qt::Key_D, Qt::ControlModifier);
        QTest::mouseClick(Find<QWidget>("Tool_Cut"), Qt::LeftButton);
      }
      if (QWidget* progress = Shown("ImportProgress"); progress != nullptr) {
        looks.stop();
        ExpectWellLaidOut(*progress, {});
        QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton);
      }
    });
    looks.start(20);
    Find<QAction>("Menu_FileImport")->trigger();
    EXPECT_GT(keys, 5) << "it shows itself after a moment only";
    EXPECT_FALSE(looks.isActive());
    EXPECT_EQ(Shown("ImportProgress"), nullptr);
    EXPECT_EQ(Code(524287), 524287 % 30000);
    EXPECT_EQ(Note(), "");
  }
  QApplication::setActiveWindow(window);
  QTest::keyClick(Find<QWidget>("Txt_Start_X"), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(Code(524287), 0) << "the window is free again";
}

} // namespace
} // namespace calder
