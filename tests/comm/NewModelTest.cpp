// A model that is added as docs/models.md says, with the file that the page shows, and nothing else.
#include "comm/BusFixture.h"
#include "comm/ReadBack.h"
#include "comm/SettingsTransfer.h"

#include <gmock/gmock.h>

namespace calder::new_model_test {

struct NewModel : BusFixture {
  NewModel() {
    namespace fs = std::filesystem;
    const fs::path source(CALDER_SOURCE_DIR);
    fs::copy(source / "models", folder / "models");
    fs::copy(source / "data/USBTMC.ID", folder);
    const std::string page = TextOf((source / "docs/models.md").string());
    const std::string fence = "```toml\n";
    const std::size_t begin = page.find(fence) + fence.size();
    std::string model = page.substr(begin, page.find("```", begin) - begin);
    // A name of its own, in case that the page's model was added for good.
    for (std::size_t at = 0; (at = model.find("VJ6140", at)) != std::string::npos;) model.replace(at, 6, "VJ6149");
    std::ofstream(folder / "models/vj6149.toml") << model;
    std::string index = TextOf((folder / "models/index.toml").string());
    index.insert(index.rfind(']'), "  \"vj6149.toml\",\n");
    std::ofstream(folder / "models/index.toml") << index;
    std::ofstream(folder / "USBTMC.ID", std::ios::app) << "VJ6149,USB0::0x1209::0x6149::\n";

    desktop.folders.read = {folder.string()};
    program.emplace(desktop.Services());
    setup.emplace(*program);
    MakeBus();
    EXPECT_TRUE(ReadUsbIds((folder / "USBTMC.ID").string(), program->usbIds));
    EXPECT_TRUE(InitialiseSystem(*program, *setup));
    EXPECT_EQ(sim::AddModels((folder / "models").string(), (folder / "USBTMC.ID").string()), "");
    sim::Reset();
  }
};

TEST_F(NewModel, TransfersOnEachOfItsBuses) {
  const int model = program->models.SysGetDeviceCnt() - 1;
  ASSERT_EQ(program->models.SysGetDeviceName(model), "VJ6149");
  for (const InterfaceKind kind : {kNiGpib, kUsbTmc}) {
    SCOPED_TRACE("kind " + std::to_string(kind));
    sim::Reset();
    Choose(model, kind);
    if (kind == kUsbTmc) bus->SetUsbResource(program->usbIds.back().value + "1234567");
    program->settings.MemoryNo = 3;
    program->settings.Frequency = 250;
    program->settings.Output = 0;
    EXPECT_TRUE(SettingsTransfer(Context()));
    EXPECT_EQ(Texts(sim::Setting("VJ6149", "frequency"), sim::Setting("VJ6149", "output")), "250 1");
    EXPECT_TRUE(TransferWave());
    const auto held = sim::Memory("VJ6149", 3);
    ASSERT_TRUE(held);
    EXPECT_EQ(static_cast<int>(held->codes.size()), program->settings.MemorySize);
    EXPECT_EQ(sim::Setting("VJ6149", "user"), "3");
    EXPECT_EQ(sim::Errors("VJ6149"), std::vector<std::string>());
    ExpectIdle();
  }
}

// "keep" is left to the file: nothing of the output goes out when it says nothing.
TEST_F(NewModel, KeepsTheOutputWhereTheFileSaysNothingOfIt) {
  const int model = program->models.SysGetDeviceCnt() - 1;
  Choose(model, kNiGpib);
  for (const int output : {0, 1, 2}) {
    sim::Reset();
    program->settings.Output = static_cast<std::int16_t>(output);
    EXPECT_TRUE(TransferWave());
    for (const std::string& message : sim::Messages("VJ6149"))
      EXPECT_THAT(message, testing::Not(testing::HasSubstr("OUTP")));
  }
}

TEST_F(NewModel, IsNamedWhenItsFileIsMissing) {
  std::filesystem::remove(folder / "models/vj6149.toml");
  desktop.boxes.Expect("No System Setup file.\r(" + (folder / "models/vj6149.toml").string() +
                       ")\rThe file does not exist. Line ");
  EXPECT_FALSE(InitialiseSystem(*program, *setup));
}

} // namespace calder::new_model_test
