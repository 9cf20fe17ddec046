// The real print dialog over the main window and the tools, what it writes, and the version dialog.
#include "print/PrintDialog.h"
#include "ToolFixture.h"
#include "platform/WaveformTheme.h"
#include "print/PagePreview.h"

#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <random>

namespace calder {
namespace {

struct PrintDialogTest : ToolFixture {
  PrintDialogTest() { desktop.folders.modules = {CALDER_MODULE_FOLDER}; }
  std::string Path(const char* name) { return folder.filePath(QLatin1String(name)).toStdString(); }
  // The first page of a PDF at so many dots an inch.
  QImage Page(const char* pdf, int resolution) {
    const QString stem = folder.filePath(QStringLiteral("page"));
    QProcess::execute(QStringLiteral("pdftoppm"),
                      {QStringLiteral("-png"), QStringLiteral("-r"), QString::number(resolution),
                       QStringLiteral("-singlefile"), QString::fromStdString(Path(pdf)), stem});
    return QImage(stem + QStringLiteral(".png")).convertToFormat(QImage::Format_RGB32);
  }
  std::string Words(const char* pdf) {
    QProcess process;
    process.start(QStringLiteral("pdftotext"),
                  {QStringLiteral("-layout"), QString::fromStdString(Path(pdf)), QStringLiteral("-")});
    process.waitForFinished();
    return process.readAllStandardOutput().toStdString();
  }
  void Noise() {
    std::mt19937 random(5); // NOLINT: the same noise each time
    for (std::int16_t& code : W_Lock(State().buffers.Current())) code = static_cast<std::int16_t>(random() >> 16);
  }

