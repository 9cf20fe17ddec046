// The real file dialogs, driven by keys. They run over a folder of this test's own.
#include "FakeDesktop.h"
#include "platform/TempFolder.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtMessageBoxes.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace calder::file_dialog_test {

struct FileDialogs : testing::Test {
  // Runs on the dialog that comes.
  void Drive(const std::function<void(QFileDialog&)>& act) {
    QTimer::singleShot(0, [act] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
  }
  static QLineEdit* NameOf(const QFileDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  }
  const TempFolder folder;
  fake::Settings settings;
  QtFileDialogs dialogs{settings};
};

// Delete and the answer of a box that it might bring would erase what is selected.
TEST_F(FileDialogs, NoKeyErasesWhatIsSelected) {
  std::filesystem::create_directory(folder / "measured");
  for (const char* name : {"a.wdb", "measured/b.wdb"}) PutFile(folder / name, "");
  for (const bool save : {false, true}) {
    bool driven = false;
    Drive([&](QFileDialog& dialog) {
      auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
      ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 2; }));
      // A box over the dialog, if there is one, gets a Return on its every button.
      QTimer answering;
      QObject::connect(&answering, &QTimer::timeout, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (box != nullptr && box != &dialog) QTest::keyClick(box, Qt::Key_Y, Qt::AltModifier);
      });
      answering.start(20);
      for (int row = 0; row < 2; ++row) {
        list->setFocus();
        list->setCurrentIndex(list->model()->index(row, 0, list->rootIndex()));
        QTest::keyClick(list, Qt::Key_Delete);
        QTest::qWait(60);
      }
      driven = true;
    });
    const FileDialogRequest request{"", "All files(*.*)|*.*", 1, folder / "Untitled", "wdb"};
    EXPECT_FALSE(save ? dialogs.Save(request) : dialogs.Open(request));
    EXPECT_TRUE(driven);
    for (const char* name : {"a.wdb", "measured/b.wdb"}) EXPECT_TRUE(std::filesystem::exists(folder / name)) << save;
  }
}

// The list shows what the filter lets through, yet any existing file can be named.
TEST_F(FileDialogs, OpenIsEnabledForEveryTypedFileThatExists) {
  for (const char* name : {"a.wdb", "b.dat"}) PutFile(folder / name, "");
  Drive([](QFileDialog& dialog) {
    auto* open = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    const std::pair<const char*, bool> rows[] = {{"none.dat", false}, {"a.wdb", true}, {"no", false}, {"b.dat", true}};
    for (const auto& [typed, enabled] : rows) {
      NameOf(dialog)->setText(QLatin1String(typed));
      QTest::qWait(30); // the list follows the disk
      EXPECT_EQ(open->isEnabled(), enabled) << typed;
    }
    open->click();
  });
  const auto answer = dialogs.Open({"", "Binary files(*.wdb)|*.wdb", 1, folder / "Untitled", "wdb"});
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->path, folder / "b.dat");
}

