// The real Compress/Decompress form, opened from the real main window, which is its preview.
#include "tools/elastic/ElasticDialog.h"
#include "ToolFixture.h"
#include "platform/WaveformTheme.h"

#include <QRadioButton>

namespace calder {
namespace {

struct ElasticDialogTest : ToolFixture {
  void Open(const std::function<void()>& act) {
    Start();
    Ramp();
    State().settings.YUnit = kYCodes;
    State().buffers.CurrentScope() = {0, 30000};
    OpenTool("Menu_Compress", act);
  }
  QImage MainPicture() { return window->findChild<WaveformCanvas*>(QStringLiteral("Pict_Wave"))->Image().copy(); }
  std::string Level(int end) {
    return Find<QLabel>(end == 0 ? "Label_Level_0" : "Label_Level_1")->text().toStdString();
  }
};

TEST_F(ElasticDialogTest, KeysReshapeTheWaveformAtOnceAndOkKeepsIt) {
  Open([this] {
    EXPECT_EQ(Focus(), "Text_X_0");
    const QImage main = MainPicture();
    Type("Text_X_1", "0.5");
    EXPECT_EQ(Focus() + " " + Shown("Text_X_1"), "Text_X_1 500.000000m") << "Enter applies and stays";
    EXPECT_EQ(Level(1), "22144.00");
    EXPECT_NE(MainPicture(), main);
    EXPECT_EQ(window->findChild<ValueBox*>(QStringLiteral("Txt_End_X"))->text(), "500.000m");
    QTest::keyClick(Find<ValueBox>("Text_X_1"), Qt::Key_Tab);
    EXPECT_EQ(Focus(), "Btn_Length");
    EXPECT_FALSE(Find<ValueBox>("Text_Y_2")->isEnabled());
    Type("Text_Y_0", "20000");
    EXPECT_EQ(Shown("Text_Y_2") + " " + Shown("Text_Y_3"), "20000.00 10000.00") << "grey, but up to date";
    Find<QRadioButton>("Opt_Y_0")->setFocus();
    QTest::keyClick(Find<QRadioButton>("Opt_Y_0"), Qt::Key_Right);
    EXPECT_FALSE(Find<ValueBox>("Text_Y_0")->isEnabled());
    Type("Text_Y_2", "70k");
    EXPECT_TRUE(Find<QLabel>("Label_Limited")->text().startsWith("limited: "));
    Click("Btn_Ampl");
    EXPECT_EQ(Find<QLabel>("Label_Limited")->text(), "");
    Click("Btn_Peak");
    EXPECT_EQ(Shown("Text_Y_2"), "65534.00");
    Click("Btn_OK");
  });
  EXPECT_EQ(Code(0), -32767);
  const auto highest = [this] { return W_GetMaxMin(State().buffers.Current(), 0, 262144, 1); };
  EXPECT_EQ(highest(), 32767);
  Find<QAction>("Menu_Undo")->trigger();
  EXPECT_EQ(highest(), 29999);
  EXPECT_EQ(State().buffers.CurrentScope().End, 30000);
  Find<QAction>("Menu_Undo")->trigger();
  EXPECT_EQ(highest(), 32767);
}

TEST_F(ElasticDialogTest, AnEndIsDraggedAndEscapeTakesEverythingBack) {
  QImage main;
  Open([this, &main] {
    main = MainPicture();
    auto* picture = Find<WaveformCanvas>("Picture_Whole");
    const int from = picture->width() * 30000 / 524288;
    Hover("Picture_Whole", {from, 40});
    EXPECT_EQ(picture->cursor().shape(), Qt::SizeHorCursor);
    EXPECT_TRUE(Find<QLabel>("Label_Value_Whole")->text().startsWith("X "));
    QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, {from, 40});
    QTest::mouseMove(picture, {picture->width() / 2, 40});
    EXPECT_NEAR(Find<ValueBox>("Text_X_1")->text().left(7).toDouble(), 500, 5);
    const QImage dragged = MainPicture();
    EXPECT_NE(dragged, main) << "while it is dragged";
    int former = 0;
    for (int x = 0; x < dragged.width(); ++x)
      for (int y = 0; y < dragged.height(); ++y) former += (dragged.pixel(x, y) & 0xFFFFFF) == theme::kTraceFormer;
    EXPECT_GT(former, 100) << "the saved waveform beneath";
    QTest::mouseRelease(picture, Qt::LeftButton, Qt::NoModifier, {picture->width() / 2, 40});
    TypeOn("Text_X_1", "0.9");
    QTest::keyClick(Find<ValueBox>("Text_X_1"), Qt::Key_Escape);
    EXPECT_NEAR(Find<ValueBox>("Text_X_1")->text().left(7).toDouble(), 500, 5) << "the first Escape is the box's";
    QTest::keyClick(Find<ValueBox>("Text_X_1"), Qt::Key_Escape);
    EXPECT_FALSE(driven->isVisible());
  });
  EXPECT_EQ(MainPicture(), main) << "nor is the saved waveform drawn any longer";
  EXPECT_EQ(Code(262143), 262143 % 30000);
  EXPECT_EQ(State().buffers.CurrentScope().End, 30000);
  EXPECT_FALSE(Find<QAction>("Menu_Undo")->isEnabled());
}

TEST_F(ElasticDialogTest, NothingIsClippedOrTwiceOnAKeyInEitherLanguage) {
  for (const int language : {SystemLanguage::kEnglish, SystemLanguage::kJapanese}) {
    application.reset();
    desktop.language.id = language;
    Open([this] {
      Type("Text_X_1", "0.3");
      Type("Text_Y_0", "70k");
      LookAt("compress");
    });
  }
}

} // namespace
} // namespace calder