  QTemporaryDir folder;
};

TEST_F(PrintDialogTest, APageOfNoiseIsSmallAndShowsWhatTheWindowShows) {
  Start();
  Noise();
  desktop.dialogs.Answer(Path("noise.pdf"));
  OpenTool("Menu_Print", [this] {
    EXPECT_FALSE(Find<QWidget>("Text_0")->isEnabled());
    Click("Btn_Pdf");
  });
  EXPECT_LT(QFile(QString::fromStdString(Path("noise.pdf"))).size(), 300 * 1000);
  const auto middle = [](const QImage& page) { return page.pixelColor(page.width() / 3, page.height() / 5); };
  for (const int resolution : {75, 200})
    EXPECT_LT(middle(Page("noise.pdf", resolution)).lightness(), 120) << resolution;

  // A quarter of the waveform at half its height: its upper half is high for an eighth, then low.
  const auto codes = W_Lock(State().buffers.Current());
  for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = i < codes.size() / 8 ? 16000 : -16000;
  Find<QComboBox>("Comb_XZoom_0")->setCurrentIndex(2);
  desktop.dialogs.Answer(Path("step.pdf"));
  OpenTool("Menu_Print", [this] { Click("Btn_Pdf"); });
  const QImage page = Page("step.pdf", 100);
  ASSERT_FALSE(page.isNull());
  // A4 with an edge of 5 mm: the picture is 200 mm wide and 125 mm high.
  const auto darkRow = [&](double millimetres) {
    const int x = static_cast<int>((5 + millimetres) / 25.4 * 100);
    for (int y = 30; y < page.height(); ++y)
      if (page.pixelColor(x, y).lightness() < 180) return y / 100.0 * 25.4 - 5;
    return 0.0;
  };
  EXPECT_NEAR(darkRow(50), 125 * (1 - 16000 / 32767.0) / 2, 0.6);
  EXPECT_NEAR(darkRow(150), 125 * (1 + 16000 / 32767.0) / 2, 0.6);
}

TEST_F(PrintDialogTest, MarginsMoveTheReportAndOtherWindowsPrintTheirOwn) {
  Start();
  desktop.dialogs.Answer(Path("create.pdf"));
  OpenTool("Menu_Create", [this] {
    Within([this] {
      EXPECT_EQ(Focus(), "Text_0");
      auto* preview = Find<PagePreview>("Preview_Page");
      const QImage before = preview->grab().toImage();
      Type("Text_0", "3");
      EXPECT_EQ(Focus() + " " + Shown("Text_0"), "Text_1 5");
      EXPECT_EQ(preview->grab().toImage(), before);
      Type("Text_1", "60", Qt::Key_Tab);
      EXPECT_NE(preview->grab().toImage(), before);
      EXPECT_EQ(Focus(), "Text_2");
      Click("UD_Margin_2_Up");
      EXPECT_EQ(Shown("Text_2"), "6");
      QTest::keyClick(Find<QWidget>("Text_2"), Qt::Key_Return);
      EXPECT_EQ(Focus(), "Btn_Prt_0") << "no trap";
      Find<ValueBox>("Text_2")->setText(QStringLiteral("100"));
      Click("Btn_Page_Next"); // takes the text: two pages
      EXPECT_EQ(Find<QLabel>("Label_Page")->text(), "page 1 of 1");
      Click("Btn_Pdf");
    });
    Find<QAction>("Menu_Print")->trigger();
  });
  EXPECT_NE(Words("create.pdf").find("<Unit Setup>"), std::string::npos);
  desktop.dialogs.Answer(Path("pwf.pdf"));
  OpenTool("Menu_Pwf", [this] {
    Within([this] { Click("Btn_Pdf"); });
    Find<QAction>("Menu_Print")->trigger();
  });
  EXPECT_NE(Words("pwf.pdf").find("<PWF Parameter>"), std::string::npos);
  desktop.dialogs.Answer(Path("system.pdf"));
  OpenTool("Menu_System", [this] {
    Within([this] { Click("Btn_Pdf"); });
    Find<QAction>("Menu_FilePrint")->trigger();
  });
  EXPECT_NE(Words("system.pdf").find("XG5530"), std::string::npos) << Words("system.pdf");
  EXPECT_NE(Words("system.pdf").find("Ctrl Point"), std::string::npos);
  EXPECT_NE(Words("system.pdf").find("Vp-p"), std::string::npos);
}

TEST_F(PrintDialogTest, WithoutAPrinterItIsSaidAndTheDialogStays) {
  for (const bool support : {true, false}) {
    if (!support) desktop.folders.modules = {};
    Start();
    OpenTool("Menu_Print", [&] {
      EXPECT_EQ(Find<QWidget>("Btn_Prt_0")->isEnabled(), support);
      EXPECT_TRUE(Find<QLabel>("Label_Printer")->text().endsWith("Save as PDF works."));
      desktop.boxes.Expect("No printer is set up.");
      Click("Btn_OK");
      EXPECT_TRUE(driven->isVisible());
      desktop.dialogs.Answer(fake::kNowhere + std::string("/a.pdf"));
      desktop.boxes.Expect("/a.pdf]");
      Click("Btn_Pdf");
      EXPECT_TRUE(driven->isVisible());
    });
  }
}

TEST_F(PrintDialogTest, PicturesGoByTheirExtension) {
  Start();
  Noise();
  const struct {
    const char* name;
    const char* begin;
  } rows[] = {{"a.pdf", "%PDF"}, {"a.svg", "<?xml"}, {"a.PNG", "\x89PNG"}};
  for (const auto& row : rows) {
    desktop.dialogs.Answer(Path(row.name));
    Find<QAction>("Menu_Export")->trigger();
    QFile file(QString::fromStdString(Path(row.name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll().startsWith(row.begin)) << row.name;
  }
  const QImage picture(QString::fromStdString(Path("a.PNG")));
  EXPECT_EQ(picture.width(), 2008);
  EXPECT_LT(picture.pixelColor(1000, 400).lightness(), 150);
  desktop.dialogs.Answer(Path("a.bmp"));
  desktop.boxes.Expect("A picture's name ends in .pdf, .svg or .png.");
  Find<QAction>("Menu_Export")->trigger();
}

TEST_F(PrintDialogTest, TheVersionDialogSaysWhatItIs) {
  for (const int language : {SystemLanguage::kEnglish, SystemLanguage::kJapanese}) {
    desktop.language.id = language;
    Start();
    OpenTool("Menu_Version", [this] {
      EXPECT_EQ(Focus(), "Command1");
      EXPECT_TRUE(Find<QLabel>("Label1")->text().startsWith("Orvo Calder  "));
      EXPECT_TRUE(Find<QLabel>("Label_Components")->text().startsWith("Qt 6"));
      Click("Btn_Copy");
      EXPECT_TRUE(QApplication::clipboard()->text().contains(Find<QLabel>("Label2")->text()));
      QTest::keyClick(driven, Qt::Key_Return);
    });
  }
}

} // namespace
} // namespace calder
