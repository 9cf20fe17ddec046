#include "libs/file32/file32.h"

#include "MemoryClipboard.h"
#include "libs/wavelb32/TestWave.h"

namespace calder::clipboard_test {

class ClipboardTest : public testing::Test {
protected:
  // What a paste at point 1 of six 7s gives, up to five points of room.
  std::string Paste() {
    const TestWave target(Codes(6, 7));
    std::int32_t placed = -1;
    const std::int32_t status = other.GetClipBoard(clipboard, target.Handle(), 1, 2, 6, placed);
    if (status != 0) {
      EXPECT_EQ(Texts(target.Text(), placed), "7 7 7 7 7 7 -1");
      return "message " + std::to_string(status);
    }
    return std::to_string(placed) + ": " + target.Text();
  }
  std::string PasteText(const std::string& text) {
    clipboard.Clear();
    clipboard.Put("text/plain;charset=utf-8", text);
    return Paste();
  }

  MemoryClipboard clipboard;
  File32 file;
  File32 other; // in another copy of the program
};

TEST_F(ClipboardTest, CarriesTheCodesAtTheirOwnLength) {
  const TestWave source(Codes{1, -32768, 32767, 4, 5, 6, 8, 9});
  ASSERT_EQ(file.SetClipBoard(clipboard, source.Handle(), 1, 3), 0);
  EXPECT_EQ(Paste(), "3: 7 -32768 32767 4 7 7");
  ASSERT_EQ(file.SetClipBoard(clipboard, source.Handle(), 0, 8), 0);
  EXPECT_EQ(Paste(), "5: 7 1 -32768 32767 4 5");
  EXPECT_EQ(clipboard.Get("application/x-calder-waveform").substr(0, 20),
            std::string("CALDERWF\1\0\0\0\10\0\0\0\1\0\0\x80", 20));
}

TEST_F(ClipboardTest, IsATextForOtherPrograms) {
  const TestWave source(Codes{1, -32768, 32767});
  ASSERT_EQ(file.SetClipBoard(clipboard, source.Handle(), 0, 3), 0);
  const std::string text = clipboard.Get("text/plain;charset=utf-8");
  EXPECT_EQ(text, "1\n-32768\n32767\n");
  EXPECT_EQ(PasteText(text), "3: 7 1 -32768 32767 7 7");
}

TEST_F(ClipboardTest, WhatIsOfferedOutlivesLaterCopies) {
  const TestWave source(Codes{1, 2, 3, 4});
  clipboard.keepsAll = true;
  for (std::int32_t start = 0; start < 4; ++start)
    ASSERT_EQ(file.SetClipBoard(clipboard, source.Handle(), start, 1), 0);
  for (std::size_t i = 0; i < 4; ++i) {
    const auto bytes = clipboard.kept[i]->Data("text/plain");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), std::to_string(i + 1) + "\n");
  }
  // Sources that nobody else holds any more are filled again, in turns.
  clipboard.keepsAll = false;
  std::set<const void*> addresses;
  clipboard.kept.clear();
  for (int i = 0; i < 6; ++i) {
    ASSERT_EQ(file.SetClipBoard(clipboard, source.Handle(), 0, 1), 0);
    addresses.insert(clipboard.Read("application/x-calder-waveform")->data());
  }
  EXPECT_LE(addresses.size(), 2U);
}

TEST_F(ClipboardTest, ReadsForeignTexts) {
  const std::tuple<std::string, const char*> kRows[] = {
      {"1\n2\n3", "3: 7 1 2 3 7 7"},
      {"1\r\n\r\n2\r\n", "2: 7 1 2 7 7 7"},
      {"1\t10\tx\r\n-2\t20\ty\r\n", "2: 7 1 -2 7 7 7"},
      {"1;10\n2;20\n", "2: 7 1 2 7 7 7"},
      {"1, 10\n2, 20\n", "2: 7 1 2 7 7 7"},
      {"1,-10\n2,0.25\n", "2: 7 1 2 7 7 7"},
      {"12.0\n-3e2\t\n", "2: 7 12 -300 7 7 7"},
      {"4\n-1\n1.0000001\n", "3: 7 32767 -8192 8192 7 7"},
      {"0.5;9\n-0.25;9\n", "2: 7 32767 -16384 7 7 7"},
      {"65534\n32767\n1\n0\n-65534\n0\n131068\n", "5: 7 16384 8192 0 0 -16384"}, // values beyond the room count
      {std::string("1\n2\n\0", 5), "2: 7 1 2 7 7 7"},
      {"\xEF\xBB\xBF"
       "1\n",
       "1: 7 1 7 7 7 7"}};
  for (const auto& [text, result] : kRows) EXPECT_EQ(PasteText(text), result) << text;
}

