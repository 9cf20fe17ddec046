// Every form at its smallest size, in both languages: nothing is clipped, no two controls share an access key.
#include "ToolFixture.h"

namespace calder::layout_test {

struct LayoutTest : ToolFixture {
  // The form's picture goes to CALDER_PICTURES, when that names a folder.
  void LookAt(const QString& name) {
    const QString folder = qEnvironmentVariable("CALDER_PICTURES");
    const QString language = QLatin1String(State().language == Language::English ? "en" : "ja");
    if (!folder.isEmpty())
      driven->grab().save(folder +
                          QStringLiteral("/%1-%2-%3.png").arg(name, language).arg(driven->devicePixelRatioF()));
    driven->resize(driven->minimumSizeHint());
    QCoreApplication::processEvents();
    EXPECT_FALSE(driven->windowTitle().isEmpty()) << name.toStdString();
    SCOPED_TRACE((name + language).toStdString());
    // The keys of System Setup's tabs, and of the Help menu and the horizontal zoom, are given.
    const bool system = name == QLatin1String("Menu_System");
    ExpectWellLaidOut(*driven, QLatin1String(system ? "ABR" : name == QLatin1String("Main") ? "H" : ""));
    ExpectReachable(*driven);
  }
};

TEST_F(LayoutTest, NothingIsClippedOrTwiceOnAKeyInEitherLanguage) {
  // states: gestures that lead to each
  const std::tuple<const char*, std::vector<const char*>> forms[] = {
      {"Menu_Create", {"set Comb_Wave 1", "set Comb_Wave 2", "set Comb_Wave 5; on Txt_Expr 1+"}},
      {"Menu_Spline", {""}},
      {"Menu_Compute", {""}},
      {"Menu_Pwf",
       {"pick Comb_Wave AM", "pick Comb_Wave Load dump", "click Btn_Formula; pick Comb_Wave Sine with harmonics"}},
      {"Menu_Compress", {"type Text_X_1 0.3; type Text_Y_0 70k"}},
      {"Menu_Print", {""}},
      {"Menu_Version", {""}},
      {"Menu_System", {"page SSTab 0", "page SSTab 1", "page SSTab 2", "page SSTab 3"}}};
  verbs["page"] = [this](const auto& name, const auto& index) {
    Find<QTabWidget>(name)->setCurrentIndex(std::stoi(index));
  };
  for (const int language : {SystemLanguage::kEnglish, SystemLanguage::kJapanese}) {
    application.reset();
    desktop.language.id = language;
    Start();
    for (const auto& [entry, states] : forms)
      OpenTool(entry, [&] {
        for (const char* gestures : states) {
          Do(gestures);
          LookAt(QLatin1String(entry));
        }
      });
    ShowForm(window);
    window->resize(window->minimumSize());
    LookAt(QStringLiteral("Main"));
    EXPECT_EQ(window->size(), QSize(614, 416));
    for (const ValueBox* box : window->findChildren<ValueBox*>())
      EXPECT_GE(box->width(), box->fontMetrics().horizontalAdvance("-999.999m") + 8) << box->objectName().toStdString();
    EXPECT_GT(Find<WaveformCanvas>("Pict_Wave")->height(), 120);
  }
}

} // namespace calder::layout_test
