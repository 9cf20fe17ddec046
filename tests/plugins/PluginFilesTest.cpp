// The plug-ins of our own, each in its helper process, on files that other programs wrote and on tables as they write
// them.
#include "FakeDesktop.h"
#include "libs/pluginsp/PluginSp.h"
#include "platform/TempFolder.h"

#include <gmock/gmock.h>

namespace calder {
namespace {

using Settings = std::vector<std::pair<const char*, double>>;

struct Outcome {
  std::int16_t status = 0;
  std::string reason;
  std::vector<std::int16_t> codes;
  std::string report;
  std::string preview;
};

struct PluginFilesTest : testing::Test {
  Outcome Import(std::string_view extension, const std::string& path, const Settings& settings) {
    std::int32_t found = 0;
    EXPECT_EQ(plugins.OpenPlugin({CALDER_PLUGIN_FOLDER, CALDER_EXAMPLE_FOLDER}, "*.so", "4410", 256, found), 0);
    std::int32_t k = found - 1;
    std::array<char, PLUGIN_TYPE_BYTES> type{};
    std::int32_t unused = 0;
    for (; k >= 0 && plugins.GetPluginType(k, unused, type) == 0 && type.data() != extension;) --k;
    Outcome outcome;
    const auto ask = [&](PluginForm& form, const PluginSp::ChangeOption& change) {
      for (const auto& [key, value] : settings)
        if (!change(key, value, form)) break;
      outcome.preview = form.preview;
      return true;
    };
    ImportRecord record;
    record.path = path;
    std::int32_t session = 0;
    outcome.status = plugins.BeginPlugin(k, session, record, ask);
    outcome.reason = plugins.Fault().text;
    if (outcome.status != 0) return outcome;
    if (record.startOffset > 0) outcome.status = plugins.SeekPlugin(k, session, record.startOffset);
    std::array<std::int16_t, std::size_t{PLUGIN_BLOCK_POINTS}> block{};
    while (outcome.status == 0 && outcome.codes.size() < static_cast<std::size_t>(record.points)) {
      std::int32_t count = PLUGIN_BLOCK_POINTS;
      outcome.status = plugins.ExecutePlugin(k, session, block.data(), count, 0);
      outcome.codes.insert(outcome.codes.end(), block.begin(), block.begin() + count);
    }
    EXPECT_EQ(plugins.EndPlugin(k, session), 0);
    outcome.report = plugins.Report();
    return outcome;
  }

