#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/ModelParser.h"
#include "libs/sysinf32/sysinf32.h"

#include "TestModel.h"
#include "platform/TempFolder.h"

#include <gmock/gmock.h>

namespace calder::model_fault_test {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The model text with one place changed, and the line where that place begins.
struct Edited {
  std::string text;
  std::int32_t line = 0;
};

Edited Edit(const std::string& from, const std::string& to) {
  Edited edited{std::string(test::kModelText), 0};
  const std::size_t at = edited.text.find(from);
  if (at == std::string::npos) {
    ADD_FAILURE() << "The model has no " << from;
    return edited;
  }
  edited.line = 1 + static_cast<std::int32_t>(
                        std::count(edited.text.begin(), edited.text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
  edited.text.replace(at, from.size(), to);
  return edited;
}

constexpr std::int32_t kSameLine = -1; // the line of the edit

struct FaultRow {
  const char* from;
  const char* to;
  std::int32_t line; // kSameLine, or a number
  const char* says;
};

void ExpectFaults(std::initializer_list<FaultRow> rows, std::int32_t status) {
  for (const FaultRow& row : rows) {
    const Edited edited = Edit(row.from, row.to);
    Model model;
    const std::optional<ModelFault> fault = ParseModel(edited.text, "a.toml", model);
    ASSERT_TRUE(fault) << row.to;
    EXPECT_EQ(fault->status, status) << row.to;
    EXPECT_EQ(fault->file, "a.toml");
    EXPECT_EQ(fault->line, row.line == kSameLine ? edited.line : row.line) << row.to << ": " << fault->text;
    EXPECT_THAT(fault->text, HasSubstr(row.says)) << row.to;
  }
}

TEST(ModelFaultTest, SyntaxErrorsTellTheirLine) {
  const std::string longLine = "# " + std::string(1000, 'x') + "\nname =";
  ExpectFaults({{"name =", "name", kSameLine, ""},
                {"data_bits = 14", "data_bits = 14 15", kSameLine, ""},
                {"data_bits = 14", "name = \"TM2\"", kSameLine, "name"},
                {"[memory]", "[memory", kSameLine, ""},
                {"[memory]", "[=memory]", kSameLine, ""},
                {"[memory]", "m\u00e9moire = 1\n[memory]", kSameLine, ""},
                {"[memory]", "memory \u00ea = 1", kSameLine, ""},
                {"[memory]", "[\x01memory]", kSameLine, "control character"},
                {"english = \"fast\"", "english = \"fast", kSameLine, "a quote is missing"},
                {"english = \"fast\"", "english = \"\xff\"", kSameLine, ""},
                {"sizes = [8192,", "sizes = [[[[[[[[[[[8192]]]]]]]]]],", kSameLine, "nest"},
                {"name =", longLine.c_str(), kSameLine, "1000"}},
               SYS_SYNTAX_ERROR);
}

TEST(ModelFaultTest, BadValuesTellTheirLine) {
  ExpectFaults({{"name = \"TM1\"", "", 0, "\"name\" is missing"},
                {"name = \"TM1\"", "name = \"\"", kSameLine, "1 to 16"},
                {"name = \"TM1\"", "name = \"ABCDEFGHIJKLMNOPQ\"", kSameLine, "1 to 16"},
                {"name = \"TM1\"", "name = \"T,1\"", kSameLine, "comma"},
                {"name = \"TM1\"", "name = \"T\u00e9\"", kSameLine, "ASCII"},
                {"name = \"TM1\"", "name = \" T\"", kSameLine, "blanks"},
                {"name = \"TM1\"", "name = 1", kSameLine, "text"},
                {"data_bits", "data_bit", kSameLine, "Did you mean \"data_bits\""},
                {"data_bits = 14", "data_bits = 17", kSameLine, "1 to 16"},
                {"data_bits = 14", "data_bits = 14.0", kSameLine, "integer"},
                {"data_bits = 14", "data_bits = 14\nmaker = 1", 4, "\"maker\" is unknown"},
                {"offset_switch = true", "offset_switch = 1", kSameLine, "true or false"},
                {"\"USBTMC\"", "\"USB\"", kSameLine, "one of"},
                {"\"USBTMC\"", "\"NI GPIB 2\"", kSameLine, "twice"},
                {"interfaces = [\"NI GPIB 2\", \"USBTMC\"]", "interfaces = []", kSameLine, "items"},
                {"default = 5", "default = 0", 7, "default address"},
                {"ni_gpib = [1, 20]", "ni_gpib = [20, 1]", kSameLine, "20 to 30"},
                {"ni_gpib = [1, 20]", "ni_gpib = [5]", kSameLine, "least and the largest"},
                {"usb488 = [4, 99]", "usb488 = [4, 128]", kSameLine, "4 to 127"},
                {"sizes = [8192,", "sizes = [524289,", kSameLine, "524288"},
                {"sizes = [8192,", "sizes = [1500,", kSameLine, "twice"},
                {"sizes = [8192, 1024,", "sizes = [524288, 16,", kSameLine, "far apart"},
                {"min = 1, max = 9, default = 3", "min = 1, max = 2, default = 3", kSameLine, "1 to 2"},
                {"name = { default = \"WAVE\" }", "name = { default = \"A\\\"B\" }", kSameLine, "quote"},
                {"name = { default = \"WAVE\" }", "name = {}", kSameLine, "\"default\" is missing in \"name\""},
                {"[[frequency_warning]]", "[frequency_warning]", kSameLine, "[[frequency_warning]]"},
                {"min = 0.5", "min = 0", kSameLine, "1e-12"},
                {"min = 0.5", "min = 3e6", kSameLine, "above \"max\""},
                {"max = 2e6", "max = inf", kSameLine, "finite"},
                {"max = 2e6", "max = 2e12", kSameLine, "1e12"},
                {"default = 1000", "default = 0.4", kSameLine, "outside"},
                {"resolution = 0.01", "resolution = 0", kSameLine, "above 0"},
                {"default = 2, resolution", "defalt = 2, resolution", kSameLine, "Did you mean \"default\""},
                {"amplitude = { min = 0.1, max = 20", "amplitude = { min = 11, max = 20", kSameLine, "outside"},
                {"max = 20, default = 2,", "max = 20.5, default = 2,", kSameLine, "wider"},
                {"default = 0.25", "default = 0.75", kSameLine, "leaves"},
                {"name = \"narrow\"", "name = \"wide\"", kSameLine, "twice"},
                {"name = \"B\"", "name = \"A\"", kSameLine, "twice"},
                {"name = \"lopsided\"", "name = \"a name of 21 letters!\"", kSameLine, "1 to 20"},
                {"above = 1e6", "above = 2e6", kSameLine, "not below"},
                {"channel = \"B\"\njapanese", "channel = \"A\"\njapanese", 45, "No frequency"},
                {"english = \"fast\"", "english = \"\"", kSameLine, "1 to 500"},
                {"output = \"on\"", "output = \"ON\"", kSameLine, "one of"},
                {"polarity = \"Inv 0/+FS\"", "polarity = \"Inv\"", kSameLine, "Norm +/-FS"},
                {"polarity = \"Inv 0/+FS\"", "polarity = \"\"", kSameLine, "Norm +/-FS"},
                {"[[channel]]\nname = \"A\"\nfrequency = { min = 1, max = 100, default = 50 }\n\n[[channel]]\nname = "
                 "\"B\"\n[[channel.range]]",
                 "[[range]]", 0, "\"channel\" is missing"},
                {"amplitude = 0.5", "amplitude = 1.1", kSameLine, "outside the limits of the range"},
                {"amplitude = 0.5", "", 52, "outside the limits of the range"},
                {"frequency = 20000", "frequency = 20e6", kSameLine, "outside the limits of the channel"},
                {"range = \"lopsided\"", "range = \"wide\"", kSameLine, "one of"},
                {"[commands.closing]", "[commands.closin]", kSameLine, "Did you mean \"closing\""},
                {"model = \"*IDN?, 1, 3, TM1\"", "", 65, "\"model\" is missing"},
                {"model = \"*IDN?, 1, 3, TM1\"", "model = \"*IDN?, 1, 4, TM1\"", kSameLine, "number of characters"},
                {"model = \"*IDN?, 1, 3, TM1\"", "model = \"*IDN?, 0, 3, TM1\"", kSameLine, "start"},
                {"getsts = \"*ESR?\"", "getsts = \"*ESR?, 1\"", kSameLine, "1 columns"},
                {"errmask = \"60\"", "errmask = \"0x10000\"", kSameLine, "mask"},
                {"errmask = \"60\"", "errmask = \"6O\"", kSameLine, "mask"},
                {"errmask = \"60\"", "errmask = 60", kSameLine, "text"},
                {"freq = \":FREQ, 0.###\"", "freq = \":FREQ, %g\"", kSameLine, "number format"},
                {"freq = \":FREQ, 0.###\"", "freqs = \":FREQ, 0.###\"", kSameLine, "Did you mean \"freq\""},
                {"amp = \":VOLT, 0.####\"", "amp = \":VOLT 1, 2, 3, 4, 5\"", kSameLine, "columns"},
                {"outon = \":OUTP$CH$ ON\"", "outon = \":OUTP$CHAN$ ON\"", kSameLine, "placeholder"},
                {"outon = \":OUTP$CH$ ON\"",
                 "outon = \"12345678901234567890123456789012345678901234567890123456789012345\"", kSameLine, "1 to 64"},
                {"arbmask = \"0xFFFC\"", "arbmask = \"0xFFFF\"", kSameLine, "14 data bits: that is 0xFFFC"},
                {"arbbank = \"BANK, 0, -1\"", "arbbank = \"BANK, 0, x\"", kSameLine, "whole number"},
                {"0x22, 8\"", "0x22, 33\"", kSameLine, "1 to 32"},
                {"arbbank =", "arbbswap = \"yes\"\narbbank =", kSameLine, "true"}},
               SYS_BAD_VALUE);
}

TEST(ModelFaultTest, ProtocolsTellTheirLine) {
  const std::pair<const char*, const char*> rows[] = {
      {"block = \"both\"", "one of \"plain\", \"header\""},
      {"block_command = \"X\"", "header only"},
      {"selects = \"X\"", "Did you mean \"select\""},
      {"select = \"X $ARBNUM$\"", "no placeholder but $CH$, $NUMBER$, $NAME$"},
      {"output_on = \"X $CH$\"", "no placeholder."},
      {"load_seconds = 601", "0 to 600"},
      {"select = \"\"", "1 to 128"},
      {"preparation = [\"\"]", "1 to 128"},
      {"sequence = { state = \"A?\" }", "\"condition\" is missing"},
      {"polarity = { query = \"A?\", command = \"B\", normal = \"N\", inverted = \"I\", scales = [\"F\"] }",
       "as many items as there are scales: 3"},
      {"power_source = { amplitude = \"A\", offset = \"O\", frequency = \"F\", mode_query = \"M?\", mode_replies = "
       "[\"1\"], mode_commands = [\"M 1\"] }",
       "as many items as there are channels: 2"}};
  for (const auto& [line, says] : rows)
    ExpectFaults(
        {{"[commands.common]", ("[protocol]\n" + std::string(line) + "\n[commands.common]").c_str(), 66, says}},
        SYS_BAD_VALUE);
  ExpectFaults({{"[commands.common]", "[protocol]\nblock = \"header\"\n[commands.common]", 65, "\"block_command\""}},
               SYS_BAD_VALUE);
}

TEST(ModelFaultTest, OnlyUsbNeedsTheCommandOfABlockWithAHeader) {
  std::string text = Edit("[commands.common]", "[protocol]\nblock = \"header\"\n[commands.common]").text;
  const std::string usb = ", \"USBTMC\"";
  text.erase(text.find(usb), usb.size());
  Model model;
  EXPECT_FALSE(ParseModel(text, "a.toml", model));
}

TEST(ModelFaultTest, AModelWithoutAnyWayToSendAWaveformIsRefused) {
  std::string text = Edit("default_arb_command = \":PRE, :SEND\"", "").text;
  Model model;
  EXPECT_FALSE(ParseModel(text, "a.toml", model));
  text.erase(text.find("arbsend"));
  const std::optional<ModelFault> fault = ParseModel(text, "a.toml", model);
  ASSERT_TRUE(fault);
  EXPECT_EQ(Texts(fault->status, fault->line), Texts(SYS_BAD_VALUE, 77));
}

// Deep dotted keys and oversized texts must end as a fault, not as an overflow of the stack.
TEST(ModelFaultTest, HostileTextsEndAsFaults) {
  Model model;
  EXPECT_EQ(ParseModel(std::string(70000, '\n'), "a.toml", model)->status, SYS_BAD_VALUE);
  std::string deep = "x = ";
  for (int i = 0; i < 60; ++i) {
    deep += "{";
    for (int j = 0; j < 490; ++j) deep += "a.";
    deep += "a = [\n";
  }
  EXPECT_EQ(ParseModel(deep, "a.toml", model)->status, SYS_SYNTAX_ERROR);
  std::string dotted;
  for (int j = 0; j < 490; ++j) dotted += "a.";
  EXPECT_EQ(ParseModel("[" + dotted + "a]\n" + dotted + "b = 1\n", "a.toml", model)->status, SYS_BAD_VALUE);
  EXPECT_EQ(ParseModel("", "a.toml", model)->status, SYS_BAD_VALUE);
}

TEST(ModelFaultTest, ColumnsSplitAtCommasOutsideQuotes) {
  EXPECT_THAT(SplitCommandColumns("*IDN?, 6 ,\t6, XG"), ElementsAre("*IDN?", "6", "6", "XG"));
  EXPECT_THAT(SplitCommandColumns("\"a,b\", 'c,\"d\"',"), ElementsAre("a,b", "c,\"d\"", ""));
  EXPECT_THAT(SplitCommandColumns("\"open, end"), ElementsAre("open, end"));
  EXPECT_THAT(SplitCommandColumns("a 'b,c'"), ElementsAre("a 'b", "c"));
  EXPECT_THAT(SplitCommandColumns(""), ElementsAre(""));
}

class ModelFolderFault : public ::testing::Test {
protected:
  void Expect(std::int32_t status, const std::string& file, std::int32_t line) {
    EXPECT_EQ(database_.SysInitDeviceInfo(folder_.Path().string()), status);
    EXPECT_EQ(database_.SysGetSysErrorFileName(), file.empty() ? "" : folder_ / file);
    EXPECT_EQ(database_.SysGetSysErrorLineNo(), line);
    EXPECT_EQ(database_.SysGetSysErrorText().empty(), status == 0);
    EXPECT_EQ(database_.SysGetDeviceCnt() == 0, status != 0);
  }

  TempFolder folder_;
  ModelDatabase database_;
};

TEST_F(ModelFolderFault, TellsTheFileAndTheLineAndLeavesNoModels) {
  Expect(SYS_NO_MODEL_FILE, "index.toml", 0);
  PutFile(folder_ / "index.toml", "models = [\n  \"a.toml\",\n  \"b.toml\",\n]");
  PutFile(folder_ / "a.toml", std::string(test::kModelText));
  Expect(SYS_NO_MODEL_FILE, "b.toml", 0);
  PutFile(folder_ / "b.toml", "name = \"B\"\ndata_bits 3");
  Expect(SYS_SYNTAX_ERROR, "b.toml", 2);
  PutFile(folder_ / "b.toml", "name = \"B\"\ndata_bits = \"3\"\ninterfaces = [\"USBTMC\"]\n");
  Expect(SYS_BAD_VALUE, "b.toml", 2);
  PutFile(folder_ / "b.toml", "# the same name\n" + std::string(test::kModelText));
  Expect(SYS_BAD_VALUE, "b.toml", 2);
  PutFile(folder_ / "b.toml", Edit("name = \"TM1\"", "name = \"TM\"").text);
  Expect(SYS_BAD_VALUE, "b.toml", 1);
  PutFile(folder_ / "b.toml", Edit("name = \"TM1\"", "name = \"TM11\"").text);
  Expect(0, "", 0);
  EXPECT_EQ(database_.SysGetDeviceCnt(), 2);
  std::filesystem::remove(folder_ / "b.toml");
  std::filesystem::create_directory(folder_ / "b.toml");
  Expect(SYS_READ_FAILED, "b.toml", 0);
  for (const auto& [index, line] : {std::pair{"models = []", 1},
                                    {"\nmodels = [\"../a.toml\"]", 2},
                                    {"models = [\n\"a.toml\",\n\"a.toml\"]", 3},
                                    {"models = [\"a.txt\"]", 1},
                                    {"model = [\"a.toml\"]", 1},
                                    {"", 0}}) {
    PutFile(folder_ / "index.toml", index);
    Expect(SYS_BAD_VALUE, "index.toml", line);
  }
  ModelDatabase missing;
  EXPECT_EQ(missing.SysInitDeviceInfo(folder_ / "none"), SYS_NO_MODEL_FILE);
}

} // namespace calder::model_fault_test