TEST_F(ClipboardTest, RefusesTextThatIsNotNumbers) {
  for (const char* text :
       {"", " \r\n", "hello", "1\ntwo\n", "\t5.5\n", "1.5\n\t2\n", "1 2\n", "0.5\nnan\n", "0.0\n-0\n1e999\n",
        // one number with a decimal comma, or two columns?
        "0,5\n1,5\n", "0,5\t1\n1,5\t2\n", "0,5;1\n", "1,5e3\n", "1,234.5\n", "1,234,567\n", "1,25,\n,\n"})
    EXPECT_EQ(PasteText(text), "message 81") << text;
}

TEST_F(ClipboardTest, PrefersItsOwnFormAndFallsBackToText) {
  const std::string sound("CALDERWF\1\0\0\0\2\0\0\0\1\0\2\0", 20);
  const auto changed = [&sound](std::size_t at, char value) {
    std::string bytes = sound;
    bytes[at] = value;
    return bytes;
  };
  clipboard.Put("text/plain;charset=utf-8", "33");
  clipboard.Put("application/x-calder-waveform", sound);
  EXPECT_EQ(Paste(), "2: 7 1 2 7 7 7");
  for (const std::string& bytes : {std::string(), sound.substr(0, 15), sound.substr(0, 16), sound.substr(0, 19),
                                   sound + "x", changed(0, 'c'), changed(8, 2), changed(12, 0), changed(15, '\x80')}) {
    clipboard.Put("application/x-calder-waveform", bytes);
    EXPECT_EQ(Paste(), "1: 7 33 7 7 7 7");
  }
  clipboard.Clear();
  clipboard.Put("application/x-calder-waveform", sound.substr(0, 19));
  EXPECT_EQ(Paste(), "message 81");
  clipboard.Clear();
  clipboard.Put("text/plain", "44");
  EXPECT_EQ(Paste(), "1: 7 44 7 7 7 7");
}

TEST_F(ClipboardTest, FailuresHaveTheirMessages) {
  const TestWave source(Codes{1, 2, 3});
  EXPECT_EQ(Paste(), "message 81");
  clipboard.available = false;
  EXPECT_EQ(Paste(), "message 80");
  EXPECT_EQ(file.SetClipBoard(clipboard, source.Handle(), 0, 3), CLIP_OPEN_FAILED);
  clipboard.available = true;
  clipboard.writable = false;
  EXPECT_EQ(file.SetClipBoard(clipboard, source.Handle(), 0, 3), CLIP_WRITE_FAILED);
  clipboard.writable = true;
  for (const auto [start, count] : {std::array{-1, 1}, {0, 4}, {4, 0}, {0, -1}, {INT32_MAX, INT32_MAX}})
    EXPECT_EQ(file.SetClipBoard(clipboard, source.Handle(), start, count), CLIP_ERROR);
  EXPECT_EQ(file.SetClipBoard(clipboard, source.Handle() + 1, 0, 1), CLIP_ERROR);

  // Nothing selected: the clipboard keeps what it has.
  ASSERT_EQ(file.SetClipBoard(clipboard, source.Handle(), 0, 2), 0);
  EXPECT_EQ(file.SetClipBoard(clipboard, source.Handle(), 3, 0), 0);
  EXPECT_EQ(Paste(), "2: 7 1 2 7 7 7");

  std::int32_t placed = -1;
  EXPECT_EQ(file.GetClipBoard(clipboard, source.Handle(), 3, 0, 3, placed), 0); // at the right end there is no room
  EXPECT_EQ(placed, 0);
  for (const auto [start, points] : {std::array{-1, 3}, {0, 4}, {3, 2}, {0, -1}, {INT32_MIN, INT32_MAX}})
    EXPECT_EQ(file.GetClipBoard(clipboard, source.Handle(), start, 1, points, placed), CLIP_ERROR) << start;
  EXPECT_EQ(source.Text(), "1 2 3");
}

} // namespace calder::clipboard_test
