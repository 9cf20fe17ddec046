// What the main window costs with the largest waveform: a frame, undo, the start, beside peers in the same run.
// Ends with 1 when a limit is passed. Usage: bench_editor START_PROGRAM BARE_WINDOW
#include "FakeDesktop.h"
#include "FigureTable.h"
#include "PlotPeer.h"
#include "editor/Editor.h"
#include "platform/qt/WaveformCanvas.h"

#include <QApplication>
#include <QProcess>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <numbers>

namespace calder {
namespace {

constexpr double kFrame = 16000; // microseconds

void Fill(std::span<std::int16_t> points, double noise) {
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < points.size(); ++i) {
    random = random * 1664525 + 1013904223;
    const double sine = (1 - noise) * 32767 * std::sin(40 * std::numbers::pi * static_cast<double>(i) / 524288);
    points[i] = static_cast<std::int16_t>(sine + noise * static_cast<std::int16_t>(random >> 16));
  }
}

// Shows its picture and counts until the screen has it.
void FrameRows(FigureTable& table, Editor& editor) {
  WaveformCanvas picture;
  picture.resize(1920, 800);
  picture.show();
  QApplication::processEvents();
  const auto points = W_Lock(editor.program.buffers.Current());
  const struct {
    const char* figure;
    double noise;
  } rows[] = {{"frame of a sine / copy to the screen", 0},
              {"frame of a sine with noise / copy to the screen", 0.1},
              {"frame of full-scale noise / copy to the screen", 1}};
  for (const auto& row : rows) {
    Fill(points, row.noise);
    table.Row(
        row.figure, 1.3, 60,
        [&] {
          PixelContext context = picture.Context();
          editor.painter.Draw_Wave(context);
        },
        [&] {
          picture.repaint();
          QGuiApplication::sync();
        });
  }
#ifdef CALDER_HAS_PLOT_PEER
  Fill(points, 0.1);
  const auto plot = MakePlotPeer(points, 1920, 800);
  // Each by itself, as frames follow each other; taking turns, either would find the other's data in the caches.
  const double ours = FigureTable::BestTime(60, [&] {
    PixelContext context = picture.Context();
    W_DrawWave2(context, editor.program.buffers.Current(), 0, 0, 524288, 65534, 1920, 800);
  });
  table.LimitRow("waveform / replot of a plotting library (limit 1/20)", 0.05, ours / FigureTable::BestTime(12, plot));
#endif
}

// The digital view's picture until the screen has it, and what its gestures cost with every point in the range.
void LaneRows(FigureTable& table, Editor& editor) {
  WaveformCanvas picture;
  picture.resize(1920, 800);
  picture.show();
  QApplication::processEvents();
  QImage image(1920, 800, QImage::Format_RGB32);
  const auto draw = [&](const LanePicture& lanes) {
    PixelContext context = picture.Context();
    editor.painter.Draw_Digital(context, lanes);
  };
  const auto copy = [&] {
    picture.repaint();
    QGuiApplication::sync();
  };
  const auto points = W_Lock(editor.program.buffers.Current());
  Fill(points, 1);
  const struct {
    const char* figure;
    std::uint16_t selected;
  } rows[] = {{"frame of 16 lanes of noise / QImage::fill and the copy", 0}, {"the same, all lanes selected", 0xFFFF}};
  for (const auto& row : rows) {
    table.Row(
        row.figure, 2, 60,
        [&] {
          draw({.selectedBits = row.selected});
          copy();
        },
        [&] {
          image.fill(Qt::black);
          copy();
        });
  }
  const double fill = FigureTable::BestTime(60, [&] { image.fill(Qt::black); });
  table.RatioRow("drawing of 16 lanes of noise / QImage::fill", 2.5, FigureTable::BestTime(60, [&] { draw({}); }),
                 fill);
  const PicturePoint top{960, 30, 1920, 800, 1};
  const PicturePoint bottom{960, 760, 1920, 800, 1};
  constexpr const char* buttons[] = {"button 0", "button 1", "Invert", "Pattern [1H 1L]0"};
  editor.LanePress(top, Editor::PressKeys::None);
  editor.LaneRelease(top);
  editor.PatternTyped("Mask $8000 [1H 1L]0");
  for (int item = 0; item < 4; ++item) table.TimeRow(buttons[item], kFrame, 60, [&] { editor.PatternPress(item); });
  table.TimeRow("one lane copied onto another", kFrame, 60, [&] {
    editor.LanePress(top, Editor::PressKeys::None);
    editor.LaneRelease(bottom);
  });
  bool other = false;
  table.TimeRow("a typed pattern and its ghost in the picture", kFrame, 60, [&] {
    other = !other;
    editor.PatternTyped(other ? "Mask $C000 [1H 1L]0" : "Mask $3000 [3H 1L]0");
    draw({.ghost = editor.patterns.Ghost()});
  });
  editor.PatternTyped("");
}

void UndoRows(FigureTable& table, Editor& editor) {
  EditBuffers& buffers = editor.program.buffers;
  const auto from = W_Lock(buffers.Current());
  const auto to = W_Lock(buffers.UndoCopy());
  table.Row(
      "Save_Undo / memory copy", 1.2, 300, [&] { buffers.Save_Undo(); },
      [&] { std::memcpy(to.data(), from.data(), from.size_bytes()); });
  table.TimeRow("Undo_Swap", 1, 100, [&] { buffers.Undo_Swap(); });
}

struct Run {
  double seconds = 0;
  double megabytes = 0;
};

// One start of a program until it ends by itself.
Run StartOnce(const char* program, const char* file) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    execl(program, program, file, nullptr);
    _exit(127);
  }
  rusage usage{};
  int status = 0;
  wait4(child, &status, 0, &usage);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return {seconds, static_cast<double>(usage.ru_maxrss) / 1024};
}

