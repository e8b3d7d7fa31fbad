// For the tests of sockets, notifiers, message boxes and forms: an application object, and no display.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication::setQuitOnLastWindowClosed(false);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
