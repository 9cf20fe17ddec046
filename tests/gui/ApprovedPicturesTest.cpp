// What the main window draws, compared with pictures that somebody looked at and approved.
//
// CALDER_APPROVE=1 ./test approved draws them anew: look at each changed file before it is committed.
#include "editor/EditorFixture.h"
#include "platform/PixelContext.h"

#include <QDir>
#include <QImage>

namespace calder::approved_pictures_test {

constexpr int kWidth = 272;  // so that a point at the largest zoom is wide enough for its dot
constexpr int kHeight = 147; // three units a lane of the digital view
constexpr int kLevels = 6;   // by which a channel may differ
constexpr int kPixels = 4;   // that may differ by more

struct ApprovedPictures : EditorFixture {
  void SetUp() override {
    Begin();
    SetPoints();
    program->settings.MemorySize = 4096;
    program->settings.DataBits = 14;
    editor->view.Init();
    const auto points = W_Lock(program->buffers.Current());
    for (std::size_t i = 0; i < points.size(); ++i) {
      const double turn = 2 * std::numbers::pi * static_cast<double>(i) / 4096;
      points[i] = static_cast<std::int16_t>(24000 * std::sin(turn) + 6000 * std::sin(40 * turn));
    }
    program->buffers.CurrentScope() = {600, 2900};
  }

  using Draw = std::function<void(DeviceContext&)>;
  static QImage Drawn(double scale, const Draw& draw) {
    QImage image(static_cast<int>(kWidth * scale), static_cast<int>(kHeight * scale), QImage::Format_RGB32);
    image.fill(Qt::red); // what is not drawn is seen
    const auto stride = static_cast<std::size_t>(image.bytesPerLine()) / sizeof(std::uint32_t);
    PixelContext context(
        {reinterpret_cast<std::uint32_t*>(image.bits()), stride * static_cast<std::size_t>(image.height())}, stride,
        image.width(), image.height(), scale);
    draw(context);
    return image;
  }

  static int DifferentPixels(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) return a.width() * a.height();
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
      for (int x = 0; x < a.width(); ++x) {
        const QRgb one = a.pixel(x, y);
        const QRgb other = b.pixel(x, y);
        const int apart = std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                                    std::abs(qBlue(one) - qBlue(other))});
        count += apart > kLevels ? 1 : 0;
      }
    }
    return count;
  }

  static void ExpectApproved(const std::string& name, const QImage& drawn) {
    const QString file = QString::fromStdString(CALDER_SOURCE_DIR "/tests/gui/approved/" + name + ".png");
    if (qEnvironmentVariableIsSet("CALDER_APPROVE")) {
      EXPECT_TRUE(drawn.save(file)) << name;
      return;
    }
    const int apart = DifferentPixels(drawn, QImage(file).convertToFormat(QImage::Format_RGB32));
    if (apart <= kPixels) return;
    const QString rejected = QDir::current().filePath(QString::fromStdString(name) + QStringLiteral(".rejected.png"));
    drawn.save(rejected);
    ADD_FAILURE() << name << ": " << apart
                  << " pixels differ from the approved picture; what was drawn: " << rejected.toStdString();
  }
};

TEST_F(ApprovedPictures, AreDrawnAgain) {
  const auto wave = [this](DeviceContext& picture) { editor->painter.Draw_Wave(picture); };
  const auto digital = [this](DeviceContext& picture) {
    editor->painter.Draw_Digital(picture, {.selectedBits = 0x9000});
  };
  const struct {
    const char* name;
    std::function<void()> prepare;
    Draw draw;
  } rows[] = {{"whole", [] {}, wave},
              {"digital", [] {}, digital},
              {"moved-markers", [] {},
               [this, &wave](DeviceContext& picture) {
                 wave(picture);
                 program->buffers.CurrentScope() = {1200, 3500};
                 editor->markers.Move_Marker(picture);
               }},
              {"points",
               [this] { // few enough that each is a dot; marker A lies left of the view
                 editor->view.ZoomX(7);
                 editor->view.Hrizontal_Scroll(1000);
                 editor->view.ZoomY(1);
                 editor->view.Vertical_Scroll(4000);
                 program->buffers.CurrentScope() = {600, 1016};
               },
               wave},
              {"digital-points", [this] { editor->patterns.Type("Mask $F00 [2H 2L]0"); },
               [this](DeviceContext& picture) { // a copy by the mouse over a typed pattern, with the keyboard's lane
                 const DigitalLanes::Drag drag{2, 6, picture.Width() / 4, picture.Width() / 2};
                 editor->painter.Draw_Digital(picture, {0x9000, editor->patterns.Ghost(), 11, drag});
               }},
              {"right-edge",
               [this] {
                 editor->view.Init();
                 editor->painter.ShowGrid(false);
                 program->buffers.CurrentScope() = {4096, 4096};
               },
               wave}};
  for (const int scale : {1, 2}) {
    SetUp();
    for (const auto& row : rows) {
      row.prepare();
      ExpectApproved(std::string(row.name) + "@" + std::to_string(scale), Drawn(scale, row.draw));
    }
  }
}

// Whatever the picture showed before.
TEST_F(ApprovedPictures, EachIsDrawnWhole) {
  for (const bool wave : {true, false}) {
    const auto draw = [this, wave](DeviceContext& picture, std::uint16_t lanes) {
      wave ? editor->painter.Draw_Wave(picture) : editor->painter.Draw_Digital(picture, {.selectedBits = lanes});
    };
    const QImage fresh = Drawn(1, [&](DeviceContext& picture) { draw(picture, 0x0010); });
    const QImage over = Drawn(1, [&](DeviceContext& picture) {
      draw(picture, 0x8001);
      draw(picture, 0x0010);
    });
    EXPECT_EQ(fresh, over) << (wave ? "wave" : "digital: lanes that are no longer selected have no ground left");
  }
}

} // namespace calder::approved_pictures_test
