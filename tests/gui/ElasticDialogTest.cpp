// The real Compress/Decompress form, opened from the real main window, which is its preview.
#include "tools/elastic/ElasticDialog.h"
#include "ToolFixture.h"
#include "platform/WaveformTheme.h"

namespace calder::elastic_dialog_test {

struct ElasticDialogTest : ToolFixture {
  void Open(const std::function<void()>& act) {
    Start();
    Ramp();
    State().settings.YUnit = kYCodes;
    State().buffers.CurrentScope() = {0, 30000};
    OpenTool("Menu_Compress", act);
  }
  QImage MainPicture() { return window->findChild<WaveformCanvas*>(QStringLiteral("Pict_Wave"))->Image().copy(); }
};

TEST_F(ElasticDialogTest, KeysReshapeTheWaveformAtOnceAndOkKeepsIt) {
  Open([this] {
    const QImage main = MainPicture();
    views["off"] = [this] { return See("Text_Y_0").substr(0, 3); };
    views["limited"] = [this] { return Line("Label_Limited").substr(0, 9); };
    Walk({{"", "focus", "Text_X_0"},
          {"type Text_X_1 0.5", "focus Text_X_1 Label_Level_1", "Text_X_1 500.000000m 22144.00"},
          {"key Text_X_1 Tab", "focus", "Btn_Length"},
          {"type Text_Y_0 20000", "Text_Y_2 Text_Y_3", "off 20000.00 off 10000.00"}, // grey, but up to date
          {"key Opt_Y_0 Right; type Text_Y_2 70k", "off limited", "off limited: "},
          {"click Btn_Ampl", "Label_Limited", ""},
          {"click Btn_Peak", "Text_Y_2", "65534.00"}});
    EXPECT_NE(MainPicture(), main);
    EXPECT_EQ(window->findChild<ValueBox*>(QStringLiteral("Txt_End_X"))->text(), "500.000m");
    Click("Btn_OK");
  });
  EXPECT_EQ(Code(0), -32767);
  const auto highest = [this] { return W_GetMaxMin(State().buffers.Current(), 0, 262144, 1); };
  EXPECT_EQ(highest(), 32767);
  Do("menu Menu_Undo");
  EXPECT_EQ(highest(), 29999);
  EXPECT_EQ(State().buffers.CurrentScope().End, 30000);
  Do("menu Menu_Undo");
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
    EXPECT_TRUE(Line("Label_Value_Whole").starts_with("X "));
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
    Do("on Text_X_1 0.9; key . Esc");
    EXPECT_NEAR(Find<ValueBox>("Text_X_1")->text().left(7).toDouble(), 500, 5) << "the first Escape is the box's";
    Do("key . Esc");
    EXPECT_FALSE(driven->isVisible());
  });
  EXPECT_EQ(MainPicture(), main) << "nor is the saved waveform drawn any longer";
  EXPECT_EQ(Code(262143), 262143 % 30000);
  EXPECT_EQ(State().buffers.CurrentScope().End, 30000);
  EXPECT_FALSE(Find<QAction>("Menu_Undo")->isEnabled());
}

} // namespace calder::elastic_dialog_test
