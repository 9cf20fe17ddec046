// What the file library costs with the largest waveform, each figure beside a peer that does the bare minimum in the
// same run, and beside the limit of their ratio. Ends with 1 when a limit is passed.
//
// The work and its peer take turns, so that both meet the same machine; work on memory counts at its best time, work
// that waits for a disk at its median.
#include "libs/file32/file32.h"

#include "libs/file32/IntegerText.h"
#include "platform/Clipboard.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <numbers>

namespace calder {
namespace {

double Microseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

enum class Take { Best, Median };

class Table {
public:
  Table() { std::printf("%-46s %10s %10s %7s %6s\n", "figure", "ours us", "peer us", "ratio", "limit"); }

  // limit 0: a figure without one.
  void Row(const char* figure, double limit, Take take, int rounds, const std::function<void()>& ours,
           const std::function<void()>& peer) {
    std::vector<double> oursTimes;
    std::vector<double> peerTimes;
    for (int i = 0; i < rounds; ++i) {
      oursTimes.push_back(Microseconds(ours));
      peerTimes.push_back(Microseconds(peer));
    }
    const double oursTime = Pick(oursTimes, take);
    const double peerTime = Pick(peerTimes, take);
    const double ratio = oursTime / peerTime;
    const bool over = limit > 0 && ratio > limit;
    over_ = over_ || over;
    std::printf("%-46s %10.1f %10.1f %7.2f ", figure, oursTime, peerTime, ratio);
    if (limit > 0)
      std::printf("%6.1f %s\n", limit, over ? "OVER" : "ok");
    else
      std::printf("%6s\n", "-");
  }

  [[nodiscard]] bool Over() const { return over_; }

private:
  static double Pick(std::vector<double>& times, Take take) {
    std::ranges::sort(times);
    return take == Take::Best ? times.front() : times[times.size() / 2];
  }

  bool over_ = false;
};

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(2);
}

// Temporary file, flush, rename, nothing else.
void PlainSave(const std::string& path, const void* data, std::size_t bytes) {
  const std::string temporary = path + ".plain";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  Require(file >= 0 && ::write(file, data, bytes) == static_cast<ssize_t>(bytes) && ::fsync(file) == 0, "plain save");
  ::close(file);
  Require(::rename(temporary.c_str(), path.c_str()) == 0, "plain rename");
}

void PlainRead(const std::string& path, std::vector<char>& memory, std::size_t bytes) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  Require(file >= 0 && ::pread(file, memory.data(), bytes, 0) == static_cast<ssize_t>(bytes), "plain read");
  ::close(file);
}

std::size_t PlainFormat(std::span<const std::int16_t> codes, std::vector<char>& text) {
  char* out = text.data();
  char* const end = out + text.size();
  for (const std::int16_t code : codes) {
    out = std::to_chars(out, end, code).ptr;
    *out++ = '\r';
    *out++ = '\n';
  }
  return static_cast<std::size_t>(out - text.data());
}

void PlainParse(const std::vector<char>& text, std::size_t bytes, std::span<std::int16_t> codes) {
  const char* at = text.data();
  const char* const end = at + bytes;
  for (std::int16_t& code : codes) at = std::from_chars(at, end, code).ptr + 2;
  Require(at == end, "plain parse");
}

// What the desktop's clipboard does inside one program: it holds the source and hands out its bytes.
class HoldingClipboard final : public Clipboard {
public:
  bool Offer(std::shared_ptr<ClipboardSource> source) override {
    source_ = std::move(source);
    return true;
  }
  bool Available() const override { return true; }
  bool Has(const std::string& mime) const override {
    const std::vector<std::string> formats = source_ ? source_->Formats() : std::vector<std::string>();
    return std::ranges::find(formats, mime) != formats.end();
  }
  std::optional<std::span<const std::byte>> Read(const std::string& mime) override { return source_->Data(mime); }

private:
  std::shared_ptr<ClipboardSource> source_;
};

