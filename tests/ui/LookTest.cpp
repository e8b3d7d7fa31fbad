#include <QApplication>

#include "tests/Test.h"
#include "ui/Look.h"
#include "ui/Widgets.h"

namespace tvx::look {
namespace {

TEST(Look, ContrastIsTheOneOfTheAccessibilityRules) {
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21.0, 0.01);
  EXPECT_NEAR(Contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Look, EveryThemeIsReadable) {
  for (const int which : {0, 1, 2, 3}) {
    SetHighContrast(which > 1);
    const Colours& c = ColoursOf(which % 2 == 0 ? Theme::Dark : Theme::Light);
    SetHighContrast(false);
    for (const QColor& ground : {c.ground, c.panel}) {
      for (const QColor& text : {c.text, c.dim, c.accent, c.good, c.trouble})
        EXPECT_GE(Contrast(text, ground), which > 1 ? 7.0 : 4.5)
            << text.name().toStdString() << " on " << ground.name().toStdString();
    }
    EXPECT_GE(Contrast(c.onAccent, c.accent), 4.5);
  }
}

TEST(Look, FollowsTheDesktop) {
  const QPalette pure(Qt::black, Qt::white, Qt::white, Qt::black, Qt::gray, Qt::black, Qt::white, Qt::white,
                      Qt::white);
  QPalette usual = pure;
  usual.setColor(QPalette::Window, QColor(0xef, 0xef, 0xef));
  EXPECT_TRUE(WantsHighContrast(pure, {}));
  EXPECT_FALSE(WantsHighContrast(usual, "Adwaita"));
  EXPECT_TRUE(WantsHighContrast(usual, "HighContrastInverse"));
  const struct {
    int screen, system, text;
  } rows[] = {{1080, 0, 16}, {1080, 12, 16}, {1080, 16, 16}, {1080, 32, 32}, {600, 13, 13},
              {600, 26, 21}, {720, 9, 10},   {1440, 8, 15},  {2160, 100, 40}};
  for (const auto& row : rows) EXPECT_EQ(TextHeight(row.screen, row.system), row.text) << row.system;
}

TEST(Look, LegibleKeepsTheHueAndReads) {
  for (const Theme theme : {Theme::Dark, Theme::Light}) {
    const QColor ground = ColoursOf(theme).panel;
    for (const QColor colour :
         {QColor(255, 0, 0), QColor(0, 192, 0), QColor(0, 0, 120), QColor(255, 255, 200)}) {
      const QColor made = Legible(colour, ground);
      EXPECT_GE(Contrast(made, ground), 4.5);
      EXPECT_NEAR(made.hslHue(), colour.hslHue(), 3);
    }
  }
  EXPECT_EQ(Legible(QColor(0, 192, 0), QColor(0, 0, 0)), QColor(0, 192, 0));
}

// Its characters are painted once and copied: not beyond a change of colours, font or text.
TEST(Look, AReadingLooksLikeANewOneAfterEveryChange) {
  const auto make = [](const char* text) {
    auto reading = std::make_unique<Reading>("Box", "0000.0", Qt::AlignRight, Ground::Panel);
    reading->resize(200, 60);
    reading->SetText(text);
    return reading;
  };
  Apply(*qApp, Theme::Dark);
  const auto reading = make("12.5");
  const QImage dark = reading->grab().toImage();
  EXPECT_NE(dark, make("12.6")->grab().toImage());
  EXPECT_GT(dark.size().width(), 0);
  reading->SetText("-3.1");
  reading->grab();
  reading->SetText("12.5");
  EXPECT_EQ(reading->grab().toImage(), dark);
  Apply(*qApp, Theme::Light);
  EXPECT_EQ(reading->grab().toImage(), make("12.5")->grab().toImage());
  EXPECT_NE(reading->grab().toImage(), dark);
  Apply(*qApp, Theme::Dark);
  const QFont usual = QApplication::font();
  QFont larger = usual;
  larger.setPixelSize(usual.pixelSize() + 9);
  QApplication::setFont(larger);
  EXPECT_EQ(reading->grab().toImage(), make("12.5")->grab().toImage());
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace tvx::look
