// The real Interpolate form beside the real main window.
#include "tools/interpolate/SplineDialog.h"
#include "MainWindowFixture.h"
#include "tools/interpolate/PointGrid.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>

namespace calder::spline_dialog_test {

struct SplineDialogTest : MainWindowFixture {
  void Open() {
    Start();
    Find<QAction>("Menu_Spline")->trigger();
    form = window->findChild<SplineDialog*>();
    ASSERT_NE(form, nullptr);
    ShowForm(form);
    driven = window;
    grid = form->findChild<PointGrid*>();
    editor = form->findChild<QLineEdit*>(QStringLiteral("txtVal"));
  }
  std::string Cell(int row, int column) { return grid->model()->index(row, column).data().toString().toStdString(); }
  void GoTo(int row, int column) {
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(row, column));
  }
  void TypeCell(const char* text, Qt::Key end) {
    QTest::keyClicks(grid, QLatin1String(text).left(1));
    QTest::keyClicks(editor, QLatin1String(text).mid(1));
    QTest::keyClick(editor, end);
  }

  SplineDialog* form = nullptr;
  PointGrid* grid = nullptr;
  QLineEdit* editor = nullptr;
};

TEST_F(SplineDialogTest, CellsAreTypedWithTheKeyboardAlone) {
  Open();
  EXPECT_EQ(Cell(1, 0), "500.000m");
  EXPECT_EQ(grid->model()->headerData(3, Qt::Vertical).toInt(), 3);
  GoTo(1, 0);
  TypeCell("250m", Qt::Key_Tab);
  EXPECT_EQ(Cell(1, 0), "250.000m");
  EXPECT_EQ(grid->currentIndex().column(), 1);
  TypeCell("0.5", Qt::Key_Return);
  EXPECT_EQ(Cell(1, 1), "500.000m");
  EXPECT_EQ(grid->currentIndex().row(), 2) << "the last filled row";
  TypeCell("1", Qt::Key_Return);
  EXPECT_TRUE(editor->isHidden()) << "the last row is not edited";
  GoTo(1, 0);
  TypeCell("2", Qt::Key_Return);
  EXPECT_TRUE(editor->isVisible()) << "a refused text stays";
  EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("Label_Foot"))->text(), "X must lie between 0.000000 and 1.000000");
  QTest::keyClick(editor, Qt::Key_Escape);
  EXPECT_EQ(Cell(1, 0), "250.000m");
  QTest::keyClick(grid, Qt::Key_Delete);
  EXPECT_EQ(Cell(2, 0), "");
  QApplication::clipboard()->setText(QStringLiteral("0.25\t0.5\r\n0.75\t-0.5\r\n"));
  QTest::keyClick(grid, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Cell(2, 1), "-500.00m");
}

TEST_F(SplineDialogTest, ButtonsWriteTheWaveformAndTheMouseMovesPoints) {
  Open();
  GoTo(1, 1);
  TypeCell("1", Qt::Key_Return);
  for (const char* button : {"Btn_Spline_0", "Btn_Spline_1", "Btn_Spline_2"}) {
    W_ClearMemory(State().buffers.Current(), 0, 524288);
    QTest::mouseClick(form->findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
    EXPECT_EQ(W_GetWaveData(State().buffers.Current(), 262144, 524288), 32767) << button;
  }
  auto* picture = Find<WaveformCanvas>("Pict_Wave");
  const QPoint middle(picture->width() / 2, 0);
  const QPoint lower(picture->width() / 2, picture->height() / 2 - 40);
  QTest::mousePress(picture, Qt::LeftButton, {}, middle);
  QTest::mouseMove(picture, lower);
  QTest::mouseRelease(picture, Qt::LeftButton, {}, lower);
  EXPECT_EQ(grid->currentIndex().row(), 1);
  EXPECT_LT(W_GetWaveData(State().buffers.Current(), 262144, 524288), 20000);
  EXPECT_EQ(picture->cursor().shape(), Qt::CrossCursor);
  QTest::keyClick(picture, Qt::Key_Backspace);
  EXPECT_EQ(Cell(2, 0), "") << "two points are left";
  QTest::mousePress(picture, Qt::LeftButton, Qt::ControlModifier, lower);
  QTest::mouseRelease(picture, Qt::LeftButton, Qt::ControlModifier, lower);
  EXPECT_NE(Cell(2, 0), "") << "Ctrl adds one";
  EXPECT_TRUE(editor->isHidden());
  QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(1, 1)).center());
  EXPECT_TRUE(editor->isVisible());
  QTest::mouseClick(form->findChild<QPushButton*>(QStringLiteral("Btn_Exit")), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_TRUE(Find<QMenu>("Menu_File")->isEnabled());
  EXPECT_EQ(picture->focusPolicy(), Qt::NoFocus);
}

TEST_F(SplineDialogTest, IsNotOpenedOverTheDigitalView) {
  Start();
  Walk({{"click Opt_DspSel_1", "Menu_Spline Opt_DlgSel_2", "off &Interpolate... off unchecked"},
        {"click Opt_DspSel_0", "Menu_Spline", "&Interpolate..."}});
}

} // namespace calder::spline_dialog_test
