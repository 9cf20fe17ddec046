#include "tools/expression/PreparedText.h"
#include "Testing.h"

namespace calder::prepared_text_test {

TEST(PreparedTextTest, OnlyTheFirstRandomFunctionGetsItsX) {
  using Row = std::tuple<const char*, const char*>;
  for (const auto& [text, result] :
       {Row{"rnd()", "rnd(x)"}, Row{"rnd(5)", "rnd(x,5)"}, Row{"1+rnd  (  )*2", "1+rnd  (  x)*2"},
        Row{"rnd(  a)", "rnd(  x,a)"}, Row{"rnd(1)+rnd(2)", "rnd(x,1)+rnd(2)"}, Row{"RND(3)", "RND(3)"},
        Row{"rnd", "rnd"}, Row{"rnd*2", "rnd*2"}, Row{"rnd(", "rnd(x,"}, Row{"rnd (  ", "rnd (  x,"}, Row{"", ""}})
    EXPECT_EQ(Insert_x(text), result) << text;
}

TEST(PreparedTextTest, XAndYFollowTheUnits) {
  SystemInfo settings;
  settings.MemorySize = 1000;
  settings.Period = 0.002;
  settings.Amplitude = 5;
  settings.XUserMin = -1;
  settings.XUserMax = 1;
  settings.YUserMin = 0;
  settings.YUserMax = 0.1;
  const ConvUnit units(settings);
  EXPECT_EQ(ScaleXText("  x*2  ", units, settings), "x*2");
  settings.XUnit = 1;
  EXPECT_EQ(ScaleXText("max(x,exp(x))", units, settings), "max((x*(0.002/1000)),exp((x*(0.002/1000))))");
  EXPECT_EQ(ScaleXText("2x+x1+xx+X", units, settings), "2x+x1+xx+X");
  settings.XUnit = 2;
  EXPECT_EQ(ScaleXText("x", units, settings), "(x*((1--1)/1000)+(-1))");
  EXPECT_EQ(ScaleXText("x", units, settings, 4096), "(x*((1--1)/4096)+(-1))") << "the axis over other points";
  settings.YUnit = 1;
  EXPECT_EQ(ScaleYText("v", units), "((v)-((2.5+-2.5)/2))*(65534/(2.5--2.5))");
  settings.YUnit = 2;
  EXPECT_EQ(ScaleYText("v", units), "((v)-((0.1+0)/2))*(65534/(0.1-0))");
}

TEST(PreparedTextTest, PointsAndCodesLeaveTheTextAsItIs) {
  SystemInfo settings;
  const ConvUnit units(settings);
  EXPECT_EQ(PreparedText("A=1;B=2", "A*SIN(X)+rnd()", units, settings).Text(), "[a=1;b=2]a*sin(x)+rnd(x)");
  EXPECT_EQ(PreparedText("", "RND(3)", units, settings).Text(), "[]rnd(3)") << "found before the small letters";
  EXPECT_EQ(PreparedText(" A=1 ", 12).Text(), "[ a=1 ]12");
}

// Every byte that the user wrote and that is still there points back at itself, whatever was wrapped around it.
TEST(PreparedTextTest, PlacesLeadBackToWhatTheUserWrote) {
  SystemInfo settings;
  settings.Period = 0.001;
  settings.Amplitude = 2;
  const ConvUnit units(settings);
  const std::string constants = "a=1;q=7";
  const std::string expression = " 3*x+rnd(y)-z ";
  using Unit = std::int16_t;
  for (const Unit xUnit : {Unit{0}, Unit{1}, Unit{2}}) {
    for (const Unit yUnit : {Unit{0}, Unit{1}, Unit{2}}) {
      settings.XUnit = xUnit;
      settings.YUnit = yUnit;
      const PreparedText prepared(constants, expression, units, settings);
      const std::string& text = prepared.Text();
      for (const char mark : {'y', 'z'})
        EXPECT_EQ(prepared.PlaceOf(text.find(mark)), (TextPlace{TextBox::Expression, expression.find(mark)})) << text;
      EXPECT_EQ(prepared.PlaceOf(text.find('q')), (TextPlace{TextBox::Constants, constants.find('q')}));
      EXPECT_EQ(prepared.PlaceOf(text.find(']')), (TextPlace{TextBox::Constants, constants.size()}));
      EXPECT_EQ(prepared.PlaceOf(text.find('x')).position, expression.find('x')) << "the variable's own replacement";
      EXPECT_EQ(prepared.PlaceOf(text.size() + 5).box, TextBox::Expression);
      EXPECT_LE(prepared.PlaceOf(text.size() + 5).position, expression.size());
    }
  }
  EXPECT_EQ(PreparedText("a=", 5).PlaceOf(3), (TextPlace{TextBox::Constants, 2}));
  EXPECT_EQ(PreparedText("", 5).PlaceOf(0), (TextPlace{TextBox::Constants, 0}));
}

} // namespace calder::prepared_text_test
