#include "app/Messages.h"

#include "FakeDesktop.h"

namespace calder::messages_test {

TEST(Messages, TextsEndWithACarriageReturnInEitherLanguage) {
  fake::Boxes boxes;
  const ErrMsg english(boxes, Language::English);
  const ErrMsg japanese(boxes, Language::Japanese);
  EXPECT_EQ(english.MessageText(10), "Memory Allocation Failed.\r");
  EXPECT_EQ(japanese.MessageText(220), "SRQが出続けています。\r");
  EXPECT_EQ(japanese.MessageText(13), "シーケンス編集作成ソフトウエアが起動中です。\r\n"
                                      "シーケンス編集作成ソフトウエアを終了してから再度起動してください。\r");
  EXPECT_EQ(english.MessageText(112), english.MessageText(113));
  EXPECT_EQ(english.MessageText(108), english.MessageText(100));
  for (const int empty : {15, 99, 209, 250}) EXPECT_EQ(english.MessageText(empty), "\r") << empty;
}

TEST(Messages, EachBoxHasItsTitleButtonsAndIcon) {
  fake::Boxes boxes;
  const ErrMsg messages(boxes, Language::English);
  boxes.Expect("File Read error.");
  boxes.Expect("really?", BoxAnswer::Yes);
  boxes.Expect("Exit Program.", BoxAnswer::No);
  boxes.Expect("Interface Busy.");
  messages.ErrorBox(71);
  EXPECT_EQ(messages.WarningBox("really?"), BoxAnswer::Yes);
  EXPECT_EQ(messages.CautionQuestion(98), BoxAnswer::No);
  messages.CautionBox(226);
  const struct {
    const char* title;
    BoxButtons buttons;
    BoxIcon icon;
  } rows[] = {{"Error Message", BoxButtons::Ok, BoxIcon::None},
              {"Warning Message", BoxButtons::YesNo, BoxIcon::Critical},
              {"Caution Message", BoxButtons::YesNo, BoxIcon::Question},
              {"Caution Message", BoxButtons::Ok, BoxIcon::Critical}};
  ASSERT_EQ(boxes.shown.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i)
    EXPECT_EQ(Texts(boxes.shown[i].title, int(boxes.shown[i].buttons), int(boxes.shown[i].icon)),
              Texts(rows[i].title, int(rows[i].buttons), int(rows[i].icon)));
}

} // namespace calder::messages_test
