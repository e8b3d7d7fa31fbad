#include <gtest/gtest.h>

#include "ui/Look.h"

namespace tvx::look {
namespace {

TEST(Look, ContrastIsTheOneOfTheAccessibilityRules) {
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21.0, 0.01);
  EXPECT_NEAR(Contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Look, EveryThemeIsReadable) {
  for (const Theme theme : {Theme::Dark, Theme::Light}) {
    const Colours& c = ColoursOf(theme);
    for (const QColor& ground : {c.ground, c.panel}) {
      for (const QColor& text : {c.text, c.dim, c.accent, c.good, c.trouble}) {
        EXPECT_GE(Contrast(text, ground), 4.5)
            << text.name().toStdString() << " on " << ground.name().toStdString();
      }
    }
    EXPECT_GE(Contrast(c.onAccent, c.accent), 4.5);
  }
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

}  // namespace
}  // namespace tvx::look