// What each dialog offers, what is typed and pressed, and what comes back.
TEST_F(FileDialogs, OfferAndReturnWhatWasAskedFor) {
  const TempFolder other;
  const std::string root = folder.Path().string();
  for (const char* name : {"a.wdb", "b.txt"}) PutFile(folder / name, "");
  const std::string filters = "Binary files(*.wdb)|*.wdb|Text files(*.txt)|*.txt|All files(*.*)|*.*";
  const std::string elsewhere = other.Path().string();
  constexpr auto yes = QMessageBox::Yes;
  constexpr auto no = QMessageBox::No;
  constexpr auto cancel = QMessageBox::Cancel; // of the dialog
  // typed: null: what is offered
  // answers: of the boxes that follow
  // path: empty: cancelled
  using Row = std::tuple<const char*, bool, int, std::string, const char*, std::vector<QMessageBox::StandardButton>,
                         std::string>;
  for (const auto& [why, save, filter, offered, theTyped, answers, path] :
       {Row{"the offered file", false, 1, root + "/a.wdb", nullptr, {}, root + "/a.wdb"},
        Row{"the chosen filter", false, 2, root + "/b.txt", nullptr, {}, root + "/b.txt"},
        Row{"a name without extension", false, 1, root + "/Untitled", "a", {}, root + "/a.wdb"},
        Row{"the extension of the chosen type", false, 2, root + "/Untitled", "b", {}, root + "/b.txt"},
        Row{"cancelled", false, 1, root + "/a.wdb", "", {}, ""},
        Row{"the last folder for an untitled one", true, 1, "/elsewhere/Untitled", "n", {yes}, root + "/n.wdb"},
        Row{"a named one keeps its folder", true, 1, elsewhere + "/c.wdb", nullptr, {yes}, elsewhere + "/c.wdb"},
        Row{"a new file, refused once", true, 1, root + "/n.wdb", nullptr, {no, yes}, root + "/n.wdb"},
        Row{"an old file is asked for", true, 1, root + "/a.wdb", nullptr, {yes}, root + "/a.wdb"},
        Row{"and kept on No", true, 1, root + "/a.wdb", nullptr, {no, cancel}, ""}}) {
    std::ptrdiff_t answered = 0;
    bool typed = false;
    bool unexpected = false; // a box that no answer is there for
    QTimer driving;
    QObject::connect(&driving, &QTimer::timeout, [&] {
      QWidget* top = QApplication::activeModalWidget();
      if (auto* box = qobject_cast<QMessageBox*>(top)) {
        unexpected = answered >= std::ssize(answers);
        unexpected ? box->reject() : box->button(answers[static_cast<std::size_t>(answered++)])->click();
      } else if (auto* dialog = qobject_cast<QFileDialog*>(top)) {
        auto* name = NameOf(*dialog);
        if (!typed) {
          EXPECT_EQ(name->text().toStdString(), std::filesystem::path(offered).filename()) << why;
          if (theTyped != nullptr) name->setText(QLatin1String(theTyped));
          typed = true;
        }
        const bool giveUp =
            name->text().isEmpty() ||
            (answered < std::ssize(answers) && answers[static_cast<std::size_t>(answered)] == QMessageBox::Cancel);
        // Not in here: a timer does not fire again within itself, and the key may open a box.
        const auto act = [=] { giveUp ? dialog->reject() : QTest::keyClick(name, Qt::Key_Return); };
        QMetaObject::invokeMethod(name, act, Qt::QueuedConnection);
      }
    });
    driving.start(30);
    settings.Set("Files", "LastFolder", root);
    const FileDialogRequest request{"", filters, filter, offered, filter == 1 ? "wdb" : ""};
    const auto answer = save ? dialogs.Save(request) : dialogs.Open(request);
    EXPECT_FALSE(unexpected) << why;
    const auto boxes =
        std::count_if(answers.begin(), answers.end(), [](auto button) { return button != QMessageBox::Cancel; });
    EXPECT_EQ(answered, boxes) << why << ": questions";
    EXPECT_EQ(answer ? answer->path : "", path) << why;
    EXPECT_TRUE(!answer || answer->filterIndex == filter) << why;
  }
}

TEST(MessageBoxes, KeysAnswerAsTheButtonsSay) {
  const std::tuple<const char*, BoxButtons, BoxIcon, Qt::Key, BoxAnswer> rows[] = {
      {"Yes is the default", BoxButtons::YesNo, BoxIcon::Question, Qt::Key_Return, BoxAnswer::Yes},
      {"Escape is No", BoxButtons::YesNo, BoxIcon::None, Qt::Key_Escape, BoxAnswer::No},
      {"OK", BoxButtons::Ok, BoxIcon::Critical, Qt::Key_Return, BoxAnswer::Ok},
      {"Escape is OK", BoxButtons::Ok, BoxIcon::Information, Qt::Key_Escape, BoxAnswer::Ok}};
  const std::map<BoxIcon, QMessageBox::Icon> icons = {{BoxIcon::Question, QMessageBox::Question},
                                                      {BoxIcon::None, QMessageBox::NoIcon},
                                                      {BoxIcon::Critical, QMessageBox::Critical},
                                                      {BoxIcon::Information, QMessageBox::Information}};
  for (const auto& [why, buttons, icon, key, answer] : rows) {
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->windowTitle(), "Caution Message");
      EXPECT_EQ(box->text(), "one\ntwo") << "line breaks of any kind, none at the end";
      EXPECT_EQ(box->icon(), icons.at(icon)) << why;
      QTest::keyClick(box, key);
    });
    EXPECT_EQ(QtMessageBoxes().Show("Caution Message", "one\rtwo\r\n", buttons, icon), answer) << why;
  }
}

TEST(MessageBoxes, AskForATextUnderTheirTitle) {
  QTimer::singleShot(0, [] {
    QWidget* box = QApplication::activeModalWidget();
    EXPECT_EQ(box->windowTitle(), "Debug");
    EXPECT_EQ(box->findChild<QLabel*>()->text(), "What?");
    QTest::keyClicks(box->findChild<QLineEdit*>(), "this");
    QTest::keyClick(box, Qt::Key_Return);
  });
  EXPECT_EQ(QtMessageBoxes().Input("Debug", "What?\r"), "this");
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

} // namespace calder::file_dialog_test