  fake::InlineWorker worker;
  PluginSp plugins{CALDER_PLUGIN_HELPER, "en", worker};
  TempFolder folder;
};

TEST_F(PluginFilesTest, TablesInText) {
  const struct {
    const char* text;
    Settings settings;
    std::vector<std::int16_t> codes; // empty: refused, with the report's text as the reason
    const char* report;
  } rows[] = {
      // Oscilloscopes: settings above the columns; beside them; in the header's own columns; a point a line; a footer.
      {"Model,QX200\r\nRecord length,6\r\nSample interval,1e-3\r\n\r\nTIME (s),CH1 (V),CH2 (V)\r\n"
       "-1e-3,-2,1\r\n0,4,2\r\n1e-3,+8,3\r\n2e-3,16.0,4\r\n",
       {},
       {-2, 4, 8, 16},
       ""},
      {"Record "
       "length,6,Points,-0.002,7,\nInterval,0.001,s,-0.001,8,\nSource,CH2,,0.000,9,\n,,,0.001,10,\n,,,0.002,11,\n",
       {},
       {7, 8, 9, 10, 11},
       ""},
      {"X,CH1,Start,Increment,\nSequence,Volt,-1.2e-3,4e-7\n0,5,,\n1,6,,\n2,7,,\n3,8,,\n", {}, {5, 6, 7, 8}, ""},
      {"# exported\n# 2 V/div\n1\n2\n\n3\n-4", {}, {1, 2, 3, -4}, ""},
      {"1\t10\n2\t20\n3\t30\nEND\t\n", {}, {10, 20, 30}, ""},
      {"s V\n0.0 1\n0.1  2\n 0.2\t3\n", {}, {1, 2, 3}, ""},
      // Spreadsheets: semicolons and decimal commas, quoted cells, a byte order mark, columns of unequal length.
      {"\xEF\xBB\xBFZeit;\"Spannung; CH1\";Rest\n0,0;0,5;1\n0,1;-1;2\n0,2;0,25;3\n0,3;;4\n0,4;;5\n",
       {},
       {16384, -32767, 8192},
       ""},
      {"\"t\",\"u\"\n\"0,5\",\"-1,5\"\n\"1,0\",\"3,0\"\n\"1,5\",\"1,5\"\n", {}, {-16384, 32767, 16384}, ""},
      {"0,05\n0,10\n-0,20\n", {}, {8192, 16384, -32767}, ""},
      {"5\" probe,a\n\"x\"\"y\",1\n1,2\n2,3\n3,4\n", {}, {2, 3, 4}, ""},
      {"\"a\"\",b\",1\n\"c\"\",d\",2\n", {{"column", 1}}, {1, 2}, ""},
      {"1\r2\r3\r", {}, {1, 2, 3}, ""},
      // Scale: whole 16-bit numbers are codes, else the peak is full scale; either can be chosen.
      {"-32768\n32767\n", {}, {-32768, 32767}, ""},
      {"-32769\n0\n", {}, {-32767, 0}, ""},
      {"1\n-2\n", {{"scale", 1}}, {16384, -32767}, ""},
      {"1.4\n40000\n", {{"scale", 2}}, {1, 32767}, "Points limited to full scale: 1\n"},
      {"0\n-0.0\n0\n", {{"scale", 1}}, {0, 0, 0}, ""},
      {"1e308\n-1e308\n", {}, {32767, -32767}, ""},
      // Another column, no time column, another header than was guessed.
      {"t,a,b\n0,1,4\n1,2,5\n2,3,6\n", {{"column", 2}}, {4, 5, 6}, ""},
      {"t,a,b\n0,1,4\n1,2,5\n2,3,6\n", {{"time", 0}, {"column", 0}, {"header", 2}}, {1, 2}, ""},
      {"1,2\n3,4\n5,6\n", {{"delimiter", 1}, {"decimal", 1}}, {7022, 19894, 32767}, ""},
      // Cells that are no numbers.
      {"1\nx\n3\n\n\ninf\n1e999\n7\n",
       {},
       {1, 1, 3, 3, 3, 7},
       "Cells that are no numbers: 3\nline 2, column 1: \"x\"\nline 6, column 1: \"inf\"\nline 7, column 1: "
       "\"1e999\"\n"},
      {"0,1\n1,\n2,0x3\n3,4\n",
       {{"rejected", 1}},
       {1, 4},
       "Cells that are no numbers: 2\nline 2, column 2: empty\nline 3, column 2: \"0x3\"\n"},
      {"1\n2\nthe end of it\n", {}, {1, 2}, "Cells that are no numbers: 1\nline 3, column 1: \"the end of it\"\n"},
      {"1\n2\n3\n4\n+-2\n3\n", {{"rejected", 2}}, {}, "line 5, column 1: \"+-2\""},
      {"t,v\n0,1\n1,2\n4,3\n5,4\n",
       {},
       {1, 2, 3, 4},
       "The times are not evenly spaced; the points are. Largest shift in % of the length: 13\n"},
      {"words\nand no number\n", {}, {}, "The chosen column holds no number."},
      {"", {}, {}, "The chosen column holds no number."},
      {"\xFF\xFE"
       "1",
       {},
       {},
       "This is UTF-16 text. Save it as UTF-8."},
  };
  for (const auto& row : rows) {
    PutFile(folder / "table.csv", row.text);
    const Outcome outcome = Import("csv", folder / "table.csv", row.settings);
    EXPECT_EQ(outcome.codes, row.codes) << row.text << outcome.preview << outcome.reason;
    EXPECT_EQ(outcome.status == 0 ? outcome.report : outcome.reason, row.report) << row.text;
  }
}

TEST_F(PluginFilesTest, FilesOfOtherPrograms) {
  const std::string data = CALDER_SOURCE_DIR "/tests/data/import/";
  const std::string array = GetFile(data + "numpy-int16.npy");
  const std::string scalar = GetFile(data + "numpy-scalar-uint8.npy");
  PutFile(folder / "cut-scalar.npy", scalar.substr(0, scalar.size() - 1));
  PutFile(folder / "cut.npy", array.substr(0, array.size() - 1));
  PutFile(folder / "dictionary.npy", std::string(array).replace(array.find("shape"), 5, "shope"));
  PutFile(folder / "version.npy", std::string(array).replace(6, 1, "\x04"));
  PutFile(folder / "huge.npy", std::string(array).replace(array.find("(5,)"), 12, "(99999999999"));
  PutFile(folder / "codes.raw", std::string("\1\0\xFE\xFF\3\0", 6)); // for the example of docs/plugins.md
  const std::string sound = GetFile(data + "sox-stereo.wav");
  PutFile(folder / "cut.wav", sound.substr(0, 44 + 4 * 7));
  const struct {
    const char* extension;
    std::string path;
    Settings settings;
    std::size_t points;              // 0: refused, with the report's text as the reason
    std::vector<std::int16_t> first; // codes
    const char* report;
  } rows[] = {
      {"npy", data + "numpy-int16.npy", {}, 5, {1, -2, 300, -32768, 32767}, ""},
      {"npy", data + "numpy-scalar-uint8.npy", {}, 1, {200}, ""},
      {"npy", data + "numpy-fortran-big.npy", {}, 4, {0, 16384, -32767, 8192}, ""},
      {"npy", data + "numpy-fortran-big.npy", {{"line", 2}}, 4, {10, 20, 30, -40}, ""},
      {"npy", data + "numpy-fortran-big.npy", {{"direction", 1}, {"line", 3}, {"scale", 2}}, 2, {-1, 30}, ""},
      {"npy", data + "numpy-v3-int64.npy", {}, 3, {5, 6, 7}, ""},
      {"npy", data + "numpy-v3-int64.npy", {{"line", 2}}, 3, {-3, 3, -32767}, ""},
      {"npy", data + "numpy-v3-int64.npy", {{"direction", 0}, {"line", 2}}, 2, {6, 9}, ""},
      {"npy",
       data + "numpy-v2-half.npy",
       {},
       5,
       {0, 32767, -16384, -16384, 0},
       "Values that are not finite, replaced by the one before: 2\npoint 0\npoint 3\n"},
      {"npy",
       data + "numpy-complex.npy",
       {},
       0,
       {},
       "Only arrays of whole or real numbers of up to 64 bits can be read."},
      {"npy", data + "numpy-cube.npy", {}, 0, {}, "Arrays of more than two dimensions cannot be read."},
      {"npy", folder / "cut.npy", {}, 0, {}, "The file is shorter than its array."},
      {"npy", folder / "cut-scalar.npy", {}, 0, {}, "The file is shorter than its array."},
      {"npy", folder / "huge.npy", {}, 0, {}, "The header is damaged."},
      {"npy", folder / "dictionary.npy", {}, 0, {}, "The header is damaged."},
      {"npy", folder / "version.npy", {}, 0, {}, "This version of NumPy files cannot be read (only 1 to 3)."},
      {"npy", data + "sox-stereo.wav", {}, 0, {}, "This is not a file of a NumPy array."},
      {"csv", data + "numpy-int16.npy", {}, 0, {}, "This is not a text file."},
      {"raw", folder / "codes.raw", {}, 3, {1, -2, 3}, ""},
      {"raw", data + "numpy-scalar-uint8.npy", {}, 0, {}, "The file ends in the middle of a code."},
      {"csv", folder.Path().string(), {}, 0, {}, "The file cannot be read: Invalid argument"},
#ifdef CALDER_HAS_WAV
      {"wav", data + "sox-stereo.wav", {}, 80, {540, 4976, 9676, 13221, 15611}, ""},
      {"wav", data + "sox-stereo.wav", {{"channel", 1}}, 80, {9252, 18508, 14450, 19300, -2540}, ""},
      {"wav", data + "sox-stereo.flac", {{"channel", 1}}, 80, {9252, 18508, 14450, 19300, -2540}, ""},
      {"wav", data + "sox-byte.wav", {}, 80, {512, 4864, 9728, 13312, 15616}, ""},
      {"wav", data + "sox-float.wav", {}, 80, {135, 1244, 2419, 3305, 3903}, ""},
      {"wav", data + "sox-float.wav", {{"scale", 1}}, 80, {1079, 9946, 19340, 26425, 31202}, ""},
      {"wav", folder / "cut.wav", {}, 7, {540, 4976, 9676, 13221, 15611}, ""},
      {"wav", data + "numpy-int16.npy", {}, 0, {}, "Format not recognised."},
      {"wav", folder / "missing.wav", {}, 0, {}, "System error : No such file or directory."},
#endif
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    const Outcome outcome = Import(row.extension, row.path, row.settings);
    ASSERT_EQ(outcome.codes.size(), row.points) << outcome.reason;
    EXPECT_EQ(std::vector(outcome.codes.begin(), outcome.codes.begin() + static_cast<std::ptrdiff_t>(row.first.size())),
              row.first);
    EXPECT_EQ(outcome.status == 0 ? outcome.report : outcome.reason, row.report);
  }
}

} // namespace
} // namespace calder