bool StartRows(const char* calder, const char* bare, const char* file) {
  std::vector<double> time[2];
  double memory[2] = {0, 0};
  for (int i = 0; i < 9; ++i) {
    const Run ours = StartOnce(calder, file);
    const Run peer = StartOnce(bare, nullptr);
    time[0].push_back(ours.seconds);
    time[1].push_back(peer.seconds);
    memory[0] = std::max(memory[0], ours.megabytes);
    memory[1] = std::max(memory[1], peer.megabytes);
  }
  for (auto& list : time) std::sort(list.begin(), list.end());
  const double ratio = time[0][4] / time[1][4];
  const double memoryRatio = memory[0] / memory[1];
  std::printf("%-58s %10.0f %10.0f %7.2f %6.1f %s\n", "start to first picture with a full waveform, ms",
              time[0][4] * 1e3, time[1][4] * 1e3, ratio, 1.3, ratio > 1.3 ? "OVER" : "ok");
  std::printf("%-58s %10.1f %10.1f %7.2f %6.1f %s\n", "peak memory with a full waveform, MiB", memory[0], memory[1],
              memoryRatio, 1.5, memoryRatio > 1.5 ? "OVER" : "ok");
  return ratio > 1.3 || memoryRatio > 1.5;
}

int RunAll(const char* calder, const char* bare) {
  fake::FakeDesktop desktop;
  Program program(desktop.Services());
  Editor editor(program);
  if (!editor.Start()) return 2;
  FigureTable table;
  FrameRows(table, editor);
  LaneRows(table, editor);
  UndoRows(table, editor);
  const std::string file = std::filesystem::temp_directory_path().string() + "/calder-bench.wdb";
  if (!editor.waveFiles.Write_WaveFile(file)) return 2;
  const bool over = StartRows(calder, bare, file.c_str());
  std::filesystem::remove(file);
  return table.IsOver() || over ? 1 : 0;
}

} // namespace
} // namespace calder

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc != 3) return 2;
  return calder::RunAll(argv[1], argv[2]);
}
