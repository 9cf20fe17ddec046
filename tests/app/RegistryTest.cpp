#include "app/Registry.h"

#include "FakeDesktop.h"

namespace calder::registry_test {

struct RegistryTest : testing::Test {
  fake::Settings store;
  fake::Copies copies;
};

TEST_F(RegistryTest, AFreshStoreGivesTheDefaults) {
  clsRegistry registry(store, copies);
  EXPECT_EQ(Texts(registry.GetWinCount(), registry.GetGpibBoard(), registry.GetGpibAddress(),
                  registry.GetFormTop("MainWindow"), registry.GetSetting("Sysinfo", "sys_no")),
            "1 3 -1 0 False");
  EXPECT_FALSE(registry.GetGpibBusy());
}

TEST_F(RegistryTest, TheFirstCopyClearsWhatACrashLeft) {
  store.Set("GPIB0", "Busy", "True");
  store.Set("System", "WinCount", "3");
  copies.others = true;
  { EXPECT_TRUE(clsRegistry(store, copies).GetGpibBusy()) << "another copy may really be transferring"; }
  copies.others = false;
  clsRegistry registry(store, copies);
  EXPECT_EQ(Texts(registry.GetGpibBusy(), registry.GetWinCount()), "false 1");
}

TEST_F(RegistryTest, OnlyTheLastCopyWritesPositions) {
  std::optional<clsRegistry> first;
  first.emplace(store, copies);
  copies.others = true;
  std::optional<clsRegistry> second;
  second.emplace(store, copies);
  EXPECT_EQ(Texts(second->GetWinCount(), second->GetWinH()), "2 2");
  first->SetFormTop("MainWindow", 300);
  first.reset();
  EXPECT_EQ(store.Get("System", "WinCount"), "1");
  EXPECT_TRUE(store.All("FormProperty").empty());
  second->SetFormTop("MainWindow", 150);
  second->SetFormLeft("MainWindow", 450);
  second.reset();
  EXPECT_EQ(store.Get("System", "WinCount"), "0");
  EXPECT_EQ(store.Get("FormProperty", "MainWindow"), "150,450,0,0");
}

TEST_F(RegistryTest, PositionsOffTheScreenBecomeZeroAndSpareNumbersAreKept) {
  store.Set("FormProperty", "MainWindow", "15000,200,7,9");
  {
    clsRegistry registry(store, copies);
    registry.SetScreen(19200, 14400);
    EXPECT_EQ(Texts(registry.GetFormTop("MainWindow"), registry.GetFormLeft("MainWindow")), "0 200");
  }
  EXPECT_EQ(store.Get("FormProperty", "MainWindow"), "0,200,7,9");
}

TEST_F(RegistryTest, SwitchesReadAnySpellingOfTrue) {
  store.Set("System", "DebugMode", "TRUE");
  store.Set("System", "LoopTest", "yes");
  const clsRegistry registry(store, copies);
  EXPECT_TRUE(registry.GetDebugMode());
  EXPECT_FALSE(registry.GetLoopTest());
}

TEST_F(RegistryTest, AnEleventhFormIsNeverWritten) {
  {
    clsRegistry registry(store, copies);
    for (int i = 0; i < 14; ++i) registry.SetFormTop("Form" + std::to_string(i), 100 + i);
    EXPECT_EQ(registry.GetFormTop("Form3"), 103);
  }
  EXPECT_EQ(store.All("FormProperty").size(), 10U);
}

} // namespace calder::registry_test
