// The real file dialogs, driven by keys. They run over a folder of this test's own.
#include "FakeDesktop.h"
#include "platform/qt/QtFileDialogs.h"

#include "FakeDesktop.h"
#include "platform/qt/QtMessageBoxes.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <filesystem>

namespace calder {
namespace {

// Delete and the answer of a box that it might bring would erase what is selected.
TEST(FileDialogs, NoKeyErasesWhatIsSelected) {
  for (const bool save : {false, true}) {
    const QTemporaryDir folder;
    const std::filesystem::path root(folder.path().toStdString());
    std::filesystem::create_directory(root / "measured");
    for (const char* name : {"a.wdb", "measured/b.wdb"}) {
      QFile file(QString::fromStdString((root / name).string()));
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    bool driven = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      auto* list = dialog->findChild<QListView*>(QStringLiteral("listView"));
      ASSERT_NE(list, nullptr);
      ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 2; }));
      // A box over the dialog, if there is one, gets a Return on its every button.
      QTimer answering;
      QObject::connect(&answering, &QTimer::timeout, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (box != nullptr && box != dialog) QTest::keyClick(box, Qt::Key_Y, Qt::AltModifier);
      });
      answering.start(20);
      for (int row = 0; row < 2; ++row) {
        list->setFocus();
        list->setCurrentIndex(list->model()->index(row, 0, list->rootIndex()));
        QTest::keyClick(list, Qt::Key_Delete);
        QTest::qWait(60);
      }
      driven = true;
      dialog->reject();
    });
    fake::Settings settings;
    QtFileDialogs dialogs(settings);
    const FileDialogRequest request{"", "All files(*.*)|*.*", 1, (root / "Untitled").string(), "wdb"};
    EXPECT_FALSE(save ? dialogs.Save(request) : dialogs.Open(request));
    EXPECT_TRUE(driven);
    EXPECT_TRUE(std::filesystem::exists(root / "a.wdb")) << (save ? "save" : "open");
    EXPECT_TRUE(std::filesystem::exists(root / "measured" / "b.wdb")) << (save ? "save" : "open");
  }
}

// The list shows what the filter lets through, yet any existing file can be named.
TEST(FileDialogs, OpenIsEnabledForEveryTypedFileThatExists) {
  const QTemporaryDir folder;
  const std::string root = folder.path().toStdString();
  for (const char* name : {"a.wdb", "b.dat"}) {
    QFile file(QString::fromStdString(root + "/" + name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    auto* open = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    const std::pair<const char*, bool> rows[] = {{"none.dat", false}, {"a.wdb", true}, {"no", false}, {"b.dat", true}};
    for (const auto& [typed, enabled] : rows) {
      name->setText(QLatin1String(typed));
      QTest::qWait(30); // the list follows the disk
      EXPECT_EQ(open->isEnabled(), enabled) << typed;
    }
    open->click();
    if (dialog->isVisible()) dialog->reject();
  });
  fake::Settings settings;
  const auto answer = QtFileDialogs(settings).Open({"", "Binary files(*.wdb)|*.wdb", 1, root + "/Untitled", "wdb"});
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->path, root + "/b.dat");
}

// When a dialog has just closed no window has the focus yet.
TEST(MessageBoxes, BelongToTheMainWindowWhenNoneIsActive) {
  QMainWindow window;
  window.show();
  QApplication::setActiveWindow(nullptr);
  for (int box = 0; box < 2; ++box) {
    const QWidget* owner = nullptr;
    QTimer::singleShot(0, [&] {
      owner = QApplication::activeModalWidget()->parentWidget();
      qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->accept();
    });
    QtMessageBoxes().Show("Error Message", "text", BoxButtons::Ok, BoxIcon::None);
    EXPECT_EQ(owner, &window);
    QApplication::setActiveWindow(nullptr);
  }
}

} // namespace
} // namespace calder