void TextRows(Table& table, const std::string& name, const std::string& path, File32& file, WaveHandle buffer) {
  constexpr int kRounds = 40;
  const std::span<std::int16_t> codes = W_Lock(buffer);
  std::vector<char> ours(codes.size() * CODE_LINE_BYTES);
  std::vector<char> plain(ours.size());
  std::vector<std::int16_t> parsed(codes.size());
  std::size_t bytes = 0;
  table.Row((name + ": codes into text in memory / to_chars").c_str(), 1.2, Take::Best, kRounds,
            [&] { Require(FormatCodes(codes, LineEnd::CrLf, ours.data()) > 0, "format"); },
            [&] { bytes = PlainFormat(codes, plain); });
  Require(std::memcmp(ours.data(), plain.data(), bytes) == 0, "the same text");
  Require(file.SaveWaveData(path, buffer, 0, W_MAX_POINTS) == 0, "save of text");
  table.Row((name + ": reading the text file / from_chars").c_str(), 1.2, Take::Best, kRounds,
            [&] {
              std::int32_t read = 0;
              Require(file.LoadWaveData(path, buffer, 0, W_MAX_POINTS, read) == 0 && read == W_MAX_POINTS, "load");
            },
            [&] { PlainParse(plain, bytes, parsed); });
  Require(std::ranges::equal(parsed, codes), "the same codes");
  table.Row((name + ": saving the text file / to_chars, plain save").c_str(), 0, Take::Median, kRounds,
            [&] { Require(file.SaveWaveData(path, buffer, 0, W_MAX_POINTS) == 0, "save of text"); },
            [&] { PlainSave(path, plain.data(), PlainFormat(codes, plain)); });
}

void WdbRows(Table& table, const std::string& path, File32& file, WaveHandle buffer) {
  constexpr int kRounds = 80;
  std::vector<std::byte> block(WDB_SETTINGS_BYTES);
  std::vector<char> plain(WDB_TABLE_OFFSET);
  const auto ours = [&] { Require(file.Save4410File(path, block, buffer) == 0, "save of .wdb"); };
  table.Row(".wdb: saving / plain save", 1.3, Take::Median, kRounds, ours,
            [&] { PlainSave(path, plain.data(), plain.size()); });
  ours();
  table.Row(
      ".wdb: opening / plain read", 3, Take::Best, kRounds,
      [&] { Require(file.Read4410File(path, block, buffer) == 0, "open of .wdb"); },
      [&] { PlainRead(path, plain, plain.size()); });
}

void ClipRow(Table& table, File32& file, WaveHandle buffer) {
  HoldingClipboard clipboard;
  const std::span<std::int16_t> codes = W_Lock(buffer);
  std::vector<std::int16_t> between(codes.size());
  table.Row(
      "clipboard: copy and paste / two memcpy", 3, Take::Best, 400,
      [&] {
        std::int32_t placed = 0;
        Require(file.SetClipBoard(clipboard, buffer, 0, W_MAX_POINTS) == 0 &&
                    file.GetClipBoard(clipboard, buffer, 0, 0, W_MAX_POINTS, placed) == 0 && placed == W_MAX_POINTS,
                "clipboard");
      },
      [&] {
        std::memcpy(between.data(), codes.data(), codes.size_bytes());
        std::memcpy(codes.data(), between.data(), codes.size_bytes());
      });
}

int Run() {
  std::string folder = (std::filesystem::temp_directory_path() / "calder-bench-XXXXXX").string();
  Require(::mkdtemp(folder.data()) != nullptr, "temporary folder");
  const WaveHandle noise = W_AllocMemory(W_MAX_POINTS);
  const WaveHandle sine = W_AllocMemory(W_MAX_POINTS);
  std::uint32_t random = 1;
  for (std::int16_t& code : W_Lock(noise)) {
    random = random * 1664525 + 1013904223;
    code = static_cast<std::int16_t>(random >> 16);
  }
  double phase = 0;
  for (std::int16_t& code : W_Lock(sine)) {
    code = static_cast<std::int16_t>(std::lround(32767 * std::sin(phase)));
    phase += 2 * std::numbers::pi / W_MAX_POINTS;
  }

  File32 file;
  Table table;
  TextRows(table, "noise", folder + "/a.txt", file, noise);
  TextRows(table, "sine", folder + "/a.txt", file, sine);
  WdbRows(table, folder + "/a.wdb", file, noise);
  ClipRow(table, file, noise);
  W_FreeMemory(noise);
  W_FreeMemory(sine);
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return table.Over() ? 1 : 0;
}

} // namespace
} // namespace calder

int main() {
  return calder::Run();
}
