#include <gtest/gtest.h>

#include <QApplication>

#include "ui/Look.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  tvx::look::Apply(application, tvx::look::Theme::Dark);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
